// Tests of the error estimate: the window sizes of ERREST, the moving cubic
// SMOERR on exact cubics and its propagated error, the runs-test outcomes.
#include "support/terminal_test.h"
#include "scatter/measured_curve.h"

#include "monitor/monitor.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>
#include <vector>

namespace {

class SmoothingTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
    }
    void TearDown() override { unit::resetUnits(); }
    bool said(const std::string& text) const { return out_.str().find(text) != std::string::npos; }
};

TEST_F(SmoothingTest, CubicIsReproducedInEveryWindow) {
    // Uneven abscissae so that the edge windows use their own t.
    const int n = 21;
    std::vector<double> s(n), y(n), w(n, 1.0), ySm(n), eSm(n);
    for (int i = 0; i < n; ++i) {
        s[i] = i + 0.1 * i * i;
        y[i] = s[i] * s[i] * s[i] - 2.0 * s[i] * s[i] + 0.5 * s[i] + 3.0;
    }
    SMOERR(n, 3, s.data(), y.data(), w.data(), ySm.data(), eSm.data());
    for (int i = 0; i < n; ++i) EXPECT_NEAR(ySm[i], y[i], 1e-7 * std::fabs(y[i]) + 1e-9) << i;
}

TEST_F(SmoothingTest, NoisyCurveGetsErrorsNearTheNoise) {
    const int n = 200;
    std::mt19937 generator(12345);
    std::normal_distribution<double> normal(0.0, 1.0);
    std::vector<double> s(n), y(n), e(n), sigma(n);
    for (int i = 0; i < n; ++i) {
        s[i] = 0.005 + 0.001 * i;
        const double truth = 1000.0 * std::exp(-s[i] * s[i] * 400.0 / 3.0) + 1.0;
        sigma[i] = 0.05 * truth;
        y[i] = truth + sigma[i] * normal(generator);
    }
    const double result = ERREST(n, s.data(), y.data(), e.data());
    EXPECT_GT(result, 0.0);
    EXPECT_TRUE(said("ERREST ----- Errors estimated by polynimial smoothing"));
    double ratio = 0.0;
    double sumE = 0.0;
    double sumY = 0.0;
    for (int i = 0; i < n; ++i) {
        ratio += e[i] / sigma[i];
        sumE += e[i] * e[i];
        sumY += y[i] * y[i];
    }
    ratio /= n;
    EXPECT_GT(ratio, 0.5);
    EXPECT_LT(ratio, 2.0);
    EXPECT_NEAR(result, sumE / sumY, 1e-12 * result);
}

TEST_F(SmoothingTest, RejectedResidualsGetFlatThreePercent) {
    // Every point alternately 30 percent above and below a smooth curve:
    // the residuals change sign at every point, far too many runs.
    const int n = 60;
    std::vector<double> s(n), y(n), e(n);
    for (int i = 0; i < n; ++i) {
        s[i] = 0.01 * (i + 1);
        y[i] = 100.0 / (1.0 + s[i]) * (i % 2 == 0 ? 1.3 : 0.7);
    }
    const double result = ERREST(n, s.data(), y.data(), e.data());
    EXPECT_DOUBLE_EQ(result, -0.0009);
    for (int i = 0; i < n; ++i) EXPECT_DOUBLE_EQ(e[i], 0.03 * y[i] + 1e-20);
    EXPECT_FALSE(said("Errors estimated"));
}

TEST_F(SmoothingTest, ShortCurves) {
    // Nine points: the runs test cannot judge and accepts; errors estimated.
    std::vector<double> s(9), y(9), e(9, 0.0);
    for (int i = 0; i < 9; ++i) {
        s[i] = i + 1.0;
        y[i] = 50.0 / s[i] + (i % 3 == 0 ? 0.5 : -0.2);
    }
    const double result = ERREST(9, s.data(), y.data(), e.data());
    EXPECT_TRUE(said(" G02WALD1 -E- Number of data points less than 20."));
    EXPECT_GT(result, 0.0);
    for (int i = 0; i < 9; ++i) EXPECT_GT(e[i], 0.0);

    // Four points leave no room for the second window: flat errors.
    const double y4[] = {4.0, -3.0, 2.0, 1.0};
    double e4[4];
    EXPECT_DOUBLE_EQ(ERREST(4, s.data(), y4, e4), -0.0009);
    EXPECT_DOUBLE_EQ(e4[1], 0.09 + 1e-20);
}

}  // namespace
