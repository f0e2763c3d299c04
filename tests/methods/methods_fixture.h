// MethodsFixture: the terminal fixture in auto mode (test problems take
// their default dimension), with a recorder of the trace records of every
// search.
#pragma once

#include "core/e4dataset.h"
#include "core/module_resets.h"
#include "core/sysinf.h"
#include "methods/search_trace.h"
#include "objective/target_function.h"
#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <vector>

// Every record, with a copy of its vector (nVar entries) and the counts of
// function and gradient evaluations when it came.
struct TraceRecorder : SearchTrace {
    struct Seen {
        TraceRecord r;
        std::vector<double> point;
        int nfe, nge;
    };
    std::vector<Seen> seen;
    void record(const TraceRecord& r) override {
        const int n = r.point != nullptr ? E4DataSet.nVar() : 0;
        seen.push_back({r, std::vector<double>(r.point, r.point + n), E4DataSet.iStat(row::functionEvaluations),
                        E4DataSet.iStat(row::gradientEvaluations)});
    }
    std::vector<TraceRecord> withCode(int code) const {
        std::vector<TraceRecord> out;
        for (const Seen& s : seen) {
            if (s.r.code == code) out.push_back(s.r);
        }
        return out;
    }
};

class MethodsFixture : public TerminalTest {
protected:
    void SetUp() override { fresh(); }
    void TearDown() override {
        setTraceObserver(nullptr);
        TerminalTest::TearDown();
    }
    void fresh() {
        TerminalTest::SetUp();
        sysinf.MODEE4 = 1;
        setTraceObserver(&trace);
        trace.seen.clear();
    }
    // Problem `code` at its standard start, evaluated; the noise and both
    // tolerances loaded, so that nothing is estimated.
    void select(int code) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = code;
        d.fStart = d.fEnd = E4FUN1(d.xStart);
        d.xEnd = d.xStart;
        d.FrlErr = 1e-15;
        d.rFTol = 1e-16;
        for (int i = 1; i <= d.nVar(); ++i) d.rXTol(i) = 1e-8;
        d.iStat(row::FrlErrSet) = d.iStat(row::rFTolSet) = d.iStat(row::rXTolSet) = 1;
        d.iStat(row::messageLevel) = 0;
    }
    TraceRecorder trace;
};
