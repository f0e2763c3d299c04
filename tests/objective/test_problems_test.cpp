// The fourteen test problems: start point and value there, checked against
// hand values or long double re-computations of the textbook formulas, and
// the value at the known minimum.
#include "objective_fixture.h"
#include "objective/test_problems.h"

#include <cmath>

namespace {

using Problems = ObjectiveFixture;
using LD = long double;
const LD kPi = 3.141592653589793238462643383279502884L;

// Rosenbrock's start x(1) = -1, x(i+1) = x(i)^2 - 0.2, unscaled.
std::vector<LD> rosenbrockStart(int n) {
    std::vector<LD> v(static_cast<std::size_t>(n));
    v[0] = -1;
    for (int i = 1; i < n; ++i) v[i] = v[i - 1] * v[i - 1] - 0.2L;
    return v;
}

TEST_F(Problems, RosenbrockStartsInTheValleyAndEndsAtOnes) {
    EXPECT_DOUBLE_EQ(select(1, "\n\n"), 8.0);  // (1+1)^2 + (10*(0.8-1))^2
    expectStart({-1.0, 0.8});  // (-1)^2 - 0.2
    EXPECT_EQ(at({1, 1}), 0.0);
}

TEST_F(Problems, RosenbrockScaledByAThousandKeepsItsValueInBothForms) {
    E4DataSet.nVar() = 7;  // lowered to 6
    double classical = select(1, "Classical\n1000\n0\n", 0);
    ASSERT_EQ(nVar(), 6);
    std::vector<LD> u = rosenbrockStart(6);
    LD expected = 0;
    for (int k = 0; k < 3; ++k) {
        expected += (1 - u[2 * k]) * (1 - u[2 * k]) +
                    100 * (u[2 * k + 1] - u[2 * k] * u[2 * k]) * (u[2 * k + 1] - u[2 * k] * u[2 * k]);
    }
    expectClose(classical, expected);
    expectClose(x(3), 1000 * u[2]);
    expectClose(x(6), 1000 * u[5]);
    expectClose(x(4), u[3]);
    EXPECT_EQ(E4DataSet.bL(3), -1e23);
    EXPECT_EQ(E4DataSet.bU(6), 1e23);
    EXPECT_EQ(E4DataSet.bU(5), 1e20);
    EXPECT_NEAR(at({1, 1, 1000, 1, 1, 1000}), 0.0, 1e-15);

    // R-Ze form: every neighbour term is (10 * -0.2)^2, so f = 4 + 4 (n - 1).
    resetTargetFunction();
    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_NEAR(select(1, "rze\n1000\n\n", 0), 24.0, 1e-12);
    EXPECT_NEAR(at({1, 1, 1000, 1, 1, 1000}), 0.0, 1e-15);
    // u3 = u6 = 0.001: terms 3 and 6 are (10 * (0.001 - 1))^2, term 4 (10 * (1 - 1e-6))^2.
    EXPECT_NEAR(at({1, 1, 1, 1, 1, 1}), 299.6000000001, 1e-9);
}

TEST_F(Problems, PowellWoodRepeatsItsBlock) {
    // 49 + 5 + 1 + (sqrt10 * 16)^2 = 49 + 5 + 1 + 160
    EXPECT_NEAR(select(2), 215.0, 1e-12);
    expectStart({3.0, -1.0, 0.0, 1.0});
    EXPECT_EQ(at({0, 0, 0, 0}), 0.0);
    EXPECT_NEAR(at({1, 1, 1, 1}), 122.0, 1e-12);  // 11^2 + 0 + 1 + 0
}

TEST_F(Problems, WoodProblem) {
    // 100*8^2 + 4^2 + 90*10^2 + 4^2 + 10.1*(4+4) + 19.8*4
    EXPECT_NEAR(select(3), 15592.0, 1e-9);
    expectStart({-3.0, -1.0, -3.0, -1.0});
    EXPECT_EQ(at({1, 1, 1, 1}), 0.0);
}

TEST_F(Problems, TrigonometricProblemOfTenVariables) {
    double f = select(4);
    ASSERT_EQ(nVar(), 10);
    const int n = 10;
    LD expected = 0;
    for (int i = 1; i <= n; ++i) {
        LD sum = 0;
        for (int j = 1; j <= n; ++j) sum += cosl(0.1L - 1) - sinl(0.1L - 1) + i * (1 - cosl(0.1L - 1));
        expected += (n - sum) * (n - sum);
    }
    expected += (0.9L * 0.01L) * (0.9L * 0.01L);
    expected += (n - 1) * (0.09L * 0.03333L) * (0.09L * 0.03333L);
    for (int i = 1; i <= n; ++i) EXPECT_DOUBLE_EQ(x(i), 0.1);
    expectClose(f, expected);
    EXPECT_EQ(at(std::vector<double>(10, 1.0)), 0.0);
}

TEST_F(Problems, SpiralChuteAndItsGuardAtZero) {
    EXPECT_NEAR(select(5), 2500.0, 1e-12);  // t = 0.5: (10*(0 - 5))^2
    expectStart({-1.0, 0.0, 0.0});
    EXPECT_EQ(spiralAngle(0.0, 3.0), 0.25);
    EXPECT_EQ(spiralAngle(0.0, -3.0), 0.25);
    // t = 0.25: (10*(0 - 2.5))^2 + (10*(2 - 1))^2 for either sign of x2.
    EXPECT_NEAR(at({0, 2, 0}), 725.0, 1e-12);
    EXPECT_NEAR(at({0, -2, 0}), 725.0, 1e-12);
    EXPECT_NEAR(spiralAngle(-1.0, -1.0), 0.625, 1e-15);  // atan(1)/2pi + 0.5
    EXPECT_EQ(at({1, 0, 0}), 0.0);
}

TEST_F(Problems, CunningProblemAndFriedensSquare) {
    EXPECT_DOUBLE_EQ(select(6), 1223.0 / 51.0);  // (35^2 - 2) / (7^2 + 2)
    expectStart({-14.0, 21.0});
    EXPECT_EQ(at({0, 0}), -1.0);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_DOUBLE_EQ(select(7), -0.9322);
    expectStart({0.0, 0.0});
    EXPECT_NEAR(at({1, 1}), 0.9622 - 0.9322 - 0.7725, 1e-14);
}

TEST_F(Problems, SinusoidalChuteInTwoAndFourVariables) {
    double f = select(9);
    const LD w = -4 * sqrtl(kPi);
    expectClose(f, 100 * (-0.5L - sinl(w)) * (-0.5L - sinl(w)) + 25);
    expectStart({-4.0, -0.5});
    EXPECT_NEAR(at({1, std::sin(std::sqrt(M_PI))}), 0.0, 1e-20);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    E4DataSet.nVar() = 4;
    f = select(9, "0\n", 0);
    const LD c = cosl(w), s = sinl(w);
    expectClose(f, 100 * (0.5L - c * c) * (0.5L - c * c) + 25 +
                       100 * ((-0.5L - s) * (-0.5L - s) + (-0.5L - c * s) * (-0.5L - c * s)));
    expectStart({-4.0, -0.5, -0.5, 0.5});
}

TEST_F(Problems, OneDimensionalAndExponentialFit) {
    EXPECT_NEAR(select(10), -5.199, 1e-14);  // (0.01 - 2) * 0.1 - 5
    expectStart({1.0});
    EXPECT_NEAR(at({10}), -6.0, 1e-14);  // (1 - 2) * 10 * 0.1 - 5

    E4DataSet.iStat(row::functionEvaluations) = 0;
    double f = select(11);
    LD expected = 0;
    for (int k = 1; k <= 10; ++k) {
        LD t = 0.2L * k;
        LD r = expl(-t) + 2 * expl(-2 * t) - 2.5L * expl(-3 * t) - 0.5L;
        expected += r * r;
    }
    expectClose(f, expected);
    expectStart({0.5, 0.0, 2.5, 3.0});
    EXPECT_NEAR(at({1, 1, 2, 2}), 0.0, 1e-28);
}

TEST_F(Problems, PolynomialApproximations) {
    // p - q = 1 + t on the grid t = 0, 0.01, ..., 1:
    // 101 + 2 * 50.5 + 0.0001 * 338350
    EXPECT_NEAR(select(12), 235.835, 1e-11);
    expectStart({2.0, 2.0});
    EXPECT_EQ(at({1, 1}), 0.0);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_NEAR(select(13), 0.5 * 101 + 0.5 * 50.5, 1e-12);  // |0 - (1 + t) / 2|
    expectStart({0.0, 0.0});
    EXPECT_NEAR(at({0.5, 0.5}), 0.0, 1e-14);
    EXPECT_NEAR(at({1, 0}), 0.5 * 101 - 0.5 * 50.5, 1e-12);  // |(1 - t) / 2|
}

TEST_F(Problems, ConstantFunction) {
    EXPECT_EQ(select(14), 0.0);
    expectStart({0.0});
    EXPECT_EQ(at({123.0}), 0.0);
}

}  // namespace
