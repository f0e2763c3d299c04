// The vector kernels: sinCosBatch against binary128 references, and
// besselJ1Batch against S17J1Y1, which it must equal bit for bit.
#include "numlib/special_functions.h"
#include "numlib/vector_trig.h"

#include "support/terminal_test.h"
#include "special_quad_reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using quad_reference::Quad;

class VectorKernels : public TerminalTest {};

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// The distance from the double nearest to ref in units of its last place.
double ulps(double got, Quad ref) {
    const double nearest = static_cast<double>(ref);
    const double ulp = std::nextafter(std::fabs(nearest), INFINITY) - std::fabs(nearest);
    return static_cast<double>(quad_reference::absq(Quad(got) - ref)) / ulp;
}

TEST_F(VectorKernels, SinCosWithinOneAndAHalfUlpAndLargeArgumentsByTheLibrary) {
    // Random-looking points up to 700 and the doubles next to multiples of
    // pi/2, where the reduction must keep the tiny remainder exact.
    std::vector<double> x;
    for (int k = -700; k <= 700; ++k) x.push_back(k * 0.99 + 0.123456789 * (k % 7));
    for (int k = 1; k <= 400; ++k) {
        const double m = k * 1.5707963267948966;
        x.insert(x.end(), {m, std::nextafter(m, 0.0), -m});
    }
    x.push_back(0.0);  // an odd count: the last one alone
    std::vector<double> sn(x.size()), cs(x.size());
    sinCosBatch(x.data(), sn.data(), cs.data(), static_cast<int>(x.size()));
    double worst = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const quad_reference::SinCos ref = quad_reference::sinCos(x[i]);
        worst = std::max({worst, ulps(sn[i], ref.sn), ulps(cs[i], ref.cs)});
    }
    EXPECT_LE(worst, 1.5);
    // Beyond 2^19 pi/2 and for what is no number, the library answers.
    const double far[] = {1e6, -3e7, 1e300, INFINITY, std::numeric_limits<double>::quiet_NaN()};
    double fs[5], fc[5];
    sinCosBatch(far, fs, fc, 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(sameBits(fs[i], std::sin(far[i])) && sameBits(fc[i], std::cos(far[i])))
            << far[i];
    }
}

TEST_F(VectorKernels, BesselJ1BatchIsTheScalarRoutineBitForBit) {
    // Each lane makes the operations of S17J1Y1 in its order, in every range
    // of its forms; 0, the first term below xsmall and the warning beyond
    // xlarge come from S17J1Y1 itself.
    std::vector<double> x = {0.0, 1e-9, -3e-9};
    for (int k = 1; k <= 3000; ++k) x.push_back(k * 0.01 - (k % 3) * 7.3);
    x.push_back(1e8);  // an odd count, and the warning
    std::vector<double> j1(x.size());
    besselJ1Batch(x.data(), j1.data(), static_cast<int>(x.size()));
    for (std::size_t i = 0; i < x.size(); ++i) {
        int err = 0;
        EXPECT_TRUE(sameBits(j1[i], S17J1Y1(x[i], 0, err))) << x[i];
    }
    EXPECT_EQ(output(), " S17J1Y1 --W- Loss of accuracy because X is too big.\n"
                      " S17J1Y1 --W- Loss of accuracy because X is too big.\n");
}

}  // namespace
