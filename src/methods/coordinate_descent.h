// Coordinate descent, method 14: E4CDM1 and the codes of its trace.
#pragma once

#include "methods/search_trace.h"

// Minimizes along one coordinate at a time with the linear search E4SRH1:
// sweeps over all free variables (at most maxITR of them), or a single
// search along the variable in iStat(row::cdVariable).  On return iFlag is
// 1 when that variable is beyond nVar (nothing done), 2 when it is fixed,
// otherwise the flag of the last linear search (0, 1 or 2).
void E4CDM1(int& iFlag);

// Codes of the trace records of coordinate descent.
//   Start: value F0, count = {first, last, maxITR, single}.
//   Event Closed: count[0] the fixed variable chosen.
//   Point Coordinate: pass the sweep, count = {j, single}, value the best
//   value, real = {dF, xStart(j) - xEnd(j)} of its linear search, point
//   the point reached.
//   Pass: pass the sweep, count = {sweeps remaining, maxITR}, value fEnd,
//   real = {decrease of the sweep, norm of its argument change}.
//   Stop Finished: value fStart, real = {deltaF, deltaXn}, count[0] iFlag.
namespace coordinate_descent_trace {
enum : int {
    Closed = 200,
    Coordinate,
    Finished,
};
}

// The report writer of coordinate descent on dwUnit, at the message level
// of the data set.
SearchTrace& coordinateDescentReport();
