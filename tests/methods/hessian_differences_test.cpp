// E04HES4 on functions whose Hessian is known: a loaded quadratic (problem
// 8) and Rosenbrock at its minimum; a fixed variable; the eigenvalues
// against the eigenproblem solver on the exact matrix; the inverse diagonal.
#include "methods/hessian_differences.h"
#include "methods_fixture.h"
#include "numlib/symmetric_eigen.h"

#include <algorithm>
#include <cmath>

namespace {

class HessianDifferences : public MethodsFixture {
protected:
    // Problem 8 in three variables, f = 1/2 (x - z)' A (x - z) with z =
    // (1, -2, 0.5), at its start 0; or Rosenbrock (classical, scale 1).
    void start(int code) {
        feed(code == 8 ? "4 1 0.5\n3 0.2\n2\nY\n0\n1 -2 0.5\n" : "\n\n");
        E4DataSet.nVar() = code == 8 ? 3 : 2;
        select(code);
    }
    int hessian() {
        E4DataSetRecord& d = E4DataSet;
        int err = 0;
        E04HES4(d.xEnd.data(), d.fEnd, d.finDif.data(), err, "TEST");
        return err;
    }
};

// The exact Hessians: A of the quadratic; of Rosenbrock at (1, 1),
// f = (1 - x)^2 + 100 (y - x^2)^2: f_xx = 2 - 400 (y - 3 x^2) = 802,
// f_xy = -400 x = -400, f_yy = 200.
TEST_F(HessianDifferences, EqualsTheExactMatrixAndItsEigenvalues) {
    struct Case {
        int code;
        double finDif;  // 0: found by the adaptive differences
        std::vector<double> exact;
        double tolerance;
    } const cases[] = {
        {8, 0.0, {4, 1, 0.5, 1, 3, 0.2, 0.5, 0.2, 2}, 1e-6},
        // The one-sided second difference errs by about h f''' (2400 h on
        // f_xx): the interval 1e-12 makes h = 1.1e-6.
        {1, 1e-12, {802, -400, -400, 200}, 1e-5},
    };
    for (const Case& c : cases) {
        fresh();
        start(c.code);
        E4DataSetRecord& d = E4DataSet;
        const int n = d.nVar();
        if (c.code == 1) {
            d.xEnd(1) = d.xEnd(2) = 1.0;
            d.fEnd = E4FUN1(d.xEnd);
        }
        if (c.finDif > 0.0) {
            for (int i = 1; i <= n; ++i) d.finDif(i) = c.finDif;
            d.iStat(row::finDifSet) = 1;
        }
        const int nfe0 = d.iStat(row::functionEvaluations);
        EXPECT_EQ(hessian(), 0);
        if (c.finDif > 0.0) {
            EXPECT_EQ(d.iStat(row::functionEvaluations) - nfe0, n * (n + 1) + n);
        }
        // Relative to the largest element: the noise of f divided by
        // h(i) h(j) is the same in every element.
        std::vector<double> a(c.exact), e(static_cast<std::size_t>(n)), r(static_cast<std::size_t>(n));
        const double largest = *std::max_element(c.exact.begin(), c.exact.end());
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j) {
                const double x = c.exact[static_cast<std::size_t>((i - 1) * n + j - 1)];
                EXPECT_NEAR(d.Hesse(i, j), x, c.tolerance * largest) << c.code << " " << i << j;
            }
        }
        int err = 0;
        F02RSM1(a.data(), r.data(), e.data(), n, n, err);
        for (int i = 1; i <= n; ++i) EXPECT_NEAR(d.R_eigen(i), r[static_cast<std::size_t>(i - 1)], c.tolerance * std::fabs(r[0]));
        EXPECT_EQ(d.iStat(row::HesseSet) + d.iStat(row::R_eigenSet) + d.iStat(row::V_eigenSet), 3);
    }
}

}  // namespace
