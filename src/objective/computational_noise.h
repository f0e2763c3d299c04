// The computational noise of the target function and the tolerances of a
// search: E4ERR1, E4TOL1, and the reset of their saved step.
#pragma once

#include <string_view>

// Estimates FrlErr, the relative noise of the function at x (f its value,
// evaluated here when the data set holds none), and derives the initial
// steps xStep when they are not loaded.  err: 0 good, 1 no reliable
// estimate (the fallback value is stored), 10 the data set is not ready.
// `name` is the caller's tag for the trace.
void E4ERR1(double* x, double& f, int& err, std::string_view name);

// Fills rFTol and rXTol from FrlErr when they are not loaded, and gives the
// absolute tolerances at x: xTol (vector of nVar) and fTol.
void E4TOL1(double* x, double& f, double* xTol, double& fTol, int& err, std::string_view name);

// Forgets the step multiplier and the table of the last estimate.
void resetComputationalNoise();
