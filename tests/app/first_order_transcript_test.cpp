// Transcript tests of the first-order methods 1 to 11 run by RUN and
// CONTINUE in auto mode: the end of every method on Rosenbrock, Wood and
// the spiral chute, a short B-F-G-S run at message level 5 line by line,
// and the scattering fit of the synthetic spheres.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <vector>

namespace {

// A fresh folder for one session, removed at the end of the test.
struct Folder {
    std::string path;
    explicit Folder(const std::string& stem) : path(freshFolder(stem)) {}
    ~Folder() { std::filesystem::remove_all(path); }
};

// Runs `commands` as the command file of an auto-mode session.
ZemokRun autoSession(const std::string& commands) {
    Folder dir("fom");
    writeFile(dir.path + "/zemok.cmd", "MODE,AUTO\n" + commands);
    writeFile(dir.path + "/zemok.inp", "");
    return runZemok("MODE,AUTO\n", {}, dir.path);
}

double producedMinimum(const std::string& out) {
    const std::string key = "Produced function minimum is equal to";
    std::size_t at = out.rfind(key);
    return at == std::string::npos ? -1.0 : std::strtod(out.c_str() + at + key.size(), nullptr);
}

// The end of a run: the driver's last finish and the end of the job (up to
// the CPU time).  A run stopped by the iteration limit is continued as often
// as `continues` says.
struct End {
    int problem;
    const char* method;
    int continues;
    char reason;  // A attempt to find a new point failed, S all criteria, I iteration count
    int iterations, nfe, nge;
    const char* minimum;  // the value as the end of the job writes it
    const char* point;
};

std::string endLines(const End& e) {
    const char* reason = e.reason == 'A'   ? "ATTEMPT TO FIND A NEW POINT WAS FAILED"
                         : e.reason == 'S' ? "ALL CONVERGENCE CRITERIA SATISFIED"
                                           : "EXIT ON ITERATION COUNT";
    char text[1024];
    std::snprintf(text, sizeof text,
                  " E4FOM1 --- Search stopped. The reason:\n            %s\n"
                  " Return to monitor program after%5d iterations\n"
                  " (total number of function evaluations =%7d ).\n\n\n"
                  " ----------------------------- END OF JOB -----------------------------\n\n"
                  " Produced function minimum is equal to %s\n at the point:\n\n%s\n\n\n"
                  " after%11d function evaluations,\n%17d gradient evaluations,\n%17d iterations\n",
                  reason, e.iterations, e.nfe, e.minimum, e.point, e.nfe, e.nge, e.iterations);
    return text;
}

// Every method from the standard starts reaches f below 1e-8 (the minimum
// of the three problems is 0), with the default adaptive differences for
// the gradient, except D-F-P on Wood: along the curved valley its matrix
// grows to a condition of 5e7 and, with gradients from differences, the
// steps shrink to 1e-4; after three calls of 80 iterations it stands at
// 6.2968.  (With central differences, SET,GRADIENT,2, or the analytical
// gradient, SET,GRADIENT,3, it reaches 1e-20; see the table in README.md.)
TEST(FirstOrderTranscript, MethodsOneToElevenReachTheMinimum) {
    const std::string one = "   1.00000       1.00000    ", four = one + "   1.00000       1.00000    ";
    const End ends[] = {
        {1, "F-R", 0, 'A', 30, 405, 31, " 0.2505107E-14", one.c_str()},
        {1, "P-R", 0, 'A', 24, 344, 25, " 0.3292411E-13", one.c_str()},
        {1, "B-P", 0, 'A', 27, 383, 28, " 0.5343968E-15", one.c_str()},
        {1, "P-S", 0, 'A', 21, 294, 22, " 0.2975860E-15", one.c_str()},
        {1, "D-F-P", 0, 'A', 24, 325, 25, " 0.1468033E-15", one.c_str()},
        {1, "B-F-G-S", 0, 'A', 22, 295, 23, " 0.4832994E-16", one.c_str()},
        {1, "BR", 0, 'A', 21, 298, 22, " 0.2802379E-15", one.c_str()},
        {1, "FL", 0, 'S', 22, 290, 23, " 0.2447153E-15", one.c_str()},
        {1, "O-L", 1, 'S', 4, 708, 45, " 0.1083243E-16", one.c_str()},
        {1, "O-S", 0, 'A', 21, 320, 22, " 0.3875906E-15", one.c_str()},
        {3, "F-R", 1, 'A', 18, 1348, 99, " 0.6972674E-11", "  0.999998      0.999998       1.00000       1.00000    "},
        {3, "P-R", 0, 'A', 45, 647, 46, " 0.5272862E-12", four.c_str()},
        {3, "B-P", 0, 'A', 64, 932, 65, " 0.3564364E-11", "   1.00000       1.00000      0.999999      0.999999    "},
        {3, "P-S", 2, 'A', 77, 2757, 238, " 0.6407621E-11", "  0.999998      0.999998       1.00000       1.00000    "},
        {3, "D-F-P", 2, 'I', 80, 3450, 241, "  6.296765    ", "  0.218237      0.209225      -1.30513       1.73818    "},
        {3, "B-F-G-S", 0, 'A', 40, 604, 41, " 0.1488968E-14", four.c_str()},
        {3, "BR", 0, 'A', 45, 682, 46, " 0.5235511E-15", four.c_str()},
        {3, "FL", 0, 'A', 44, 660, 45, " 0.6667269E-15", four.c_str()},
        {3, "O-L", 0, 'A', 43, 621, 44, " 0.1289406E-14", four.c_str()},
        {3, "O-S", 0, 'S', 41, 597, 42, " 0.2557073E-14", four.c_str()},
        {5, "F-R", 0, 'A', 32, 431, 33, " 0.5060318E-13", "   1.00000      1.048923E-08 -5.558784E-09"},
        {5, "P-R", 0, 'A', 31, 407, 32, " 0.1516644E-13", "   1.00000     -1.826662E-09  7.494380E-09"},
        {5, "B-P", 0, 'A', 26, 360, 27, " 0.4534277E-14", "   1.00000      4.176823E-08  6.647419E-08"},
        {5, "P-S", 1, 'A', 54, 1239, 115, " 0.4653421E-13", "   1.00000      1.352417E-07  2.110840E-07"},
        {5, "D-F-P", 0, 'S', 22, 322, 23, " 0.4695077E-18", "   1.00000      3.094028E-12  4.732522E-11"},
        {5, "B-F-G-S", 0, 'S', 22, 299, 23, " 0.4688241E-18", "   1.00000      4.611719E-12  4.969026E-11"},
        {5, "BR", 0, 'S', 22, 310, 23, " 0.4669167E-18", "   1.00000     -8.638951E-11 -9.531910E-11"},
        {5, "FL", 0, 'S', 22, 298, 23, " 0.2618599E-17", "   1.00000      1.380334E-10  3.327132E-10"},
        {5, "O-L", 0, 'S', 24, 344, 25, " 0.7861014E-23", "   1.00000     -1.300089E-12 -1.887908E-12"},
        {5, "O-S", 0, 'S', 23, 321, 24, " 0.8634470E-16", "   1.00000      2.168172E-09  3.771830E-09"},
    };
    for (const End& e : ends) {
        std::string commands = "PROBLEM,TEST," + std::to_string(e.problem) + "\nMETHOD," + e.method + "\nRUN\n";
        for (int k = 0; k < e.continues; ++k) commands += "CONTINUE\n";
        ZemokRun run = autoSession(commands + "EXIT\n");
        const std::string what = std::to_string(e.problem) + " " + e.method;
        EXPECT_EQ(run.exitCode, 0) << what;
        EXPECT_NE(run.out.find(endLines(e)), std::string::npos) << what << "\n" << run.out.substr(run.out.size() - 900);
        const double f = producedMinimum(run.out);
        EXPECT_GE(f, 0.0) << what;
        if (e.reason != 'I') {
            EXPECT_LT(f, 1e-8) << what;
        }
        // Every call but the last stopped on the iteration limit.
        std::size_t calls = 0;
        for (std::size_t at = 0; (at = run.out.find("EXIT ON ITERATION COUNT", at)) != std::string::npos; ++at) ++calls;
        EXPECT_EQ(calls, static_cast<std::size_t>(e.continues + (e.reason == 'I'))) << what;
    }
}

// B-F-G-S on problem 7, the quadratic f = 0.2575 x1^2 - 0.8574 x1 x2 +
// 0.7525 x2^2 - 0.1726 x1 + 0.2097 x2 - 0.9322, at message level 5, with
// steps, tolerances, noise and difference intervals loaded: every line of
// the search, the linear searches with their parabolic steps, the updates
// with their multipliers (psi 0) and the eigenvalues.  After two updates
// the matrix is the Hessian [[0.515, -0.8574], [-0.8574, 1.505]] itself,
// and the point reached solves H x = (0.1726, -0.2097): x = (2.00215,
// 1.00129), f = -0.9322 + (-0.1726 x1 + 0.2097 x2) / 2 = -1.00000.
TEST(FirstOrderTranscript, ShortBfgsRunAtMessageLevelFive) {
    ZemokRun run = autoSession(
        "PROBLEM,TEST,7\nMETHOD,B-F-G-S\nLOAD,,XSTEP,ALL,0.1\nLOAD,,RXTOL,ALL,1E-6\nLOAD,,RFTOL,1E-12\n"
        "LOAD,,FRLERR,1E-15\nLOAD,,FINDIF,ALL,1E-7\nMESSAGE,5\nRUN\nEXIT\n");
    const std::string expected = fileText(std::string(ZEMOK_TEST_DATA) + "/bfgs_level5_transcript.txt");
    ASSERT_FALSE(expected.empty());
    EXPECT_NE(run.out.find(expected), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(" Accumulated Hessian matrix:\n  0.515000     -0.857400    \n\n -0.857400       1.50500    \n"),
              std::string::npos);
    EXPECT_NE(run.out.find(" at the point:\n\n   2.00215       1.00129    \n"), std::string::npos);
}

// The fit of examples/synthetic (spheres of radius 50 and Schulz width 5)
// from starts 50 percent away in both: B-F-G-S comes within 2 percent of
// both and spends fewer evaluations than the simplex from the same start.
// (From radius 75 and width 2.5, where the curvature along the width is
// negative, it ends in the other minimum of the fit, width 40: README.)
TEST(FirstOrderTranscript, ScatteringFitFromStartsFiftyPercentAway) {
    const std::string examples = std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/";
    for (const char* Rout : {"75", "25"}) {
        int evaluations[2] = {0, 0};
        for (int k = 0; k < 2; ++k) {
            Folder dir("fit");
            for (const char* f : {"synsphere.dat", "fixed.inp"}) writeFile(dir.path + "/" + f, fileText(examples + f));
            std::string answers = fileText(examples + "vardene.ans");
            answers.replace(answers.find("\n40 20 80\n"), 10, std::string("\n") + Rout + " 20 80\n");
            answers.replace(answers.find("\n4 1 10\n"), 8, "\n7.5 1 10\n");
            writeFile(dir.path + "/vardene.ans", answers);
            ZemokRun run = runZemok(std::string("MESSAGE,1\nPROBLEM,USER\nLOAD,FILE=fixed.inp,IFIXER\nMETHOD,") +
                                        (k == 0 ? "B-F-G-S" : "N-M") + "\nRUN\nEXIT\nY\nY\n",
                                    {"/UC=vardene.ans"}, dir.path);
            std::size_t at = run.out.rfind(" at the point:\n");
            ASSERT_NE(at, std::string::npos) << run.out;
            std::istringstream point(run.out.substr(at + 15));
            std::vector<double> x(8);
            for (double& v : x) point >> v;
            std::string word;
            point >> word >> evaluations[k];
            if (k == 1) continue;  // the simplex from radius 25 ends at width 40
            EXPECT_NEAR(x[3], 50.0, 1.0) << Rout;
            EXPECT_NEAR(x[5], 5.0, 0.1) << Rout;
        }
        EXPECT_LT(evaluations[0], evaluations[1]) << Rout;
        EXPECT_GT(evaluations[0], 50) << Rout;
    }
}

}  // namespace
