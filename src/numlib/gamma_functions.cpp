// ln(1 + x), Stirling's correction term and the Gamma function: S05LN1PX,
// S14LGCF and S14GAM (Chebyshev series on [1, 2] with recurrence, Stirling beyond 10).
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr double kLn1pRange = 0.375;   // the series of ln(1 + x) covers |x| <= this
constexpr double kLgcfLowest = 10.0;   // Stirling's correction is tabled from here on
constexpr double kGammaSeriesShift = 0.9375;

struct Ln1pState {
    bool started = false;
    int terms = 0;
    double nearMinusOne = 0.0;  // -1 + sqrt(eps)
};

struct LgcfState {
    bool started = false;
    int terms = 0;
    double xbig = 0.0;  // from here on 1/(12x) is the whole correction
    double xmax = 0.0;  // from here on the correction underflows
};

struct GammaState {
    bool started = false;
    int terms = 0;
    double eps = 0.0;
    double big = 0.0;
    double gMin = 0.0;
    double gMax = 0.0;
    double nearZero = 0.0;  // below this 1/x overflows
    int lossDigits = 0;     // digits of x in the loss-of-precision warning
};

Ln1pState ln1p;
LgcfState lgcf;
GammaState gam;

void startGamma() {
    gam.eps = X02RMDC(2);
    gam.terms = C06NTOS(special::gammaSeries, special::kGammaSeriesTerms, gam.eps / 10.0);
    gam.big = X02RMDC(5);
    gam.gMin = X02RMDC(6);
    gam.gMax = X02RMDC(7);
    gam.nearZero = 1.0 / gam.big;
    gam.lossDigits = X02IMDC(4) - 1;
    gam.started = true;
}

void gammaMessage(const std::string& text) { special::message("S14GAM" + text); }

// x lies a hair from a negative integer: the result is usable but inexact.
void gammaPrecisionCheck(double x, int& err) {
    if (x < -0.5 && std::fabs((x - std::trunc(x - 0.5)) / x) < gam.eps) {
        gammaMessage(" ---W- Loss of precision because the argument is too close");
        special::message("             to a negative integer: " +
                         special::realText(x, gam.lossDigits));
        err = 1;
    }
}

double gammaNegativeInteger(double x, int& err) {
    gammaMessage(" ---E- The argument is a negative integer: " + special::realText(x, 7));
    err = -1;
    return gam.big;
}

// |x| <= 10: the series on [1, 2], then up by products or down by quotients.
double gammaSmall(double x, int& err) {
    int n = static_cast<int>(x);
    if (x < 0.0) --n;
    const double y = x - n;
    --n;
    double g = kGammaSeriesShift +
               C06CHEB(2.0 * y - 1.0, special::gammaSeries, gam.terms);
    if (n == 0) return g;
    if (n > 0) {
        for (int i = 1; i <= n; ++i) g *= y + i;
        return g;
    }
    if (x == 0.0) {
        gammaMessage(" ---E- The argument for the Gamma function can not be zero.");
        err = -2;
        return gam.big;
    }
    // The integer test looks at x itself: for -2^-54 <= x < 0 the reduced
    // argument x + 1 rounds to 1 although x is no integer.
    if (x == std::trunc(x)) return gammaNegativeInteger(x, err);
    if (std::fabs(x) < gam.nearZero) {
        gammaMessage(" ---E- The argument is near 0.0: " + special::realText(x, 7) +
                     ", Gamma overflows.");
        err = -3;
        return gam.big;
    }
    gammaPrecisionCheck(x, err);
    for (int i = 0; i < -n; ++i) g /= x + i;
    return g;
}

// |x| > 10: Stirling's formula, and the reflection for negative x.
double gammaLarge(double x, int& err) {
    if (x > gam.gMax) {
        gammaMessage(" ---E- The argument is too big: " + special::realText(x, 7) +
                     ", Gamma overflows.");
        err = -4;
        return gam.big;
    }
    if (x < gam.gMin) {
        gammaMessage(" ---E- The argument is too small: " + special::realText(x, 7) +
                     ", Gamma underflows.");
        err = -4;
        return 0.0;
    }
    // sin(pi y) is never exactly 0 in floating point, so a negative integer
    // is caught here, before the reflection could make a number of it.
    if (x < 0.0 && x == std::trunc(x)) return gammaNegativeInteger(x, err);
    const double y = std::fabs(x);
    int lgErr = 0;
    const double g =
        std::exp((y - 0.5) * std::log(y) - y + special::kLnSqrt2Pi + S14LGCF(y, lgErr));
    if (x > 0.0) return g;
    gammaPrecisionCheck(x, err);
    const double s = std::sin(special::kPi * y);
    return -special::kPi / (y * s * g);
}

}  // namespace

namespace special {
void resetGammaFunctions() {
    ln1p = Ln1pState{};
    lgcf = LgcfState{};
    gam = GammaState{};
}
}  // namespace special

double S05LN1PX(double x, int& err) {
    if (!ln1p.started) {
        ln1p.terms = C06NTOS(special::ln1pSeries, special::kLn1pSeriesTerms, 0.1 * X02RMDC(1));
        ln1p.nearMinusOne = -1.0 + std::sqrt(X02RMDC(2));
        ln1p.started = true;
    }
    err = 0;
    if (!(x > -1.0)) {
        err = 1;
        special::message("S05LN1PX -W- Arg. is less than -1: [ " + special::realText(x, 3) + " ]");
    }
    if (x < ln1p.nearMinusOne) {
        err = 2;
        special::message("S05LN1PX -W- Loss of precision, arg. too close to -1: [ " +
                         special::realText(x, 3) + " ]");
    }
    if (std::fabs(x) <= kLn1pRange) {
        return x * (1.0 - x * C06CHEB(x / kLn1pRange, special::ln1pSeries, ln1p.terms));
    }
    return std::log(1.0 + x);
}

double S14LGCF(double x, int& err) {
    if (!lgcf.started) {
        const double eps = X02RMDC(2);
        lgcf.terms = C06NTOS(special::lgammaCorrSeries, special::kLgammaCorrSeriesTerms,
                             special::lgammaCorrSeries[0] * eps);
        lgcf.xbig = 1.0 / std::sqrt(eps);
        lgcf.xmax = std::exp(std::min(std::log(X02RMDC(4) / 12.0), -std::log(12.0 * X02RMDC(3))));
        lgcf.started = true;
    }
    if (x < kLgcfLowest) {
        special::message("S14LGCF --W- Arg = [ " + special::realText(x, 2) +
                         " ], must be .GE. 10.0");
        return 0.0;
    }
    if (x >= lgcf.xmax) {
        special::message("S14LGCF --W- Arg = [ " + special::realText(x, 2) +
                         " ] leads to underflow.");
        err = -1;
        return 0.0;
    }
    if (x >= lgcf.xbig) return 1.0 / (12.0 * x);
    const double r = kLgcfLowest / x;
    return C06CHEB(2.0 * r * r - 1.0, special::lgammaCorrSeries, lgcf.terms) / x;
}

double S14GAM(double x, int& err) {
    if (!gam.started) startGamma();
    err = 0;
    if (std::fabs(x) <= kLgcfLowest) return gammaSmall(x, err);
    return gammaLarge(x, err);
}
