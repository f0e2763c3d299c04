// Sine and cosine of an array, two arguments at a time in the lanes of
// simd::Double2 (sinCosBatch).  The argument is reduced by the nearest multiple n of pi/2
// in three steps of 33-bit parts of pi/2 (Cody and Waite's scheme, to about
// 150 bits), and sin and cos of the rest, |r| <= pi/4, come from the minimax
// polynomials of the Sun (fdlibm) kernels, which carry the low part of r.
// The results are within 1.5 ulp of the true values (1.45 the worst of
// 400000 points up to 700); they may differ from std::sin and std::cos in the
// last bit.
#pragma once

// sn[i] = sin x[i], cs[i] = cos x[i] for i < n, two at a time.  Arguments
// beyond 2^19 pi/2 (823549.67), where the reduction would not be exact, and
// what is no number go to std::sin and std::cos.
void sinCosBatch(const double* x, double* sn, double* cs, int n);
