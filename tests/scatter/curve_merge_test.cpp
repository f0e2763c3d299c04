// Tests of the curve tools: SORTMER sorting and merging, MINMAX, CURVECUT,
// JOINPTS grouping, and the multipliers of the angular units table.
#include "support/terminal_test.h"
#include "scatter/measured_curve.h"

#include "monitor/monitor.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

class CurveToolsTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetMeasuredCurve();
    }
    void TearDown() override { unit::resetUnits(); }
};

TEST_F(CurveToolsTest, SortmerSortsAndMergesEqualAbscissae) {
    double s[] = {3.0, 1.0, 2.0, 2.0};
    double y[] = {30.0, 10.0, 20.0, 40.0};
    double e[] = {3.0, 1.0, 2.0, 2.0};
    int n = 4;
    int status = 99;
    SORTMER(s, y, e, n, 3, 1e-4, 2, status);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(n, 3);
    EXPECT_DOUBLE_EQ(s[0], 1.0);
    EXPECT_DOUBLE_EQ(s[1], 2.0);
    EXPECT_DOUBLE_EQ(s[2], 3.0);
    EXPECT_DOUBLE_EQ(y[0], 10.0);
    EXPECT_DOUBLE_EQ(y[1], 30.0);  // mean of 20 and 40
    EXPECT_DOUBLE_EQ(y[2], 30.0);
    EXPECT_DOUBLE_EQ(e[1], std::sqrt(8.0) / 2.0);  // sqrt(2^2 + 2^2) / 2
    EXPECT_DOUBLE_EQ(e[2], 3.0);
}

TEST_F(CurveToolsTest, SortmerModeOneOnlySortsAndBadCountsAreTold) {
    double s[] = {2.0, 1.0, 1.0};
    double y[] = {20.0, 10.0, 11.0};
    int n = 3;
    int status = 0;
    SORTMER(s, y, nullptr, n, 2, 1e-4, 1, status);
    EXPECT_EQ(n, 3);
    EXPECT_DOUBLE_EQ(s[2], 2.0);
    EXPECT_DOUBLE_EQ(y[2], 20.0);

    n = 0;
    SORTMER(s, y, nullptr, n, 2, 1e-4, 2, status);
    EXPECT_EQ(status, -3);
    n = 3;
    SORTMER(s, y, nullptr, n, 0, 1e-4, 2, status);
    EXPECT_EQ(status, -4);
    EXPECT_NE(out_.str().find("SORTMER --E- Zero number of output data lines"), std::string::npos);
    EXPECT_NE(out_.str().find("SORTMER --E- Zero number of output data columns"),
              std::string::npos);
}

TEST_F(CurveToolsTest, MinmaxAndCurvecut) {
    const double a[] = {3.0, -1.0, 7.0, 2.0};
    double lo = 0.0;
    double hi = 0.0;
    MINMAX(4, a, lo, hi);
    EXPECT_EQ(lo, -1.0);
    EXPECT_EQ(hi, 7.0);

    const double up[] = {1.0, 2.0, 3.0, 4.0};
    EXPECT_EQ(CURVECUT(up, 4, 4.0), 3);  // a fraction of 1 drops the last point
    EXPECT_EQ(CURVECUT(up, 4, 2.5), 2);
    EXPECT_EQ(CURVECUT(up, 4, 0.5), 0);
    EXPECT_EQ(CURVECUT(up, 4, 9.0), 4);
    const double down[] = {4.0, 3.0, 2.0, 1.0};
    EXPECT_EQ(CURVECUT(down, 4, 2.5), 2);
    EXPECT_EQ(CURVECUT(down, 4, 0.5), 4);
    EXPECT_EQ(CURVECUT(up, 0, 2.0), 0);
}

TEST_F(CurveToolsTest, JoinptsMakesPairsOf102Points) {
    double s[102], y[102], e[102], so[102], yo[102], eo[102];
    for (int i = 0; i < 102; ++i) {
        s[i] = i + 1.0;
        y[i] = 2.0 * (i + 1.0);
        e[i] = 1.0;
    }
    int nOut = 0;
    JOINPTS(102, s, y, e, 101, nOut, so, yo, eo);
    ASSERT_EQ(nOut, 51);
    EXPECT_DOUBLE_EQ(so[0], 1.5);
    EXPECT_DOUBLE_EQ(yo[0], 3.0);
    EXPECT_DOUBLE_EQ(eo[0], std::sqrt(2.0) / 2.0);
    EXPECT_DOUBLE_EQ(so[50], 101.5);
    EXPECT_NE(out_.str().find("    2 successive data points joined"), std::string::npos);

    JOINPTS(101, s, y, e, 101, nOut, so, yo, eo);
    EXPECT_EQ(nOut, 101);
    EXPECT_DOUBLE_EQ(so[100], 101.0);
}

}  // namespace
