// One call of the scattering fit as the user function runs it:
// vardeneSessionCall, modelPhasesOfTable.
#pragma once

#include "scatter/model_curves.h"

// The phases of the table in the form the model reads (nPhase of them).
void modelPhasesOfTable(ModelPhase* phases, int& nPhase);

// The body of the user function: the system record restored; with no
// evaluations counted, the dialogue (its first part once per run) and the
// layout of x; then x copied into the phase table, the model evaluated at
// the points of the curve (volume fractions kept normalized) and the
// weighted misfit returned.  0 when there is nothing to fit (no variables
// or fewer than 2 points).  The simulated curve of a TEST run, the result
// files and the plot are not made here.
double vardeneSessionCall(double* x);
