// The phases of the sample and the fields of the fit session: ParamTriple,
// PhaseTable, FitSession, phaseTypeOf, phaseBlockLength and their resets.
#pragma once

#include <array>
#include <string>
#include <string_view>

constexpr int kMaxPhaseEntries = 10;   // room of the phase table
constexpr int kPhaseNameWidth = 10;

// Phase type codes; 0 is a word that matches none of the four.
constexpr int kPhaseNone = 0;
constexpr int kPhaseSphere = 1;
constexpr int kPhaseCylinder = 2;
constexpr int kPhaseDumbbell = 3;
constexpr int kPhaseEllipsoid = 4;

// Value of one model parameter with its lower and upper bound.
struct ParamTriple {
    double value = 0.0;
    double lower = 0.0;
    double upper = 0.0;
};

using TripleColumn = std::array<ParamTriple, kMaxPhaseEntries>;

// One entry per phase; phase i (1-based) is element i - 1 of each array.
struct PhaseTableRecord {
    int nPhase = 0;
    std::array<std::string, kMaxPhaseEntries> phaseName;  // 10 characters each
    std::array<int, kMaxPhaseEntries> phaseType{};
    std::array<int, kMaxPhaseEntries> iDist{};  // 1 Gaussian, otherwise Schulz
    TripleColumn Vf, Rin, roin, Rout, roout, dR, Rhs, tau, RinC, RoutC, Rell, nu;
    std::array<double, kMaxPhaseEntries> Len{};  // cylinder length, no bounds
};

extern PhaseTableRecord PhaseTable;

// Empties the table: no phases, blank names, type 0, every value zero.
void clearPhaseTable();

// The fields of the fit session that live for the whole run.
struct FitSessionRecord {
    std::string seriesTitle;    // 60 characters
    std::string seriesComment;  // 60 characters
    char testMode = ' ';        // 'Y' TEST run, 'N' EXPERIMENT run, blank unset
    double cSys = 0.0;          // concentration of the system
    double noiseT = 0.0;        // noise level of simulated data
    std::string ansFile;        // 128 characters
    bool ansFound = false;
    bool firstTime = true;
    double eps = 0.0;      // machine precision
    double sqrtEps = 0.0;
    int formatCode = 2;    // the last answer to the format question
};

extern FitSessionRecord FitSession;

// Program start state of the session fields and of the phase table.
void resetFitSession();

// Type code of a phase word: exact, upper-case match of SPHERE, CYLINDER,
// DUMBBELL or ELLIPSOID (trailing blanks ignored); 0 for any other word.
int phaseTypeOf(std::string_view word);

// Length of the block of a phase type in the argument vector (0 for type 0).
int phaseBlockLength(int type);
