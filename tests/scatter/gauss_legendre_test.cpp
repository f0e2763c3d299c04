// Tests of GAUSSQ: exactness to degree 2n - 1 for every rule, the node
// order, the largest 64-point node, and which rule a request receives.
#include "scatter/gauss_legendre.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

int gPower = 0;
std::vector<double> gNodes;

double monomial(double x) { return std::pow(x, gPower); }
// 1 at the first node of a rule, 0 at the others: the rule gives h w_1.
double firstNodeOnly(double) { return gNodes.empty() ? (gNodes.push_back(0.0), 1.0) : 0.0; }
double recordNode(double x) {
    gNodes.push_back(x);
    return 1.0;
}
// Exact integral of x^k on [a, b].
double monomialIntegral(int k, double a, double b) {
    return (std::pow(b, k + 1) - std::pow(a, k + 1)) / (k + 1);
}

const int kRules[] = {1, 2, 3, 4, 5, 6, 8, 10, 12, 14, 16, 20, 24, 32, 48, 64};

class GaussLegendre : public ::testing::Test {
protected:
    void SetUp() override {
        resetGaussLegendre();
        gNodes.clear();
    }
};

TEST_F(GaussLegendre, EveryRuleIntegratesPolynomialsOfDegreeTwoNMinusOneExactly) {
    for (int n : kRules) {
        for (gPower = 0; gPower <= 2 * n - 1; ++gPower) {
            int status = -7;
            const double got = GAUSSQ(0.5, 1.5, n, monomial, status);
            const double want = monomialIntegral(gPower, 0.5, 1.5);
            EXPECT_NEAR(got, want, 2e-14 * want) << "n = " << n << ", degree " << gPower;
            EXPECT_EQ(status, 0);
        }
    }
}

TEST_F(GaussLegendre, NodesRunFromTheEndBToTheEndA) {
    int status = 0;
    GAUSSQ(-1.0, 1.0, 3, recordNode, status);
    ASSERT_EQ(gNodes.size(), 3u);
    EXPECT_NEAR(gNodes[0], std::sqrt(0.6), 1e-16);
    EXPECT_EQ(gNodes[1], 0.0);
    EXPECT_NEAR(gNodes[2], -std::sqrt(0.6), 1e-16);

    gNodes.clear();
    GAUSSQ(1.0, 0.0, 4, recordNode, status);  // b below a: start next to 0
    ASSERT_EQ(gNodes.size(), 4u);
    for (int i = 1; i < 4; ++i) EXPECT_GT(gNodes[i], gNodes[i - 1]);
    EXPECT_NEAR(gNodes[0], 0.5 - 0.5 * 0.8611363115940526, 1e-16);

    gPower = 3;  // reversed limits change the sign
    EXPECT_NEAR(GAUSSQ(2.0, 0.0, 2, monomial, status), -4.0, 1e-14);
}

TEST_F(GaussLegendre, SixtyFourPointRuleHoldsDoublePrecisionValues) {
    // Largest zero of P_64 and its weight, to 21 digits.
    int status = 0;
    EXPECT_NEAR(GAUSSQ(-1.0, 1.0, 64, firstNodeOnly, status), 0.00178328072169643294730, 4e-19);
    gNodes.clear();
    GAUSSQ(-1.0, 1.0, 64, recordNode, status);
    EXPECT_NEAR(gNodes.at(0), 0.999305041735772139457, 1.2e-16);
}

TEST_F(GaussLegendre, RequestsAreRoundedUpToATabulatedRuleAndCutAt64) {
    const int requests[] = {-3, 0, 1, 7, 9, 17, 33, 49, 63, 64, 65, 128};
    const int points[] = {1, 1, 1, 8, 10, 20, 48, 64, 64, 64, 64, 64};
    const int statuses[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1};
    for (int i = 0; i < 12; ++i) {
        gNodes.clear();
        int status = -7;
        GAUSSQ(0.0, 1.0, requests[i], recordNode, status);
        EXPECT_EQ(static_cast<int>(gNodes.size()), points[i]) << requests[i];
        EXPECT_EQ(gaussRulePoints(requests[i]), points[i]) << requests[i];
        EXPECT_EQ(status, statuses[i]) << requests[i];
    }
}

}  // namespace
