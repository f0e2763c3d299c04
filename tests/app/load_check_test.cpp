// Transcript tests of LOAD and CHECK: the built zemok program reads data
// files, reports bad data, and in auto mode ends on what is missing.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

namespace {

// The Rosenbrock test problem in its classical form: the four questions of
// its dialogue answered by their defaults.
const std::string kRosenbrock = "PROBLEM,TEST,1\n\n\n\n\n";
// Leaving after an evaluation: both questions of the parting dialogue.
const std::string kLeave = "EXIT\nY\nY\n";


TEST(CheckTranscript, CompleteOnlyWhenTheReportGoesToTheTerminal) {
    std::string dir = freshFolder("check-dw");
    ZemokRun run = runZemok(kRosenbrock + "METHOD,B-F-G-S\nCHECK\nOPEN,DATA,WRITE,report.txt\n"
                                          "SET,DW,FILE\nCHECK\n" + kLeave,
                            {}, dir);
    std::string::size_type first = run.out.find(" Data set is complete\n");
    ASSERT_NE(first, std::string::npos) << run.out;
    EXPECT_EQ(run.out.find(" Data set is complete", first + 1), std::string::npos);
    EXPECT_EQ(fileText(dir + "/report.txt").find("Data set is complete"), std::string::npos);
}

}  // namespace
