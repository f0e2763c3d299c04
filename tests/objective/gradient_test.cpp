// Gradients: the analytical formulas against the test's own central
// differences, the adaptive procedure against analytical derivatives, and
// the branches of E4GRD1 and E4FDA1 seen through the points a recording
// user function is evaluated at.
#include "objective_fixture.h"

#include "app/module_registry.h"
#include "core/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/gradient.h"
#include "objective/user_function.h"

#include <cmath>

namespace {

using V = std::vector<double>;

// The user's problem of these tests records every point it is evaluated at.
// Kind 0: f = exp(x1/2) + x1 x2^2 + 2 cos x3 from (0.3, -1.2, 0); kind 1:
// f = 3 x1 - 2 x2 + x3/2 from the origin, where f(-h) = -f(h) exactly.
int userKind = 0;
std::vector<V> visited;

double recordingUserf(double* x) {
    if (E4DataSet.iStat(row::functionEvaluations) == 0) {
        E4DataSet.nVar() = 3;
        x[0] = userKind == 0 ? 0.3 : 0.0, x[1] = userKind == 0 ? -1.2 : 0.0, x[2] = 0.0;
        for (int i = 1; i <= 3; ++i) E4DataSet.iFixer(i) = 1;
    }
    visited.push_back(V(x, x + 3));
    if (userKind == 1) return 3 * x[0] - 2 * x[1] + 0.5 * x[2];
    return std::exp(x[0] / 2) + x[0] * x[1] * x[1] + 2 * std::cos(x[2]);
}

class Gradients : public ObjectiveFixture {
protected:
    void TearDown() override {
        ObjectiveFixture::TearDown();
        registerModules();
    }
    // Problem `code` chosen, the end point at its start.
    void choose(int code, const std::string& replies = "", int mode = 1) {
        E4DataSetRecord& d = E4DataSet;
        d.fStart = d.fEnd = select(code, replies, mode);
        d.iStat(row::nFree) = d.nVar();
        d.xEnd = d.xStart;
    }
    void chooseUser(int kind) {
        setUserFunction(recordingUserf);
        userKind = kind;
        choose(20);
        visited.clear();
    }
    int adaptive() {
        E4DataSetRecord& d = E4DataSet;
        int err = -1;
        E4FDA1(d.xEnd.data(), d.fEnd, d.finDif.data(), d.gEnd.data(), d.Hdiag.data(), err, "TEST");
        return err;
    }
    static double g(int i) { return E4DataSet.gEnd(i); }
    static int nfe() { return E4DataSet.iStat(row::functionEvaluations); }
    static int nge() { return E4DataSet.iStat(row::gradientEvaluations); }
};

bool near(double a, double b, double rel) { return std::fabs(a - b) <= rel * std::max(1.0, std::fabs(b)); }

TEST_F(Gradients, AnalyticalGradientsAgreeWithCentralDifferences) {
    struct Row { int code; std::string replies; int mode; };
    const Row rows[] = {{1, "", 1}, {1, "4\nR\n\n\n", 0}, {2, "8\n\n", 0}, {3, "", 1}};
    for (const Row& r : rows) {
        SetUp();
        choose(r.code, r.replies, r.mode);
        const int n = nVar();
        const V start(E4DataSet.xStart.data(), E4DataSet.xStart.data() + n);
        for (int p = 0; p < 3; ++p) {
            V x = start;  // the start, then two points around it
            for (int i = 0; i < n; ++i) x[i] += p * (0.4 * std::sin(1.0 + i * p) - 0.1 * p);
            V grad(128);
            double f = at(x);
            int err = -1;
            E4TFG1(x.data(), f, grad.data(), err);
            ASSERT_EQ(err, 0);
            for (int i = 0; i < n; ++i) {
                // Central difference with the test's own step h = 1e-5 (|x| + 1).
                const double h = 1e-5 * (std::fabs(x[i]) + 1), xi = x[i];
                x[i] = xi + h;
                const double up = at(x);
                x[i] = xi - h;
                const double down = at(x);
                x[i] = xi;
                EXPECT_TRUE(near(grad[i], (up - down) / (2 * h), 1e-6))
                    << r.code << " point " << p << " x(" << i + 1 << ") " << grad[i] << " " << (up - down) / (2 * h);
            }
        }
    }
}

// The adaptive procedure against exact derivatives: Rosenbrock and Wood by
// their analytical gradients and second derivatives worked out by hand, the
// loaded quadratic A = [4 1 0; 1 3 -1; 0 -1 2], minimum 1 at z = (1, -2, 0.5)
// by g = A (x - z) and Hdiag = diag A.  x = 0 (the quadratic's start) has no
// interval floor.  The noise level either as measured (FrlErr near eps, so
// the second difference keeps up to a tenth of noise, the accepted share) or
// loaded at 1e-10, far above the true noise, which leaves f'' nearly exact.
TEST_F(Gradients, AdaptiveDifferencesOnSmoothProblems) {
    for (int code : {1, 3, 8}) {
        for (double loadedNoise : {0.0, 1e-10}) {
            SetUp();
            if (code == 8) E4DataSet.nVar() = 3;  // kept: problem 8 asks nothing in auto mode
            choose(code, code == 8 ? "4 1 0\n3 -1\n2\nY\n1\n1 -2 0.5\n" : "", 1);
            if (loadedNoise > 0) E4DataSet.FrlErr = loadedNoise, E4DataSet.iStat(row::FrlErrSet) = 1;
            int err = 0;
            if (loadedNoise == 0) E4ERR1(E4DataSet.xEnd.data(), E4DataSet.fEnd, err, "TEST");
            const V x(E4DataSet.xEnd.data(), E4DataSet.xEnd.data() + nVar());
            V gt(128), ht;
            double f = E4DataSet.fEnd;
            if (code == 8) {
                const double A[3][3] = {{4, 1, 0}, {1, 3, -1}, {0, -1, 2}}, z[3] = {1, -2, 0.5};
                for (int i = 0; i < 3; ++i) {
                    for (int j = 0; j < 3; ++j) gt[i] += A[i][j] * (x[j] - z[j]);
                    ht.push_back(A[i][i]);
                }
            } else {
                E4TFG1(E4DataSet.xEnd.data(), f, gt.data(), err);
                if (code == 1) ht = {2 + 1200 * x[0] * x[0] - 400 * x[1], 200};
                else ht = {400 * (3 * x[0] * x[0] - x[1] * x[1]) + 2, 400 * (3 * x[1] * x[1] - x[0] * x[0]) + 20.2,
                           360 * (3 * x[2] * x[2] - x[3]) + 2, 200.2};
            }
            const int nfe0 = nfe();
            EXPECT_EQ(adaptive(), 0) << code;
            // Cost per variable: 2 for each pass of the step, 1 for each
            // attempt of the final phase, at most 12.
            const double cost = (nfe() - nfe0) / static_cast<double>(nVar());
            EXPECT_GE(cost, 3) << code;
            EXPECT_LE(cost, 12) << code;
            for (int i = 1; i <= nVar(); ++i) {
                EXPECT_TRUE(near(g(i), gt[i - 1], 1e-7)) << code << " g " << i << " " << g(i) << " " << gt[i - 1];
                EXPECT_TRUE(near(E4DataSet.Hdiag(i), ht[i - 1], loadedNoise > 0 ? 1e-4 : 0.1))
                    << code << " noise " << loadedNoise << " H " << i << " " << E4DataSet.Hdiag(i) << " " << ht[i - 1];
                EXPECT_GT(E4DataSet.finDif(i), 0);
            }
            EXPECT_EQ(nge(), 1);
            EXPECT_EQ(E4DataSet.iStat(row::HdiagSet) + E4DataSet.iStat(row::finDifSet) + E4DataSet.iStat(row::gEndSet), 3);
        }
    }
}

// Exact derivatives of the recording user function at (0.3, -1.2, 0).
const double kX1 = 0.3, kX2 = -1.2;
const V kGrad = {0.5 * std::exp(kX1 / 2) + kX2 * kX2, 2 * kX1 * kX2, 0};
const V kHdiag = {0.25 * std::exp(kX1 / 2), 2 * kX1, -2};

// Variable 2 fixed: its components are exactly 0 and no evaluation moves
// it; x(3) = 0 has no interval floor and still gets its derivatives.
TEST_F(Gradients, FixedVariableAndZeroArgument) {
    chooseUser(0);
    E4DataSet.iFixer(2) = 0;
    E4DataSet.iStat(row::nFree) = 2;
    EXPECT_EQ(adaptive(), 0);
    EXPECT_EQ(g(2), 0.0);
    EXPECT_EQ(E4DataSet.Hdiag(2), 0.0);
    EXPECT_EQ(E4DataSet.finDif(2), 0.0);
    for (const V& p : visited) EXPECT_EQ(p[1], kX2);
    for (int i : {1, 3}) {
        EXPECT_TRUE(near(g(i), kGrad[i - 1], 1e-7)) << i << " " << g(i);
        EXPECT_TRUE(near(E4DataSet.Hdiag(i), kHdiag[i - 1], 0.1)) << i;
    }
}

// The constant function: every second difference is 0, so the interval
// grows four times (10 evaluations) and the report is "constant"; g and
// Hdiag are 0, finDif the first interval 10 sqrt(FrlErr), and xStep stays.
TEST_F(Gradients, ConstantFunction) {
    choose(14);
    E4DataSet.FrlErr = 1e-14, E4DataSet.iStat(row::FrlErrSet) = 1;
    E4DataSet.xStep(1) = 0.25, E4DataSet.iStat(row::xStepSet) = 1;
    E4DataSet.iStat(row::messageLevel) = 5;
    output();
    const int nfe0 = nfe();
    EXPECT_EQ(adaptive(), 1);
    EXPECT_EQ(nfe() - nfe0, 10);
    EXPECT_EQ(g(1), 0.0);
    EXPECT_EQ(E4DataSet.Hdiag(1), 0.0);
    EXPECT_DOUBLE_EQ(E4DataSet.finDif(1), 1e-6);
    EXPECT_EQ(E4DataSet.xStep(1), 0.25);
    const std::string text = output();
    EXPECT_EQ(occurrences(text, "            f(x) is likely to be constant.\n"), 1);
    EXPECT_EQ(occurrences(text, "CAN BE FOUND. Cause diagnostics:\n"), 1);
}

// A linear function at the origin: every second difference is exactly 0,
// the first differences are fit from the first interval on, so after four
// growths the report is "odd or nearly linear" and g comes from H1.
TEST_F(Gradients, LinearFunction) {
    chooseUser(1);
    E4DataSet.iStat(row::messageLevel) = 5;
    output();
    EXPECT_EQ(adaptive(), 1);
    const V slope = {3, -2, 0.5};
    for (int i = 1; i <= 3; ++i) {
        EXPECT_NEAR(g(i), slope[i - 1], 1e-15) << i;
        EXPECT_EQ(E4DataSet.Hdiag(i), 0.0) << i;
    }
    EXPECT_EQ(occurrences(output(), "f(x) is likely to be either odd or nearly linear.\n"), 3);
}

// The points the recording function saw, as (variable, offset) pairs: each
// differs from x in one component.
std::vector<std::pair<int, double>> offsets(const V& x) {
    std::vector<std::pair<int, double>> out;
    for (const V& p : visited) {
        for (int i = 0; i < 3; ++i) {
            if (p[i] != x[i]) out.emplace_back(i + 1, p[i] - x[i]);
        }
    }
    return out;
}

// Without history and with finDif loaded: scheme 1 forward with the step
// (|x| + 0.1) finDif, scheme 2 central with thrice that, a step below
// 10 eps raised to it.  Called through E4FDA1, NGE rises by two.
TEST_F(Gradients, FixedSchemesUseTheStoredIntervals) {
    const double eps = X02RMDC(2);
    const V x = {kX1, kX2, 0};
    for (auto [scheme, interval] : {std::pair{1, 1e-6}, std::pair{2, 1e-6}, std::pair{2, 1e-300}}) {
        SetUp();
        chooseUser(0);
        E4DataSet.iStat(row::gradientScheme) = scheme;
        for (int i = 1; i <= 3; ++i) E4DataSet.finDif(i) = interval;
        E4DataSet.iStat(row::finDifSet) = 1;
        E4DataSet.FrlErr = eps, E4DataSet.iStat(row::FrlErrSet) = 1;
        output();
        EXPECT_EQ(adaptive(), 0);
        EXPECT_EQ(nge(), 2);
        EXPECT_EQ(occurrences(output(), " E4FDA1 --- Fixed-difference gradient is:\n"), 1);
        std::vector<std::pair<int, double>> expected;
        for (int i = 1; i <= 3; ++i) {
            double step = std::fabs((std::fabs(x[i - 1]) + 0.1) * interval);
            if (scheme == 2) step *= 3;
            step = std::max(step, 10 * eps);
            if (scheme == 2) expected.emplace_back(i, (x[i - 1] - step) - x[i - 1]);
            expected.emplace_back(i, (x[i - 1] + step) - x[i - 1]);
            if (interval > 1e-10) {
                EXPECT_TRUE(near(g(i), kGrad[i - 1], scheme == 1 ? 1e-5 : 1e-9)) << scheme << " " << i;
            }
        }
        EXPECT_EQ(offsets(x), expected) << scheme << " " << interval;
    }
}

// With history (scheme 0, NGE not 0, Hdiag loaded, the same method): a large
// last change EPSK takes forward differences of step sqrt(2e/h), a small one
// central differences of step (3 (|gStart| |x| eps + e))^0.333 (the 10 eps
// |x| bounds are smaller here); a zero gStart takes the fixed central branch
// with GMODE 2, while the scheme stays 0.
TEST_F(Gradients, HistoryChoosesTheDifference) {
    const double eps = X02RMDC(2);
    const V x = {kX1, kX2, 0};
    enum Kind { Forward, Central, Fixed };
    for (Kind kind : {Forward, Central, Fixed}) {
        SetUp();
        chooseUser(0);
        E4DataSetRecord& d = E4DataSet;
        d.FrlErr = 1e-12, d.iStat(row::FrlErrSet) = 1;
        d.iStat(row::gradientEvaluations) = 1, d.iStat(row::HdiagSet) = 1;
        d.iStat(row::methodRunning) = d.iStat(row::methodDone) = 5;
        d.finDif.fill(1e-6), d.iStat(row::finDifSet) = 1;
        for (int i = 1; i <= 3; ++i) {
            d.Hdiag(i) = kHdiag[i - 1];
            d.gStart(i) = kind == Fixed ? 0.0 : 1.0;
            d.deltaX(i) = kind == Central ? 0.0 : 0.1;
        }
        d.deltaF = kind == Central ? 0.0 : 1.0;
        d.iStat(row::messageLevel) = 5;
        output();
        E4GRD1(d.xEnd.data(), d.fEnd, d.gEnd.data());
        const double e = (std::fabs(d.fEnd) + 1) * 1e-12;
        std::vector<std::pair<int, double>> expected;
        for (int i = 1; i <= 3; ++i) {
            const double h = std::fabs(kHdiag[i - 1]), xi = x[i - 1];
            const double step = kind == Forward ? std::sqrt(2 * e / h)
                                : kind == Central ? std::pow(3 * (std::fabs(xi) * eps + e), 0.333)
                                                  : (std::fabs(xi) + 0.1) * 1e-6 * 3;
            if (kind != Forward) expected.emplace_back(i, (xi - step) - xi);
            expected.emplace_back(i, (xi + step) - xi);
            EXPECT_TRUE(near(g(i), kGrad[i - 1], 1e-5)) << kind << " " << i;
        }
        EXPECT_EQ(offsets(x), expected) << kind;
        const std::string text = output();
        const char* line[] = {"GMODE = 0, METHOD = 1, STEP =", "GMODE = 0, METHOD = 0, STEP =", "GMODE = 2, METHOD = 0, STEP ="};
        EXPECT_EQ(occurrences(text, line[kind]), 3) << text;
        EXPECT_EQ(d.iStat(row::gradientScheme), 0);
        EXPECT_EQ(nge(), 2);
    }
}

// Scheme 3 where no formula exists: the messages, the scheme back to 0 and
// the gradient of the adaptive procedure in the same call.
TEST_F(Gradients, AnalyticalSchemeWithoutFormula) {
    chooseUser(0);
    E4DataSet.iStat(row::gradientScheme) = 3;
    output();
    E4GRD1(E4DataSet.xEnd.data(), E4DataSet.fEnd, E4DataSet.gEnd.data());
    const std::string text = output();
    EXPECT_NE(text.find("E4GRD1 -E- SOMETHING WRONG WITH ANALYTICAL GRADIENT CODE."), std::string::npos);
    EXPECT_NE(text.find("E4GRD1 -W- Finite-difference gradient scheme will be used."), std::string::npos);
    EXPECT_EQ(E4DataSet.iStat(row::gradientScheme), 0);
    for (int i = 1; i <= 3; ++i) EXPECT_TRUE(near(g(i), kGrad[i - 1], 1e-7)) << i;
    EXPECT_EQ(nge(), 1);
    SetUp();
    choose(14);
    E4DataSet.iStat(row::gradientScheme) = 3;
    output();
    int err = 0;
    E4TFG1(E4DataSet.xEnd.data(), E4DataSet.fEnd, E4DataSet.gEnd.data(), err);
    EXPECT_EQ(err, 1);
    EXPECT_NE(output().find("E4TFG1 -E- Analytical gradient is not available for this function!"), std::string::npos);
    EXPECT_EQ(E4DataSet.iStat(row::gradientScheme), 0);
}

// A noise level loaded far above what the gradient implies: the ATTENTION
// text at message level 0, none at -1, and the same gradient either way.
TEST_F(Gradients, AttentionChangesNothingButTheLog) {
    V first;
    for (int level : {0, -1}) {
        SetUp();
        chooseUser(0);
        E4DataSet.FrlErr = 1e-8, E4DataSet.iStat(row::FrlErrSet) = 1;
        E4DataSet.iStat(row::messageLevel) = level;
        output();
        adaptive();
        const std::string text = output();
        EXPECT_EQ(occurrences(text, " E4FDA1 -W- ATTENTION: the function seems to have serious problems with\n"),
                  level == 0 ? 1 : 0);
        if (level == 0) {
            EXPECT_NE(text.find("from finite-differences table (\"true error\"):   1.000000E-08\n"), std::string::npos);
            first = V(E4DataSet.gEnd.data(), E4DataSet.gEnd.data() + 3);
        } else {
            EXPECT_EQ(V(E4DataSet.gEnd.data(), E4DataSet.gEnd.data() + 3), first);
        }
    }
}

}  // namespace
