// The user's problem of a program without one: the target function reaches
// USERF, which says so, and nothing is counted.
#include "objective_fixture.h"

namespace {

using UserProblem = ObjectiveFixture;

TEST_F(UserProblem, AbsentUserProblemIsNotCounted) {
    E4DataSet.nVar() = 3;
    EXPECT_EQ(select(20, "", 0), 0.0);
    EXPECT_EQ(output(),
              " Welcome to user's problem\n"
              " USERF ----E- No user's problem specified!\n");
    EXPECT_EQ(nVar(), 0);
    EXPECT_EQ(E4DataSet.iStat(30), 0);
    EXPECT_EQ(E4DataSet.iStat(37), 0);
    EXPECT_EQ(E4DataSet.iStat(38), 0);
    EXPECT_EQ(E4DataSet.iStat(34), 0);
}

}  // namespace
