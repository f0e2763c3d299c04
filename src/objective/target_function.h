// The target function E4FUN1, the titles of the problem catalogue, and the
// reset of the target function's private state.
#pragma once

#include "core/e4dataset.h"

#include <string>

// Number of rows of the problem catalogue and width of one title.
constexpr int kProblemTitles = 21;
constexpr int kProblemTitleWidth = 50;

// The value of the function being minimized at x (x[0] is x(1); nVar
// entries).  Problem code iStat(row::problemCode): 1..14 the test problems, 20 and above the
// user's problem USERF.  The first call of a problem (iStat(row::functionEvaluations) 0) writes the
// start point into x and sets up the problem; on later calls x is unscaled in
// place for the evaluation and scaled again before the return.  Counts the
// evaluation in iStat(row::functionEvaluations).
double E4FUN1(double* x);
inline double E4FUN1(Vec1<double, kMaxVar>& x) { return E4FUN1(x.data()); }

// Title of problem `code` (1..21), 50 characters, blank-padded; any other
// code gives the "... UNDEFINED ..." row.
std::string problemTitle(int code);

// Back to the program's start: scaling factor 1 and the classical form of
// problem 1, no added constant, the data of problem 8 cleared.
void resetTargetFunction();
