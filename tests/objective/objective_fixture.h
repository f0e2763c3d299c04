// ObjectiveFixture: the terminal fixture with the choice of a problem and
// its evaluation at a point.
#pragma once

#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "objective/target_function.h"
#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

class ObjectiveFixture : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        E4DataSet.iStat(row::messageLevel) = 1;  // the monitor's start level
    }

    // Chooses problem `code` as PROBLEM does and makes its first call on
    // xStart; `replies` are the lines typed at the terminal.
    double select(int code, const std::string& replies = "", int mode = 1) {
        sysinf.MODEE4 = mode;
        feed(replies);
        E4DataSet.iStat(row::problemCode) = code;
        return E4FUN1(E4DataSet.xStart);
    }
    // A later call at the point p (through xEnd).
    double at(const std::vector<double>& p) {
        for (std::size_t i = 0; i < p.size(); ++i) E4DataSet.xEnd(static_cast<int>(i) + 1) = p[i];
        return E4FUN1(E4DataSet.xEnd);
    }
    static double x(int i) { return E4DataSet.xStart(i); }
    // The dimension and the start point written by the first call.
    static void expectStart(const std::vector<double>& p) {
        ASSERT_EQ(E4DataSet.nVar(), static_cast<int>(p.size()));
        for (std::size_t i = 0; i < p.size(); ++i) EXPECT_EQ(x(static_cast<int>(i) + 1), p[i]) << i + 1;
    }
    static int nVar() { return E4DataSet.nVar(); }
};

// Relative agreement to 1e-12 (absolute near zero).
inline void expectClose(double actual, long double expected) {
    double tol = 1e-12 * std::max(1.0, static_cast<double>(std::fabs(expected)));
    EXPECT_NEAR(actual, static_cast<double>(expected), tol);
}

inline int occurrences(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}
