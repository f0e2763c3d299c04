// Transcript tests of RUN and CONTINUE with the downhill simplex: fits of
// test problems in auto mode, a short run checked line by line, and the
// ways CONTINUE turns into RUN.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

// Runs `commands` as the command file of an auto-mode session.
ZemokRun autoSession(const std::string& commands) {
    std::string dir = freshFolder("run");
    writeFile(dir + "/zemok.cmd", commands);
    writeFile(dir + "/zemok.inp", "");
    return runZemok("MODE,AUTO\n", {}, dir);
}

// The value of the end-of-job line "Produced function minimum is equal to".
double producedMinimum(const std::string& out) {
    const std::string key = "Produced function minimum is equal to";
    std::size_t at = out.rfind(key);
    if (at == std::string::npos) return -1.0;
    return std::strtod(out.c_str() + at + key.size(), nullptr);
}

TEST(RunTranscript, SimplexFitsOfTestProblemsFromTheirStandardStarts) {
    // Rosenbrock, Wood and the spiral chute all have the minimum value 0.
    for (int problem : {1, 3, 5}) {
        ZemokRun run = autoSession("PROBLEM,TEST," + std::to_string(problem) +
                                   "\nMETHOD,N-M\nRUN\nEXIT\n");
        EXPECT_EQ(run.exitCode, 0) << problem;
        EXPECT_NE(run.out.find("all convergence criteria have been satisfied."), std::string::npos)
            << problem;
        double f = producedMinimum(run.out);
        EXPECT_GE(f, 0.0) << problem;
        EXPECT_LT(f, 1e-6) << problem;
    }
}

// Problem 8 with a quadratic loaded at the terminal: A = [[2, 0.5], [0.5, 4]],
// minimum value 3.5 at z = (1, -2), started at (0, 0), where
// f = 3.5 + 0.5 * z'Az = 3.5 + 0.5 * (2 - 2 + 16) = 11.5.
TEST(RunTranscript, LoadedQuadraticReachesItsMinimum) {
    ZemokRun run = runZemok(
        "PROBLEM,TEST,8,2\n2 0.5\n4\nY\n3.5\n1 -2\n\nMETHOD,N-M\nRUN\n\nY\nEXIT\nY\nY\n");
    EXPECT_NE(run.out.find(" starting function value -   11.5000    \n"), std::string::npos) << run.out;
    double f = producedMinimum(run.out);
    EXPECT_NEAR(f, 3.5, 1e-6);
    EXPECT_NE(run.out.find(" at the point:\n\n   1.00000      -2.00000    \n"), std::string::npos);
}

// The constant function of one variable: every vertex has the value 0, so
// the search ends in its first pass.  Evaluations: 1 when the problem is
// chosen, 31 trials of the noise step search and 12 of its table, and one
// for the second vertex: 45.  The budget is (1 + 15) * 20 = 320 from the
// catalogue's rule, counted from the single evaluation at the entry.
TEST(RunTranscript, ShortRunLineByLine) {
    ZemokRun run = autoSession("PROBLEM,TEST,14\nMETHOD,N-M\nRUN\nEXIT\n");
    const std::string expected =
        " E04DSM --- information at the start of the search:\n"
        "\n"
        " step --------------------  0.100000    \n"
        " step1 -------------------  0.100000    \n"
        " step2 -------------------  2.928932E-02\n"
        " starting function value -   0.00000    \n"
        " initial vertex coordinates:\n"
        "   0.00000      0.100000    \n"
        "\n"
        " vertex function values:\n"
        "   0.00000       0.00000    \n"
        "\n"
        " ----------------------------------------------------------------------\n"
        " E04DSMNM --- |# succ. | NFE rem.|      f      |  deltaf  |\n"
        "              |       0|      276|  0.0000     |  0.00    |\n"
        "\n"
        " E04DSMNM --- search stopped. the reason:\n"
        "              all convergence criteria have been satisfied.\n"
        "              return to monitor program after      0 successes\n"
        "              total number of function evaluations =       45.\n"
        "\n";
    EXPECT_NE(run.out.find(expected), std::string::npos) << run.out;
}

TEST(RunTranscript, ContinueGoesOnWithTheStoredSimplex) {
    ZemokRun run = autoSession("PROBLEM,TEST,5\nMETHOD,N-M\nRUN\nCONTINUE\nEXIT\n");
    std::size_t first = run.out.find("search stopped");
    ASSERT_NE(first, std::string::npos);
    // No second report and no new simplex: the first row of the table shows
    // the best value stored, with no change against it.
    std::string rest = run.out.substr(first + 1);
    EXPECT_EQ(rest.find("reports current information"), std::string::npos);
    EXPECT_EQ(rest.find("information at the start"), std::string::npos);
    std::size_t row = rest.find("              |       0|     1140|");
    ASSERT_NE(row, std::string::npos) << rest;
    EXPECT_EQ(rest.substr(row + 48, 12), "  0.00    |\n");
}

TEST(RunTranscript, ContinueWithoutASearchIsRun) {
    ZemokRun fresh = autoSession("PROBLEM,TEST,14\nMETHOD,N-M\nCONTINUE\nEXIT\n");
    EXPECT_NE(fresh.out.find(" ZEMOK --- Version 5.6 rev. 09 May 02 03:30 reports current information:"),
              std::string::npos);
    EXPECT_NE(fresh.out.find("information at the start of the search"), std::string::npos);
}

// RUN or CONTINUE with a method number that has no search (set as a status
// element): one plain line, no search, status 1 in auto mode, and no
// minimum at the end of the job.
TEST(RunTranscript, MethodWithoutASearchIsRefusedPlainly) {
    for (const char* command : {"RUN", "CONTINUE"}) {
        ZemokRun run = autoSession("PROBLEM,TEST,7\nMETHOD,N-M\nSET,STATUS,2,13\n" + std::string(command) + "\nEXIT\n");
        const std::string tail = " Method 13 has no search.\n\n"
            " ----------------------------- END OF JOB -----------------------------\n\n"
            " No search was made. Function value is  -0.9322000    \n at the point:\n\n"
            "   0.00000       0.00000    \n\n\n"
            " after          1 function evaluations,\n"
            "                0 gradient evaluations,\n"
            "                0 iterations\n";
        EXPECT_NE(run.out.find(tail), std::string::npos) << command << "\n" << run.out;
        EXPECT_EQ(run.out.find("Produced function minimum"), std::string::npos) << command;
        EXPECT_EQ(run.exitCode, 1) << command;
    }
}

TEST(RunTranscript, MessageLevelAboveNineIsBroughtToOneAtRun) {
    ZemokRun run = autoSession("PROBLEM,TEST,14\nMETHOD,N-M\nSET,S,7,11\nRUN\nEXIT\n");
    EXPECT_NE(run.out.find(" message level -------------------------------  : 1\n"), std::string::npos)
        << run.out;
}

TEST(RunTranscript, InteractiveRunWarnsAboutTheLimitsOfTheSimplex) {
    // 10 evaluations for two free variables is below a tenth of 100 * 2.
    ZemokRun run = runZemok("PROBLEM,TEST,7\n\nMETHOD,N-M\nMAXNFE,10\nRUN\n\nN\nEXIT\n");
    // The texts begin with a blank of their own behind the writer's blank.
    EXPECT_NE(run.out.find("  ZEMOK -W- Maximum number of F calls seems too small: 10\n"
                           "            Recommended value: 200\n"),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find(" Continue? [ Y / N ] "), std::string::npos);
    // N to "Continue?" leaves the search unstarted.
    EXPECT_EQ(run.out.find("information at the start of the search"), std::string::npos);
}

}  // namespace
