// The annealed simplex on Rosenbrock's function: at temperature 0 the path
// of the plain downhill simplex, and the share of the evaluation budget
// over the temperatures.
#include "support/terminal_test.h"
#include "methods/annealed_simplex.h"
#include "core/module_resets.h"
#include "core/sysinf.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <vector>

namespace {

using namespace annealed_trace;

struct Evaluation {
    int code;
    double x[2], f;
};
struct Temperature {
    int allowed, left, evaluationsAfter;
    bool reduced;  // the simplex was reduced at this temperature
};

// The start simplex, every evaluation after it, and every temperature.
struct Recorder : SearchTrace {
    double v[3][2] = {}, y[3] = {};
    std::vector<Evaluation> evaluations;
    std::vector<Temperature> temperatures;
    bool reduced = false;
    void record(const TraceRecord& r) override {
        const E4DataSetRecord& d = E4DataSet;
        for (int k = 0; r.kind == TraceKind::Start && k < 3; ++k)
            v[k][0] = d.Hesse(1, k + 1), v[k][1] = d.Hesse(2, k + 1), y[k] = d.Hdiag(k + 1);
        if (r.kind == TraceKind::Point) evaluations.push_back({r.code, {r.point[0], r.point[1]}, r.value});
        reduced = reduced || (r.kind == TraceKind::Point && r.code == Reduced);
        if (r.kind == TraceKind::Event && r.code == annealed_trace::Temperature) {
            temperatures.push_back({r.count[1], r.count[2], d.iStat(row::functionEvaluations), reduced});
            reduced = false;
        }
    }
};

class AnnealedSimplex : public TerminalTest {
protected:
    // Rosenbrock's function (problem 1) from (-1, 0.8).
    void run(double temperature, int budget, double fTol, double step = 0.5) {
        resetProgramState();
        unit::setTerminal(&in_, &out_);
        sysinf.MODEE4 = 1;  // the test problem takes its defaults
        recorder = Recorder{};
        setTraceObserver(&recorder);
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = 1;
        d.fStart = E4FUN1(d.xStart);
        d.xStep.fill(step);
        d.rFTol = fTol;
        d.iStat(row::fSet) = d.iStat(row::xStepSet) = d.iStat(row::rFTolSet) = 1;
        d.iStat(row::maxNFE) = budget;
        d.iStat(row::methodRunning) = 18;
        d.iStat(row::messageLevel) = 0;
        d.temper = temperature;
        d.Tsced = 0.9;
        int flag = -1;
        E04DSMSA(flag);
        EXPECT_EQ(flag, 0);
        setTraceObserver(nullptr);
        unit::resetUnits();
    }
    Recorder recorder;
};

// The downhill simplex as Press et al. give it (amoeba), written here from
// the textbook: each trial is c + fac (xh - c), c the centroid of the
// vertices other than the worst xh, and replaces xh when it is lower.
// fac -1 reflects; a reflection below the least vertex is followed by
// fac 2; one above the second-largest by a contraction, fac 0.5; a
// contraction not below the worst value shrinks all towards the least.
std::vector<Evaluation> plainSimplex(Recorder s, double fTol, std::size_t evaluations) {
    auto f = [](const double* x) { return (1 - x[0]) * (1 - x[0]) + 100 * (x[1] - x[0] * x[0]) * (x[1] - x[0] * x[0]); };
    std::vector<Evaluation> out;
    while (out.size() < evaluations) {
        int lo = 0, hi = 0;
        for (int k = 1; k < 3; ++k) {
            if (s.y[k] < s.y[lo]) lo = k;
            if (s.y[k] > s.y[hi]) hi = k;
        }
        if (s.y[hi] - s.y[lo] < (std::fabs(s.y[lo]) + 1.0) * fTol) break;
        const double nextHigh = s.y[3 - lo - hi];
        double c[2];
        for (int i = 0; i < 2; ++i) c[i] = (s.v[0][i] + s.v[1][i] + s.v[2][i] - s.v[hi][i]) / 2;
        auto trial = [&](double fac, int code) {
            Evaluation e{code, {c[0] + fac * (s.v[hi][0] - c[0]), c[1] + fac * (s.v[hi][1] - c[1])}, 0};
            e.f = f(e.x);
            out.push_back(e);
            if (e.f < s.y[hi]) s.v[hi][0] = e.x[0], s.v[hi][1] = e.x[1], s.y[hi] = e.f;
            return e.f;
        };
        const double fR = trial(-1.0, Reflected);
        if (fR <= s.y[lo]) trial(2.0, Extrapolated);
        if (fR <= s.y[lo] || fR < nextHigh) continue;
        const double worst = s.y[hi];
        if (trial(0.5, Contracted) < worst) continue;
        for (int k = 0; k < 3; ++k) {
            if (k == lo) continue;
            for (int i = 0; i < 2; ++i) s.v[k][i] = (s.v[k][i] + s.v[lo][i]) * 0.5;
            s.y[k] = f(s.v[k]);
            out.push_back({Reduced, {s.v[k][0], s.v[k][1]}, s.y[k]});
        }
    }
    return out;
}

// The vertices of one reduction are evaluated in the order of their places,
// which the search changes when it puts the best vertex first.
void sortReductions(std::vector<Evaluation>& e) {
    for (auto it = e.begin(); it != e.end(); ++it) {
        auto end = std::find_if(it, e.end(), [](const Evaluation& x) { return x.code != Reduced; });
        std::sort(it, end, [](const Evaluation& a, const Evaluation& b) { return a.x[0] < b.x[0]; });
        if (end != it) it = end - 1;
    }
}

// Steps of 2 make the simplex large enough to be reduced early on.  Both
// converge with the same evaluations; the plain one may run further.
TEST_F(AnnealedSimplex, AtTemperatureZeroItIsThePlainSimplex) {
    run(0.0, 400, 1e-12, 2.0);
    std::vector<Evaluation> annealed = recorder.evaluations;
    std::vector<Evaluation> plain = plainSimplex(recorder, 1e-12, annealed.size() + 50);
    ASSERT_EQ(annealed.size(), plain.size());
    EXPECT_EQ(plain.size(), 137u);  // as an independent run of these rules in Python gives
    EXPECT_GT(recorder.temperatures.back().left, 0);
    sortReductions(annealed);
    sortReductions(plain);
    int reductions = 0;
    for (std::size_t k = 0; k < plain.size(); ++k) {
        ASSERT_EQ(annealed[k].code, plain[k].code) << k;
        for (int i = 0; i < 2; ++i) EXPECT_NEAR(annealed[k].x[i], plain[k].x[i], 1e-9 * (1 + std::fabs(plain[k].x[i]))) << k;
        EXPECT_NEAR(annealed[k].f, plain[k].f, 1e-9 * (1 + plain[k].f)) << k;
        reductions += plain[k].code == Reduced;
    }
    EXPECT_GT(reductions, 0);
    // The best point ever met is what the search returns.
    double best = recorder.y[0];
    for (const Evaluation& e : plain) best = std::min(best, e.f);
    EXPECT_NEAR(E4DataSet.fEnd, best, 1e-9);
    EXPECT_EQ(E4DataSet.fStart, E4DataSet.fEnd);
}

// maxNFE / min(maxNFE, 100) evaluations per temperature: 1 below 100 tries,
// 10 for 1000.  What a temperature overdraws (left below 0) comes off the
// share of the next one, which is at least 1: at temperature 0 a reduction
// of the simplex overdraws by 2, and the next temperature has 8.  The last
// temperature has no more than what is left.  The search ends with its
// budget spent, or converged with evaluations left.
TEST_F(AnnealedSimplex, BudgetIsSharedOutOverTheTemperatures) {
    struct Case {
        double temperature;
        int maxNFE, share;
        bool reductionOverdraws, converges;
    };
    for (Case c : {Case{1.0, 50, 1, false, false}, Case{1.0, 1000, 10, false, false}, Case{0.0, 1000, 10, true, true}}) {
        run(c.temperature, c.maxNFE, 1e-30);
        const std::vector<Temperature>& t = recorder.temperatures;
        ASSERT_GE(t.size(), 2u);
        EXPECT_LE(t.size(), static_cast<std::size_t>(std::min(c.maxNFE, 100)));
        EXPECT_EQ(t[0].allowed, c.share);
        const int limit = E4DataSet.iStat(row::annealingScratch);
        bool overdraftCarried = false;
        for (std::size_t k = 1; k < t.size(); ++k) {
            EXPECT_LE(t[k - 1].left, 0) << k;
            const int carried = std::max(c.share + t[k - 1].left, 1);
            const int rest = limit - t[k - 1].evaluationsAfter;
            EXPECT_EQ(t[k].allowed, k + 1 < t.size() ? carried : std::min(carried, rest)) << k;
            overdraftCarried = overdraftCarried || (t[k - 1].reduced && t[k].allowed == c.share - 2);
        }
        EXPECT_EQ(overdraftCarried, c.reductionOverdraws);
        EXPECT_EQ(t.back().left > 0, c.converges);
        EXPECT_EQ(t.back().evaluationsAfter >= limit, !c.converges);
    }
}

}  // namespace
