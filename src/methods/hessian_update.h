// The second-order knowledge of the quasi-Newton methods 6 to 11: E4HES1
// updates the Hessian approximation Hesse by one formula of the Broyden
// family, E4HES2 accumulates the diagonal Hdiag, and E4HES3 takes the
// eigenpairs of Hesse, measures its condition and repairs a spectrum that
// is not positive or too wide.  All work on E4DataSet: s = deltaX,
// y = deltaG, B = Hesse over the free variables; the method is
// iStat(row::methodRunning).
#pragma once

#include "methods/search_trace.h"

// One update of Hesse with the last step; dxdg = <s, y>.  flag: 0 done;
// 1 <s, y - Bs> = 0 (Broyden), 2 <s, Bs> = 0, 3 <y, Hy> = 0 (self-scaling),
// 4 the Oren-Luenberger denominator is 0 (each with its message, Hesse
// unchanged); otherwise the flag of E4HES3.
void E4HES1(double dxdg, int& flag);

// Accumulates the Hessian diagonal h (Hdiag) from the last step.  flag 1
// when <s, gStart> is 0 and h was left as it was, else 0.
void E4HES2(double* h, double dxdg, int& flag);

// Eigenanalysis of Hesse over the free variables into V_eigen (columns) and
// R_eigen in the full numbering, the condition number into hCondNow, and the
// repair of the spectrum under the condition limit.  flag: 0 done, 1 empty
// matrix, negative: the eigenproblem failed and no eigenpairs were made.
void E4HES3(int& flag);

// y(i) = sum over free j of (V R^-1 V^T)(i, j) * g(j) for the free i, the
// inverse of Hesse applied through the eigenpairs that E4HES3 left (a zero
// eigenvalue adds nothing); fixed entries of y are 0.
void applyInverseHessian(const double* g, double* y);

// Codes of the trace records of the Hessian routines.
//   Event DxBDx: value <s, Bs>.  DgHDg: value <y, Hy>.  Multipliers:
//   real = {eta, psi}.  UpdateFailed: count[0] the flag 1..4.
//   DiagonalFailed.  Eigenvalues: point the eigenvalues, count[0] their
//   number.  LocalMaximum.  NotPositiveDefinite.  Empty.  Condition:
//   real = {condition number, R(n) / R(1) after the repair}, count[0] 1
//   when the spectrum was changed.  ModifiedMatrix: Hesse was replaced.
namespace hessian_trace {
enum : int {
    DxBDx = 201,
    DgHDg,
    Multipliers,
    UpdateFailed,
    DiagonalFailed,
    Eigenvalues,
    LocalMaximum,
    NotPositiveDefinite,
    Empty,
    Condition,
    ModifiedMatrix,
};
}

// The report writer of the Hessian routines, on dwUnit.
SearchTrace& hessianReport();
