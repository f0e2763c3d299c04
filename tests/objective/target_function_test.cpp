// The target function's bookkeeping: dimension dialogue and its limits,
// problem 8's dialogue, the added constant, counters, flags, scaling, the
// dimension message and trace line, failures and the catalogue titles.
#include "objective_fixture.h"

namespace {

using TargetFunction = ObjectiveFixture;

TEST_F(TargetFunction, DimensionIsAskedRoundedAndRangeChecked) {
    select(4, "129\n0\n", 0);
    EXPECT_EQ(nVar(), 10);  // above 128: the default, not 128
    EXPECT_EQ(occurrences(output(), "Number of variables (\"CR\" for default)"), 1);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    E4DataSet.nVar() = 7;
    select(2, "0\n", 0);
    EXPECT_EQ(nVar(), 4);
    EXPECT_EQ(occurrences(output(), "Number of variables"), 0);  // loaded before: not asked
    EXPECT_EQ(E4DataSet.iStat(row::maxITR), 80);            // 20 * 4
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), (4 + 15 + 1) * 80);
    EXPECT_EQ(E4DataSet.iStat(row::nFree), 4);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    E4DataSet.nVar() = 0;
    select(1, "7\n\n\n0\n", 0);
    EXPECT_EQ(nVar(), 6);
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), (6 + 15 + 2) * 120);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    E4DataSet.nVar() = 0;
    select(9, "many\n0\n", 0);  // not a number: the default
    EXPECT_EQ(nVar(), 2);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    E4DataSet.nVar() = 12;
    select(9);  // auto mode takes the default whatever nVar holds
    EXPECT_EQ(nVar(), 2);
}

TEST_F(TargetFunction, FirstCallSetsLimitsBoundsFlagsAndCounts) {
    E4DataSet.iFixer(2) = 0;
    select(3);
    const E4DataSetRecord& ds = E4DataSet;
    EXPECT_EQ(output(), " 4-dimensional Wood function\n");
    EXPECT_EQ(ds.iStat(row::maxITR), 80);
    EXPECT_EQ(ds.iStat(row::maxNFE), 1600);
    EXPECT_EQ(ds.iStat(row::nFree), 4);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(ds.iFixer(i), 1);
        EXPECT_EQ(ds.bL(i), -1e20);
        EXPECT_EQ(ds.bU(i), 1e20);
    }
    EXPECT_EQ(ds.iStat(row::bLSet), 1);
    EXPECT_EQ(ds.iStat(row::bUSet), 1);
    EXPECT_EQ(ds.iStat(row::fSet), 1);
    EXPECT_EQ(ds.iStat(row::xStartSet), 1);
    EXPECT_EQ(ds.iStat(row::functionEvaluations), 1);
    at({1, 1, 1, 1});
    at({0, 0, 0, 0});
    EXPECT_EQ(ds.iStat(row::functionEvaluations), 3);
    EXPECT_EQ(output(), "");  // later calls at level 1 say nothing
}

TEST_F(TargetFunction, ConstantIsAskedOnceAndAddedOnlyInInteractiveMode) {
    EXPECT_DOUBLE_EQ(select(7, "2.5\n", 0), -0.9322 + 2.5);
    EXPECT_NE(output().find(" Add a constant to the function ...."), std::string::npos);
    EXPECT_DOUBLE_EQ(at({0, 0}), -0.9322 + 2.5);
    sysinf.MODEE4 = 1;
    EXPECT_DOUBLE_EQ(at({0, 0}), -0.9322);

    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_DOUBLE_EQ(select(7, "two\n", 0), -0.9322);  // no number: 0

    E4DataSet.iStat(row::functionEvaluations) = 0;
    select(7, "3\n", 0);
    E4DataSet.iStat(row::functionEvaluations) = 0;
    EXPECT_DOUBLE_EQ(select(7), -0.9322);  // a new problem in auto mode drops it
}

TEST_F(TargetFunction, SquaredProblemIsLoadedFromTheTerminal) {
    // A = [2 1; 1 3], minimum 5 at z = (1, 2): f(0) = 5 + z'Az / 2 = 5 + 18 / 2.
    EXPECT_DOUBLE_EQ(select(8, "2\n2 1\n3\nY\n5\n1 2\n0\n", 0), 14.0);
    std::string text = output();
    EXPECT_NE(text.find(" Welcome to user-defined squared problem\n"), std::string::npos);
    EXPECT_NE(text.find(" Load upper right triangle of the Hessian (row by row)\n"), std::string::npos);
    EXPECT_NE(text.find(" Row # 2 "), std::string::npos);
    EXPECT_NE(text.find("Hessian matrix:"), std::string::npos);
    // Eigenvalues (5 +- sqrt 5) / 2 by magnitude.
    EXPECT_LT(text.find(" Eigenvalues:"), text.find("3.61803"));
    EXPECT_LT(text.find("3.61803"), text.find("1.38197"));
    EXPECT_EQ(x(1), 0.0);
    EXPECT_EQ(x(2), 0.0);
    EXPECT_DOUBLE_EQ(at({1, 2}), 5.0);
    EXPECT_DOUBLE_EQ(at({2, 2}), 6.0);  // 5 + (1,0) A (1,0)' / 2
}

TEST_F(TargetFunction, SquaredProblemBrokenOffBeginsAgainWithoutTheDimension) {
    E4DataSet.xStart(1) = 7.0;
    EXPECT_EQ(select(8, "2\n2 1\n3\nno\n", 0), 0.0);
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 0);
    EXPECT_EQ(E4DataSet.iStat(row::xStartSet), 0);
    EXPECT_EQ(E4DataSet.iStat(row::bLSet), 0);
    EXPECT_EQ(x(1), 7.0);
    output();
    EXPECT_DOUBLE_EQ(select(8, "4 0\n1\n\n-1\n0 0\n\n", 0), -1.0);
    EXPECT_EQ(occurrences(output(), "Number of variables"), 0);
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 1);
    EXPECT_DOUBLE_EQ(at({1, 1}), -1.0 + 0.5 * (4 + 1));
}

}  // namespace
