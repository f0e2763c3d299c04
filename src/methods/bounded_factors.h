// The factors L D L' of the bounded quasi-Newton method: order m, D the
// diagonal, L the strict lower triangle of a unit triangular factor packed
// by rows.  Arrays count from 0; positions i, j count from 1.
#pragma once

// Position of L(i, j), j < i, in the packed triangle.
inline int packedIndex(int i, int j) { return (i - 1) * (i - 2) / 2 + j - 1; }

// Solves L D L' p = gz.
void solveFactors(int m, const double* L, const double* D, const double* gz, double* p);
// L D L' + sigma z z'; z is overwritten.  false when the update fails.
bool E04FAD1(int m, double* L, double* D, double* z, double sigma, double big);
// Removes position k from a factorization of order m + 1; z: m entries of
// work.  false when the update fails.
bool E04FDL1(int k, int m, double* L, double* D, double* z, double big);
// The BFGS update after a step alpha along -p: gz and gzs are the gradients
// after and before, gtp and gtpn the slopes -gzs'p and -gz'p.  z and v: m
// entries of work each.  updated is false when the curvature is not
// positive; false is returned when the factors cannot be updated.
bool E04FUP1(int m, double* L, double* D, const double* gz, const double* gzs, double gtp,
             double gtpn, double alpha, double* z, double* v, double eps, double big,
             bool& updated);
