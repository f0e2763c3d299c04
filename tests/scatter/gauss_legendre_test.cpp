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
