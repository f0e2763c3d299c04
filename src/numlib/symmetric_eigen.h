// Symmetric eigenproblem: F02RSM1 (all eigenvalues and eigenvectors),
// F01TDR1 (Householder reduction), F02TDM1 (implicit QL and the sort).
#pragma once

// Matrices are held column after column with leading dimension `ldim`
// (element (i,j), 1-based, at a[(j-1)*ldim + (i-1)]); only the leading n by n
// block counts.  Vectors point at their first element: d[0] is d(1).
// err is 0 on success, -1 when n is below 1 or above ldim, -2 when the QL
// iteration does not converge; each failure writes its message on the console.

// All eigenvalues and eigenvectors of the symmetric matrix a.  On return the
// eigenvalues stand in d in descending order of magnitude and the columns of
// a hold the eigenvectors in that order.  e is a work vector of n elements.
void F02RSM1(double* a, double* d, double* e, int ldim, int n, int& err);

// Householder reduction of the symmetric matrix a to tridiagonal form.  On
// return a holds the accumulated orthogonal transformation Z with
// Z^T*A*Z = T, d the diagonal of T, and e its subdiagonal: e(1) = 0 and e(i)
// is the element of rows i-1 and i.
void F01TDR1(double* a, double* d, double* e, int ldim, int n, int& err);

// Eigenvalues and eigenvectors of the tridiagonal matrix (d, e) as F01TDR1
// leaves it (e(1) is not used), by implicit QL iteration, the rotations being
// applied to the columns of a; then the sort by magnitude.  The iteration
// limit for one eigenvalue is 30*(n/2)+30 sweeps.
void F02TDM1(double* d, double* e, double* a, int ldim, int n, int& err);

// Number of QL sweeps done by the last call of F02TDM1.
int F02TDM1Sweeps();

// Back to the program's start: the thresholds of the first calls are taken
// again from the machine constants, the sweep count is 0.
void resetSymmetricEigen();
