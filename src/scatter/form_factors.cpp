// Form factors of the phases: FormArgs, sphereAmp, shellAmp, SINCF, sphereOneRadius,
// cylinderOrient, cylinderOneRadius, ellipsoidOrient, ellipsoidIntensity, dumbbellFactor.
#include "scatter/form_factors.h"

#include "numlib/special_functions.h"
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
constexpr int kCylinderNodes = 32;
constexpr int kEllipsoidNodes = 128;  // more than the table holds: the 64-point rule

// 2 J1(a)/a, which tends to 1 as a goes to 0.
double besselAmp(double a) {
    if (a == 0.0) return 1.0;
    int err = 0;
    return 2.0 * S17J1Y1(a, 0, err) / a;
}

// sin(b)/b as the cylinder's length factor, with its limit 1 at b = 0.
double lengthFactor(double b) { return b == 0.0 ? 1.0 : std::sin(b) / b; }

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
    // No series for small Q: the closed form stands except at Q = 0 itself.
    const double F = Q == 0.0 ? 1.0 : 3.0 * (std::sin(Q) - Q * std::cos(Q)) / (Q * Q * Q);
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
