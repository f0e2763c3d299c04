// Tests of F02RSM1, F01TDR1 and F02TDM1: hand-worked small cases, the sort,
// refused dimensions, convergence failure, and random matrices up to 128.
#include "numlib/symmetric_eigen.h"

#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

namespace {

constexpr int LD = 128;

// A column-major work matrix with its two vectors, as the monitor holds them.
struct Problem {
    int ld;
    std::vector<double> a, d, e;
    explicit Problem(int ldim = LD) : ld(ldim), a(ldim * ldim, 0.0), d(ldim, 0.0), e(ldim, 0.0) {}
    double& at(int i, int j) { return a[(j - 1) * ld + (i - 1)]; }
    void set(int i, int j, double v) { at(i, j) = v; at(j, i) = v; }
};

class SymmetricEigen : public ::testing::Test {
protected:
    std::ostringstream console;
    void SetUp() override {
        unit::resetUnits();
        unit::setTerminal(nullptr, &console);
        resetSymmetricEigen();
    }
    void TearDown() override { unit::resetUnits(); }
};

const std::string kNoDimension = " --E- Working dimension exceeds  maximum value.\n";
const std::string kFailed = " F02RSM1 --E- Eigenproblem failed to solve.\n";

TEST_F(SymmetricEigen, DimensionsOutsideOneToLdimAreRefused) {
    Problem p;
    int err = 0;
    F02RSM1(p.a.data(), p.d.data(), p.e.data(), LD, 129, err);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(console.str(), " F01TDR1" + kNoDimension + kFailed);

    console.str("");
    F02TDM1(p.d.data(), p.e.data(), p.a.data(), LD, 0, err);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(console.str(), " F02TDM1" + kNoDimension);

    console.str("");
    Problem small(3);
    F01TDR1(small.a.data(), small.d.data(), small.e.data(), 3, 4, err);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(console.str(), " F01TDR1" + kNoDimension);
}

// A NaN never passes the split test: the limit is 30*(n/2)+30 sweeps.
TEST_F(SymmetricEigen, ConvergenceFailureAfterTheIterationLimit) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (auto [n, limit] : {std::pair{2, 60}, std::pair{5, 90}, std::pair{128, 1950}}) {
        console.str("");
        Problem p;
        for (int i = 1; i <= n; ++i) p.at(i, i) = i;
        p.set(2, 1, nan);
        int err = 0;
        F02RSM1(p.a.data(), p.d.data(), p.e.data(), LD, n, err);
        EXPECT_EQ(err, -2) << n;
        EXPECT_EQ(F02TDM1Sweeps(), limit) << n;
        EXPECT_EQ(console.str(), " F02TDM1 --E- Convergence failure in QL routine.\n" + kFailed);
    }
}

// Largest |A - V*diag(d)*V^T| relative to the largest |A|, and the largest
// deviation of V^T*V from the identity.
void checkDecomposition(const Problem& in, const Problem& out, int n) {
    const auto A = [&](int i, int j) { return in.a[(j - 1) * LD + (i - 1)]; };
    const auto V = [&](int i, int j) { return out.a[(j - 1) * LD + (i - 1)]; };
    double aMax = 0.0, resid = 0.0, orth = 0.0;
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= n; ++j) {
            double r = 0.0, o = 0.0;
            for (int k = 1; k <= n; ++k) {
                r += V(i, k) * out.d[k - 1] * V(j, k);
                o += V(k, i) * V(k, j);
            }
            aMax = std::max(aMax, std::fabs(A(i, j)));
            resid = std::max(resid, std::fabs(A(i, j) - r));
            orth = std::max(orth, std::fabs(o - (i == j ? 1.0 : 0.0)));
        }
    }
    EXPECT_LE(resid, 1e-12 * aMax) << "n = " << n;
    EXPECT_LE(orth, 1e-12) << "n = " << n;
    for (int k = 1; k < n; ++k) EXPECT_GE(std::fabs(out.d[k - 1]), std::fabs(out.d[k])) << n;
}

TEST_F(SymmetricEigen, RandomMatricesAreReconstructed) {
    std::mt19937 gen(20240611);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (int n : {2, 3, 4, 7, 16, 33, 64, 100, 127, 128}) {
        Problem p;
        for (int j = 1; j <= n; ++j)
            for (int i = j; i <= n; ++i) p.set(i, j, u(gen) * (i == j ? 1.0 : std::pow(10.0, -(i - j) % 5)));
        Problem out = p;
        int err = 5;
        F02RSM1(out.a.data(), out.d.data(), out.e.data(), LD, n, err);
        ASSERT_EQ(err, 0) << n;
        checkDecomposition(p, out, n);
    }
    EXPECT_EQ(console.str(), "");
}

// Q*diag(lambda)*Q^T with a Householder Q = I - 2ww^T/w^Tw: the spectrum is
// known exactly, with a double eigenvalue 3 and a zero.
TEST_F(SymmetricEigen, KnownSpectrumComesBackInOrder) {
    const int n = 8;
    const double lambda[n] = {0.5, 3.0, -2.0, 5.0, 0.0, -4.0, 1.0, 3.0};
    const double w[n] = {1, -2, 3, 1, -1, 2, 1, -3};
    double ww = 0;
    for (double x : w) ww += x * x;
    const auto Q = [&](int i, int j) { return (i == j ? 1.0 : 0.0) - 2.0 * w[i] * w[j] / ww; };
    Problem p;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            double s = 0;
            for (int k = 0; k < n; ++k) s += Q(i, k) * lambda[k] * Q(j, k);
            p.at(i + 1, j + 1) = s;
        }
    int err = 5;
    F02RSM1(p.a.data(), p.d.data(), p.e.data(), LD, n, err);
    ASSERT_EQ(err, 0);
    const double want[n] = {5.0, -4.0, 3.0, 3.0, -2.0, 1.0, 0.5, 0.0};
    for (int k = 0; k < n; ++k) EXPECT_NEAR(p.d[k], want[k], 1e-13) << k;
    // The vector of 5 is column 4 of Q, up to its sign.
    const double sign = p.at(1, 1) * Q(0, 3) > 0 ? 1.0 : -1.0;
    for (int i = 0; i < n; ++i) EXPECT_NEAR(sign * p.at(i + 1, 1), Q(i, 3), 1e-14);
}

}  // namespace
