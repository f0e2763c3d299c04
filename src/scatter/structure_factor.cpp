// Structure factor of sticky hard spheres (Baxter, Percus-Yevick): baxterCoefficients,
// baxterFactor, sphereStructureFactor, structureFactors, strFacLast, resetStructureFactor.
#include "scatter/structure_factor.h"

#include <algorithm>
#include <cmath>

StructureFactorLast strFacLast;

namespace {

constexpr double kSwitchOff = 1e-5;
constexpr int kSphereType = 1;

void fillOnes(double* strFac, int nPts) {
    for (int k = 0; k < nPts; ++k) strFac[k] = 1.0;
}

}  // namespace

void resetStructureFactor() { strFacLast = StructureFactorLast{}; }

int baxterCoefficients(double eta, double tau, BaxterCoefficients& c) {
    c.eta = eta;
    if (eta >= 1.0 || eta == 0.0) return kStrFacSubstituted;
    const double oneLess = 1.0 - eta;
    const double e = 1.0 / oneLess + tau / eta;
    const double disc = 36.0 * e * e - 12.0 * (1.0 + eta / 2.0) / (eta * oneLess * oneLess);
    if (!(disc >= 0.0)) return kStrFacSubstituted;  // negative, or no number at all
    const double root = std::sqrt(disc);
    c.lambda = std::min(6.0 * e + root, 6.0 * e - root);
    c.mu = eta * oneLess * c.lambda;
    c.alpha = (1.0 + 2.0 * eta - c.mu) / (oneLess * oneLess);
    c.beta = (-3.0 * eta + c.mu) / (2.0 * (oneLess * oneLess));
    return kStrFacApplied;
}

double baxterFactor(const BaxterCoefficients& c, double x) {
    const double eta = c.eta;
    if (x == 0.0) {
        const double A0 = 1.0 + 12.0 * eta * (c.alpha / 3.0 - c.lambda / 12.0 + c.beta / 2.0);
        return 1.0 / (A0 * A0);
    }
    const double cs = std::cos(x);
    const double sn = std::sin(x);
    const double x2 = x * x;
    const double x3 = x2 * x;
    const double A = 1.0 + 12.0 * eta *
                               (c.alpha * (sn - x * cs) / x3 - c.lambda * sn / (12.0 * x) +
                                c.beta * (1.0 - cs) / x2);
    const double B = 12.0 * eta *
                     (c.alpha * ((1.0 - cs) / x3 + 1.0 / (2.0 * x) - sn / x2) -
                      c.lambda * (1.0 - cs) / (12.0 * x) + c.beta * (1.0 / x - sn / x2));
    return 1.0 / (A * A + B * B);
}

int sphereStructureFactor(double cSys, double Vf, double Rhs, double tau, const double* s,
                          int nPts, double* strFac) {
    const double eta = cSys * Vf;
    strFacLast.etaLast = eta;
    strFacLast.RhsLast = Rhs;
    strFacLast.tauLast = tau;
    if (tau < kSwitchOff || Vf < kSwitchOff) {
        fillOnes(strFac, nPts);
        return kStrFacOff;
    }
    BaxterCoefficients c;
    if (baxterCoefficients(eta, tau, c) != kStrFacApplied) {
        fillOnes(strFac, nPts);
        return kStrFacSubstituted;
    }
    for (int k = 0; k < nPts; ++k) strFac[k] = baxterFactor(c, 2.0 * Rhs * s[k]);
    return kStrFacApplied;
}

int structureFactors(int nPhase, const SphereInteraction* phases, double cSys, const double* s,
                     int nPts, double* strFac, int ld) {
    int status = kStrFacApplied;
    for (int j = 0; j < nPhase; ++j) {
        const SphereInteraction& p = phases[j];
        if (p.phaseType != kSphereType) continue;
        const int one = sphereStructureFactor(cSys, p.Vf, p.Rhs, p.tau, s, nPts, strFac + j * ld);
        if (one == kStrFacSubstituted) status = kStrFacSubstituted;
    }
    return status;
}
