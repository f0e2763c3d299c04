// Bessel functions of order one: S17J1Y1 (Cody's rational forms for J1 and
// Y1, factored through their first zeros, and the modulus-phase form beyond
// 8), and J1 of an array two at a time, besselJ1Batch.
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"
#include "numlib/simd_double.h"

#include "core/machine_constants.h"

#include <cmath>

namespace {

constexpr double kTwoOverPi = 6.3661977236758134308e-1;
constexpr double kSqrtTwoOverPi = 7.9788456080286535588e-1;
constexpr double kTwoPi = 6.2831853071795864769;
constexpr double kTwoPiHigh = 6.28125;  // 2 pi = high + low, high exact in 8 bits
constexpr double kTwoPiLow = 1.9353071795864769253e-03;
constexpr double kThreeEighths = 0.375;
constexpr double kLogSeriesRange = 0.1716;

// Zeros of J1 and Y1, each also split as n/256 + rest so that x - zero is exact.
constexpr double kJ1Zero1 = 3.8317059702075123156;
constexpr double kJ1Zero2 = 7.0155866698156187535;
constexpr double kY1Zero1 = 2.1971413260310170351;
constexpr double kY1Zero2 = 5.4296810407941351328;
constexpr double kJ1Zero1High = 981.0 / 256.0, kJ1Zero1Low = -3.2527979248768438556e-04;
constexpr double kJ1Zero2High = 1796.0 / 256.0, kJ1Zero2Low = -3.8330184381246462950e-05;
constexpr double kY1Zero1High = 562.0 / 256.0, kY1Zero1Low = 1.8288260310170351490e-03;
constexpr double kY1Zero2High = 1390.0 / 256.0, kY1Zero2Low = -6.4592058648672279948e-06;

// ln((1 + w)/(1 - w)) = w PLG(w^2)/QLG(w^2).
constexpr double kPLG[4] = {-2.4562334077563243311e+01, 2.3642701335621505212e+02,
                            -5.4989956895857911039e+02, 3.5687548468071500413e+02};
constexpr double kQLG[4] = {-3.5553900764052419184e+01, 1.9400230218539473193e+02,
                            -3.3442903192607538956e+02, 1.7843774234035750207e+02};
// J1(x)/(x (x^2 - j1^2)) on (0, 4] and J1(x)/(x (x^2 - j2^2)) on (4, 8].
constexpr double kPJ0[7] = {9.8062904098958257677e+05, -1.1548696764841276794e+08,
                            6.6781041261492395835e+09, -1.4258509801366645672e+11,
                            -4.4615792982775076130e+03, 1.0650724020080236441e+01,
                            -1.0767857011487300348e-02};
constexpr double kQJ0[5] = {5.9117614494174794095e+05, 2.0228375140097033958e+08,
                            4.2091902282580133541e+10, 4.1868604460820175290e+12,
                            1.0742272239517380498e+03};
constexpr double kPJ1[8] = {4.6179191852758252280e+00, -7.1329006872560947377e+03,
                            4.5039658105749078904e+06, -1.4437717718363239107e+09,
                            2.3569285397217157313e+11, -1.6324168293282543629e+13,
                            1.1357022719979468624e+14, 1.0051899717115285432e+15};
constexpr double kQJ1[7] = {1.1267125065029138050e+06, 6.4872502899596389593e+08,
                            2.7622777286244082666e+11, 8.4899346165481429307e+13,
                            1.7128800897135812012e+16, 1.7253905888447681194e+18,
                            1.3886978985861357615e+03};
// (Y1(x) - (2/pi) ln(x/y0) J1(x)) x / (x^2 - y0^2) on (0, 4] around y0 = 2.197.
constexpr double kPY0[7] = {2.2157953222280260820e+05, -5.9157479997408395984e+07,
                            7.2144548214502560419e+09, -3.7595974497819597599e+11,
                            5.4708611716525426053e+12, 4.0535726612579544093e+13,
                            -3.1714424660046133456e+02};
constexpr double kQY0[6] = {8.2079908168393867438e+02, 3.8136470753052572164e+05,
                            1.2250435122182963220e+08, 2.7800352738690585613e+10,
                            4.1272286200406461981e+12, 3.0737873921079286084e+14};
// The same on (4, 8] around y0 = 5.430: numerator of degree 8 in x^2 with its
// leading coefficient last, denominator monic of degree 8, at the 20 digits
// of the published table.  Near x = 8 the terms of the numerator cancel by up
// to 20 times, so the form is summed in the extended format (64-bit
// mantissa): in double the rounding of the coefficients and of the sums
// alone would cost up to 28 eps in Y1.
constexpr long double kPY1[9] = {1.9153806858264202986e+06L, -1.1957961912070617006e+09L,
                                 3.7453673962438488783e+11L, -5.9530713129741981618e+13L,
                                 4.0686275289804744814e+15L, -2.3638408497043134724e+16L,
                                 -5.6808094574724204577e+18L, 1.1514276357909013326e+19L,
                                 -1.2337180442012953128e+03L};
constexpr long double kQY1[8] = {1.2855164849321609336e+03L, 1.0453748201934079734e+06L,
                                 6.3550318087088919566e+08L, 3.0221766852960403645e+11L,
                                 1.1187010065856971027e+14L, 3.0837179548112881950e+16L,
                                 5.6968198822857178911e+18L, 5.3321844313316185697e+20L};
constexpr long double kTwoOverPiLong = 6.3661977236758134308e-1L;
constexpr long double kY1Zero2Long = 5.4296810407941351328L;
constexpr long double kY1Zero2LowLong = -6.4592058648672279948e-06L;
// Modulus and phase beyond 8, in z = 8/x.
constexpr double kP0[6] = {-1.0982405543459346727e+05, -1.5235293511811373833e+06,
                           -6.6033732483649391093e+06, -9.9422465050776411957e+06,
                           -4.4357578167941278571e+06, -1.6116166443246101165e+03};
constexpr double kQ0[6] = {-1.0726385991103820119e+05, -1.5118095066341608816e+06,
                           -6.5853394797230870728e+06, -9.9341243899345856590e+06,
                           -4.4357578167941278568e+06, -1.4550094401904961825e+03};
constexpr double kP1[6] = {1.7063754290207680021e+03, 1.8494262873223866797e+04,
                           6.6178836581270835179e+04, 8.5145160675335701966e+04,
                           3.3220913409857223519e+04, 3.5265133846636032186e+01};
constexpr double kQ1[6] = {3.7890229745772202641e+04, 4.0029443582266975117e+05,
                           1.4194606696037208929e+06, 1.8194580422439972989e+06,
                           7.0871281941028743574e+05, 8.6383677696049909675e+02};

struct BesselState {
    bool started = false;
    double xinf = 0.0;    // rBig, the substitute for an infinite Y1
    double xlarge = 0.0;  // 1/sqrt(eps): beyond it the phase is lost
    double xsmall = 0.0;  // sqrt(eps)/beta: below it the first term suffices
};

BesselState bs;

// The J1 forms below are written once for a double and for two lanes of
// simd::Double2: the lanes go through the same operations in the same order
// (the square root is correctly rounded either way, sin and cos of the phase
// come from the library lane by lane), so that a lane gives bit for bit what
// the scalar routine gives.
using simd::Double2;

template <class V>
V broadcast(double c);
template <>
inline double broadcast<double>(double c) {
    return c;
}
template <>
inline Double2 broadcast<Double2>(double c) {
    return simd::splat(c);
}

inline double truncPositive(double v) { return std::trunc(v); }
inline Double2 truncPositive(Double2 v) { return simd::floorNonNegative(v); }
inline double squareRoot(double v) { return std::sqrt(v); }
inline Double2 squareRoot(Double2 v) { return simd::sqrt(v); }
inline void sinCos(double w, double& sn, double& cs) {
    sn = std::sin(w);
    cs = std::cos(w);
}
inline void sinCos(Double2 w, Double2& sn, Double2& cs) {
    sn = Double2{std::sin(w[0]), std::sin(w[1])};
    cs = Double2{std::cos(w[0]), std::cos(w[1])};
}
inline double negativeSide(double x, double j) { return x < 0.0 ? -j : j; }
inline Double2 negativeSide(Double2 x, Double2 j) { return simd::select(x < 0.0, -j, j); }

// J1 for 0 < |x| <= 4, with the factor through the first zero.
template <class V>
V j1UpToFour(V x, V ax) {
    const V y = ax * ax;
    V num = (kPJ0[6] * y + kPJ0[5]) * y + kPJ0[4];
    V den = y + kQJ0[4];
    for (int i = 0; i < 4; ++i) {
        num = num * y + kPJ0[i];
        den = den * y + kQJ0[i];
    }
    const V prod = x * ((ax - kJ1Zero1High) - kJ1Zero1Low) * (ax + kJ1Zero1);
    return prod * (num / den);
}

// J1 for 4 < |x| <= 8, with the factor through the second zero.
template <class V>
V j1UpToEight(V x, V ax) {
    const V y = ax * ax;
    V num = broadcast<V>(kPJ1[0]);
    V den = (y + kQJ1[6]) * y + kQJ1[0];
    for (int i = 1; i < 6; ++i) {
        num = num * y + kPJ1[i];
        den = den * y + kQJ1[i];
    }
    num = num * (ax - 8.0) * (ax + 8.0) + kPJ1[6];
    num = num * (ax - 4.0) * (ax + 4.0) + kPJ1[7];
    const V prod = x * ((ax - kJ1Zero2High) - kJ1Zero2Low) * (ax + kJ1Zero2);
    return prod * (num / den);
}

double j1Rational(double x, double ax) { return ax <= 4.0 ? j1UpToFour(x, ax) : j1UpToEight(x, ax); }

// ln(x/y0) as (2/pi) J1 needs it, by a series in w = (x - y0)/(x + y0) near y0.
double logAroundZero(double ax, double up, double y0) {
    const double down = ax + y0;
    if (std::fabs(up) < kLogSeriesRange * down) {
        const double w = up / down;
        const double wsq = w * w;
        double num = kPLG[0];
        double den = wsq + kQLG[0];
        for (int i = 1; i < 4; ++i) {
            num = num * wsq + kPLG[i];
            den = den * wsq + kQLG[i];
        }
        return w * num / den;
    }
    return std::log(ax / y0);
}

// Y1 for 0 < x <= 4 from J1 and the rational form around the first zero of Y1.
double y1Rational(double ax, double j1) {
    const double y = ax * ax;
    const double up = (ax - kY1Zero1High) - kY1Zero1Low;
    double num = kPY0[6] * y + kPY0[0];
    double den = y + kQY0[0];
    for (int i = 1; i < 6; ++i) {
        num = num * y + kPY0[i];
        den = den * y + kQY0[i];
    }
    const double lnRatio = logAroundZero(ax, up, kY1Zero1);
    return kTwoOverPi * lnRatio * j1 + (num / den) * up * (ax + kY1Zero1) / ax;
}

// Y1 for 4 < x <= 8 around the second zero of Y1, in the extended format.
double y1RationalFar(double ax, double j1) {
    const long double x = ax;
    const long double y = x * x;
    const long double up = (x - kY1Zero2High) - kY1Zero2LowLong;
    long double num = kPY1[8] * y + kPY1[0];
    long double den = y + kQY1[0];
    for (int i = 1; i < 8; ++i) {
        num = num * y + kPY1[i];
        den = den * y + kQY1[i];
    }
    const double lnRatio = logAroundZero(ax, (ax - kY1Zero2High) - kY1Zero2Low, kY1Zero2);
    return static_cast<double>(kTwoOverPiLong * lnRatio * j1 +
                               (num / den) * up * (x + kY1Zero2Long) / x);
}

// |x| > 8: modulus sqrt(2/(pi x)) and the phase reduced by whole turns.
// J1 for type 0, Y1 for type 1.
template <class V>
V besselAsymptotic(V x, V ax, int type) {
    const V z = 8.0 / ax;
    const V turns = truncPositive(ax / kTwoPi) + kThreeEighths;
    const V w = (ax - turns * kTwoPiHigh) - turns * kTwoPiLow;
    const V y = z * z;
    V num = broadcast<V>(kP0[5]);
    V den = y + kQ0[5];
    V up = broadcast<V>(kP1[5]);
    V down = y + kQ1[5];
    for (int i = 0; i < 5; ++i) {
        num = num * y + kP0[i];
        den = den * y + kQ0[i];
        up = up * y + kP1[i];
        down = down * y + kQ1[i];
    }
    const V r0 = num / den;
    const V r1 = up / down;
    const V modulus = kSqrtTwoOverPi / squareRoot(ax);
    V sn;
    V cs;
    sinCos(w, sn, cs);
    if (type == 0) {
        const V j = modulus * (r0 * cs - z * r1 * sn);
        return negativeSide(x, j);
    }
    return modulus * (r0 * sn + z * r1 * cs);
}

void startBessel() {
    const double eps = X02RMDC(2);
    bs.xinf = X02RMDC(5);
    bs.xlarge = 1.0 / std::sqrt(eps);
    bs.xsmall = std::sqrt(eps) / X02IMDC(1);
    bs.started = true;
}

// J1 at two arguments, both within [xsmall, xlarge]: each lane through the
// form of its range (both forms and a choice where the lanes differ).
Double2 j1Pair(Double2 x) {
    const Double2 ax = simd::abs(x);
    const simd::Int2 upToFour = ax <= 4.0;
    const simd::Int2 beyondEight = ax > 8.0;
    if (upToFour[0] && upToFour[1]) return j1UpToFour(x, ax);
    if (beyondEight[0] && beyondEight[1]) return besselAsymptotic(x, ax, 0);
    const Double2 middle = j1UpToEight(x, ax);
    if (!simd::anyLane(upToFour | beyondEight)) return middle;
    const Double2 low = simd::anyLane(upToFour) ? j1UpToFour(x, ax) : middle;
    const Double2 high = simd::anyLane(beyondEight) ? besselAsymptotic(x, ax, 0) : middle;
    return simd::select(upToFour, low, simd::select(beyondEight, high, middle));
}

}  // namespace

namespace special {
void resetBessel() { bs = BesselState{}; }
}  // namespace special

double S17J1Y1(double x, int type, int& err) {
    if (!bs.started) startBessel();
    if (type != 0 && type != 1) {
        special::message("S17J1Y1 --E- Wrong Bessel type specified, must be 0 (J1) or 1 (Y1).");
        err = -2;
        return 0.0;
    }
    const double ax = std::fabs(x);
    if (type == 1 && (x <= 0.0 || (x < 0.5 && ax * bs.xinf < kTwoOverPi))) {
        err = -1;
        return -bs.xinf;
    }
    err = 0;
    if (ax < bs.xsmall) return type == 0 ? 0.5 * x : -kTwoOverPi / ax;
    if (ax > bs.xlarge) {
        special::message("S17J1Y1 --W- Loss of accuracy because X is too big.");
        err = 1;
        return 0.0;
    }
    if (ax > 8.0) return besselAsymptotic(x, ax, type);
    const double j1 = j1Rational(x, ax);
    if (type == 0) return j1;
    return ax <= 4.0 ? y1Rational(ax, j1) : y1RationalFar(ax, j1);
}

void besselJ1Batch(const double* x, double* j1, int n) {
    if (!bs.started) startBessel();
    int i = 0;
    for (; i + simd::kLanes <= n; i += simd::kLanes) {
        const Double2 v = simd::load(x + i);
        const Double2 ax = simd::abs(v);
        // Outside [xsmall, xlarge] (0, the first term, the warning, what is
        // no number) the scalar routine answers for both lanes.
        const simd::Int2 inside = (ax >= bs.xsmall) & (ax <= bs.xlarge);
        if (inside[0] && inside[1]) {
            simd::store(j1 + i, j1Pair(v));
            continue;
        }
        for (int k = i; k < i + simd::kLanes; ++k) {
            int err = 0;
            j1[k] = S17J1Y1(x[k], 0, err);
        }
    }
    for (; i < n; ++i) {
        int err = 0;
        j1[i] = S17J1Y1(x[i], 0, err);
    }
}
