// The bounded quasi-Newton method, method 12, from its pieces up: the step
// search on a line, the
// edge cases of the iteration, and the driver on Rosenbrock's function with
// a bound that excludes its minimum.
#include "support/terminal_test.h"
#include "core/e4dataset.h"
#include "core/module_resets.h"
#include "core/sysinf.h"
#include "methods/bounded_driver.h"
#include "methods/bounded_factors.h"
#include "methods/bounded_iteration.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

constexpr double kBig = 1e300;

// --- Runs of the family on small functions --------------------------------

double (*objective)(const double*) = nullptr;
std::vector<std::vector<double>> points;  // every point evaluated
int localSearchAt = -1;                   // points evaluated before the local search

void familyFunction(int&, int, double* x, double& f) { f = objective(x); }

class Recorder : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        if (r.kind == TraceKind::Point) points.emplace_back(r.point, r.point + r.count[0]);
        if (r.kind == TraceKind::Event && r.code == bounded_trace::LocalSearch && localSearchAt < 0)
            localSearchAt = static_cast<int>(points.size());
        if (r.kind == TraceKind::Pass) rows.push_back(r);
    }
    std::vector<TraceRecord> rows;
};

class Bounded : public TerminalTest {
protected:
    void SetUp() override {
        freshState();
        previous = setTraceObserver(&recorder);
    }
    void freshState() {
        resetProgramState();
        unit::setTerminal(&in_, &out_);
        sysinf.MODEE4 = 1;
        E4DataSet.iStat(row::maxITR) = 100;
        points.clear();
        recorder.rows.clear();
        localSearchAt = -1;
    }
    void TearDown() override {
        setTraceObserver(previous);
        unit::resetUnits();
    }
    // E04JBF from x0 in [lo, hi]: a cold start, or a warm one with the exact
    // gradient and the diagonal given.
    int iterate(std::vector<double> x0, std::vector<double> lo, std::vector<double> hi, int start = 0,
                std::vector<double> g0 = {}, std::vector<double> d0 = {}) {
        const int n = static_cast<int>(x0.size());
        x = x0, bL = lo, bU = hi, g = g0, D = d0;
        g.resize(n), D.resize(n), delta.assign(n, 1e-7), L.assign(n * n + 1, 0.0), w.assign(9 * n, 0.0);
        state.assign(n, 0);
        r = BqnRun{};
        r.n = n, r.fun = familyFunction, r.search = E04LSH1, r.start = start, r.maxcal = 2000;
        r.delta = delta.data(), r.bL = bL.data(), r.bU = bU.data(), r.x = x.data(), r.L = L.data();
        r.lh = static_cast<int>(L.size()), r.D = D.data(), r.state = state.data(), r.g = g.data();
        r.liw = n + 2, r.w = w.data(), r.lw = 9 * n, r.xtol = 0, r.stepmx = 10;
        if (start == 1) r.f = objective(x.data());
        return E04JBF(r);
    }
    bool allInside() const {
        for (const auto& p : points)
            for (std::size_t i = 0; i < p.size(); ++i)
                if (p[i] < bL[i] || p[i] > bU[i]) return false;
        return true;
    }
    Recorder recorder;
    SearchTrace* previous = nullptr;
    BqnRun r;
    std::vector<double> x, bL, bU, g, D, delta, L, w;
    std::vector<int> state;
};

// phi(a) = (a - 1)^2 along (1, 0) from the origin: slope -2 at the start.
// A step of 1 lands on the minimum, and its decrease 1 meets the slope test
// -eta * gtp * |lo| = 0.5 * 2 * 1 = 1 (the search goes on only while the
// decrease is below it), so the search ends there after one evaluation.
// With an ascending slope, no positive first step or no room, it makes no
// evaluation.
TEST_F(Bounded, StepSearchOnALineAndItsRefusals) {
    objective = [](const double* v) { return (v[0] - 1) * (v[0] - 1) + v[1] * v[1]; };
    struct Case {
        double gtp, alpha, am;
        int iflag;
    } cases[] = {{-2, 1, 10, 2}, {0.5, 1, 10, 3}, {-2, 0, 10, 3}, {-2, -1, 10, 3}, {-2, 1, 2e-8, 3}};
    const double dir[2] = {1, 0};
    for (const Case& c : cases) {
        double pt[2] = {0, 0}, trial[2], f = 1, alpha = c.alpha;
        int nfls = -1, iflag = 0;
        points.clear();
        E04LSH1(2, familyFunction, Box{}, 1e-8, 1e-8, 0.5, 0, c.am, dir, c.gtp, pt, f, alpha, nfls, iflag, trial);
        EXPECT_EQ(iflag, c.iflag) << c.gtp << " " << c.alpha;
        EXPECT_EQ(nfls, static_cast<int>(points.size()));
        if (c.iflag == 3) {
            EXPECT_EQ(nfls, 0);
            EXPECT_EQ(pt[0], 0.0);
            EXPECT_EQ(f, 1.0);
            continue;
        }
        EXPECT_EQ(alpha, 1.0);
        EXPECT_EQ(pt[0], 1.0);
        EXPECT_EQ(f, 0.0);
        EXPECT_EQ(nfls, 1);
    }
}

TEST_F(Bounded, AllVariablesFixedCostOneEvaluation) {
    objective = [](const double* v) { return v[0] * v[0] + v[1]; };
    EXPECT_EQ(iterate({1, 2}, {1, 2}, {1, 2}), 0);
    EXPECT_EQ(points.size(), 1u);
    EXPECT_EQ(r.nfcall, 1);
    EXPECT_EQ(r.f, 3.0);
}

// (x1 - 2)^2 + (x2 - 2)^2 in [0, 1]^2 from (0.5, 0.5): the first step meets
// both upper bounds at once.  The step takes x1 onto its bound; x2 stands
// at its bound too and is added at the next iteration head with no search,
// so one search is all.
TEST_F(Bounded, DirectionIntoABoundAtZeroDistanceAddsItWithoutASearch) {
    objective = [](const double* v) { return (v[0] - 2) * (v[0] - 2) + (v[1] - 2) * (v[1] - 2); };
    EXPECT_EQ(iterate({0.5, 0.5}, {0, 0}, {1, 1}), 0);
    EXPECT_EQ(r.iter, 1);
    EXPECT_EQ(x, (std::vector<double>{1, 1}));
    EXPECT_EQ(state, (std::vector<int>{-1, -1}));
    EXPECT_EQ(r.f, 2.0);
    EXPECT_TRUE(allInside());
}

// (x1 - 0.5)^2 + (x2 - 3)^2 in [0, 10]^2 from (0.5, 0): x2 starts on its
// lower bound with the gradient -6, x1 free with the gradient 0.  The
// release comes at once, and the run goes on to (0.5, 3).
TEST_F(Bounded, ReleaseWhereTheFreeGradientIsSmallGoesOn) {
    objective = [](const double* v) { return (v[0] - 0.5) * (v[0] - 0.5) + (v[1] - 3) * (v[1] - 3); };
    iterate({0.5, 0}, {0, 0}, {10, 10}, 1, {0, -6}, {2, 2});
    EXPECT_GT(r.iter, 0);
    EXPECT_NEAR(x[0], 0.5, 1e-6);
    EXPECT_NEAR(x[1], 3.0, 1e-6);
    EXPECT_GT(state[0], 0);
    EXPECT_GT(state[1], 0);
    EXPECT_TRUE(allInside());
}

// (x - 0.3)^2 in [0, 1] from 0.8.  At the minimum the local search probes
// towards the far bound (x + h, worse), then once on the near side, exactly
// at the bound 0, worse again: code 5.
TEST_F(Bounded, OneFreeVariableTriesItsNearBoundOnce) {
    objective = [](const double* v) { return (v[0] - 0.3) * (v[0] - 0.3); };
    EXPECT_EQ(iterate({0.8}, {0}, {1}), 5);
    ASSERT_GE(localSearchAt, 0);
    ASSERT_EQ(points.size(), static_cast<std::size_t>(localSearchAt + 2));
    EXPECT_NEAR(x[0], 0.3, 1e-6);
    EXPECT_NEAR(points[localSearchAt][0] - x[0], std::sqrt(std::pow(1e-7, 0.66666)), 1e-12);
    EXPECT_EQ(points[localSearchAt + 1][0], 0.0);
}

// --- The driver on the data set --------------------------------------------

// Rosenbrock's function (problem 1) from (-1, 0.8) as the problem sets it up.
void selectRosenbrock(double upperX1, int maxNFE, int maxITR) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(row::problemCode) = 1;
    d.fStart = E4FUN1(d.xStart);
    d.xEnd = d.xStart;
    d.bU(1) = upperX1;
    d.iStat(row::maxNFE) = maxNFE;
    d.iStat(row::maxITR) = maxITR;
    d.iStat(row::methodRunning) = 12;
    d.iStat(row::messageLevel) = 1;
}

// f(0.5, x2) = 0.25 + 100 (x2 - 0.25)^2: the least value on the bound, by a
// golden-section search on x2, is where the run must end, with df/dx1 = -1
// there, so that x1 presses on its bound.
TEST_F(Bounded, RosenbrockEndsOnTheBoundAtTheConstrainedMinimum) {
    selectRosenbrock(0.5, 0, 200);
    int flag = -1;
    E4JAF1(flag);
    double a = -2, b = 2;
    const double ratio = (std::sqrt(5.0) - 1) / 2;
    auto onBound = [](double t) { return 0.25 + 100 * (t - 0.25) * (t - 0.25); };
    for (int k = 0; k < 200; ++k) {
        const double c = b - ratio * (b - a), e = a + ratio * (b - a);
        if (onBound(c) < onBound(e)) {
            b = e;
        } else {
            a = c;
        }
    }
    const E4DataSetRecord& d = E4DataSet;
    EXPECT_EQ(d.xEnd(1), 0.5);
    EXPECT_NEAR(d.xEnd(2), (a + b) / 2, 1e-6);
    EXPECT_NEAR(d.fEnd, onBound((a + b) / 2), 1e-10);
    EXPECT_EQ(d.xStart(2), d.xEnd(2));
    EXPECT_EQ(d.iStat(row::iterations), 0);
    ASSERT_GT(points.size(), 10u);
    for (const auto& p : points) EXPECT_LE(p[0], 0.5);
}

// The evaluation limit is (nVar + 3) * maxITR when maxNFE is 0, and a
// smaller maxNFE wins: the run stops at the first iteration head beyond it
// (or beyond maxITR iterations).
TEST_F(Bounded, EvaluationLimitFollowsMaxITRWhenMaxNFEIsZero) {
    struct Case {
        int maxNFE, maxITR, maxcal;
    } cases[] = {{0, 3, 15}, {7, 3, 7}, {100, 3, 15}};
    for (const Case& c : cases) {
        freshState();
        selectRosenbrock(10, c.maxNFE, c.maxITR);
        int flag = -1;
        E4JAF1(flag);
        ASSERT_GE(recorder.rows.size(), 2u) << c.maxNFE;
        const TraceRecord& last = recorder.rows.back();
        const TraceRecord& head = recorder.rows[recorder.rows.size() - 2];
        EXPECT_EQ(last.code, 'c');
        EXPECT_LE(head.count[1], c.maxcal) << c.maxNFE << " " << c.maxITR;
        EXPECT_TRUE(last.count[1] > c.maxcal || last.pass > c.maxITR) << c.maxNFE << " " << c.maxITR;
        EXPECT_EQ(flag, 2);
    }
}

}  // namespace
