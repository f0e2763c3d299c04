// USERF, the user's problem behind problem code 20 of the target function.
#pragma once

// The user's function at x (x[0] is x(1); nVar entries, in and out).  On a
// call with iStat(30) 0 it introduces its problem: it sets nVar, iStat(36),
// iFixer, the bounds and their set flags and writes the start point into x.
double USERF(double* x);
