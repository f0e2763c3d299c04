// Special functions: C06CHEB, C06NTOS, S03FACT, S03NOC, S05LN1PX, S14LGCF,
// S14GAM, S14GAM2, S14LGAM, S14LBETA, S14BFRI, S14IBETA, S15IND, S17J1Y1,
// besselJ1Batch.
#pragma once

// Every routine takes its limits from X02RMDC / X02IMDC on its first call.
// err is an out-argument (S14LGCF and S14LBETA leave it as it came in on
// their good paths): 0 success, positive a warning with a usable result,
// negative an error with a defined substitute result.  Messages go to the
// console through I05MES.

// Value of the Chebyshev series c(1)/2 + sum c(k) T(k-1)(t), k = 2..n, for
// t in [-1, 1] (Clenshaw's recurrence).  n below 1 or t outside
// [-1 - eps, 1 + eps] stops the program with " C06CHEB FATAL ERROR".
double C06CHEB(double t, const double* c, int n);

// Number of terms of the series c(1..n) needed for the accuracy tol: the
// terms from the last one downward whose magnitudes add up to more than
// tol are kept.  n below 1 stops the program with " FATAL ERROR".
int C06NTOS(const double* c, int n, double tol);

// n! as a double.  A negative n warns (err 1) and gives (-n)!; n beyond the
// largest factorial that is a number gives err -1 and X02RMDC(5).
double S03FACT(int n, int& err);

// Binomial coefficient C(m, n).  err -1 (result 0) for m < n or a negative
// argument, -3 (result X02RMDC(4)) for overflow, -2 without a message when
// the value exceeds the largest int32 (the value stands).
double S03NOC(int m, int n, int& err);

// ln(1 + x), accurate for small x.  err 1 for x <= -1, 2 for x so close to
// -1 that precision is lost.
double S05LN1PX(double x, int& err);

// Correction term of Stirling's formula, ln Gamma(x) - ((x - 0.5) ln x - x +
// ln sqrt(2 pi)), for x >= 10.  Below 10: warning, result 0 (err untouched);
// at the underflow limit: err -1, result 0.
double S14LGCF(double x, int& err);

// Gamma(x).  err -1 negative integer, -2 zero, -3 argument so near 0 that
// Gamma overflows, -4 beyond gMin / gMax; 1 loss of precision near a
// negative integer.
double S14GAM(double x, int& err);

// Gamma(x) by Cody's rational method.  err -2 zero or negative integer,
// -3 positive argument below rMin, -4 too large in magnitude.
double S14GAM2(double x, int& err);

// ln |Gamma(x)|.  err -1 negative integer, -2 zero, -3 overflow, 1 loss of
// precision near a negative integer (or the err of S14GAM for |x| <= 10).
double S14LGAM(double x, int& err);

// ln B(a, b).  err -1 (result 0) if a or b is not positive; otherwise err
// is left as it came in.
double S14LBETA(double a, double b, int& err);

// Incomplete Beta ratio I(x; a, b).  err -1 x outside [0, 1], -2 a or b not
// positive (result 0 in both cases).
double S14BFRI(double x, double a, double b, int& err);

// x with I(x; a, b) = P.  err -1 P outside [0, 1], -2 a or b not positive,
// 1 for P = 0, 2 for P = 1, 3 when the first estimate was kept, 4 severe
// loss of precision.
double S14IBETA(double P, double a, double b, int& err);

// Inverse of the standard normal distribution function.  err -1 with
// -/+ sqrt(X02RMDC(5)) for p <= 0 or p >= 1.
double S15IND(double p, int& err);

// J1(x) for type 0, Y1(x) for type 1.  err -2 wrong type (result 0), -1 Y1
// at x <= 0 or where it overflows (result -X02RMDC(5)), 1 argument too
// large for any accuracy (result 0).
double S17J1Y1(double x, int type, int& err);

// j1[i] = J1(x[i]) for i < n, two arguments at a time, each bit for bit
// S17J1Y1(x[i], 0, err).  Arguments outside the forms' range (0, below
// xsmall, beyond xlarge with its warning) go through S17J1Y1 itself.
void besselJ1Batch(const double* x, double* j1, int n);

// Puts every routine of this family back to its first-call state.
void resetSpecialFunctions();
