// Form factors of the phases: FormArgs, sphereAmp, shellAmp, SINCF, sphereOneRadius,
// cylinderOrient, cylinderOneRadius, ellipsoidOrient, ellipsoidIntensity, dumbbellFactor,
// and their forms for a whole curve: sphereAmpBatch, CylinderFamily, ellipsoidCurve.
#pragma once

// Arguments of the integrands.  A quadrature rule calls an integrand with the
// abscissa alone, so everything else it needs is set here first.
struct FormArgs {
    double sCur = 0.0;      // current angular value s
    double argRin = 0.0;    // core radius of the current phase
    double argRoin = 0.0;   // contrast of the core
    double argRoout = 0.0;  // contrast of the shell
    double argMean = 0.0;   // mean of the radius distribution
    double argWidth = 0.0;  // width of the radius distribution
    int argDist = 0;        // distribution code: 1 Gaussian, otherwise Schulz
    double cylR = 0.0;      // radius of the current cylinder
    double cylLen = 0.0;    // its length
    double cylS = 0.0;      // its s
    double argRell = 0.0;   // equal semi-axes of the ellipsoid
    double argNu = 0.0;     // ratio of the third semi-axis to argRell
};

extern FormArgs formArgs;

// Back to the program's start state.
void resetFormArgs();

// Scattering amplitude of a homogeneous sphere, 3(sin x - x cos x)/x^3,
// normalized to 1 at x = 0; below 0.1 the short series 1 + x^2(0.0031914 x^2 - 0.1).
double sphereAmp(double x);

// Amplitude of a sphere of radius R with a core of radius Rc at s, with the
// two volumes given and the contrasts argRoin, argRoout of formArgs.
double shellAmp(double R, double Rc, double s, double volR, double volC);

// sin(x)/x, with its two-term series for x up to 0.01.
double SINCF(double x);

// Intensity of one core-shell sphere of outer radius Rout and core radius
// Rin (taken as it stands, also when negative).  Sets the contrasts of formArgs.
double sphereOneRadius(double s, double Rin, double roin, double Rout, double roout);

// Integrand of the orientation average of a cylinder over u, the cosine of
// the angle between axis and scattering vector.  Reads cylR, cylLen, cylS,
// argRin, argRoin, argRoout.
double cylinderOrient(double u);

// Orientation average of one cylinder of radius R, core radius Rin and
// length len at s: cylinderOrient on [0, 1] with 32 nodes.  Sets formArgs.
double cylinderOneRadius(double s, double R, double Rin, double roin, double roout, double len);

// Integrand of the orientation average of an ellipsoid of revolution.
// Reads sCur, argRell, argNu.  Where the argument of the amplitude is 0
// (s = 0) the amplitude takes its limit 1.
double ellipsoidOrient(double u);

// Orientation average of the ellipsoid of semi-axes Rell, Rell, nu Rell at s
// with the 64-point rule.  Sets sCur, argRell, argNu of formArgs.
double ellipsoidIntensity(double s, double Rell, double nu);

// Interference of two touching spheres of radius Rout: 2 (1 + SINCF(2 s Rout)).
double dumbbellFactor(double s, double Rout);

// ----- The same values for a whole curve -------------------------------------
// Each gives what the one-value routines above give, with the terms that do
// not change along the curve computed once and J1 taken two at a time in the
// lanes of simd::Double2, summed in the same order: the same bits, except
// the ellipsoid's, whose sin and cos come from the vector kernel
// (ellipsoidCurve).

// out[i] = sphereAmp(x[i]) for i < n.
void sphereAmpBatch(const double* x, double* out, int n);

constexpr int kCylinderNodes = 32;     // the orientation rule of a cylinder
constexpr int kCylinderMaxRadii = 11;  // the radii of a polydisperse cylinder

// Cylinders of up to 11 radii with the same core, contrasts and length, with
// what their orientation averages share: the nodes u of the rule, their
// weights, sqrt(1 - u^2), and the volumes and contrast terms of each radius.
struct CylinderFamily {
    int radii = 0;
    int nodes = 0;
    double Rc = 0.0, roin = 0.0, roout = 0.0, len = 0.0;
    double u[kCylinderNodes] = {}, weight[kCylinderNodes] = {}, w[kCylinderNodes] = {};
    double R[kCylinderMaxRadii] = {}, V[kCylinderMaxRadii] = {}, Vc[kCylinderMaxRadii] = {};
    double p[kCylinderMaxRadii] = {};        // Rc/R
    double coreTerm[kCylinderMaxRadii] = {};  // Vc roin p^2
    double volume[kCylinderMaxRadii] = {};   // (V - Vc) roout + roin Vc
};

// The family of radii R[0..nR-1] (nR at most 11), core radius Rin (a
// negative one counts as 0), contrasts and length.
void prepareCylinders(CylinderFamily& f, const double* R, int nR, double Rin, double roin,
                      double roout, double len);

// C[i] = cylinderOneRadius(s, f.R[i], ...) for every radius of the family.
void cylinderAverages(const CylinderFamily& f, double s, double* C);

// out[k] = ellipsoidIntensity(s[k], Rell, nu) for k < nPts, with sin and cos
// of the amplitude's argument from sinCosBatch where that argument is at
// least 0.25: within 1e-15 relative of the one-value routine, not bit for bit.
void ellipsoidCurve(double Rell, double nu, const double* s, int nPts, double* out);
