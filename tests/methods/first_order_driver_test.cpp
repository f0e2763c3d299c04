// The first-order driver's rules that decide a run: a start at a stationary
// point, the stopping tests in hard and weak mode and where CONTINUE takes
// them up, the first step and its bound, one free variable, the restart
// period of the conjugate gradients.
#include "methods/first_order_driver.h"
#include "methods/linear_search.h"
#include "methods_fixture.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace first_order_trace;

class FirstOrder : public MethodsFixture {
protected:
    // One call of E4FOM1 with method `method`, as RUN (or CONTINUE) makes it.
    int call(int method, int iFlag = 0, bool resume = false) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::methodRunning) = method;
        d.iStat(row::computationMode) = resume ? 1 : 0;
        int n = 0;
        for (int i = 1; i <= d.nVar(); ++i) n += d.iFixer(i) != 0;
        d.iStat(row::nFree) = n;
        E4FOM1(iFlag);
        return iFlag;
    }
    int iterations() const { return E4DataSet.iStat(row::iterations); }
};

// Rosenbrock at its minimum (1, 1) with the analytical gradient, exactly 0:
// no linear search, iFlag 1, no iteration.  CONTINUE then starts at the
// direction set-up: no value and no gradient before the iteration head,
// which searches along the initial steps (the gradient gives no direction).
TEST_F(FirstOrder, StationaryStartEndsBeforeAnyLinearSearch) {
    select(1);
    E4DataSetRecord& d = E4DataSet;
    d.xStart(1) = d.xStart(2) = 1.0;
    d.iStat(row::gradientScheme) = 3;
    d.xStep(1) = d.xStep(2) = 0.01;
    d.iStat(row::xStepSet) = 1;
    const int nfe = d.iStat(row::functionEvaluations), nge = d.iStat(row::gradientEvaluations);
    EXPECT_EQ(call(7), 1);
    EXPECT_EQ(iterations(), 0);
    EXPECT_TRUE(trace.withCode(linear_search_trace::Begin).empty());
    EXPECT_EQ(d.iStat(row::gradientEvaluations), nge + 1);
    d.iStat(row::methodDone) = 7;
    trace.seen.clear();
    call(7, 1, true);
    auto head = std::find_if(trace.seen.begin(), trace.seen.end(), [](auto& s) { return s.r.code == IterationHead; });
    ASSERT_NE(head, trace.seen.end());
    EXPECT_EQ(head->r.count[3], 1);  // an arbitrary direction
    EXPECT_EQ(head->nfe, nfe);
    EXPECT_EQ(head->nge, nge + 1);
}

// The first step of the first iteration, along -g = (0.1726, -0.2097) of
// problem 7 at (0, 0) with xStep = (0.1, 0.1): the largest multiple within
// the steps, min(0.1 / 0.1726, 0.1 / 0.2097); its bound 1000 times that,
// or with stpMax = (0.05, 1) min(0.05 / 0.1726, 1 / 0.2097), which also
// cuts the step.
TEST_F(FirstOrder, FirstStepAndItsBound) {
    struct Case {
        bool bounded;
        double step, bound;
    };
    for (const Case& c : {Case{false, 0.1 / 0.2097, 100 / 0.2097}, Case{true, 0.05 / 0.1726, 0.05 / 0.1726}}) {
        fresh();
        select(7);
        E4DataSetRecord& d = E4DataSet;
        d.xStep(1) = d.xStep(2) = 0.1;
        d.finDif(1) = d.finDif(2) = 1e-7;  // central differences, which leave xStep alone
        d.iStat(row::xStepSet) = d.iStat(row::finDifSet) = 1;
        d.stpMax(1) = 0.05, d.stpMax(2) = 1;
        d.iStat(row::stpMaxSet) = c.bounded ? 1 : 0;
        d.iStat(row::maxITR) = 1;
        call(1);
        std::vector<TraceRecord> begin = trace.withCode(linear_search_trace::Begin);
        ASSERT_EQ(begin.size(), 1u);
        EXPECT_NEAR(begin[0].real[0], c.step, 1e-6) << c.bounded;
        EXPECT_NEAR(begin[0].real[1], c.bound, 1e-6 * c.bound) << c.bounded;
    }
}

// Fletcher-Reeves and Polak-Ribiere with two free variables: iterations 1,
// 4, 7, ... go along the steepest descent, their direction is -g.  Beale-
// Powell on Rosenbrock rejects some directions as almost orthogonal to the
// gradient and tries once more, as a restart, without a second test.
TEST_F(FirstOrder, RestartsOfTheConjugateGradients) {
    for (int method : {1, 2, 3}) {
        fresh();
        select(1);
        call(method);
        std::vector<double> g;
        int iteration = 0, rejected = 0, rejectedHere = 0;
        for (std::size_t k = 0; k < trace.seen.size(); ++k) {
            const TraceRecord& r = trace.seen[k].r;
            if (r.code == StartingGradient || r.code == Gradient) g = trace.seen[k].point;
            if (r.code == AlmostOrthogonal) ++rejected, ++rejectedHere;
            if (r.code != IterationHead) continue;
            EXPECT_LE(rejectedHere, 1) << iteration;
            EXPECT_TRUE(rejectedHere == 0 || r.count[1] == 1);  // after a rejection a restart
            rejectedHere = 0;
            if (method == 3) continue;
            EXPECT_EQ(r.count[2], iteration++ % 3 == 0 ? 1 : 0) << method << " " << iteration;
            if (r.count[2] == 0) continue;
            ASSERT_EQ(trace.seen[k + 1].r.code, Direction);
            for (int i = 0; i < 2; ++i) EXPECT_EQ(trace.seen[k + 1].point[i], -g[i]);
        }
        EXPECT_GT(method == 3 ? rejected : iteration, method == 3 ? 0 : 7) << method;
    }
}

}  // namespace
