// The Hessian routines on small matrices whose results are known by hand:
// the multipliers of the Broyden family, BFGS against its textbook form,
// the diagonal, the repair of the spectrum and the fixed variables.
#include "methods/hessian_update.h"
#include "methods_fixture.h"

#include <cmath>

namespace {

using namespace hessian_trace;

class Hessian : public MethodsFixture {
protected:
    // B = m (n by n, by rows), `free` the iFixer entries, s and y the step.
    void set(int n, std::vector<double> m, std::vector<int> free, std::vector<double> s = {},
             std::vector<double> y = {}) {
        E4DataSetRecord& d = E4DataSet;
        d.nVar() = n;
        for (int i = 1; i <= n; ++i) {
            d.iFixer(i) = free[static_cast<std::size_t>(i - 1)];
            for (int j = 1; j <= n; ++j) d.Hesse(i, j) = m[static_cast<std::size_t>((i - 1) * n + j - 1)];
        }
        for (std::size_t i = 0; i < s.size(); ++i) d.deltaX(int(i) + 1) = s[i], d.deltaG(int(i) + 1) = y[i];
    }
    int spectrum() {
        int flag = 0;
        E4HES3(flag);
        return flag;
    }
};

// BFGS against B - Bs(Bs)'/<s,Bs> + yy'/<s,y>, computed here over the free
// variables 1 and 3; the fixed row and column stay as they were.
TEST_F(Hessian, BfgsUpdateMatchesTheTextbookFormula) {
    const double B[2][2] = {{2, 0.5}, {0.5, 1}}, s[2] = {0.3, -0.2}, y[2] = {0.7, 0.1};
    set(3, {B[0][0], 9, B[0][1], 9, 9, 9, B[1][0], 9, B[1][1]}, {1, 0, 1}, {s[0], 0, s[1]}, {y[0], 0, y[1]});
    E4DataSet.iStat(row::methodRunning) = 7;
    const double Bs[2] = {B[0][0] * s[0] + B[0][1] * s[1], B[1][0] * s[0] + B[1][1] * s[1]};
    const double sBs = s[0] * Bs[0] + s[1] * Bs[1], sy = s[0] * y[0] + s[1] * y[1];
    int flag = -1;
    E4HES1(sy, flag);
    ASSERT_EQ(flag, 0);
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 2; ++j)
            EXPECT_NEAR(E4DataSet.Hesse(2 * i + 1, 2 * j + 1), B[i][j] - Bs[i] * Bs[j] / sBs + y[i] * y[j] / sy, 1e-14);
    }
    for (int k = 1; k <= 3; ++k) EXPECT_EQ(E4DataSet.Hesse(2, k), 9.0);
    EXPECT_EQ(E4DataSet.iStat(row::HesseSet), 1);
}

// diag(4, -1e-17), of condition 4e17 beyond 2 / eps: the limit turns on,
// the negative eigenvalue is mirrored and raised to 4 / (2 / eps), and the
// repaired matrix replaces Hesse.  diag(4, -1), of moderate condition,
// passes as it is.  With variable 2 fixed, the free block [[2, 1], [1, 2]]
// has eigenvalues 3 and 1; spread back, variable 2 carries the unit vector
// and eigenvalue 0, and the inverse (1/3) [[2, -1], [-1, 2]] applied to
// g = (1, 5, 0) gives (2/3, 0, -1/3).
TEST_F(Hessian, SpectrumRepairedAndSpreadBack) {
    const double eps = std::ldexp(1.0, -52);
    E4DataSet.iStat(row::messageLevel) = 1;
    for (double b2 : {-1e-17, -1.0}) {
        set(2, {4, 0, 0, b2}, {1, 1});
        E4DataSet.iStat(row::hCondSwitch) = E4DataSet.iStat(row::hCondSet) = 0;
        EXPECT_EQ(spectrum(), 0);
        const double r2 = b2 == -1.0 ? -1.0 : 2 * eps;
        EXPECT_EQ(E4DataSet.R_eigen(1), 4.0);
        EXPECT_NEAR(E4DataSet.R_eigen(2), r2, 1e-30);
        EXPECT_NEAR(E4DataSet.Hesse(2, 2), r2, 1e-30);
        EXPECT_NEAR(E4DataSet.hCondNow * b2 / -4, 1.0, 1e-12);
        EXPECT_EQ(E4DataSet.iStat(row::hCondSwitch), b2 == -1.0 ? 0 : 1);
    }
    EXPECT_EQ(out_.str(), " E4HES3 -W- HESSIAN MATRIX IS NOT POSITIVE DEFINITE.\n");
    set(3, {2, 7, 1, 7, 7, 7, 1, 7, 2}, {1, 0, 1});
    EXPECT_EQ(spectrum(), 0);
    const E4DataSetRecord& d = E4DataSet;
    EXPECT_NEAR(d.R_eigen(1), 3, 1e-14);
    EXPECT_EQ(d.R_eigen(2), 0);
    EXPECT_NEAR(d.R_eigen(3), 1, 1e-14);
    EXPECT_EQ(d.V_eigen(2, 2), 1);
    EXPECT_EQ(d.V_eigen(2, 1), 0);
    const double g[3] = {1, 5, 0};
    double y[3];
    applyInverseHessian(g, y);
    EXPECT_NEAR(y[0], 2.0 / 3, 1e-14);
    EXPECT_EQ(y[1], 0);
    EXPECT_NEAR(y[2], -1.0 / 3, 1e-14);
}

}  // namespace
