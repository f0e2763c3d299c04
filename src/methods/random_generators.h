// The random generators of the searches that use chance: E04RAN1, the
// lagged generator of single-precision numbers of Marsaglia, Zaman and
// Tsang (the annealed simplex), E04RAN2, the linear congruential generator
// of Forsythe, Malcolm and Moler on 32-bit integers (the Monte-Carlo
// searches), and E04NOR1, a normal deviate built on a uniform generator.
#pragma once

// A uniform generator with its two integer arguments, as E04NOR1 calls it.
using UniformGenerator = double (*)(int&, int&);

// The next number in [0, 1) of the lagged generator.  i and j are the seeds;
// they are read, not changed.  The table is built again only when the pair
// (after its reduction to the ranges 0..31328 and 0..30081) differs from the
// pair of the last initialization.
float E04RAN1(int& i, int& j);

// The next number in [0, 1) of the congruential generator.  iy is the state,
// updated in place; w is set to 0 at the very first call and otherwise
// unused.
double E04RAN2(int& iy, int& w);

// A normal deviate of mean 0 and variance about 1 from twelve numbers of
// `gen(a, b)`.  When no call has yet done so and a and b are both 0, they
// are set to 1802 and 9373 first (once only).
double E04NOR1(UniformGenerator gen, int& a, int& b);

// Back to the program's start: no table, the first-call rules armed again.
void resetRandomGenerators();
