// Logarithms of Gamma and Beta and Cody's Gamma: S14LGAM (Cody's rational
// forms), S14LBETA and S14GAM2.
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

// Cody's rational forms of ln Gamma: v (d1 + v N1/D1) near 1 (and for small
// x), v (d2 + v N2/D2) around 2, d4 + v N4/D4 around 4.
constexpr double kD1 = -5.772156649015328605195174e-1;
constexpr double kP1[8] = {4.945235359296727046734888e0, 2.018112620856775083915565e2,
                           2.290838373831346393026739e3, 1.131967205903380828685045e4,
                           2.855724635671635335736389e4, 3.848496228443793359990269e4,
                           2.637748787624195437963534e4, 7.225813979700288197698961e3};
constexpr double kQ1[8] = {6.748212550303777196073036e1, 1.113332393857199323513008e3,
                           7.738757056935398733233834e3, 2.763987074403340708898585e4,
                           5.499310206226157329794414e4, 6.161122180066002127833352e4,
                           3.635127591501940507276287e4, 8.785536302431013170870835e3};
constexpr double kD2 = 4.227843350984671393993777e-1;
constexpr double kP2[8] = {4.974607845568932035012064e0, 5.424138599891070494101986e2,
                           1.550693864978364947665077e4, 1.847932904445632425417223e5,
                           1.088204769468828767498470e6, 3.338152967987029735917223e6,
                           5.106661678927352456275255e6, 3.074109054850539556250927e6};
constexpr double kQ2[8] = {1.830328399370592604055942e2, 7.765049321445005871323047e3,
                           1.331903827966074194402448e5, 1.136705821321969608938755e6,
                           5.267964117437946917577538e6, 1.346701454311101692290052e7,
                           1.782736530353274213975932e7, 9.533095591844353613395747e6};
constexpr double kD4 = 1.791759469228055000094023e0;
constexpr double kP4[8] = {1.474502166059939948905062e4, 2.426813369486704502836312e6,
                           1.214755574045093227939592e8, 2.663432449630976949898078e9,
                           2.940378956634553899906876e10, 1.702665737765398868392998e11,
                           4.926125793377430887588120e11, 5.606251856223951465078242e11};
constexpr double kQ4[8] = {2.690530175870899333379843e3, 6.393885654300092398984238e5,
                           4.135599930241388052042842e7, 1.120872109616147941376570e9,
                           1.488613728678813811542398e10, 1.016803586272438228077304e11,
                           3.417476345507377132798597e11, 4.463158187419713286462081e11};
// Stirling's asymptotic series z(x) = 1/12 - 1/(360 x^2) + ..., summed in
// 1/x^2 from kStirling[6] (the x^-12 term) through [0] (x^-10) up to [5] (1/12).
constexpr double kStirling[7] = {-1.910444077728e-03,         8.4171387781295e-04,
                                 -5.952379913043012e-04,       7.93650793500350248e-04,
                                 -2.777777777777681622553e-03, 8.333333333333333331554247e-02,
                                 5.7083835261e-03};
// Cody's Gamma on [1, 2]: 1 + z N/D with z = x - 1.
constexpr double kGP[8] = {-1.71618513886549492533811e+0, 2.47656508055759199108314e+1,
                           -3.79804256470945635097577e+2, 6.29331155312818442661052e+2,
                           8.66966202790413211295064e+2,  -3.14512729688483675254357e+4,
                           -3.61444134186911729807069e+4, 6.64561438202405440627855e+4};
constexpr double kGQ[8] = {-3.08402300119738975254353e+1, 3.15350626979604161529144e+2,
                           -1.01515636749021914166146e+3, -3.10777167157231109440444e+3,
                           2.25381184209801510330112e+4,  4.75584627752788110767815e+3,
                           -1.34659959864969306392456e+5, -1.15132259675553483497211e+5};

constexpr double kSwitchSmall = 0.6796875;
constexpr double kTwelve = 12.0;
constexpr double kHalfLnHalfPi = 0.22579135264472744;  // ln(pi)/2 - ln(2)/2

struct LogGammaState {
    bool started = false;
    double eps = 0.0;
    double sqrtEps = 0.0;
    double big = 0.0;
    double lnBig = 0.0;
    double xbig = 0.0;        // solves x (ln x - 1) = 0.99 rMax
    double xbigInv = 0.0;
    double xbigQuarter = 0.0;  // beyond it the asymptotic series is below eps
};

struct Gamma2State {
    bool started = false;
    double eps = 0.0;
    double rMin = 0.0;
    double big = 0.0;
    double gMax = 0.0;
};

LogGammaState lgs;
Gamma2State g2;

void startLogGamma() {
    lgs.eps = X02RMDC(2);
    lgs.sqrtEps = std::sqrt(lgs.eps);
    lgs.big = X02RMDC(5);
    lgs.lnBig = X02RMDC(8);
    const double r = 0.99 * X02RMDC(4);
    double x = 0.001 * r;
    for (;;) {
        const double next = r / (std::log(x) - 1.0);
        const bool done = std::fabs(next / x - 1.0) <= lgs.eps;
        x = next;
        if (done) break;
    }
    lgs.xbig = x;
    lgs.xbigInv = 1.0 / x;
    lgs.xbigQuarter = std::pow(x, 0.25);
    lgs.started = true;
}

// v (d + v N/D) with N, D of degree 8 (D monic).
double codyForm(double v, double d, const double* p, const double* q) {
    double num = 0.0;
    double den = 1.0;
    for (int i = 0; i < 8; ++i) {
        num = num * v + p[i];
        den = den * v + q[i];
    }
    return v * (d + v * (num / den));
}

double codyAround4(double v) {
    double num = 0.0;
    double den = -1.0;
    for (int i = 0; i < 8; ++i) {
        num = num * v + kP4[i];
        den = den * v + kQ4[i];
    }
    return kD4 + v * (num / den);
}

// (ln x - 1) x + ln sqrt(2 pi) - ln(x)/2 + z/x for x > 12.
double stirlingLog(double x) {
    double z = 0.0;
    if (x <= lgs.xbigQuarter) {
        const double ysq = x * x;
        z = kStirling[6];
        for (int i = 0; i < 6; ++i) z = z / ysq + kStirling[i];
    }
    const double lnx = std::log(x);
    return (lnx - 1.0) * x + special::kLnSqrt2Pi - 0.5 * lnx + z / x;
}

// ln Gamma(x) for 1/xbig < x <= xbig.
double logGammaPositive(double x) {
    if (x <= lgs.eps) return -std::log(x);
    if (x <= 1.5) {
        const double corr = x >= kSwitchSmall ? 0.0 : -std::log(x);
        if (x <= 0.5) return corr + codyForm(x, kD1, kP1, kQ1);
        if (x < kSwitchSmall) return corr + codyForm(x - 1.0, kD2, kP2, kQ2);
        return codyForm(x - 1.0, kD1, kP1, kQ1);
    }
    if (x <= 4.0) return codyForm(x - 2.0, kD2, kP2, kQ2);
    if (x <= kTwelve) return codyAround4(x - 4.0);
    return stirlingLog(x);
}

double logGammaNegative(double x, int& err, std::string& text) {
    const double y = std::fabs(x);
    const std::string negInt = "S14LGAM --E- Argument is a negative integer: ";
    if (y - std::trunc(y + lgs.eps * y) == 0.0) {
        text = negInt + special::realText(x, 3);
        err = -1;
        return lgs.lnBig;
    }
    if (y <= 10.0) {
        const double g = S14GAM(x, err);
        return std::log(std::fabs(g));
    }
    const double s = std::fabs(std::sin(special::kPi * y));
    if (s < lgs.xbigInv) {
        text = negInt + special::realText(x, 3);
        err = -1;
        return lgs.lnBig;
    }
    int lgErr = 0;
    const double r =
        (x - 0.5) * std::log(y) + kHalfLnHalfPi - std::log(s) - S14LGCF(y, lgErr) - x;
    err = 0;
    if (std::fabs((x - std::trunc(x - 0.5)) * r / x) < lgs.sqrtEps) {
        err = 1;
        text = "S14LGAM --W- Loss of precision, arg. too close to neg. integer: " +
               special::realText(x, 3);
    }
    return r;
}

// Cody's rational Gamma on [1, 2].
double codyGammaUnit(double z) {
    double num = 0.0;
    double den = 1.0;
    for (int i = 0; i < 8; ++i) {
        num = (num + kGP[i]) * z;
        den = den * z + kGQ[i];
    }
    return num / den + 1.0;
}

// Gamma(y) for eps <= y < 12 by the form on [1, 2] and the recurrence.
double codyGammaMiddle(double y) {
    if (y < 1.0) return codyGammaUnit(y) / y;
    const int n = static_cast<int>(y) - 1;
    double z = y - n;
    double res = codyGammaUnit(z - 1.0);
    for (int i = 0; i < n; ++i) {
        res *= z;
        z += 1.0;
    }
    return res;
}

}  // namespace

namespace special {
void resetLogGamma() {
    lgs = LogGammaState{};
    g2 = Gamma2State{};
}
}  // namespace special

double S14LGAM(double x, int& err) {
    if (!lgs.started) startLogGamma();
    const double y = std::fabs(x);
    std::string text;
    double result = 0.0;
    if (y > lgs.xbig) {
        text = "S14LGAM --E- Argument overflow: " + special::realText(x, 3);
        err = -3;
        result = lgs.big;
    } else if (x > lgs.xbigInv) {
        err = 0;
        result = logGammaPositive(x);
    } else if (x >= -lgs.xbigInv) {
        text = "S14LGAM --E- Argument can not be zero.";
        err = -2;
        result = lgs.lnBig;
    } else {
        result = logGammaNegative(x, err, text);
    }
    if (err != 0 && !text.empty()) special::message(text);
    return result;
}

double S14LBETA(double a, double b, int& err) {
    const double p = std::min(a, b);
    const double q = std::max(a, b);
    if (p <= 0.0) {
        special::message(
            "S14LBETA -E- Both arguments for the function must be greater than zero.");
        err = -1;
        return 0.0;
    }
    int sub = 0;
    const double ratio = -p / (p + q);
    if (p >= 10.0) {
        const double corr = S14LGCF(p, sub) + S14LGCF(q, sub) - S14LGCF(p + q, sub);
        return -0.5 * std::log(q) + special::kLnSqrt2Pi + corr + (p - 0.5) * std::log(p / (p + q)) +
               q * S05LN1PX(ratio, sub);
    }
    if (q < 10.0) {
        return std::log(S14GAM(p, sub) * (S14GAM(q, sub) / S14GAM(p + q, sub)));
    }
    const double corr = S14LGCF(q, sub) - S14LGCF(p + q, sub);
    return S14LGAM(p, sub) + corr + p - p * std::log(p + q) + (q - 0.5) * S05LN1PX(ratio, sub);
}

double S14GAM2(double x, int& err) {
    if (!g2.started) {
        g2.eps = X02RMDC(2);
        g2.rMin = X02RMDC(3);
        g2.big = X02RMDC(5);
        g2.gMax = X02RMDC(7);
        g2.started = true;
    }
    err = 0;
    bool negate = false;
    double fact = 1.0;
    double y = x;
    if (y <= 0.0) {
        y = -x;
        const double whole = std::trunc(y);
        const double frac = y - whole;
        if (frac == 0.0) {
            special::message("S14GAM2 --E- Arg. is too close to zero or neg. integer: " +
                             special::realText(x, 3));
            err = -2;
            return g2.big;
        }
        negate = whole != 2.0 * std::trunc(0.5 * whole);
        fact = -special::kPi / std::sin(special::kPi * frac);
        y += 1.0;
    }
    double res = 0.0;
    if (y < g2.eps) {
        if (y < g2.rMin) {
            special::message("S14GAM2 --E- Arg. is too close to zero: " + special::realText(x, 3));
            err = -3;
            return g2.big;
        }
        res = 1.0 / y;
    } else if (y < kTwelve) {
        res = codyGammaMiddle(y);
    } else {
        if (y > g2.gMax) {
            special::message("S14GAM2 --E- Arg. is too large in magnitude: " +
                             special::realText(x, 3));
            err = -4;
            return g2.big;
        }
        double sum = kStirling[6];
        const double ysq = y * y;
        for (int i = 0; i < 6; ++i) sum = sum / ysq + kStirling[i];
        sum = sum / y - y + special::kLnSqrt2Pi + (y - 0.5) * std::log(y);
        res = std::exp(sum);
    }
    if (negate) res = -res;
    if (fact != 1.0) res = fact / res;
    return res;
}
