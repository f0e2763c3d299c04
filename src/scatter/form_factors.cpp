// Form factors of the phases: FormArgs, sphereAmp, shellAmp, SINCF, sphereOneRadius,
// cylinderOrient, cylinderOneRadius, ellipsoidOrient, ellipsoidIntensity, dumbbellFactor,
// and their forms for a whole curve: sphereAmpBatch, CylinderFamily, ellipsoidCurve.
#include "scatter/form_factors.h"

#include "numlib/special_functions.h"
#include "numlib/simd_double.h"
#include "numlib/vector_trig.h"
#include "scatter/gauss_legendre.h"

#include <algorithm>
#include <cmath>

FormArgs formArgs;

namespace {

// The program's constants, each in the form the formula that uses it has.
constexpr double kFourThirdsPi = 4.188790204773333;     // one-radius sphere
constexpr double kFourPiEllipsoid = 12.566370614359172;  // ellipsoid volume, divided by 3.0
constexpr double kPiCylinder = 3.14159265358;            // cylinder volumes
constexpr double kAmpSwitch = 0.1;
constexpr double kAmpSeries4 = 0.0031914;
constexpr double kAmpSeries2 = 0.1;
constexpr double kSincSwitch = 0.01;
constexpr double kSinc4 = 0.008333333333333333;
constexpr double kSinc2 = 0.16666666666666666;
constexpr double kCylinderZero = 1e-20;
constexpr int kEllipsoidNodes = 128;  // more than the table holds: the 64-point rule

// 2 J1(a)/a, which tends to 1 as a goes to 0.
double besselAmp(double a) {
    if (a == 0.0) return 1.0;
    int err = 0;
    return 2.0 * S17J1Y1(a, 0, err) / a;
}

// sin(b)/b as the cylinder's length factor, with its limit 1 at b = 0.
double lengthFactor(double b) { return b == 0.0 ? 1.0 : std::sin(b) / b; }

// The amplitude of the ellipsoid, 3(sin Q - Q cos Q)/Q^3, with no series for
// small Q: the closed form stands except at Q = 0 itself.
double ellipsoidAmp(double Q) {
    return Q == 0.0 ? 1.0 : 3.0 * (std::sin(Q) - Q * std::cos(Q)) / (Q * Q * Q);
}

// Room for the shell terms of cylinderAverages: every node at every radius,
// the radii padded to an even count.
constexpr int kPaddedRadii = (kCylinderMaxRadii + 1) / 2 * 2;
struct CylinderScratch {
    double shellArg[kCylinderNodes * kPaddedRadii];
    double shell[kCylinderNodes * kPaddedRadii];
};
CylinderScratch cylinderScratch;

// 2 J1(a)/a, with its limit 1 at a = 0 (J1 two at a time, the same bits).
void besselAmpBatch(const double* a, double* out, int n) {
    besselJ1Batch(a, out, n);
    for (int i = 0; i < n; ++i) out[i] = a[i] == 0.0 ? 1.0 : 2.0 * out[i] / a[i];
}

void lengthFactorBatch(const double* b, double* out, int n) {
    for (int i = 0; i < n; ++i) out[i] = lengthFactor(b[i]);
}

// The ellipsoid's amplitudes take sin and cos from the vector kernel, which
// may differ from std::sin and std::cos in the last bit.  The difference
// sin Q - Q cos Q, near Q^3/3 for small Q, then moves by up to 2.2e-16 Q,
// that is 6.7e-16/Q^2 relative: below 0.25 (1e-14 there) the library's sin
// and cos are kept.
constexpr double kVectorAmpFrom = 0.25;

void ellipsoidAmpBatch(const double* Q, double* out, int n) {
    double sn[kGaussMaxPoints];
    double cs[kGaussMaxPoints];
    for (int start = 0; start < n; start += kGaussMaxPoints) {
        const int m = n - start < kGaussMaxPoints ? n - start : kGaussMaxPoints;
        sinCosBatch(Q + start, sn, cs, m);
        for (int i = 0; i < m; ++i) {
            const double q = Q[start + i];
            out[start + i] = q >= kVectorAmpFrom ? 3.0 * (sn[i] - q * cs[i]) / (q * q * q)
                                                 : ellipsoidAmp(q);
        }
    }
}

}  // namespace

void resetFormArgs() { formArgs = FormArgs{}; }

double sphereAmp(double x) {
    if (x >= kAmpSwitch) return 3.0 * (std::sin(x) - x * std::cos(x)) / (x * x * x);
    return 1.0 + x * x * (kAmpSeries4 * x * x - kAmpSeries2);
}

double shellAmp(double R, double Rc, double s, double volR, double volC) {
    const double fo = sphereAmp(s * R);
    const double fc = sphereAmp(s * Rc);
    return formArgs.argRoout * (fo * volR - fc * volC) + formArgs.argRoin * volC * fc;
}

double SINCF(double x) {
    if (x <= kSincSwitch) return (kSinc4 * x * x - kSinc2) * x * x + 1.0;
    return std::sin(x) / x;
}

double sphereOneRadius(double s, double Rin, double roin, double Rout, double roout) {
    formArgs.argRoin = roin;
    formArgs.argRoout = roout;
    const double volR = kFourThirdsPi * (Rout * Rout * Rout);
    const double volC = kFourThirdsPi * (Rin * Rin * Rin);
    const double ratio = Rin / Rout;
    const double q = ratio * ratio * ratio;
    const double meanContrast = roin * q + (1.0 - q) * roout;
    const double amp = shellAmp(Rout, Rin, s, volR, volC);
    return meanContrast * meanContrast * amp * amp / volR;
}

double cylinderOrient(double u) {
    const double s = formArgs.cylS;
    const double R = formArgs.cylR;
    const double len = formArgs.cylLen;
    const double Rc = std::max(formArgs.argRin, 0.0);
    const double roin = formArgs.argRoin;
    const double roout = formArgs.argRoout;
    const double V = kPiCylinder * R * R * len;
    const double Vc = kPiCylinder * Rc * Rc * len;
    if (s * u < kCylinderZero) return V;

    const double w = std::sqrt(1.0 - u * u);
    const double T = lengthFactor(0.5 * s * len * u);
    const double f2 = besselAmp(s * R * w);
    const double p = Rc / R;
    if (p == 0.0) {
        const double amp = f2 * roout * T;
        return V * amp * amp;
    }
    // The core term carries p^2 on top of the radius already in Vc.
    const double f1 = besselAmp(s * Rc * w);
    const double G = ((f2 * V - f1 * p * p * Vc) * roout + Vc * roin * p * p * f1) * T;
    return G * G / ((V - Vc) * roout + roin * Vc);
}

double cylinderOneRadius(double s, double R, double Rin, double roin, double roout, double len) {
    formArgs.cylS = s;
    formArgs.cylR = R;
    formArgs.cylLen = len;
    formArgs.argRin = Rin;
    formArgs.argRoin = roin;
    formArgs.argRoout = roout;
    int status = 0;
    return GAUSSQ(0.0, 1.0, kCylinderNodes, cylinderOrient, status);
}

double ellipsoidOrient(double u) {
    const double R = formArgs.argRell;
    const double v = formArgs.argNu;
    const double Q = std::sqrt((v * v - 1.0) * u * u + 1.0) * formArgs.sCur * R;
    const double F = ellipsoidAmp(Q);
    return F * F * (kFourPiEllipsoid * v * (R * R * R) / 3.0);
}

double ellipsoidIntensity(double s, double Rell, double nu) {
    formArgs.sCur = s;
    formArgs.argRell = Rell;
    formArgs.argNu = nu;
    int status = 0;  // the request of 128 nodes always sets 1
    return GAUSSQ(0.0, 1.0, kEllipsoidNodes, ellipsoidOrient, status);
}

double dumbbellFactor(double s, double Rout) { return 2.0 * (1.0 + SINCF(2.0 * s * Rout)); }

void sphereAmpBatch(const double* x, double* out, int n) {
    for (int i = 0; i < n; ++i) out[i] = sphereAmp(x[i]);
}

void prepareCylinders(CylinderFamily& f, const double* R, int nR, double Rin, double roin,
                      double roout, double len) {
    f.radii = std::clamp(nR, 1, kCylinderMaxRadii);
    f.Rc = std::max(Rin, 0.0);
    f.roin = roin;
    f.roout = roout;
    f.len = len;
    int status = 0;
    f.nodes = gaussNodes(0.0, 1.0, kCylinderNodes, f.u, f.weight, status);
    for (int j = 0; j < f.nodes; ++j) f.w[j] = std::sqrt(1.0 - f.u[j] * f.u[j]);
    for (int i = 0; i < f.radii; ++i) {
        f.R[i] = R[i];
        f.V[i] = kPiCylinder * R[i] * R[i] * len;
        f.Vc[i] = kPiCylinder * f.Rc * f.Rc * len;
        f.p[i] = f.Rc / R[i];
        f.coreTerm[i] = f.Vc[i] * roin * f.p[i] * f.p[i];
        f.volume[i] = (f.V[i] - f.Vc[i]) * roout + roin * f.Vc[i];
    }
}

void cylinderAverages(const CylinderFamily& f, double s, double* C) {
    using simd::Double2;
    const int n = f.nodes;
    double arg[kCylinderNodes];
    double T[kCylinderNodes];
    double f1[kCylinderNodes] = {};
    for (int j = 0; j < n; ++j) arg[j] = 0.5 * s * f.len * f.u[j];
    lengthFactorBatch(arg, T, n);
    bool anyCore = false;
    for (int i = 0; i < f.radii; ++i) anyCore = anyCore || f.p[i] != 0.0;
    if (anyCore) {
        // The core's Bessel term is the same at every radius.
        for (int j = 0; j < n; ++j) arg[j] = s * f.Rc * f.w[j];
        besselAmpBatch(arg, f1, n);
    }
    // The radii go in pairs, one to a lane (an odd count repeats the last):
    // shell[j][i] holds 2 J1(a)/a at node j and radius i.
    const int padded = (f.radii + 1) / 2 * 2;
    double* shellArg = cylinderScratch.shellArg;
    double* shell = cylinderScratch.shell;
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < padded; ++i) {
            shellArg[j * padded + i] = s * f.R[i < f.radii ? i : f.radii - 1] * f.w[j];
        }
    }
    besselAmpBatch(shellArg, shell, n * padded);
    for (int i = 0; i < padded; i += 2) {
        const int i2 = i + 1 < f.radii ? i + 1 : f.radii - 1;
        const Double2 V = {f.V[i], f.V[i2]};
        const Double2 Vc = {f.Vc[i], f.Vc[i2]};
        const Double2 p = {f.p[i], f.p[i2]};
        const Double2 coreTerm = {f.coreTerm[i], f.coreTerm[i2]};
        const Double2 volume = {f.volume[i], f.volume[i2]};
        const simd::Int2 hollow = p == 0.0;
        Double2 sum = simd::splat(0.0);
        for (int j = 0; j < n; ++j) {
            const Double2 f2 = simd::load(shell + j * padded + i);
            const Double2 amp = f2 * f.roout * T[j];
            const Double2 solid = V * amp * amp;
            // The core term carries p^2 on top of the radius already in Vc.
            const Double2 G = ((f2 * V - f1[j] * p * p * Vc) * f.roout + coreTerm * f1[j]) * T[j];
            Double2 value = simd::select(hollow, solid, G * G / volume);
            if (s * f.u[j] < kCylinderZero) value = V;
            sum += f.weight[j] * value;
        }
        C[i] = sum[0];
        if (i + 1 < f.radii) C[i + 1] = sum[1];
    }
}

void ellipsoidCurve(double Rell, double nu, const double* s, int nPts, double* out) {
    double u[kGaussMaxPoints];
    double weight[kGaussMaxPoints];
    double stretch[kGaussMaxPoints];  // sqrt((nu^2 - 1) u^2 + 1)
    int status = 0;
    const int n = gaussNodes(0.0, 1.0, kEllipsoidNodes, u, weight, status);
    for (int j = 0; j < n; ++j) stretch[j] = std::sqrt((nu * nu - 1.0) * u[j] * u[j] + 1.0);
    const double volume = kFourPiEllipsoid * nu * (Rell * Rell * Rell) / 3.0;
    double Q[kGaussMaxPoints];
    double F[kGaussMaxPoints];
    for (int k = 0; k < nPts; ++k) {
        for (int j = 0; j < n; ++j) Q[j] = stretch[j] * s[k] * Rell;
        ellipsoidAmpBatch(Q, F, n);
        double sum = 0.0;
        for (int j = 0; j < n; ++j) sum += weight[j] * (F[j] * F[j] * volume);
        out[k] = sum;
    }
}
