// The Monte-Carlo search on a bowl started at its minimum, where every
// random step goes uphill: what is taken strictly, what thermally, and
// when the search refuses to start.
#include "support/terminal_test.h"
#include "methods/monte_carlo.h"
#include "app/module_registry.h"
#include "core/e4dataset.h"
#include "core/module_resets.h"
#include "objective/target_function.h"
#include "objective/user_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

// f = x1^2 + x2^2, the user's problem, from (0, 0).
double bowl(double* x) {
    if (E4DataSet.iStat(row::functionEvaluations) == 0) {
        E4DataSet.nVar() = 2;
        x[0] = x[1] = 0.0;
        E4DataSet.iFixer(1) = E4DataSet.iFixer(2) = 1;
    }
    return x[0] * x[0] + x[1] * x[1];
}

struct Recorder : SearchTrace {
    double trial[3] = {};  // value and point of the last try
    int temperatures = 0;
    void record(const TraceRecord& r) override {
        if (r.kind == TraceKind::Pass) trial[0] = r.value, trial[1] = r.point[0], trial[2] = r.point[1];
        temperatures += r.kind == TraceKind::Event && r.code == monte_carlo_trace::Temperature;
    }
};

class MonteCarlo : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        setUserFunction(bowl);
        unit::setTerminal(&in_, &out_);
        recorder = Recorder{};
        setTraceObserver(&recorder);
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = 20;
        d.fStart = E4FUN1(d.xStart);
        d.iStat(row::fSet) = d.iStat(row::deviatSet) = d.iStat(row::messageLevel) = 1;
        d.iStat(row::methodRunning) = 16;
        d.deviat.fill(0.5);
        out_.str("");
    }
    void TearDown() override {
        setTraceObserver(nullptr);
        unit::resetUnits();
        registerModules();
    }
    int run(int tries) {
        E4DataSet.iStat(row::maxNFE) = tries;
        int flag = -1;
        E4MCM1(flag);
        return flag;
    }
    Recorder recorder;
};

const std::string kNoBetter = "            no better point has been found after     40 tries.\n";

// Strict acceptance never leaves the minimum.  With the temperature set,
// method 16 takes uphill points too, and the temperature falls by the
// factor 0.5 at every evaluation count divisible by 5: the tries are
// evaluations 2 to 41, so 8 times, 100 / 2^8 = 0.390625.
TEST_F(MonteCarlo, StrictOrThermalAcceptanceByTheTemperatureFlag) {
    EXPECT_EQ(run(40), 0);
    EXPECT_EQ(E4DataSet.fEnd, 0.0);
    EXPECT_EQ(E4DataSet.xEnd(1), 0.0);
    EXPECT_NE(out_.str().find(kNoBetter), std::string::npos) << out_.str();

    SetUp();
    E4DataSetRecord& d = E4DataSet;
    d.temper = 100.0;
    d.Tsced = 0.5;
    d.iStat(row::temperSet) = 1;
    d.iStat(row::NtriesT) = 5;
    run(40);
    EXPECT_GT(d.fEnd, 0.0);
    EXPECT_EQ(d.temper, 0.390625);
    EXPECT_EQ(recorder.temperatures, 8);
    EXPECT_NE(out_.str().find(" E4MCM1 -s- "), std::string::npos);
    EXPECT_EQ(out_.str().find("no better point"), std::string::npos);
}

TEST_F(MonteCarlo, MissingTriesOrDeviatesEndsWithFlagOne) {
    for (int missing : {row::maxNFE, row::deviatSet}) {
        SetUp();
        E4DataSet.iStat(row::deviatSet) = missing != row::deviatSet;
        EXPECT_EQ(run(missing == row::maxNFE ? 0 : 40), 1) << missing;
        EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 1) << missing;
        EXPECT_EQ(out_.str(), "") << missing;
    }
}

}  // namespace
