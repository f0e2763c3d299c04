// Shared pieces of the special functions: the stored Chebyshev series, the
// message helpers, the fatal stop and the per-file first-call resets.
#pragma once

#include <string>
#include <string_view>

namespace special {

// Chebyshev series of Gamma(1 + y) - 0.9375, y in [0, 1], t = 2y - 1.
constexpr int kGammaSeriesTerms = 42;
extern const double gammaSeries[kGammaSeriesTerms];
// Series of x * c(x), c the Stirling correction, x >= 10, t = 2(10/x)^2 - 1.
constexpr int kLgammaCorrSeriesTerms = 15;
extern const double lgammaCorrSeries[kLgammaCorrSeriesTerms];
// Series of (1 - ln(1 + x)/x)/x, |x| <= 0.375, t = x/0.375.
constexpr int kLn1pSeriesTerms = 43;
extern const double ln1pSeries[kLn1pSeriesTerms];

// ln sqrt(2 pi), the constant of Stirling's formula.
constexpr double kLnSqrt2Pi = 0.9189385332046728;
constexpr double kPi = 3.141592653589793;

// A real as a message shows it: one digit before the point, nFrac behind,
// double-precision limits (type 2), layout 1.
std::string realText(double v, int nFrac);
// The same with the single-precision limits (type 1).
std::string realTextSingle(double v, int nFrac);
// An integer as trimmed digits.
std::string intText(int i);
// Writes a composed message, cut at 80 characters, through I05MES.
void message(std::string_view text);
// Writes the stop text on the console and ends the program.
[[noreturn]] void fatalStop(std::string_view text);

// First-call resets of the files of this family.
void resetChebyshev();
void resetFactorials();
void resetGammaFunctions();
void resetLogGamma();
void resetIncompleteBeta();
void resetBessel();

}  // namespace special
