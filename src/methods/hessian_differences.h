// The full Hessian from function values alone (E04HES4), the diagonal of
// its inverse through the eigenpairs, and the hand-over of the matrix to the
// user's problem, which may make more of it (the scattering fit derives the
// errors of its parameters).
#pragma once

#include "methods/search_trace.h"

#include <string_view>

// Hesse at x (f its value; x is restored on return) from second differences
// of E4FUN1 with the steps h(i) = (|x(i)| + 0.1) sqrt(finDif(i)); the noise
// and the intervals are estimated first when the data set holds none.
// Fixed variables get zero rows and columns.  Then E4HES3 takes the
// eigenpairs (R_eigen, V_eigen) and the matrix and its eigenvectors are
// written on dwUnit.  err: what E4HES3 found (0 good, 1 empty matrix,
// negative: no eigenpairs), or -10 when the data set has no problem or no
// point to work on (nothing is computed then).
void E04HES4(double* x, double& f, double* finDif, int& err, std::string_view name);

// The second differences of the last E04HES4 in the full numbering, before
// E4HES3 may have repaired them: column after column, leading dimension 128.
const double* hessianOfDifferences();

// d(i) = sum over free j of V_eigen(i,j)^2 / R_eigen(j) for the free i, 0 for
// the fixed ones: the diagonal of the inverse Hessian.  False (d untouched)
// when the rank is incomplete: the condition number above rBig or a zero
// eigenvalue of a free variable.
bool inverseHessianDiagonal(double* d);

// What the user's problem does with a Hessian of differences taken at its
// point: the matrix in the full numbering, column after column with leading
// dimension ld.  Plugged in at the program's start; the monitor hands each
// Hessian of the user's problem over.
using UserHessianUse = void (*)(const double* hessian, int ld);
void setUserHessianUse(UserHessianUse use);
void passHessianToUserProblem();

// Code of the trace record of E04HES4: Written, the matrix and its
// eigenvectors are complete; count[0] the evaluations the matrix took.
namespace hessian_differences_trace {
enum : int { Written = 301 };
}

// The report writer of E04HES4 on dwUnit.
SearchTrace& hessianDifferencesReport();
