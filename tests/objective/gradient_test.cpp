// Gradients: the analytical formulas against the test's own central
// differences, the adaptive procedure against exact derivatives, and the
// branches of E4GRD1 and E4FDA1 seen through the points that a recording
// user function is evaluated at.
#include "objective_fixture.h"

#include "app/module_registry.h"
#include "core/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/gradient.h"
#include "objective/user_function.h"

namespace {

using V = std::vector<double>;

// Kind 0: f = exp(x1/2) + x1 x2^2 + 2 cos x3 from (0.3, -1.2, 0); kind 1:
// f = 3 x1 - 2 x2 + x3/2 from the origin, where f(-h) = -f(h) exactly.
int userKind = 0;
std::vector<V> visited;
const V kX = {0.3, -1.2, 0};
const V kGrad = {0.5 * std::exp(0.15) + 1.44, 2 * 0.3 * -1.2, 0};
const V kHdiag = {0.25 * std::exp(0.15), 0.6, -2};

double recordingUserf(double* x) {
    if (E4DataSet.iStat(row::functionEvaluations) == 0) {
        E4DataSet.nVar() = 3;
        for (int i = 1; i <= 3; ++i) x[i - 1] = userKind == 0 ? kX[i - 1] : 0.0, E4DataSet.iFixer(i) = 1;
    }
    visited.push_back(V(x, x + 3));
    if (userKind == 1) return 3 * x[0] - 2 * x[1] + 0.5 * x[2];
    return std::exp(x[0] / 2) + x[0] * x[1] * x[1] + 2 * std::cos(x[2]);
}

bool near(double a, double b, double rel) { return std::fabs(a - b) <= rel * std::max(1.0, std::fabs(b)); }

class Gradients : public ObjectiveFixture {
protected:
    void TearDown() override {
        ObjectiveFixture::TearDown();
        registerModules();
    }
    // Problem `code` chosen afresh (with nVar loaded first when `n` is not 0),
    // the end point at its start.
    void choose(int code, const std::string& replies = "", int mode = 1, int kind = 0, int n = 0) {
        SetUp();
        E4DataSet.nVar() = n;
        setUserFunction(recordingUserf);
        userKind = kind;
        E4DataSetRecord& d = E4DataSet;
        d.fStart = d.fEnd = select(code, replies, mode);
        d.iStat(row::nFree) = d.nVar();
        d.xEnd = d.xStart;
        visited.clear();
    }
    static void loadNoise(double v) { E4DataSet.FrlErr = v, E4DataSet.iStat(row::FrlErrSet) = 1; }
    int adaptive() {
        E4DataSetRecord& d = E4DataSet;
        int err = -1;
        E4FDA1(d.xEnd.data(), d.fEnd, d.finDif.data(), d.gEnd.data(), d.Hdiag.data(), err, "TEST");
        return err;
    }
    static double g(int i) { return E4DataSet.gEnd(i); }
    static double H(int i) { return E4DataSet.Hdiag(i); }
    static int nfe() { return E4DataSet.iStat(row::functionEvaluations); }
    static int nge() { return E4DataSet.iStat(row::gradientEvaluations); }
};

TEST_F(Gradients, AnalyticalGradientsAgreeWithCentralDifferences) {
    struct Row { int code; std::string replies; int mode; };  // Rosenbrock classical and R-Ze, Powell-Wood, Wood
    for (const Row& r : {Row{1, "", 1}, Row{1, "4\nR\n\n\n", 0}, Row{2, "8\n\n", 0}, Row{3, "", 1}}) {
        choose(r.code, r.replies, r.mode);
        for (int p = 0; p < 3; ++p) {  // the start, then two points around it
            V x(E4DataSet.xStart.data(), E4DataSet.xStart.data() + nVar()), grad(128);
            for (int i = 0; i < nVar(); ++i) x[i] += p * (0.4 * std::sin(1.0 + i * p) - 0.1 * p);
            double f = at(x);
            int err = -1;
            E4TFG1(x.data(), f, grad.data(), err);
            ASSERT_EQ(err, 0);
            for (int i = 0; i < nVar(); ++i) {
                const double h = 1e-5 * (std::fabs(x[i]) + 1), xi = x[i];  // the test's own step
                x[i] = xi + h;
                const double up = at(x);
                x[i] = xi - h;
                const double down = at(x);
                x[i] = xi;
                EXPECT_TRUE(near(grad[i], (up - down) / (2 * h), 1e-6)) << r.code << " " << p << " " << i + 1;
            }
        }
    }
}

// Rosenbrock and Wood against their analytical gradients and second
// derivatives worked out by hand; the quadratic A = [4 1 0; 1 3 -1; 0 -1 2]
// with minimum 1 at z = (1, -2, 0.5) against g = A (x - z), Hdiag = diag A,
// at its start x = 0, where the interval has no floor.  With the noise as
// measured (near eps) the accepted second difference holds up to a tenth of
// noise; with 1e-10 loaded, far above the true noise, f'' is nearly exact
// and the noise check warns.  Cost per variable: 2 per pass of the step and
// 1 per attempt of the final phase, at most 12.
TEST_F(Gradients, AdaptiveDifferencesOnSmoothProblems) {
    for (int code : {1, 3, 8}) {
        for (double noise : {0.0, 1e-10}) {
            // Problem 8 keeps a loaded nVar of 3 in auto mode.
            choose(code, code == 8 ? "4 1 0\n3 -1\n2\nY\n1\n1 -2 0.5\n" : "", 1, 0, code == 8 ? 3 : 0);
            ASSERT_EQ(nVar(), code == 1 ? 2 : code == 3 ? 4 : 3);
            const V x(E4DataSet.xEnd.data(), E4DataSet.xEnd.data() + nVar());
            V gt(128), ht = {4, 3, 2};
            int err = 0;
            if (noise > 0) loadNoise(noise);
            else E4ERR1(E4DataSet.xEnd.data(), E4DataSet.fEnd, err, "TEST");
            if (code == 8) {
                gt = {-2, 5.5, -3};  // A (x - z) = -A z at x = 0
            } else {
                E4TFG1(E4DataSet.xEnd.data(), E4DataSet.fEnd, gt.data(), err);
                if (code == 1) ht = {2 + 1200 * x[0] * x[0] - 400 * x[1], 200};
                else ht = {400 * (3 * x[0] * x[0] - x[1] * x[1]) + 2, 400 * (3 * x[1] * x[1] - x[0] * x[0]) + 20.2,
                           360 * (3 * x[2] * x[2] - x[3]) + 2, 200.2};
            }
            const int nfe0 = nfe();
            output();
            EXPECT_EQ(adaptive(), 0) << code;
            const double cost = (nfe() - nfe0) / static_cast<double>(nVar());
            EXPECT_TRUE(cost >= 3 && cost <= 12) << code << " " << cost;
            for (int i = 1; i <= nVar(); ++i) {
                EXPECT_TRUE(near(g(i), gt[i - 1], 1e-7)) << code << " g " << i << " " << g(i);
                EXPECT_TRUE(near(H(i), ht[i - 1], noise > 0 ? 1e-4 : 0.1)) << code << " H " << i << " " << H(i);
                EXPECT_GT(E4DataSet.finDif(i), 0);
            }
            EXPECT_EQ(nge(), 1);
            EXPECT_EQ(E4DataSet.iStat(row::HdiagSet) + E4DataSet.iStat(row::finDifSet), 2);
            EXPECT_EQ(occurrences(output(), " E4FDA1 -W- ATTENTION: the function seems to have serious problems with\n"),
                      noise > 0 ? 1 : 0);
        }
    }
}

TEST_F(Gradients, EdgeCasesOfTheAdaptiveProcedure) {
    // Variable 2 fixed: its results are exactly 0 and no evaluation moves it;
    // x(3) = 0 has no interval floor and still gets its derivatives.
    choose(20);
    E4DataSet.iFixer(2) = 0;
    E4DataSet.iStat(row::nFree) = 2;
    EXPECT_EQ(adaptive(), 0);
    EXPECT_TRUE(g(2) == 0 && H(2) == 0 && E4DataSet.finDif(2) == 0);
    for (const V& p : visited) EXPECT_EQ(p[1], kX[1]);
    for (int i : {1, 3}) EXPECT_TRUE(near(g(i), kGrad[i - 1], 1e-7) && near(H(i), kHdiag[i - 1], 0.1)) << i;

    // The constant function: every second difference is 0, the interval grows
    // four times (10 evaluations), "constant", g and Hdiag 0, finDif the first
    // interval 10 sqrt(FrlErr), xStep unchanged.
    choose(14);
    loadNoise(1e-14);
    E4DataSet.xStep(1) = 0.25, E4DataSet.iStat(row::xStepSet) = 1;
    E4DataSet.iStat(row::messageLevel) = 5;
    output();
    EXPECT_EQ(adaptive(), 1);
    EXPECT_EQ(nfe(), 11);
    EXPECT_TRUE(g(1) == 0 && H(1) == 0 && E4DataSet.xStep(1) == 0.25);
    EXPECT_DOUBLE_EQ(E4DataSet.finDif(1), 1e-6);
    EXPECT_EQ(occurrences(output(), "CAN BE FOUND. Cause diagnostics:\n            f(x) is likely to be constant.\n"), 1);

    // A linear function at the origin: second differences exactly 0, first
    // differences fit from the first interval on: "odd or nearly linear".
    choose(20, "", 1, 1);
    E4DataSet.iStat(row::messageLevel) = 5;
    output();
    EXPECT_EQ(adaptive(), 1);
    for (int i = 1; i <= 3; ++i) EXPECT_TRUE(std::fabs(g(i) - V{3, -2, 0.5}[i - 1]) < 1e-15 && H(i) == 0) << i;
    EXPECT_EQ(occurrences(output(), "f(x) is likely to be either odd or nearly linear.\n"), 3);
}

// The fixed branch of E4GRD1: scheme 1 forward with the step (|x| + 0.1)
// finDif, scheme 2 central with thrice that, a step below 10 eps raised to
// it; through E4FDA1 NGE rises by two.  A search with history (scheme 0,
// NGE 1, Hdiag loaded, the same method) but a zero gStart takes the central
// branch too, with GMODE 2 in the trace and the scheme left at 0.
TEST_F(Gradients, FixedDifferencesAndTheirSteps) {
    const double eps = X02RMDC(2);
    struct Row { int scheme; double interval; bool history; };
    for (Row r : {Row{1, 1e-6, false}, Row{2, 1e-6, false}, Row{2, 1e-300, false}, Row{0, 1e-6, true}}) {
        choose(20);
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::gradientScheme) = r.scheme;
        d.finDif.fill(r.interval), d.iStat(row::finDifSet) = 1;
        loadNoise(eps);
        d.iStat(row::messageLevel) = 5;
        output();
        if (r.history) {
            d.iStat(row::gradientEvaluations) = d.iStat(row::HdiagSet) = 1;
            d.iStat(row::methodRunning) = d.iStat(row::methodDone) = 5;
            E4GRD1(d.xEnd.data(), d.fEnd, d.gEnd.data());
        } else {
            adaptive();
        }
        EXPECT_EQ(nge(), 2);
        V expected, seen;
        for (int i = 0; i < 3; ++i) {
            const double step = std::max(std::fabs((std::fabs(kX[i]) + 0.1) * r.interval) * (r.scheme == 1 ? 1 : 3), 10 * eps);
            if (r.scheme != 1) expected.push_back(i + (kX[i] - step - kX[i]));
            expected.push_back(i + (kX[i] + step - kX[i]));
            EXPECT_TRUE(r.interval < 1e-10 || near(g(i + 1), kGrad[i], r.scheme == 1 ? 1e-5 : 1e-9)) << r.scheme << i;
        }
        for (const V& p : visited) {
            for (int i = 0; i < 3; ++i) {
                if (p[i] != kX[i]) seen.push_back(i + (p[i] - kX[i]));
            }
        }
        EXPECT_EQ(seen, expected) << r.scheme << " " << r.interval;  // variable index plus offset
        EXPECT_EQ(occurrences(output(), r.history ? "GMODE = 2, METHOD = 0, STEP =" : "Fixed-difference gradient is:"),
                  r.history ? 3 : 1);
        EXPECT_EQ(d.iStat(row::gradientScheme), r.scheme);
    }
}

}  // namespace
