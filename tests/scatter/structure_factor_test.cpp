// Tests of the sticky-hard-sphere structure factor against Baxter's
// factorization evaluated directly, its switches, limits and substitutes.
#include "scatter/structure_factor.h"

#include "independent_quadrature.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// 1/|Q(k)|^2 with Q(k) = 1 - 12 eta int_0^1 q(t) e^{ikt} dt and Baxter's
// q(t) = (alpha/2)(t^2 - 1) + beta (t - 1) + lambda/12; lambda is the smaller
// root of (eta/12) L^2 - (tau + eta/(1 - eta)) L + (1 + eta/2)/(1 - eta)^2.
double baxterDirect(double eta, double tau, double k) {
    const double d = 1.0 - eta;
    const double a = eta / 12.0, b = -(tau + eta / d), c = (1.0 + eta / 2.0) / (d * d);
    const double lambda = 2.0 * c / (-b + std::sqrt(b * b - 4.0 * a * c));
    const double mu = lambda * eta * d;
    const double alpha = (1.0 + 2.0 * eta - mu) / (d * d);
    const double beta = (mu - 3.0 * eta) / (2.0 * d * d);
    auto q = [&](double t) {
        return alpha / 2.0 * (t * t - 1.0) + beta * (t - 1.0) + lambda / 12.0;
    };
    auto qCos = [&](double t) { return q(t) * std::cos(k * t); };
    auto qSin = [&](double t) { return q(t) * std::sin(k * t); };
    const double re = 1.0 - 12.0 * eta * simpson(qCos, 0.0, 1.0, 4000);
    const double im = -12.0 * eta * simpson(qSin, 0.0, 1.0, 4000);
    return 1.0 / (re * re + im * im);
}

class StructureFactor : public ::testing::Test {
protected:
    void SetUp() override { resetStructureFactor(); }
    double out[4] = {-7.0, -7.0, -7.0, -7.0};
};

TEST_F(StructureFactor, MatchesBaxterFactorizationEvaluatedDirectly) {
    const double cases[][5] = {{0.2, 0.5, 0.5, 2.0, 7.3},
                               {0.3, 0.2, 0.0, 1.0, 4.0},
                               {0.05, 3.0, 0.3, 9.0, 15.0},
                               {0.4, 0.1, 0.8, 3.1, 6.2}};
    const double Rhs = 25.0;
    for (const auto& c : cases) {
        // cSys 2 eta and Vf 0.5 give eta exactly; x = 2 Rhs s.
        const double s[3] = {c[2] / 50.0, c[3] / 50.0, c[4] / 50.0};
        ASSERT_EQ(sphereStructureFactor(2.0 * c[0], 0.5, Rhs, c[1], s, 3, out), kStrFacApplied);
        for (int k = 0; k < 3; ++k) {
            const double want = baxterDirect(c[0], c[1], c[2 + k]);
            EXPECT_NEAR(out[k], want, 1e-9 * want) << c[0] << " " << c[1] << " " << c[2 + k];
        }
        EXPECT_EQ(out[3], -7.0);
        EXPECT_EQ(strFacLast.etaLast, c[0]);
        EXPECT_EQ(strFacLast.RhsLast, Rhs);
        EXPECT_EQ(strFacLast.tauLast, c[1]);
    }
}

TEST_F(StructureFactor, StickinessOrFractionBelowOneHundredThousandthSwitchesItOff) {
    const double s[3] = {0.01, 0.05, 0.2};
    EXPECT_EQ(sphereStructureFactor(0.6, 0.5, 40.0, 9.99e-6, s, 3, out), kStrFacOff);
    EXPECT_EQ(out[0], 1.0);
    EXPECT_EQ(out[2], 1.0);
    EXPECT_EQ(out[3], -7.0);
    EXPECT_EQ(strFacLast.tauLast, 9.99e-6);
    EXPECT_EQ(sphereStructureFactor(1e5, 9.99e-6, 40.0, 0.5, s, 3, out), kStrFacOff);
    EXPECT_EQ(out[1], 1.0);
    EXPECT_EQ(sphereStructureFactor(1.0, 0.5, 40.0, 1e-5, s, 3, out), kStrFacApplied);  // eta 0.5
    EXPECT_NE(out[1], 1.0);
}

TEST_F(StructureFactor, UnphysicalParametersGiveOneAndAreReported) {
    const double s[3] = {0.01, 0.05, 0.2};
    const double cases[][3] = {{2.0, 0.5, 0.5},    // eta = 1
                               {0.0, 0.5, 0.5},    // eta = 0 with tau > 0
                               {0.4, 0.5, 0.05}};  // eta 0.2, tau 0.05: negative discriminant
    for (const auto& c : cases) {
        out[0] = out[1] = out[2] = -7.0;
        EXPECT_EQ(sphereStructureFactor(c[0], c[1], 40.0, c[2], s, 3, out), kStrFacSubstituted);
        EXPECT_EQ(out[0], 1.0);
        EXPECT_EQ(out[2], 1.0);
    }
}

}  // namespace
