// A small portable SIMD helper: two doubles in one value, by the generic
// vector extension of GCC and Clang, which the compiler maps onto the
// target's vector registers (SSE2 on baseline x86-64, NEON on AArch64) or
// onto scalar code.  Arithmetic and comparisons work lane by lane with the
// usual operators; a comparison gives a lane mask of all ones or zeros.
#pragma once

#include <cstdint>
#include <cstring>

namespace simd {

constexpr int kLanes = 2;
typedef double Double2 __attribute__((vector_size(16)));
typedef std::int64_t Int2 __attribute__((vector_size(16)));

inline Double2 load(const double* p) {
    Double2 v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
inline void store(double* p, Double2 v) { std::memcpy(p, &v, sizeof v); }
inline Double2 splat(double x) { return Double2{x, x}; }

// The bits of each lane, and back.
inline Int2 bits(Double2 v) { return (Int2)v; }
inline Double2 fromBits(Int2 v) { return (Double2)v; }

inline Double2 select(Int2 mask, Double2 yes, Double2 no) { return mask ? yes : no; }
inline bool anyLane(Int2 mask) { return (mask[0] | mask[1]) != 0; }
inline Double2 abs(Double2 v) { return fromBits(bits(v) & INT64_MAX); }

// The correctly rounded square root of each lane.
inline Double2 sqrt(Double2 v) {
#if defined(__SSE2__)
    return __builtin_ia32_sqrtpd(v);
#else
    return Double2{__builtin_sqrt(v[0]), __builtin_sqrt(v[1])};
#endif
}

// The largest whole number at or below each lane, for 0 <= v < 2^52: adding
// and taking away 1.5 * 2^52 rounds to the nearest whole number.
inline Double2 floorNonNegative(Double2 v) {
    const double shift = 6755399441055744.0;
    const Double2 nearest = (v + shift) - shift;
    return nearest - select(nearest > v, splat(1.0), splat(0.0));
}

}  // namespace simd
