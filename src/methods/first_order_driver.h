// The first-order search driver E4FOM1 behind methods 1 to 12: conjugate
// gradients (Fletcher-Reeves, Polak-Ribiere, Beale-Powell), Perry-Shanno,
// and the quasi-Newton family with a full Hessian approximation (DFP, BFGS,
// Broyden, Fletcher, Oren-Luenberger, Oren-Spedicato); method 12 is handed
// to the bounded driver.  Also the reset of its saved state and the codes
// of its trace.
#pragma once

#include "methods/search_trace.h"

// Runs (or under CONTINUE resumes) the search of method iStat(row::methodRunning)
// on E4DataSet.  iFlag is both the result and, under CONTINUE with the same
// method, the point at which the next call resumes:
//   0 the linear search did not move, 1 too small gradient at the start,
//   3 function, 4 argument, 5 gradient test (weak mode), 6 all three tests,
//   7 iteration limit, 8 evaluation limit, 9 and 10 division by zero,
//   11 the Hessian update is impossible.
void E4FOM1(int& iFlag);

// Back to the program's start: no saved iteration.
void resetFirstOrderDriver();

// Codes of the driver's trace records.
//   Event NegativeDiagonal: count[0] the variable.
//   Event IterationHead: pass the iteration, count = {method, restart,
//     steepest descent, arbitrary direction} (flags 0/1).
//   Event StartingGradient, Gradient: point gEnd, value its norm.
//   Event Direction (the direction of this iteration), NextDirection (of
//     the next one), NewPoint (xEnd), HessianDiagonal (Hdiag): point the
//     vector.  Event HessianMatrix: Hesse has been updated.
//   Event StepResult: real = {deltaXn, pathLen, fEnd, deltaF}.
//   Pass: one row of the iteration table: pass the iteration, count =
//     {iterations left, evaluations, 1 when the matrix is kept}, value
//     fEnd, real = {pathLen, hCondNow}.
//   Event DxDg, Beta, Gamma, RestartOrthogonality, AlmostOrthogonal: value.
//   Event RestartCounter.
//   Stop Finished: count = {iFlag, iterations, evaluations}.
namespace first_order_trace {
enum : int {
    NegativeDiagonal = 301,
    IterationHead,
    StartingGradient,
    Gradient,
    Direction,
    NextDirection,
    NewPoint,
    HessianDiagonal,
    HessianMatrix,
    StepResult,
    TableRow,
    DxDg,
    Beta,
    Gamma,
    RestartOrthogonality,
    RestartCounter,
    AlmostOrthogonal,
    Finished,
};
}

// The report writer of the driver, on dwUnit.
SearchTrace& firstOrderReport();
