// The model curve of the sample and its misfit: ModelPhase, ModelCurves,
// evaluateModel, objectiveValue, fitDeviation, NOISEADD, dateTimeText and
// testNoiseSeed.
#pragma once

#include "scatter/phase_intensity.h"

#include <string>
#include <string_view>

constexpr int kMaxPhases = 10;
constexpr int kMaxPoints = 1024;

// What the model reads of one phase.  For a CYLINDER phase shell.Rin and
// shell.Rout hold RinC and RoutC.
struct ModelPhase {
    int phaseType = 0;  // 1 SPHERE, 2 CYLINDER, 3 DUMBBELL, 4 ELLIPSOID
    double Vf = 0.0;
    ShellParticle shell;
    double len = 0.0;             // cylinder length
    double Rhs = 0.0, tau = 0.0;  // structure factor of a SPHERE phase
    double Rell = 0.0, nu = 0.0;  // ellipsoid
};

// Per-phase intensities and structure factors at the points of the curve,
// the curve of the sample before scaling, the scale and the deviation.
struct ModelCurvesRecord {
    double sphInt[kMaxPhases][kMaxPoints];
    double cylInt[kMaxPhases][kMaxPoints];
    double dmbInt[kMaxPhases][kMaxPoints];
    double elpInt[kMaxPhases][kMaxPoints];
    double strFac[kMaxPhases][kMaxPoints];
    double sumCurve[kMaxPoints];
    double scaleB;
    double sigmaFit;
};

extern ModelCurvesRecord ModelCurves;
void resetModelCurves();

// Normalizes the Vf of the phases in place (their absolute values sum to
// 1), computes every phase's intensity at s[0..nPts-1] and the sum curve.
// A phase's curve is kept until its own parameters or the s grid change
// (resetModelCurves forgets it); the results are those of a fresh evaluation.
// Returns the structure factors' outcome (kStrFacSubstituted when a SPHERE
// phase had no physical solution and took factor 1).
int evaluateModel(ModelPhase* phases, int nPhase, double cSys, const double* s, int nPts);

// The scale of the model by linear least squares and the weighted squared
// misfit.  A model that is zero at every point gets scale 0, so that the
// misfit is that of the data alone (1 with normalized weights).
double objectiveValue(const double* I, const double* w, int nPts);

// The deviation of the fit in units of the errors; 0 with fewer than 2 points.
double fitDeviation(const double* I, const double* err, int nPts);

// Noise of a simulated curve: out(i) from in(i) with normal deviates of a
// generator started afresh from `seed`; negative noise is Poisson-like.
void NOISEADD(int n, const double* in, double* out, double noise, int seed);

// The date and time text of the results: two blanks, the date in 11
// characters, three blanks, the time in 8 characters (24 in all).
std::string dateTimeText();

// The seed of a simulated curve from the 24-character date and time text:
// the minutes and seconds in its characters 20-21 and 23-24.
int testNoiseSeed(std::string_view dateTime);
