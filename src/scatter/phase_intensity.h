// Intensity of one particle of a phase, monodisperse or polydisperse:
// ShellParticle, sphereIntensity, dumbbellIntensity, cylinderIntensity, and
// the same for a whole curve: sphereCurve, cylinderCurve.
#pragma once

// Values of a SPHERE, DUMBBELL or CYLINDER phase that its intensity reads.
// For a CYLINDER phase Rin and Rout hold RinC and RoutC.
struct ShellParticle {
    double Rin = 0.0;    // core radius
    double roin = 0.0;   // core contrast
    double Rout = 0.0;   // outer radius, the mean of the distribution
    double roout = 0.0;  // shell contrast
    double dR = 0.0;     // width of the distribution
    int iDist = 0;       // 1 Gaussian, otherwise Schulz
};

// Sphere intensity at s without structure factor: the radial average on
// [radLow, radHigh] (sphereLimits) for a polydisperse phase, otherwise the
// one-radius value.
double sphereIntensity(double s, const ShellParticle& p, double radLow, double radHigh);

// The sphere intensity of the same parameters times the interference of two
// touching spheres at the distance of the mean outer radius.
double dumbbellIntensity(double s, const ShellParticle& p, double radLow, double radHigh);

// Cylinder intensity at s: the weighted sum over the 11 radii from cylLow in
// steps of cylStep (cylinderLimits) for a polydisperse phase, otherwise the
// orientation average at Rout.
double cylinderIntensity(double s, const ShellParticle& p, double len, double cylLow,
                         double cylStep);

// out[k] = sphereIntensity(s[k], p, radLow, radHigh) for k < nPts, bit for bit.
void sphereCurve(const double* s, int nPts, const ShellParticle& p, double radLow,
                 double radHigh, double* out);

// out[k] = cylinderIntensity(s[k], p, len, cylLow, cylStep) for k < nPts, bit for bit.
void cylinderCurve(const double* s, int nPts, const ShellParticle& p, double len, double cylLow,
                   double cylStep, double* out);
