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

}  // namespace
