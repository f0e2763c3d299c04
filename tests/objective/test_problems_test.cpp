// The fourteen test problems as one catalogue: dimension, start point, value
// at the start (by hand, or a long double re-computation of the textbook
// formula), a minimum point and the value there.
#include "objective_fixture.h"
#include "objective/test_problems.h"

#include <cmath>

namespace {

using Problems = ObjectiveFixture;
using LD = long double;
const LD kPi = 3.141592653589793238462643383279502884L;

// Problem 4 at x(i) = 0.1, n = 10.
LD trigonometricStart() {
    const int n = 10;
    LD f = 0;
    for (int i = 1; i <= n; ++i) {
        LD sum = 0;
        for (int j = 1; j <= n; ++j) sum += cosl(0.1L - 1) - sinl(0.1L - 1) + i * (1 - cosl(0.1L - 1));
        f += (n - sum) * (n - sum);
    }
    return f + (0.9L * 0.01L) * (0.9L * 0.01L) + (n - 1) * (0.09L * 0.03333L) * (0.09L * 0.03333L);
}

// Problem 11 at (0.5, 0, 2.5, 3): the residuals of the exponential fit.
LD exponentialStart() {
    LD f = 0;
    for (int k = 1; k <= 10; ++k) {
        const LD t = 0.2L * k, r = expl(-t) + 2 * expl(-2 * t) - 2.5L * expl(-3 * t) - 0.5L;
        f += r * r;
    }
    return f;
}

struct Problem {
    int code;
    std::vector<double> start;
    LD fStart;
    std::vector<double> minimum;
    double fMinimum;
};

TEST_F(Problems, CatalogueOfStartsValuesAndMinima) {
    const LD w = -4 * sqrtl(kPi);
    const Problem rows[] = {
        {1, {-1.0, 0.8}, 8.0L, {1, 1}, 0.0},  // (1+1)^2 + (10*(0.8-1))^2; x2 = (-1)^2 - 0.2
        {2, {3.0, -1.0, 0.0, 1.0}, 215.0L, {0, 0, 0, 0}, 0.0},  // 49 + 5 + 1 + (sqrt10 * 16)^2
        {3, {-3.0, -1.0, -3.0, -1.0}, 15592.0L, {1, 1, 1, 1}, 0.0},  // 100*64 + 16 + 90*100 + 16 + 10.1*8 + 19.8*4
        {4, std::vector<double>(10, 0.1), trigonometricStart(), std::vector<double>(10, 1.0), 0.0},
        {5, {-1.0, 0.0, 0.0}, 2500.0L, {1, 0, 0}, 0.0},  // t = 0.5: (10*(0 - 5))^2
        {6, {-14.0, 21.0}, 1223.0L / 51.0L, {0, 0}, -1.0},  // (35^2 - 2) / (7^2 + 2)
        {7, {0.0, 0.0}, -0.9322L, {1, 1}, 0.9622 - 0.9322 - 0.7725},
        {9, {-4.0, -0.5}, 100 * (-0.5L - sinl(w)) * (-0.5L - sinl(w)) + 25, {1, std::sin(std::sqrt(M_PI))}, 0.0},
        {10, {1.0}, -5.199L, {10}, -6.0},  // (0.01 - 2) * 0.1 - 5; (1 - 2) * 10 * 0.1 - 5
        {11, {0.5, 0.0, 2.5, 3.0}, exponentialStart(), {1, 1, 2, 2}, 0.0},
        {12, {2.0, 2.0}, 235.835L, {1, 1}, 0.0},  // 101 + 2 * 50.5 + 1e-4 * 338350
        {13, {0.0, 0.0}, 0.5L * 101 + 0.5L * 50.5, {0.5, 0.5}, 0.0},  // |(1 + t) / 2| summed
        {14, {0.0}, 0.0L, {123.0}, 0.0},
    };
    for (const Problem& p : rows) {
        SCOPED_TRACE(p.code);
        TerminalTest::SetUp();
        E4DataSet.iStat(row::messageLevel) = 1;
        expectClose(select(p.code, p.code == 1 ? "\n\n" : ""), p.fStart);
        expectStart(p.start);
        EXPECT_NEAR(at(p.minimum), p.fMinimum, 1e-14);
    }
}

TEST_F(Problems, RosenbrockScaledByAThousandKeepsItsValueInBothForms) {
    E4DataSet.nVar() = 7;  // lowered to 6
    const double classical = select(1, "Classical\n1000\n0\n", 0);
    ASSERT_EQ(nVar(), 6);
    std::vector<LD> u(6);  // x(1) = -1, x(i+1) = x(i)^2 - 0.2
    u[0] = -1;
    for (int i = 1; i < 6; ++i) u[i] = u[i - 1] * u[i - 1] - 0.2L;
    LD expected = 0;
    for (int k = 0; k < 3; ++k) {
        const LD d = u[2 * k + 1] - u[2 * k] * u[2 * k];
        expected += (1 - u[2 * k]) * (1 - u[2 * k]) + 100 * d * d;
    }
    expectClose(classical, expected);
    expectClose(x(3), 1000 * u[2]);
    expectClose(x(4), u[3]);
    EXPECT_EQ(E4DataSet.bL(3), -1e23);
    EXPECT_EQ(E4DataSet.bU(5), 1e20);
    EXPECT_NEAR(at({1, 1, 1000, 1, 1, 1000}), 0.0, 1e-15);
    // R-Ze form: every neighbour term is (10 * -0.2)^2, so f = 4 + 4 (n - 1).
    resetTargetFunction();
    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_NEAR(select(1, "rze\n1000\n\n", 0), 24.0, 1e-12);
    // u3 = u6 = 0.001: terms 3 and 6 are (10 * (0.001 - 1))^2, term 4 (10 * (1 - 1e-6))^2.
    EXPECT_NEAR(at({1, 1, 1, 1, 1, 1}), 299.6000000001, 1e-9);
}

TEST_F(Problems, SpiralChuteGuardsItsAngleAtZero) {
    EXPECT_EQ(spiralAngle(0.0, 3.0), 0.25);
    EXPECT_EQ(spiralAngle(0.0, -3.0), 0.25);
    EXPECT_NEAR(spiralAngle(-1.0, -1.0), 0.625, 1e-15);  // atan(1)/2pi + 0.5
    select(5);
    // t = 0.25: (10*(0 - 2.5))^2 + (10*(2 - 1))^2 for either sign of x2.
    EXPECT_NEAR(at({0, -2, 0}), 725.0, 1e-12);
}

}  // namespace
