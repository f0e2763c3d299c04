// sinCosBatch: sine and cosine of an array, two lanes at a time.
#include "numlib/vector_trig.h"

#include "numlib/simd_double.h"

#include <cmath>

namespace {

// The reduction is exact for |x| up to 2^19 pi/2.
constexpr double kLargestArgument = 823549.6654150104;

inline void sinCosLanes(simd::Double2 x, simd::Double2& sn, simd::Double2& cs) {
    using simd::Double2;
    using simd::Int2;
    constexpr double kInvHalfPi = 6.36619772367581382433e-01;
    constexpr double kHalfPi1 = 1.57079632673412561417e+00;
    constexpr double kHalfPi2 = 6.07710050630396597660e-11, kHalfPi2Tail = 2.02226624879595063154e-21;
    constexpr double kHalfPi3 = 2.02226624871116645580e-21, kHalfPi3Tail = 8.47842766036889956997e-32;
    constexpr double S1 = -1.66666666666666324348e-01, S2 = 8.33333333332248946124e-03,
                     S3 = -1.98412698298579493134e-04, S4 = 2.75573137070700676789e-06,
                     S5 = -2.50507602534068634195e-08, S6 = 1.58969099521155010221e-10;
    constexpr double C1 = 4.16666666666666019037e-02, C2 = -1.38888888888741095749e-03,
                     C3 = 2.48015872894767294178e-05, C4 = -2.75573143513906633035e-07,
                     C5 = 2.08757232129817482790e-09, C6 = -1.13596475577881948265e-11;
    constexpr double kShift = 6755399441055744.0;  // 1.5 * 2^52: rounds to a whole number

    // n = nearest whole number to x / (pi/2); its low bits give the quadrant.
    const Double2 shifted = x * kInvHalfPi + kShift;
    const Int2 quadrant = simd::bits(shifted);
    const Double2 n = shifted - kShift;
    // r = x - n pi/2 as hi + lo; n times each 33-bit part is exact.
    Double2 r = x - n * kHalfPi1;
    Double2 t = r;
    Double2 w = n * kHalfPi2;
    r = t - w;
    w = n * kHalfPi2Tail - ((t - r) - w);
    t = r;
    w = n * kHalfPi3;
    r = t - w;
    w = n * kHalfPi3Tail - ((t - r) - w);
    const Double2 hi = r - w;
    const Double2 lo = (r - hi) - w;

    const Double2 z = hi * hi;
    const Double2 v = z * hi;
    const Double2 ps = S2 + z * (S3 + z * (S4 + z * (S5 + z * S6)));
    const Double2 sinR = hi - ((z * (0.5 * lo - v * ps) - lo) - v * S1);
    const Double2 pc = z * (C1 + z * (C2 + z * (C3 + z * (C4 + z * (C5 + z * C6)))));
    const Double2 half = 0.5 * z;
    const Double2 one = simd::splat(1.0);
    const Double2 head = one - half;
    const Double2 cosR = head + (((one - head) - half) + (z * pc - hi * lo));

    // Quadrant q: sin x = sin r, cos r, -sin r, -cos r; cos x = cos r, -sin r, -cos r, sin r.
    const Int2 odd = (quadrant & 1) != 0;
    const Int2 sinSign = (quadrant & 2) << 62;
    const Int2 cosSign = ((quadrant + 1) & 2) << 62;
    sn = simd::fromBits(simd::bits(simd::select(odd, cosR, sinR)) ^ sinSign);
    cs = simd::fromBits(simd::bits(simd::select(odd, sinR, cosR)) ^ cosSign);
}

// True for each lane that sinCosLanes reduces exactly (finite and within
// kLargestArgument).
inline simd::Int2 inTrigRange(simd::Double2 x) { return simd::abs(x) <= kLargestArgument; }

}  // namespace

void sinCosBatch(const double* x, double* sn, double* cs, int n) {
    int i = 0;
    for (; i + simd::kLanes <= n; i += simd::kLanes) {
        const simd::Double2 v = simd::load(x + i);
        simd::Double2 s;
        simd::Double2 c;
        sinCosLanes(v, s, c);
        simd::store(sn + i, s);
        simd::store(cs + i, c);
        const simd::Int2 ok = inTrigRange(v);
        if (ok[0] && ok[1]) continue;
        for (int k = i; k < i + simd::kLanes; ++k) {
            if (!(std::fabs(x[k]) <= kLargestArgument)) {
                sn[k] = std::sin(x[k]);
                cs[k] = std::cos(x[k]);
            }
        }
    }
    for (; i < n; ++i) {
        double pair[simd::kLanes] = {x[i], 0.0};
        simd::Double2 s;
        simd::Double2 c;
        sinCosLanes(simd::load(pair), s, c);
        sn[i] = std::fabs(x[i]) <= kLargestArgument ? s[0] : std::sin(x[i]);
        cs[i] = std::fabs(x[i]) <= kLargestArgument ? c[0] : std::cos(x[i]);
    }
}
