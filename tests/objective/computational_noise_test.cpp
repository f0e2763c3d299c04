// The noise estimate E4ERR1 and the tolerances E4TOL1, on functions whose
// noise is known: a smooth user function with deterministic pseudo-random
// noise of a chosen size, the constant test function and Rosenbrock.
#include "monitor/e4dataset.h"
#include "monitor/monitor.h"
#include "monitor/sysinf.h"
#include "numlib/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "objective/user_function.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace {

double noiseSize = 0.0;  // relative size of the noise of the user function

// A number in [-1, 1] that depends on the bits of x1 and x2 only.
double pseudoRandom(double x1, double x2) {
    std::uint64_t a = 0, b = 0;
    std::memcpy(&a, &x1, 8);
    std::memcpy(&b, &x2, 8);
    std::uint64_t z = a * 0x9E3779B97F4A7C15ull ^ (b + 0x632BE59BD9B4E019ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    z ^= z >> 31;
    return static_cast<double>(z >> 11) / static_cast<double>(1ull << 52) - 1.0;
}

}  // namespace

// The user's problem of this test program: a smooth quadratic of two
// variables near 100, with relative noise of size noiseSize.
double USERF(double* x) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(30) == 0) {
        d.nVar() = 2;
        x[0] = 1.5;
        x[1] = -0.5;
        d.iFixer(1) = d.iFixer(2) = 1;
    }
    double smooth = 100.0 + x[0] * x[0] + 3.0 * x[1] * x[1] + x[0] * x[1];
    return smooth * (1.0 + noiseSize * pseudoRandom(x[0], x[1]));
}

namespace {

class Noise : public ::testing::Test {
protected:
    void SetUp() override {
        resetProgramState();
        unit::setTerminal(&in, &out);
        sysinf.MODEE4 = 1;
    }
    void TearDown() override { unit::resetUnits(); }
    // Selects a problem as PROBLEM does: the first evaluation at xStart.
    void select(int code) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(1) = code;
        d.iStat(7) = 0;
        d.fStart = E4FUN1(d.xStart);
        int nFree = 0;
        for (int i = 1; i <= d.nVar(); ++i) nFree += d.iFixer(i) != 0;
        d.iStat(36) = nFree;
    }
    int estimate() {
        int err = -1;
        E4ERR1(E4DataSet.xStart.data(), E4DataSet.fStart, err, "TEST");
        return err;
    }
    std::istringstream in;
    std::ostringstream out;
};

TEST_F(Noise, KnownNoiseIsFoundWithinAFactorOfThree) {
    for (double size : {1e-10, 1e-8, 1e-6}) {
        resetProgramState();
        unit::setTerminal(&in, &out);
        sysinf.MODEE4 = 1;
        noiseSize = size;
        select(20);
        EXPECT_EQ(estimate(), 0) << size;
        EXPECT_GT(E4DataSet.FrlErr, size / 3) << size;
        EXPECT_LT(E4DataSet.FrlErr, size * 3) << size;
        EXPECT_EQ(E4DataSet.iStat(45), 1);
        // A step search and a table of 12 values stay within about 42 evaluations.
        EXPECT_LE(E4DataSet.iStat(30), 1 + 31 + 12 * 3);
    }
    noiseSize = 0.0;
}

TEST_F(Noise, SmoothFunctionGivesNearMachinePrecision) {
    select(1);  // Rosenbrock, 2 variables in auto mode
    estimate();
    const double eps = X02RMDC(2);
    EXPECT_GE(E4DataSet.FrlErr, eps);
    EXPECT_LT(E4DataSet.FrlErr, 100 * eps);
}

TEST_F(Noise, ConstantFunctionTakesTheFallback) {
    select(14);
    const int n = E4DataSet.nVar();
    ASSERT_GT(n, 0);
    EXPECT_EQ(estimate(), 1);
    const double eps = X02RMDC(2);
    EXPECT_DOUBLE_EQ(E4DataSet.FrlErr, std::max(eps, std::sqrt(static_cast<double>(n)) * eps));
}

TEST_F(Noise, StepsAreDerivedOnlyWhenNotLoaded) {
    noiseSize = 1e-8;
    select(20);
    estimate();
    const E4DataSetRecord& d = E4DataSet;
    EXPECT_EQ(d.iStat(39), 1);
    for (int i = 1; i <= 2; ++i) {
        double c = std::fabs(d.xStart(i)) + 1.0;
        EXPECT_GT(d.xStep(i), 1e-4 * c) << i;
        EXPECT_LT(d.xStep(i), 10 * c) << i;
    }
    resetProgramState();
    unit::setTerminal(&in, &out);
    sysinf.MODEE4 = 1;
    select(20);
    E4DataSet.xStep(1) = 0.25;
    E4DataSet.xStep(2) = 0.0;  // falls back to |x| + 1 in the direction only
    E4DataSet.iStat(39) = 1;
    estimate();
    EXPECT_EQ(E4DataSet.xStep(1), 0.25);
    EXPECT_EQ(E4DataSet.xStep(2), 0.0);
    noiseSize = 0.0;
}

TEST_F(Noise, FixedVariablesNeverMoveAndGetNoStep) {
    select(1);
    E4DataSet.iFixer(2) = 0;
    E4DataSet.iStat(36) = 1;
    estimate();
    EXPECT_EQ(E4DataSet.xStep(2), 0.0);
    EXPECT_EQ(E4DataSet.aux1(2), E4DataSet.xStart(2));
    EXPECT_GT(E4DataSet.xStep(1), 0.0);
}

TEST_F(Noise, DataSetNotReady) {
    E4DataSet.iStat(7) = 6;
    EXPECT_EQ(estimate(), 10);
    EXPECT_EQ(out.str(), " E4ERR1 -E- WRONG INPUT DATA\n E4ERR1 --- Return to   TEST\n");
    EXPECT_EQ(E4DataSet.iStat(30), 0);
}

// The constant function at message level 1: the step grows by 11 until 30
// evaluations are spent, then a table of equal values has a zero second
// column and the fallback is taken.
TEST_F(Noise, ConstantFunctionTraceAtLevelOne) {
    select(14);
    E4DataSet.iStat(7) = 1;
    out.str("");
    estimate();
    std::string expected;
    double relstp = 1.0;
    for (int k = 1; k <= 30; ++k) {
        double next = relstp * 11.0;
        FormattedText line = formatRecords(
            "(' E4ERR1 --- RELSTP =',1P,G14.6,' .NE. RLSNEW =',1P,G14.6,/,12X,'Step length correction...')",
            {next, relstp});
        expected += line.text + "\n";
        relstp = next;
    }
    relstp *= 11.0;  // the 31st evaluation is one too many
    expected += formatRecords("(' E4ERR1 -E- NO ACCEPTABLE ARGUMENT STEP FOUND',/,12X,'after ',I3,"
                              "' allowed function evaluations.',/,12X,'Initial function value =',10X,"
                              "1P,G14.6,/,12X,'Change in the function value =',4X,1P,G14.6,/,12X,"
                              "'Relative step length =',12X,1P,G14.6)",
                              {30, 0.0, 0.0, relstp})
                    .text +
                "\n";
    expected += " E4ERR1 -W- Zero norm of 2-th column of differences table.\n";
    const int n = E4DataSet.nVar();
    double fallback = std::sqrt(static_cast<double>(n)) * X02RMDC(2);
    expected += formatRecords("(12X,'ERROR ESTIMATING WAS FAILED TO FOUND.',/,12X,'Return with the value',13X,1P,G14.6)",
                              {fallback})
                    .text +
                "\n";
    expected += formatRecords("(12X,'REL/ABS value =',19X,1P,G14.6)", {fallback}).text + "\n";
    expected += "            Finite-difference table is as follows:\n";
    for (int r = 1; r <= 13; ++r) expected += "  0.0      0.0    \n";
    expected += "  0.0    \n";
    EXPECT_EQ(out.str().substr(0, expected.size()), expected);
    EXPECT_EQ(E4DataSet.iStat(30), 1 + 31 + 12);
}

TEST_F(Noise, LevelFourShowsTheStepAndTheTableAndLevelSixTheReturn) {
    noiseSize = 1e-8;
    select(20);
    E4DataSet.iStat(7) = 6;
    out.str("");
    estimate();
    std::string text = out.str();
    std::size_t at = text.find(" E4ERR1 --- Norm of direction vector =");
    ASSERT_NE(at, std::string::npos) << text;
    EXPECT_NE(text.find("            Absolute step length     =", at), std::string::npos);
    EXPECT_NE(text.find("            Scaled direction vector:\n", at), std::string::npos);
    std::size_t table = text.find("            Finite-difference table is as follows:\n");
    ASSERT_NE(table, std::string::npos);
    // 14 rows of at most 8 fields of 9 columns follow the heading.
    std::istringstream rows(text.substr(table));
    std::string row;
    std::getline(rows, row);
    for (int r = 1; r <= 14; ++r) {
        ASSERT_TRUE(std::getline(rows, row));
        EXPECT_EQ(row.size() % 9, 0u) << row;
        EXPECT_LE(row.size(), 72u);
    }
    EXPECT_TRUE(text.ends_with(" E4ERR1 --- Return to   TEST\n")) << text;
    noiseSize = 0.0;
}

TEST_F(Noise, ToleranceEstimateFillsBothAndTheirFlags) {
    noiseSize = 1e-8;
    select(20);
    E4DataSet.iFixer(2) = 0;
    E4DataSet.iStat(36) = 1;
    Vec1<double, kMaxVar> xTol;
    double fTol = -1;
    int err = -1;
    E4TOL1(E4DataSet.xStart.data(), E4DataSet.fStart, xTol.data(), fTol, err, "TEST");
    const E4DataSetRecord& d = E4DataSet;
    EXPECT_EQ(err, 0);
    EXPECT_EQ(d.iStat(40), 1);
    EXPECT_EQ(d.iStat(41), 1);
    EXPECT_EQ(d.iStat(45), 1);
    EXPECT_EQ(d.rFTol, d.FrlErr);
    EXPECT_DOUBLE_EQ(d.rXTol(1), std::sqrt(d.FrlErr + X02RMDC(2)));
    EXPECT_EQ(d.rXTol(2), 0.0);
    EXPECT_DOUBLE_EQ(fTol, (std::fabs(d.fStart) + 1.0) * d.rFTol);
    EXPECT_DOUBLE_EQ(xTol(1), 2.5 * d.rXTol(1));
    EXPECT_EQ(xTol(2), 0.0);
    // With the multiplier switch on both are multiplied by tolScl + 1.
    E4DataSet.iStat(11) = 1;
    E4DataSet.tolScl = 9.0;
    E4TOL1(E4DataSet.xStart.data(), E4DataSet.fStart, xTol.data(), fTol, err, "TEST");
    EXPECT_DOUBLE_EQ(fTol, 10.0 * (std::fabs(d.fStart) + 1.0) * d.rFTol);
    noiseSize = 0.0;
}

}  // namespace
