// The incomplete Beta ratio and its inverse: S14BFRI (Bosten and Battiste's
// infinite and finite sums) and S14IBETA (bisection and a continued-fraction Newton search).
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"
#include "textfile/number_text.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr int kMaxIterations = 100;

struct BfriState {
    bool started = false;
    double eps = 0.0;
    double lnEps = 0.0;
    double sml = 0.0;  // 100 rMin: below it terms are dropped
    double lnSml = 0.0;
};

struct IbetaState {
    bool started = false;
    double eps = 0.0;
    double tolR = 0.0;      // 10 eps: a residual this small is exact
    double tolNewton = 0.0;  // 1000 eps (relative to P): the Newton result stands
    double tolX = 0.0;      // 4 eps: bracket width that ends a bisection
    double lnFloor = 0.0;   // 2 - ln(rBig): below it x is taken as 0
};

BfriState bf;
IbetaState ib;

// Step 4 of the ratio: the infinite sum, in y^p.
double infiniteSum(double y, double p, double q, int& err) {
    double ps = q - std::trunc(q);
    if (ps == 0.0) ps = 1.0;
    const double xb = p * std::log(y) - S14LBETA(ps, p, err) - std::log(p);
    if (xb < bf.lnSml) return 0.0;
    double sum = std::exp(xb);
    if (ps == 1.0) return sum;
    double term = sum * p;
    const int n = static_cast<int>(std::max(bf.lnEps / std::log(y), 4.0));
    for (int i = 1; i <= n; ++i) {
        term = term * (i - ps) * y / i;
        sum += term / (p + i);
    }
    return sum;
}

// Steps 5 and 6: the finite sum for q > 1, scaled against underflow.
double finiteSum(double y, double p, double q, int& err) {
    const double xb = p * std::log(y) + q * std::log(1.0 - y) - S14LBETA(p, q, err) - std::log(q);
    int scale = static_cast<int>(std::max(xb / bf.lnSml, 0.0));
    double term = std::exp(xb - scale * bf.lnSml);
    const double c = 1.0 / (1.0 - y);
    const double p1 = q * c / (p + q - 1.0);
    int n = static_cast<int>(q);
    if (q == static_cast<double>(n)) --n;
    double sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (p1 <= 1.0 && term / bf.eps <= sum) break;
        term = (q - i + 1.0) * c * term / (p + q - i);
        if (term > 1.0) {
            --scale;
            term *= bf.sml;
        }
        if (scale == 0) sum += term;
    }
    return sum;
}

void startIbeta() {
    ib.eps = X02RMDC(2);
    ib.tolR = 10.0 * ib.eps;
    ib.tolNewton = 1000.0 * ib.eps;
    ib.tolX = 4.0 * ib.eps;
    ib.lnFloor = 2.0 - X02RMDC(8);
    ib.started = true;
}

void ibetaMessage(const std::string& text) { special::message("S14IBETA" + text); }

std::string ibetaNumber(double v) {
    std::string field(32, ' ');
    int len = 0;
    int err = 0;
    R02R2C2(field, 0, v, 1, 4, len, 2, 1, err);
    return field.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

// The bisection of the well-balanced case, step 2: true when x is found.
bool balancedBisection(double P, double a, double b, double& x) {
    double lo = 0.0;
    double hi = 1.0;
    x = 0.5;
    for (int it = 0; it < kMaxIterations; ++it) {
        int err = 0;
        const double r = S14BFRI(x, a, b, err) - P;
        if (err != 0) return false;
        if (r <= 0.0) lo = x; else hi = x;
        x = 0.5 * (lo + hi);
        if (std::fabs(x - lo) <= ib.tolX && std::fabs(r) <= ib.tolR) return true;
    }
    return false;
}

struct NewtonSetup {
    double p, q, c, lnP, C, K;
};

NewtonSetup newtonSetup(double P, double a, double b) {
    NewtonSetup s{};
    if (P <= 0.5) {
        s.p = a; s.q = b; s.lnP = std::log(P);
    } else {
        s.p = b; s.q = a; s.lnP = std::log(1.0 - P);
    }
    s.c = s.p + s.q;
    int e = 0;
    const double g = S14LGAM(s.c, e) - S14LGAM(s.p, e) - S14LGAM(s.q, e);
    s.C = s.q * std::log(1.0 + s.p / s.q) + s.p * std::log(1.0 + s.q / s.p) +
          0.5 * std::log(s.q / s.p) + (s.q - 0.5) * std::log(s.q) + (s.p - 0.5) * std::log(s.p) +
          g - s.c * std::log(s.c);
    const double l = std::log(15.0 + s.c);
    s.K = 0.7 * l * l;
    return s;
}

// Continued fraction of I(x; p, q) / (x^p (1-x)^q / (p B(p, q))), from its tail.
double continuedFraction(const NewtonSetup& s, double x) {
    const double f = std::max(s.c * x - s.p, 0.0) + s.K;
    const int m = static_cast<int>(f);
    const double h = s.c * x / (s.p + 2.0 * f);
    const double w = s.p + 2.0 * f;
    double t = 2.0 / (1.0 - h + std::sqrt((1.0 - h) * (1.0 - h) - 4.0 * f * (f - s.q) * x / (w * w)));
    for (int k = m; k >= 1; --k) {
        const double A = s.p + 2.0 * k;
        const double g = s.p - 1.0 + k;
        t = 1.0 / (1.0 - x * g * (s.q + g) / ((A - 2.0) * ((A - 1.0) - k * (k - s.q) * x * t / A)));
    }
    return t;
}

// Newton's method on ln I, step 5; returns x for the smaller tail.
double newtonSearch(const NewtonSetup& s) {
    double x = s.p / s.c;
    for (int it = 0; it < kMaxIterations; ++it) {
        const double t = continuedFraction(s, x);
        if (std::log(x) <= ib.lnFloor) return 0.0;
        double step = (s.lnP - (s.p * std::log(x) + s.q * std::log(1.0 - x) + s.C + std::log(t))) *
                      (1.0 - x) * t / s.p;
        step = std::clamp(step, -0.99, std::max(-0.99, 0.5 / x - 0.5));
        x = (1.0 + step) * x;
        if (std::fabs(step) < ib.tolR) break;
    }
    return x;
}

// Step 7: bisection after an unsatisfying Newton result.  r is the last residual.
double finalBisection(double P, double a, double b, double& r) {
    double lo = 0.0;
    double hi = 1.0;
    double x = 0.5;
    double rPrev = 0.0;
    r = 1.0;
    for (int it = 0; it < kMaxIterations; ++it) {
        int err = 0;
        const double value = S14BFRI(x, a, b, err);
        if (err != 0) break;
        rPrev = r;
        r = value - P;
        if (r <= 0.0) lo = x; else hi = x;
        x = 0.5 * (lo + hi);
        if (std::fabs(x - lo) < ib.tolX && std::fabs(r) < ib.tolR) break;
        if (std::fabs(x - lo) <= x * ib.eps) break;
        if (it > 0 && std::fabs(r - rPrev) < ib.tolX * std::fabs(r)) break;
    }
    return x;
}

void precisionWarning(double P, double a, double b, double x) {
    ibetaMessage(" --W- Severe loss of precision at the arguments:");
    special::message("              P = " + ibetaNumber(P) + ", a = " + ibetaNumber(a) +
                     ", b = " + ibetaNumber(b));
    special::message("              IBETA(P,a,b) = " + ibetaNumber(x));
}

}  // namespace

namespace special {
void resetIncompleteBeta() {
    bf = BfriState{};
    ib = IbetaState{};
}
}  // namespace special

double S14BFRI(double x, double a, double b, int& err) {
    if (!bf.started) {
        bf.eps = X02RMDC(2);
        bf.lnEps = std::log(bf.eps);
        bf.sml = 100.0 * X02RMDC(3);
        bf.lnSml = std::log(bf.sml);
        bf.started = true;
    }
    if (!(x >= 0.0 && x <= 1.0)) {
        special::message("S14BFRI --E- X is not in the range (0.0,1.0).");
        err = -1;
        return 0.0;
    }
    if (!(a > 0.0 && b > 0.0)) {
        special::message("S14BFRI --E- Both Beta parameters must be greater than 0.0.");
        err = -2;
        return 0.0;
    }
    err = 0;
    double y = x;
    double p = a;
    double q = b;
    if (!(q <= p && x < 0.8) && x >= 0.2) {
        y = 1.0 - x;
        p = b;
        q = a;
    }
    double result = 0.0;
    if ((p + q) * y / (p + 1.0) < bf.eps) {
        const double xb = p * std::log(std::max(y, bf.sml)) - std::log(p) - S14LBETA(p, q, err);
        if (xb > bf.lnSml && y != 0.0) result = std::exp(xb);
    } else {
        result = infiniteSum(y, p, q, err);
        if (q > 1.0) result += finiteSum(y, p, q, err);
    }
    if (y != x || p != a) result = 1.0 - result;
    return std::clamp(result, 0.0, 1.0);
}

double S14IBETA(double P, double a, double b, int& err) {
    if (!ib.started) startIbeta();
    if (!(P >= 0.0 && P <= 1.0)) {
        ibetaMessage(" --E- P lies outside [0,1].");
        err = -1;
        return 0.0;
    }
    const double lo = std::min(a, b);
    const double hi = std::max(a, b);
    if (!(lo > 0.0)) {
        ibetaMessage(" --E- One of the Beta parameters <= 0.");
        err = -2;
        return 0.0;
    }
    err = 0;
    double x = 0.5;
    if (lo > 1.0 && hi < 10.0 * lo && balancedBisection(P, a, b, x)) return x;
    if (P == 0.0) {
        ibetaMessage(" --W- P = 0.0 case, returns X = 0.0.");
        err = 1;
        return 0.0;
    }
    if (P == 1.0) {
        ibetaMessage(" --W- P = 1.0 case, returns X = 1.0.");
        err = 2;
        return 1.0;
    }
    const NewtonSetup setup = newtonSetup(P, a, b);
    x = newtonSearch(setup);
    if (P > 0.5) x = 1.0 - x;
    const double x0 = x;
    int e = 0;
    const double r0 = S14BFRI(x, a, b, e) - P;
    if (std::fabs(r0) <= ib.tolNewton * P) return x;
    double r = 0.0;
    x = finalBisection(P, a, b, r);
    if (std::fabs(r0) < std::fabs(r)) {
        x = x0;
        err = 3;
        r = r0;
    }
    if (std::fabs(r / P) > 0.1 && x > ib.eps && x < 1.0 - ib.tolNewton) {
        err = 4;
        precisionWarning(P, a, b, x);
    }
    return x;
}
