// The runs test: refusals, the counting rules, and the exact, normal and Beta
// critical values against values worked out by hand or with an outside tool.
#include "numlib/statistical_tests.h"

#include "numlib/special_functions.h"
#include "special_reference.h"

#include "platform/units.h"

#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

class RunsTest : public TerminalTest {
protected:
    double stat = 7.0, low = 7.0, up = 7.0;
    int err = 99;
};

// nBelow points at -1 and nAbove at +1 around the centre 0, in `runs` runs
// that alternate and begin below; the first run of each class takes the
// points left over.
std::vector<double> makeRuns(int nBelow, int nAbove, int runs) {
    const int belowRuns = (runs + 1) / 2;
    const int aboveRuns = runs / 2;
    std::vector<double> x;
    for (int r = 0; r < runs; ++r) {
        const bool below = r % 2 == 0;
        const int index = r / 2;
        const int count = below ? (index == 0 ? nBelow - belowRuns + 1 : 1)
                                : (index == 0 ? nAbove - aboveRuns + 1 : 1);
        x.insert(x.end(), static_cast<std::size_t>(count), below ? -1.0 : 1.0);
    }
    return x;
}

// 1..20 ordered so that, about their mean 10.5, the classes read
// BB AAA B A BB AA BBB AA B AA B: 10 below, 10 above, 11 runs.
const std::vector<double> kTwenty = {1, 2,  11, 12, 13, 3,  14, 4,  5,  15,
                                     16, 6, 7,  8,  17, 18, 9,  19, 20, 10};

TEST_F(RunsTest, NineteenPointsAreRefusedTwentyAreTested) {
    EXPECT_TRUE(G02WALD1(kTwenty.data(), 19, 0.05, stat, low, up, err));
    EXPECT_EQ(err, -1);
    EXPECT_EQ(stat, 7.0);  // untouched
    EXPECT_EQ(low, 7.0);
    EXPECT_EQ(up, 7.0);
    EXPECT_EQ(output(), "  G02WALD1 -E- Number of data points less than 20.\n");

    EXPECT_FALSE(G02WALD2(kTwenty.data(), 19, 10.5, 0.05, stat, low, up, err));
    EXPECT_EQ(err, -1);
    EXPECT_EQ(stat, std::ldexp(1.0, 1022));
    EXPECT_EQ(low, 0.0);
    EXPECT_EQ(up, 0.0);
    EXPECT_EQ(output(), "  G02WALD2 -E- Number of data points less than 20.\n");

    // n = 20 about the mean: m = M = 10, exact critical numbers for
    // alpha/2 = 0.025 over C(20,10) = 184756 arrangements.  Cumulative counts
    // of R = 2..7: 2, 18, 162, 648, 2592 and 1296 * 14/3 = 6048, so P(R <= 6)
    // = 3422/184756 = 0.0185 and P(R <= 7) = 9470/184756 = 0.0513: low = 7.
    // By symmetry about 11, P(R <= 14) = 1 - P(R <= 7) = 0.9487 and P(R <= 15)
    // = 0.9815, the first above 0.975: up = 15 - 1 = 14.  11 lies inside.
    EXPECT_TRUE(G02WALD1(kTwenty.data(), 20, 0.05, stat, low, up, err));
    EXPECT_EQ(err, 0);
    EXPECT_EQ(stat, 11.0);
    EXPECT_EQ(low, 7.0);
    EXPECT_EQ(up, 14.0);
    // The same 20 points about the centre 0 lie all above: m = 0.
    EXPECT_FALSE(G02WALD2(kTwenty.data(), 20, 0.0, 0.05, stat, low, up, err));
    EXPECT_EQ(err, 1);
    EXPECT_EQ(stat, 1.0);
    EXPECT_EQ(low, 0.0);
    EXPECT_EQ(up, 0.0);
    EXPECT_EQ(output(), "");
}

TEST_F(RunsTest, ExactCriticalNumbersOfSmallSamples) {
    int lo = 0, hi = 0;
    // n1 = n2 = 2: rmax 4, C(4,2) = 6, P(R=2) = P(R=3) = P(R=4) = 1/3.
    G02WALD3(2, 2, 0.05, lo, hi);
    EXPECT_EQ(lo, 2);
    EXPECT_EQ(hi, 3);
    // With alpha so small that 1 - alpha is 1 no count exceeds it: up stays rmax.
    G02WALD3(2, 2, 1e-17, lo, hi);
    EXPECT_EQ(hi, 4);
    // rmax is 2 n1 + 1 only when n1 < n2 - 1.
    G02WALD3(2, 3, 1e-17, lo, hi);
    EXPECT_EQ(hi, 4);
    G02WALD3(4, 2, 1e-17, lo, hi);  // exchanged to (2, 4)
    EXPECT_EQ(hi, 5);
    // Fewer than one possible pair of runs: low 1, up rmax.
    G02WALD3(0, 5, 0.05, lo, hi);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 1);
    for (const special_reference::Row& r : special_reference::rowsOf("G02WALD3")) {
        std::istringstream expected(r.value);
        int wantLow = 0, wantUp = 0;
        expected >> wantLow >> wantUp;
        G02WALD3(r.n(0), r.n(1), r.a(2), lo, hi);
        EXPECT_EQ(lo, wantLow) << r.arg[0] << " " << r.arg[1] << " " << r.arg[2];
        EXPECT_EQ(hi, wantUp) << r.arg[0] << " " << r.arg[1] << " " << r.arg[2];
    }
    EXPECT_EQ(output(), "");
}

TEST_F(RunsTest, ModeratelyUnbalancedLongSampleUsesTheBetaApproximation) {
    // m = 10, M = 60, m/M = 1/6: stat = 1 - (1200/70)/69 = 0.75155279503,
    // whatever R is; the limits move with R.  Their values come from scipy's
    // betaincinv (reference table).
    const auto rows = special_reference::rowsOf("G02WALD2-BETA");
    ASSERT_EQ(rows.size(), 3u);
    for (const special_reference::Row& r : rows) {
        const int runs = r.n(0);
        std::istringstream expected(r.value);
        double wantLow = 0.0, wantUp = 0.0;
        expected >> wantLow >> wantUp;
        const std::vector<double> x = makeRuns(10, 60, runs);
        const bool accepted = G02WALD2(x.data(), 70, 0.0, 0.05, stat, low, up, err);
        EXPECT_EQ(err, 0);
        EXPECT_NEAR(stat, 0.7515527950310559, 1e-15);
        EXPECT_NEAR(low, wantLow, 1e-9) << runs;
        EXPECT_NEAR(up, wantUp, 1e-9) << runs;
        EXPECT_EQ(accepted, wantLow < stat && stat < wantUp) << runs;
    }
    // 9 runs: up = 0.559 lies below the statistic, so the test rejects.
    const std::vector<double> nine = makeRuns(10, 60, 9);
    EXPECT_FALSE(G02WALD2(nine.data(), 70, 0.0, 0.05, stat, low, up, err));
    EXPECT_EQ(output(), "");
}

}  // namespace
