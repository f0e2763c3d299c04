// Coordinate descent on the loaded quadratic of test problem 8, watched
// through the trace: the path of a sweep, one variable makes exactly one
// search, a sweep that gains nothing ends the run, each search starts with
// one step xStep(j), and no evaluation budget is consulted.
#include "support/terminal_test.h"
#include "methods/coordinate_descent.h"
#include "methods/linear_search.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "monitor/monitor.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace {

// f = 3.5 + 0.5 z'Az, z = x - (1, -2), A = [[2, 0.5], [0.5, 4]].  Along x1
// with x2 fixed the minimum is at z1 = -z2 / 4, along x2 at z2 = -z1 / 8.
constexpr const char* kQuadratic = "2\n2 0.5\n4\nY\n3.5\n1 -2\n0\n";

struct Recorder : SearchTrace {
    std::vector<TraceRecord> records;
    std::vector<std::vector<double>> points;
    void record(const TraceRecord& r) override {
        records.push_back(r);
        points.emplace_back(r.point ? std::vector<double>(r.point, r.point + 2) : std::vector<double>{});
    }
    int count(TraceKind kind, int code) const {
        int n = 0;
        for (const TraceRecord& r : records) n += r.kind == kind && r.code == code;
        return n;
    }
};

class CoordinateDescent : public TerminalTest {
protected:
    void SetUp() override { prepare(kQuadratic); }
    void TearDown() override {
        setTraceObserver(nullptr);
        unit::resetUnits();
    }
    // Problem 8 loaded with `replies`, started at (0, 0), ready for method 14.
    void prepare(const char* replies) {
        resetProgramState();
        unit::setTerminal(&in_, &out_);
        sysinf.MODEE4 = 0;
        in_.str(replies);
        in_.clear();
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::messageLevel) = 1;
        d.iStat(row::problemCode) = 8;
        d.fStart = E4FUN1(d.xStart);  // f(0, 0) = 3.5 + 0.5 * 16 = 11.5 for kQuadratic
        d.iStat(row::fSet) = 1;
        d.iStat(row::methodRunning) = 14;
        d.iStat(row::maxITR) = 40;
        d.iStat(row::maxNFE) = 3;  // never consulted
        for (int i = 1; i <= 2; ++i) d.xStep(i) = 0.25 * i;
        d.iStat(row::xStepSet) = 1;
        seen.records.clear();
        seen.points.clear();
        setTraceObserver(&seen);
        out_.str("");
    }
    int run() {
        int flag = -1;
        E4CDM1(flag);
        return flag;
    }
    Recorder seen;
};

TEST_F(CoordinateDescent, SweepsReachTheMinimumOfTheQuadratic) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(row::xStepSet) = 0;  // the steps come from the noise estimate
    EXPECT_EQ(run(), 0);
    EXPECT_NEAR(d.deltaX(1), -1.0, 1e-6);  // start minus end; the final values are in the transcript test
    EXPECT_GT(d.iStat(row::functionEvaluations), 3);
    // The first sweep ends near the exact line minima z = (-0.5, 0.0625);
    // its path is the distance from (0, 0) to the point of its second search.
    std::vector<double> end;
    for (std::size_t k = 0; k < seen.records.size(); ++k) {
        const TraceRecord& r = seen.records[k];
        if (r.code == coordinate_descent_trace::Coordinate && r.pass == 1) end = seen.points[k];
        if (r.kind != TraceKind::Pass) continue;
        EXPECT_NEAR(r.value, 3.7421875, 1e-7);
        EXPECT_NEAR(r.real[1], std::hypot(end[0], end[1]), 1e-15);
        EXPECT_NEAR(end[1], -1.9375, 1e-3);
        break;
    }
    EXPECT_EQ(d.iStat(row::iterations), 2 * seen.count(TraceKind::Pass, 0));
}

TEST_F(CoordinateDescent, EverySearchStartsWithOneStepOfItsCoordinate) {
    run();
    std::vector<double> current = {0.0, 0.0};
    int j = 0;  // coordinate of the search under way, 0-based
    int searches = 0;
    for (std::size_t k = 0; k < seen.records.size(); ++k) {
        const TraceRecord& r = seen.records[k];
        if (r.kind == TraceKind::Point && r.code == linear_search_trace::Trial && r.pass == 1 &&
            r.count[0] == 1) {
            ++searches;
            EXPECT_EQ(r.real[0], 1.0);
            EXPECT_EQ(seen.points[k][j], current[j] + E4DataSet.xStep(j + 1)) << "search " << searches;
            EXPECT_EQ(seen.points[k][1 - j], current[1 - j]);
        }
        if (r.kind == TraceKind::Point && r.code == coordinate_descent_trace::Coordinate) {
            current = seen.points[k];
            j = 1 - j;
        }
    }
    EXPECT_GT(searches, 4);
}

TEST_F(CoordinateDescent, SweepWithoutDecreaseEndsTheRun) {
    E4DataSetRecord& d = E4DataSet;
    d.xStart(1) = 1.0, d.xStart(2) = -2.0;
    d.fStart = E4FUN1(d.xStart);
    run();
    EXPECT_EQ(seen.count(TraceKind::Pass, 0), 1);
    EXPECT_EQ(d.deltaF, 0.0);
    EXPECT_NEAR(d.xStart(1), 1.0, 1e-7);
}

}  // namespace
