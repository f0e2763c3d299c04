// E04RAN1, E04RAN2 and E04NOR1: two uniform generators and a normal deviate.
#include "methods/random_generators.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace {

// The lagged generator: a table of 97 numbers of 24 bits, the two lags and
// the arithmetic sequence c, all in single precision.
struct LaggedState {
    std::array<float, 98> table{};  // entries 1..97
    int ip = 97, jp = 33;
    float c = 0, cd = 0, cm = 0;
    int lastA = -1, lastB = -1;  // the pair of the last initialization
};

LaggedState lagged;

// Builds the table from the reduced seeds a (0..31328) and b (0..30081):
// three lagged Fibonacci seeds from a and b, a congruential one from b,
// and from them 24 bits for every entry.
void buildTable(int a, int b) {
    int i0 = (a / 177) % 177 + 2;
    int j0 = a % 177 + 2;
    int k0 = (b / 169) % 178 + 1;
    int l0 = b % 169;
    for (int entry = 1; entry <= 97; ++entry) {
        float s = 0.0f;
        float t = 0.5f;
        for (int bit = 1; bit <= 24; ++bit) {
            int m = (((i0 * j0) % 179) * k0) % 179;
            i0 = j0;
            j0 = k0;
            k0 = m;
            l0 = (53 * l0 + 1) % 169;
            if ((l0 * m) % 64 >= 32) s += t;
            t *= 0.5f;
        }
        lagged.table[static_cast<std::size_t>(entry)] = s;
    }
    lagged.ip = 97;
    lagged.jp = 33;
    lagged.c = 362436.0f / 16777216.0f;
    lagged.cd = 7654321.0f / 16777216.0f;
    lagged.cm = 16777213.0f / 16777216.0f;
    lagged.lastA = a;
    lagged.lastB = b;
}

int reduced(int seed, int limit) {
    int v = std::abs(seed);
    while (v > limit) v /= 2;
    return v;
}

// The congruential generator's constants, found at its first call.
struct CongruentialState {
    bool started = false;
    std::int32_t m2 = 0, ia = 0, ic = 0, mic = 0;
    double s = 0;
};

CongruentialState congruential;

// Integer arithmetic of the congruential generator: 32 bits with
// wrap-around, as the machine's integers behave.
std::int32_t wrapped(std::int64_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v)); }

void startCongruential() {
    CongruentialState& g = congruential;
    // m2 is the largest power of 2 an integer holds: double until the next
    // doubling would overflow.
    std::int32_t m = 1;
    while (m <= INT32_MAX / 2) m *= 2;
    g.m2 = m;  // 2^30
    const double halfM = static_cast<double>(g.m2);
    // Multiplier near m2 * pi / 4, congruent to 5 modulo 8; increment near
    // m2 * (1/2 - sqrt(3)/6), odd.
    g.ia = 8 * static_cast<std::int32_t>(halfM * 0.7853981633974483 * 0.125) + 5;
    g.ic = 2 * static_cast<std::int32_t>(halfM * 0.21132486540518713) + 1;
    g.mic = (g.m2 - g.ic) + g.m2;
    g.s = 0.5 / halfM;
    g.started = true;
}

bool normalSeeded = false;  // E04NOR1 has put in its start seeds

}  // namespace

float E04RAN1(int& i, int& j) {
    const int a = reduced(i, 31328);
    const int b = reduced(j, 30081);
    if (a != lagged.lastA || b != lagged.lastB) buildTable(a, b);
    LaggedState& g = lagged;
    float u = g.table[static_cast<std::size_t>(g.ip)] - g.table[static_cast<std::size_t>(g.jp)];
    if (u < 0.0f) u += 1.0f;
    g.table[static_cast<std::size_t>(g.ip)] = u;
    if (--g.ip == 0) g.ip = 97;
    if (--g.jp == 0) g.jp = 97;
    g.c -= g.cd;
    if (g.c < 0.0f) g.c += g.cm;
    u -= g.c;
    if (u < 0.0f) u += 1.0f;
    return u;
}

double E04RAN2(int& iy, int& w) {
    CongruentialState& g = congruential;
    if (!g.started) {
        startCongruential();
        w = 0;
        iy = std::abs(iy);
    }
    std::int32_t y = wrapped(static_cast<std::int64_t>(iy) * g.ia);
    if (y > g.mic) y = wrapped(static_cast<std::int64_t>(y) - 2 * static_cast<std::int64_t>(g.m2));
    y = wrapped(static_cast<std::int64_t>(y) + g.ic);
    if (y / 2 > g.m2) y = wrapped(static_cast<std::int64_t>(y) - 2 * static_cast<std::int64_t>(g.m2));
    if (y < 0) y = wrapped(static_cast<std::int64_t>(y) + 2 * static_cast<std::int64_t>(g.m2));
    iy = y;
    return static_cast<double>(y) * g.s;
}

double E04NOR1(UniformGenerator gen, int& a, int& b) {
    if (!normalSeeded && a == 0 && b == 0) {
        a = 1802;
        b = 9373;
        normalSeeded = true;
    }
    double sum = 0.0;
    for (int k = 0; k < 12; ++k) sum += gen(a, b);
    // The sum of twelve uniform numbers less 6 is nearly normal; the odd
    // polynomial corrects its tails.
    const double x = (sum - 6.0) * 0.25;
    const double y = x * x;
    return x * (3.949846138 + y * (0.252408784 + y * (0.076542912 + y * (0.008355968 + y * 0.029899776))));
}

void resetRandomGenerators() {
    lagged = LaggedState{};
    congruential = CongruentialState{};
    normalSeeded = false;
}
