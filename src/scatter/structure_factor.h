// Structure factor of sticky hard spheres (Baxter, Percus-Yevick): baxterCoefficients,
// baxterFactor, sphereStructureFactor, structureFactors, strFacLast, resetStructureFactor.
#pragma once

// Outcome of the structure factor of one phase.
constexpr int kStrFacApplied = 0;       // computed from Baxter's solution
constexpr int kStrFacOff = 1;           // tau or Vf below 1e-5: factor 1 by design
constexpr int kStrFacSubstituted = -1;  // no physical solution: factor 1 substituted

// Volume fraction, interaction radius and stickiness of the last SPHERE phase
// treated; the header of the structure-factor file shows them.
struct StructureFactorLast {
    double etaLast = 0.0;
    double RhsLast = 0.0;
    double tauLast = 0.0;
};

extern StructureFactorLast strFacLast;

// Back to the program's start state.
void resetStructureFactor();

// The constants of Baxter's solution for one volume fraction and stickiness.
struct BaxterCoefficients {
    double eta = 0.0;
    double lambda = 0.0;
    double mu = 0.0;
    double alpha = 0.0;
    double beta = 0.0;
};

// lambda, mu, alpha, beta from eta and tau.  Returns kStrFacSubstituted,
// with c untouched apart from eta, when there is no real solution: eta at or
// above 1, eta = 0 (tau/eta has no value), or a negative discriminant.
int baxterCoefficients(double eta, double tau, BaxterCoefficients& c);

// 1/(A^2 + B^2) at x = 2 Rhs s.  At x = 0 the limit 1/A(0)^2 is taken, with
// A(0) = 1 + 12 eta (alpha/3 - lambda/12 + beta/2) and B(0) = 0.
double baxterFactor(const BaxterCoefficients& c, double x);

// Structure factor of one SPHERE phase at the nPts values s[0..nPts-1] into
// strFac[0..nPts-1], from the system concentration, the normalized Vf, Rhs
// and tau.  Sets strFacLast.  Returns kStrFacApplied, kStrFacOff (all 1 by
// the switches tau < 1e-5 or Vf < 1e-5) or kStrFacSubstituted (all 1, the
// caller may warn).
int sphereStructureFactor(double cSys, double Vf, double Rhs, double tau, const double* s,
                          int nPts, double* strFac);

// What the structure factors read of one phase.
struct SphereInteraction {
    int phaseType = 0;  // only type 1 (SPHERE) has a structure factor
    double Vf = 0.0;    // normalized volume fraction
    double Rhs = 0.0;
    double tau = 0.0;
};

// Structure factors of every SPHERE phase of phases[0..nPhase-1]: phase j
// fills strFac[j*ld .. j*ld + nPts - 1]; other phases are left alone.
// Returns kStrFacSubstituted when any phase had no physical solution (so
// that the caller warns once per evaluation), otherwise kStrFacApplied.
int structureFactors(int nPhase, const SphereInteraction* phases, double cSys, const double* s,
                     int nPts, double* strFac, int ld);
