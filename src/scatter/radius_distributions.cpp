// Radius distributions, polydisperse averages: distGauss, distSchulz, radiusDensity, sphereRadial,
// isPolydisperse, sphereLimits, cylinderLimits, spherePolydisperse, cylinderPolydisperse,
// spherePolydisperseCurve, cylinderPolydisperseCurve.
#include "scatter/radius_distributions.h"

#include "core/machine_constants.h"
#include "scatter/form_factors.h"
#include "scatter/gauss_legendre.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kInvSqrtTwoPi = 0.3989422804014327;
constexpr double kSchulzLeast = 1.0000000000000004;
constexpr double kSchulzGaussSwitch = 200000000.0;
constexpr double kLeastRatio = 5e-16;
constexpr double kStirlingRoot = 2.506628275;  // sqrt(2 pi) as the series has it
constexpr double kStirling1 = 0.08333333333;
constexpr double kStirling2 = 0.003472222222;
constexpr double kStirling3 = 0.00268132716;
constexpr double kStirling4 = 0.0002294720936;
constexpr double kThird = 0.3333333333333333;
constexpr double kFourPiRadial = 12.56637061432;
constexpr double kPolyThreshold = 1e-6;
constexpr int kRadialNodes = 128;  // more than the table holds: the 64-point rule
constexpr int kCylinderRadii = 11;

// Machine constants of the distributions, taken once from X02RMDC.
struct DistributionConstants {
    bool ready = false;
    double lnBig = 0.0;
    double tinyWidth = 0.0;
    double sqrtEps = 0.0;
};

DistributionConstants consts;

const DistributionConstants& constants() {
    if (!consts.ready) {
        const double big = X02RMDC(5);
        consts.lnBig = X02RMDC(8);
        consts.tinyWidth = std::sqrt(1.0 / big);
        consts.sqrtEps = std::sqrt(X02RMDC(2));
        consts.ready = true;
    }
    return consts;
}

// 2.506628275 (1 + 0.08333333333 g + 0.003472222222 g^2 - 0.00268132716 g^3
// + 0.0002294720936 g^4), nested as the program evaluates it.
double stirlingSeries(double g) {
    return ((((kStirling2 - (kStirling3 - g * kStirling4) * g) * g + kStirling1) * g) + 1.0) *
           kStirlingRoot;
}

}  // namespace

double distGauss(double R, double mean, double width) {
    const DistributionConstants& c = constants();
    const double a = std::fabs(width);
    const double d = std::fabs(std::fabs(R) - std::fabs(mean));
    double e = 0.0;
    if (a > c.tinyWidth) {
        const double r = d / a;
        e = -(r * r) / 2.0;
    } else {
        e = d == a ? 0.0 : -c.lnBig;
    }
    return (kInvSqrtTwoPi / std::max(a, c.tinyWidth)) * std::exp(e);
}

double distSchulz(double R, double mean, double width) {
    if (width == 0.0) return distGauss(R, mean, width);
    const double z = std::max(mean / width, kSchulzLeast);
    if (z > kSchulzGaussSwitch) return distGauss(R, mean, width);
    const double t = std::max(R / mean, kLeastRatio);
    const double g = 1.0 / (z * z);
    const double P = stirlingSeries(g);
    const double z2 = z * z;
    return z * std::exp((z2 - 1.0) * std::log(t) + z2 * (1.0 - t)) / mean / P;
}

double radiusDensity(double R, double mean, double width, int iDist) {
    return iDist == 1 ? distGauss(R, mean, width) : distSchulz(R, mean, width);
}

double sphereRadial(double R) {
    const double Rc = std::max(formArgs.argRin, 0.0);
    const double volR = kThird * kFourPiRadial * (R * R * R);
    const double volC = kThird * kFourPiRadial * (Rc * Rc * Rc);
    const double amp = shellAmp(R, Rc, formArgs.sCur, volR, volC);
    const double form =
        amp * amp / ((volR - volC) * formArgs.argRoout + formArgs.argRoin * volC);
    return form * radiusDensity(R, formArgs.argMean, formArgs.argWidth, formArgs.argDist);
}

bool isPolydisperse(double dR, double Ro) { return dR / Ro >= kPolyThreshold; }

void sphereLimits(double Ro, double dR, double& radLow, double& radHigh) {
    radLow = std::max(constants().sqrtEps, Ro - 3.0 * dR);
    radHigh = Ro + 3.0 * dR;
}

void cylinderLimits(double Ro, double dR, double& cylLow, double& cylStep) {
    cylLow = std::max(constants().sqrtEps, Ro - 3.0 * dR);
    cylStep = ((Ro + 3.0 * dR) - cylLow) / 10.0;
}

double spherePolydisperse(double s, double Rin, double roin, double roout, double mean,
                          double width, int iDist, double radLow, double radHigh) {
    formArgs.sCur = s;
    formArgs.argRin = Rin;
    formArgs.argRoin = roin;
    formArgs.argRoout = roout;
    formArgs.argMean = mean;
    formArgs.argWidth = width;
    formArgs.argDist = iDist;
    int status = 0;  // the request of 128 nodes always sets 1
    return GAUSSQ(radLow, radHigh, kRadialNodes, sphereRadial, status);
}

double cylinderPolydisperse(double s, double Rin, double roin, double roout, double mean,
                            double width, int iDist, double len, double cylLow, double cylStep) {
    formArgs.argMean = mean;
    formArgs.argWidth = width;
    formArgs.argDist = iDist;
    double sumWeighted = 0.0;
    double sumWeights = 0.0;
    for (int i = 0; i < kCylinderRadii; ++i) {
        const double R = i * cylStep + cylLow;
        const double C = cylinderOneRadius(s, R, Rin, roin, roout, len);
        const double W = radiusDensity(R, mean, width, iDist);
        sumWeighted += W * C;
        sumWeights += W;
    }
    return sumWeighted / sumWeights;
}

void spherePolydisperseCurve(const double* s, int nPts, double Rin, double roin, double roout,
                             double mean, double width, int iDist, double radLow, double radHigh,
                             double* out) {
    double R[kGaussMaxPoints];
    double weight[kGaussMaxPoints];
    double volR[kGaussMaxPoints];
    double volume[kGaussMaxPoints];   // (volR - volC) roout + roin volC
    double density[kGaussMaxPoints];
    int status = 0;
    const int n = gaussNodes(radLow, radHigh, kRadialNodes, R, weight, status);
    const double Rc = std::max(Rin, 0.0);
    const double volC = kThird * kFourPiRadial * (Rc * Rc * Rc);
    for (int i = 0; i < n; ++i) {
        volR[i] = kThird * kFourPiRadial * (R[i] * R[i] * R[i]);
        volume[i] = (volR[i] - volC) * roout + roin * volC;
        density[i] = radiusDensity(R[i], mean, width, iDist);
    }
    double x[kGaussMaxPoints];
    double fo[kGaussMaxPoints];
    for (int k = 0; k < nPts; ++k) {
        // The core's amplitude is the same at every radius of the rule.
        const double fc = sphereAmp(s[k] * Rc);
        const double coreVolume = fc * volC;
        const double coreTerm = roin * volC * fc;
        for (int i = 0; i < n; ++i) x[i] = s[k] * R[i];
        sphereAmpBatch(x, fo, n);
        double sum = 0.0;
        for (int i = 0; i < n; ++i) {
            const double amp = roout * (fo[i] * volR[i] - coreVolume) + coreTerm;
            sum += weight[i] * (amp * amp / volume[i] * density[i]);
        }
        out[k] = sum;
    }
}

void cylinderPolydisperseCurve(const double* s, int nPts, double Rin, double roin, double roout,
                               double mean, double width, int iDist, double len, double cylLow,
                               double cylStep, double* out) {
    double R[kCylinderRadii];
    double W[kCylinderRadii];
    double sumWeights = 0.0;
    for (int i = 0; i < kCylinderRadii; ++i) {
        R[i] = i * cylStep + cylLow;
        W[i] = radiusDensity(R[i], mean, width, iDist);
        sumWeights += W[i];
    }
    CylinderFamily family;
    prepareCylinders(family, R, kCylinderRadii, Rin, roin, roout, len);
    double C[kCylinderRadii];
    for (int k = 0; k < nPts; ++k) {
        cylinderAverages(family, s[k], C);
        double sumWeighted = 0.0;
        for (int i = 0; i < kCylinderRadii; ++i) sumWeighted += W[i] * C[i];
        out[k] = sumWeighted / sumWeights;
    }
}

void resetRadiusDistributions() { consts = DistributionConstants{}; }
