// The noise estimate E4ERR1 and the tolerances E4TOL1, on functions whose
// noise is known: a smooth user function with deterministic pseudo-random
// noise of a chosen size, the constant test function and Rosenbrock.
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "objective/user_function.h"
#include "platform/units.h"

#include "app/module_registry.h"
#include "objective/user_function.h"

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
static double noisyQuadraticUserf(double* x) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::functionEvaluations) == 0) {
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
        setUserFunction(noisyQuadraticUserf);
        unit::setTerminal(&in, &out);
        sysinf.MODEE4 = 1;
    }
    void TearDown() override {
        unit::resetUnits();
        registerModules();
    }
    // Selects a problem as PROBLEM does: the first evaluation at xStart.
    void select(int code) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = code;
        d.iStat(row::messageLevel) = 0;
        d.fStart = E4FUN1(d.xStart);
        int nFree = 0;
        for (int i = 1; i <= d.nVar(); ++i) nFree += d.iFixer(i) != 0;
        d.iStat(row::nFree) = nFree;
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
        EXPECT_EQ(E4DataSet.iStat(row::FrlErrSet), 1);
        // A step search and a table of 12 values stay within about 42 evaluations.
        EXPECT_LE(E4DataSet.iStat(row::functionEvaluations), 1 + 31 + 12 * 3);
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

// The constant function at message level 1: C stays 0, so the step grows
// by 11 until 30 evaluations are spent; the 31st gives up the search, the
// table of equal values has a zero second column, and the fallback
// sqrt(nVar)*eps*A with nVar 1 and A 1 is taken and the table listed.
TEST_F(Noise, ConstantFunctionTakesTheFallback) {
    select(14);
    E4DataSet.iStat(row::messageLevel) = 1;
    out.str("");
    ASSERT_EQ(E4DataSet.nVar(), 1);
    EXPECT_EQ(estimate(), 1);
    EXPECT_EQ(E4DataSet.FrlErr, X02RMDC(2));
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 1 + 31 + 12);
    const std::string text = out.str();
    auto count = [&text](const std::string& what) {
        int n = 0;
        for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
        return n;
    };
    EXPECT_EQ(count("Step length correction..."), 30);
    EXPECT_NE(text.find(" E4ERR1 --- RELSTP =   11.0000     .NE. RLSNEW =   1.00000    \n"), std::string::npos);
    EXPECT_EQ(count(" E4ERR1 -E- NO ACCEPTABLE ARGUMENT STEP FOUND\n"), 1);
    EXPECT_EQ(count(" E4ERR1 -W- Zero norm of 2-th column of differences table.\n"), 1);
    EXPECT_EQ(count("\n  0.0      0.0    \n"), 13);  // rows 1..13 hold two zeros
    EXPECT_TRUE(text.ends_with("  0.0    \n            Quadratic estimation of initial argument step which\n"
                               "            may be used by any local search routine is:\n  0.100000    \n\n"));
}

TEST_F(Noise, DataSetNotReady) {
    E4DataSet.iStat(row::messageLevel) = 6;
    EXPECT_EQ(estimate(), 10);
    EXPECT_EQ(out.str(), " E4ERR1 -E- WRONG INPUT DATA\n E4ERR1 --- Return to   TEST\n");
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 0);
}

}  // namespace
