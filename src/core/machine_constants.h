// Machine constants measured at run time: X02ADD, X02MDC1-X02MDC6, X02RMDC,
// X02IMDC, and their single-precision twins X02ADDS, X02MDCS1-6, X02RMDCS, X02IMDCS.
#pragma once

// Adds two numbers of the working precision.  The experiments reach it only
// through a routine pointer, so every sum is rounded to the stored type.
double X02ADD(double a, double b);
float X02ADDS(float a, float b);

// --- double precision ---------------------------------------------------

// The five main constants: eps (relative spacing), rMin (smallest normal
// number), rMax (largest number), rBig (largest number whose reciprocal
// survives exp(ln(1/x))) and the number of decimal digits.  Measured once.
void X02MDC1(double& eps, double& rMin, double& rMax, double& rBig, int& nDigits);

// One real constant by action code: 1 eps1, 2 eps, 3 rMin, 4 rMax, 5 rBig,
// 6 gMin, 7 gMax, 8 ln(rBig), 9 log10(rBig).  A wrong code writes
// "X02RMDC --E- Wrong action code." and gives eps.
double X02RMDC(int code);

// One integer constant by action code: 1 beta, 2 t, 3 exbits, 4 nDigits,
// 5 emin, 6 emax, 7 ln(rMin), 8 ln(rMax), 9 log10(rMin), 10 log10(rMax),
// 12 largest int32, 13 its decimal digits, 14 its digits in base beta,
// 15 bits of an int32, 16 largest n with n! a number, 17 largest n with
// n! <= 10^nDigits - 1, 18 largest n with n! <= largest int32.  Codes 11 and
// outside 1..18 write "X02IMDC --E- Wrong argument value." and give 0.
int X02IMDC(int code);

// Base experiment: base, digits, rounding, IEEE round-to-nearest-even.
void X02MDC2(int& beta, int& t, bool& rnd, bool& ieee);
// Minimum exponent and smallest normal number; ieee is set by what the
// underflow probes show.
void X02MDC3(int& emin, double& rMin, bool& ieee, int beta, int t);
// One underflow probe, dividing down from `start`.
void X02MDC4(int& emin, double start, int beta);
// Maximum exponent, largest number and exponent bits.
void X02MDC5(int& emax, double& rMax, int& exbits, int beta, int t, int emin, bool ieee);
// Smallest and largest argument of the Gamma function; err 0 on success.
// Failure writes its message and stops the program with " FATAL ERROR".
void X02MDC6(double& gMin, double& gMax, int& err);

// --- single precision twins ---------------------------------------------

void X02MDCS1(float& eps, float& rMin, float& rMax, float& rBig, int& nDigits);
float X02RMDCS(int code);
int X02IMDCS(int code);
void X02MDCS2(int& beta, int& t, bool& rnd, bool& ieee);
void X02MDCS3(int& emin, float& rMin, bool& ieee, int beta, int t);
void X02MDCS4(int& emin, float start, int beta);
void X02MDCS5(int& emax, float& rMax, int& exbits, int beta, int t, int emin, bool ieee);
void X02MDCS6(float& gMin, float& gMax, int& err);

// Forgets every measured value (first-call flags back to the start), so the
// next call measures again.  Used by tests.
void resetMachineConstants();

