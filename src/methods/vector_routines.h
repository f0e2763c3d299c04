// Small vector routines over the free variables, shared by the searches and
// the estimates: E4NRM1, E4DOT1, E4VAD1, E4STP1, E4RAT1.  Every routine takes
// the count n (nVar) and skips the components whose iFixer entry in
// E4DataSet is 0.  Vectors point at their first element: v[0] is v(1).
#pragma once

// Euclidean norm of v over the free components, with its square in sq.  The
// sum is scaled by the largest free magnitude m, so neither overflows nor
// underflows before the root: norm = m * sqrt(sum((v(i)/m)^2)).  For n = 1
// the magnitude of v(1); for n < 1 or m = 0 both results are 0.
double E4NRM1(const double* v, int n, double& sq);

// Plain sum of a(i) * b(i) over the free components.
double E4DOT1(const double* a, const double* b, int n);

// r(i) = a(i) + b(i) when op is '+', otherwise a(i) - b(i), on the free
// components; a fixed component of r is 0.
void E4VAD1(double* r, const double* a, char op, const double* b, int n);

// y(i) = x(i) + sign * d(i) * s on the free components, y(i) = x(i) on the
// fixed ones; same is 1 when no free component changed its value, else 0.
void E4STP1(const double* x, double* y, const double* d, int n, double sign, double s, int& same);

// The largest multiple r of a that keeps every free component within the
// size b(i): r = 1 / max(|a(i)| / |b(i)|), a zero |a(i)| or |b(i)| taken as
// the smallest normal number.  r = 1 with no free component or a zero
// maximum.
void E4RAT1(const double* a, const double* b, int n, double& r);
