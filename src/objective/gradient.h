// Gradients of the target function: the gradient routine of the first-order
// searches E4GRD1, the adaptive finite-difference procedure E4FDA1 with its
// single step E4FDS1, and the analytical gradients E4TFG1 of the test
// problems that have them.  Vectors are double* of nVar entries, x[0] is x(1).
#pragma once

#include <string_view>

// Gradient g at x (f the value at x).  The scheme iStat(row::gradientScheme)
// decides: 3 analytical, 1 fixed forward, 2 fixed central, 0 adaptive, which
// lives on the Hessian diagonal, the last step and the noise once a search
// has history, and hands the whole vector to E4FDA1 while finDif is not
// loaded.  x is restored on return.  Counts the estimate in NGE.
void E4GRD1(double* x, double& f, double* g);

// Adaptive finite differences: for each free variable an interval that
// balances truncation error against the noise, a central-difference
// gradient g, the second derivative Hdiag and the relative interval finDif;
// revises xStep.  f is evaluated here when the data set holds none.
// err: 0 success, 1 the interval of at least one variable is doubtful,
// 10 the data set is not ready.  `name` is the caller's tag.
void E4FDA1(double* x, double& f, double* finDif, double* g, double* Hdiag, int& err,
            std::string_view name);

// One step of the adaptive procedure for variable i (1-based), f the value
// at x: the values at x(i) +- STEP, the forward and backward first
// differences, the central second difference and their relative condition
// errors.  x is restored.
void E4FDS1(double* x, double f, int i, int K, double STEP, double FERROR, double& FFORW, double& FBACK,
            double& FDF, double& FDB, double& SDC, double& RCEFDF, double& RCEFDB, double& RCESDC);

// Analytical gradient of test problems 1, 2 and 3.  err 0 success; err 1 the
// problem has no formula: a message, and the scheme is set to 0.
void E4TFG1(double* x, double& f, double* g, int& err);

// Analytical gradient of the user's problem: a hook that has no formula in
// this system and sets err to 1.
void userGradient(double* x, double& f, double* g, int& err);

