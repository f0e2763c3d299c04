// The downhill simplex search on test problems: convergence from the
// standard starts, the stop rule and its texts, CONTINUE on the stored
// simplex, and a simplex with no free variable.
#include "support/terminal_test.h"
#include "methods/simplex_search.h"
#include "app/module_registry.h"
#include "objective/user_function.h"
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

class Simplex : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        resetSimplexSearch();
        unit::setTerminal(&in_, &out_);
        sysinf.MODEE4 = 1;  // the test problems take their defaults
    }
    void TearDown() override { unit::resetUnits(); }

    // Selects test problem `code` as PROBLEM does and prepares a run of
    // method 15 with the given steps, tolerance and budget.
    void select(int code, double step, double fTol, int budget) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = code;
        d.fStart = E4FUN1(d.xStart);
        d.iStat(row::fSet) = 1;
        for (int i = 1; i <= d.nVar(); ++i) d.xStep(i) = step;
        d.iStat(row::xStepSet) = 1;
        d.rFTol = fTol;
        d.iStat(row::rFTolSet) = 1;
        d.iStat(row::maxNFE) = budget;
        d.iStat(row::methodRunning) = 15;
        d.iStat(row::messageLevel) = 0;
    }
    int run() {
        int flag = -1;
        E04DSMNM(flag);
        return flag;
    }
};

TEST_F(Simplex, EndReportSaysWhyTheSearchStopped) {
    select(1, 0.5, 1e-14, 4000);
    E4DataSet.iStat(row::messageLevel) = 1;
    run();
    std::string text = out_.str();
    EXPECT_NE(text.find(" E04DSM --- information at the start of the search:\n"), std::string::npos);
    EXPECT_NE(text.find(" E04DSMNM --- |# succ. | NFE rem.|      f      |  deltaf  |\n"),
              std::string::npos);
    EXPECT_NE(text.find("\n E04DSMNM --- search stopped. the reason:\n"
                        "              all convergence criteria have been satisfied.\n"),
              std::string::npos);
}

TEST_F(Simplex, SpendingTheBudgetIsReported) {
    select(1, 0.5, 1e-30, 60);
    E4DataSet.iStat(row::messageLevel) = 1;
    run();
    std::string text = out_.str();
    EXPECT_NE(text.find("              exceeded number of function evaluations.\n"), std::string::npos);
    // The test is made once per pass, so the last pass may overshoot.
    EXPECT_GT(E4DataSet.iStat(row::functionEvaluations), 1 + 60);
}

TEST_F(Simplex, ContinueGoesOnWithTheStoredSimplex) {
    select(1, 0.5, 1e-30, 40);
    run();
    double best = E4DataSet.fEnd;
    int evaluations = E4DataSet.iStat(row::functionEvaluations);
    E4DataSet.iStat(row::computationMode) = 1;  // CONTINUE with the same method
    E4DataSet.iStat(row::messageLevel) = 1;
    out_.str("");
    run();
    // The first row of the table shows the stored best value.
    std::string text = out_.str();
    EXPECT_EQ(text.find("information at the start"), std::string::npos);
    std::size_t row = text.find("              |       0|");
    ASSERT_NE(row, std::string::npos) << text;
    EXPECT_LE(E4DataSet.fEnd, best);
    EXPECT_GT(E4DataSet.iStat(row::functionEvaluations), evaluations);
}

// f = x1^2 + 2 x2^2 from (1, 1): the user's problem of the path test.
double ellipse(double* x) {
    if (E4DataSet.iStat(row::functionEvaluations) == 0) {
        E4DataSet.nVar() = 2;
        x[0] = x[1] = 1.0;
        E4DataSet.iFixer(1) = E4DataSet.iFixer(2) = 1;
    }
    return x[0] * x[0] + 2.0 * x[1] * x[1];
}

struct PathRecorder : SearchTrace {
    std::string kinds;           // R, E, C per trial point, S per reduction
    std::vector<double> values;  // the trial values in order
    void record(const TraceRecord& r) override {
        if (r.kind == TraceKind::Point) {
            kinds += "?REC"[r.code - simplex_trace::Reflected + 1];
            values.push_back(r.value);
        }
        if (r.kind == TraceKind::Event && r.code == simplex_trace::Reduced) kinds += 'S';
    }
};

// The path of the search, step by step, against an independent run of the
// rules (reflection 2c - xh, extrapolation 2r - c, contraction (xh + c)/2,
// reduction half way to the least vertex) written in Python: sizes
// step1 = 0.9659258, step2 = 0.2588190 from xStep 1, rFTol 1e-3.
TEST_F(Simplex, PathOfTheSearchFollowsTheRulesStepByStep) {
    setUserFunction(ellipse);
    PathRecorder path;
    setTraceObserver(&path);
    select(20, 1.0, 1e-3, 1000);
    run();
    setTraceObserver(nullptr);
    registerModules();
    EXPECT_EQ(path.kinds, "RRERRERCRCRCRCRCRCRCRCRCR");
    const double first[] = {3.085786437626905, 0.5516713065309047, 0.6854493942483565, 1.0998594651195612,
                            0.15153077165046558, 2.1022961574756978, 1.9693680168462473, 0.2299169582368595};
    ASSERT_GE(path.values.size(), 8u);
    for (int k = 0; k < 8; ++k) EXPECT_NEAR(path.values[static_cast<std::size_t>(k)], first[k], 1e-13) << k;
    EXPECT_EQ(E4DataSet.iStat(row::iterations), 14);
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 28);
    EXPECT_NEAR(E4DataSet.fEnd, 0.0006480662158605457, 1e-15);
}

}  // namespace
