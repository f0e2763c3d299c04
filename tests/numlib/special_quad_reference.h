// Reference values of Gamma and of the Bessel functions of order one computed
// in the test itself, in the 113-bit binary128 arithmetic of the compiler
// (__float128, unit roundoff 9.6e-35), from their power series.  The series
// cancel by at most a factor 10^3 on the ranges used, so the references keep
// about 30 digits: far more than needed to judge a double result.
#pragma once

#include <cmath>

namespace quad_reference {

__extension__ typedef __float128 Quad;

// A decimal constant of up to 40 digits, exact to within a few units of 1e-34.
inline Quad fromDigits(const char* text) {
    Quad whole = 0;
    Quad scale = 1;
    bool fraction = false;
    for (const char* c = text; *c != 0; ++c) {
        if (*c == '.') {
            fraction = true;
            continue;
        }
        whole = whole * 10 + (*c - '0');
        if (fraction) scale *= 10;
    }
    return whole / scale;
}

// pi as a sum of three doubles, exact to 1e-49 (the expansion of the QD
// library; checked against 80 digits of pi), and Euler's gamma to 40 digits.
constexpr double kPiParts[3] = {3.141592653589793116e+00, 1.224646799147353207e-16,
                                -2.994769809718339666e-33};
inline Quad pi() { return (Quad(kPiParts[0]) + kPiParts[1]) + kPiParts[2]; }
inline Quad euler() { return fromDigits("0.5772156649015328606065120900824024310422"); }

inline Quad absq(Quad x) { return x < 0 ? -x : x; }

// ln z for z > 0: z = 2^k m with m in [1, 2), ln m = 2 atanh((m - 1)/(m + 1)),
// ln 2 = 2 atanh(1/3); both series decay at least as fast as 9^-n.
inline Quad atanhSeries(Quad t) {
    const Quad t2 = t * t;
    Quad term = t;
    Quad sum = 0;
    for (int n = 1; absq(term) > 1e-40 * absq(t); n += 2) {
        sum += term / n;
        term *= t2;
    }
    return sum;
}
inline Quad log(Quad z) {
    int k = 0;
    while (z >= 2) {
        z /= 2;
        ++k;
    }
    while (z < 1) {
        z *= 2;
        --k;
    }
    return 2 * atanhSeries((z - 1) / (z + 1)) + k * 2 * atanhSeries(Quad(1) / 3);
}

// sqrt by two Newton steps from the double square root (quadratic convergence
// from 1e-16 gives full binary128 accuracy).
inline Quad sqrt(Quad z) {
    Quad r = std::sqrt(static_cast<double>(z));
    for (int i = 0; i < 2; ++i) r = (r + z / r) / 2;
    return r;
}

// sin and cos of a double x with |x| < 1000: x less the nearest multiple n
// of pi/2, where n times each part of pi/2 and each difference are exact in
// binary128 (so that a remainder near 1e-18 keeps all its digits), then the
// Taylor series.
struct SinCos {
    Quad sn;
    Quad cs;
};
inline SinCos sinCos(double x) {
    const long n = std::lround(x / (kPiParts[0] / 2));
    Quad r = x;
    for (const double part : kPiParts) r -= n * Quad(part / 2);
    Quad sr = 0;
    Quad cr = 0;
    Quad term = 1;
    for (int k = 0; k < 60; ++k) {  // term = r^k / k!
        const int sign = (k / 2) % 2 == 0 ? 1 : -1;
        if (k % 2 == 0) cr += sign * term; else sr += sign * term;
        term = term * r / (k + 1);
    }
    const long q = ((n % 4) + 4) % 4;
    if (q == 0) return {sr, cr};
    if (q == 1) return {cr, -sr};
    if (q == 2) return {-sr, -cr};
    return {-cr, sr};
}

// J1(x) = sum (-1)^k (x/2)^(2k+1) / (k! (k+1)!), and with the harmonic
// numbers H(k) the series of Y1 (Abramowitz and Stegun 9.1.11 for n = 1):
// Y1(x) = (2/pi) (ln(x/2) + gamma) J1(x) - 2/(pi x)
//         - (1/pi) sum (-1)^k (H(k) + H(k+1)) (x/2)^(2k+1) / (k! (k+1)!).
struct BesselPair {
    Quad j1;
    Quad y1;
};
inline BesselPair besselOne(Quad x) {
    const Quad h = x / 2;
    Quad term = h;
    Quad j1 = 0;
    Quad sum = 0;
    Quad hk = 0;   // H(k)
    Quad hk1 = 1;  // H(k + 1)
    for (int k = 0; k < 200 && absq(term) > 1e-40; ++k) {
        j1 += term;
        sum += term * (hk + hk1);
        hk = hk1;
        hk1 += Quad(1) / (k + 2);
        term = -term * h * h / ((k + 1) * (k + 2));
    }
    const Quad y1 = 2 / pi() * (log(h) + euler()) * j1 - 2 / (pi() * x) - sum / pi();
    return {j1, y1};
}

// Gamma(x) for x = m + 1/2 - n, n >= 0: Gamma(1/2) = sqrt(pi) raised by m
// products or lowered by n quotients; every factor is exact in binary128.
inline Quad gammaHalfInteger(double x) {
    Quad g = sqrt(pi());
    for (Quad a = 0.5; a > x; a -= 1) g /= (a - 1);
    for (Quad a = 0.5; a < x; a += 1) g *= a;
    return g;
}

}  // namespace quad_reference
