// METHOD,SB through the whole program: a short run in which a bound becomes
// active, line by line, and the scattering fit inside the bounds of its
// answers file, where the simplex, which ignores them, wanders off.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

// Frieden's quadratic (problem 7) from (0, 0) with x1 <= 1; maxITR is 6 by
// the problem's limits, so "Itr.Rem." counts down from 6.  First row: the
// differences at the start cost 2n + 1 = 5 evaluations, f(0, 0) = -0.9322,
// and cond is the ratio of the second derivatives 1.505 / 0.515 = 2.922 as
// the differences give it.  x1 reaches its bound in the third step: from
// the fourth row on one variable is free and cond is 1.  The end lies on the
// bound at the least value of f(1, x2) = 0.7525 x2^2 - 0.6477 x2 - 0.8473,
// x2 = 0.6477 / 1.505 = 0.430365, f = -0.9866739.  The local search finds
// nothing better: code 5.  31 evaluations: 1 when the problem is chosen.
TEST(MethodSBRun, ShortRunWithABoundBecomingActiveLineByLine) {
    std::string dir = freshFolder("sb");
    writeFile(dir + "/zemok.cmd", "PROBLEM,TEST,7\nMETHOD,SB\nLOAD,,BU,1,1\nRUN\nEXIT\n");
    writeFile(dir + "/zemok.inp", "");
    ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
    const std::string expected =
        "E04JAF a|Itr.Rem.| No.of F |     F      |  cond(H)   |\n"
        "E04JAF a|       6|        5|-9.3220e-001| 2.9224e+000|\n"
        "E04JAF a|       5|        8|-9.3569e-001| 3.1878e+000|\n"
        "E04JAF a|       4|       12|-9.5734e-001| 1.9927e+000|\n"
        "E04JAF a|       3|       18|-9.8656e-001| 1.0000e+000|\n"
        "E04JAF a|       2|       23|-9.8667e-001| 1.0000e+000|\n"
        "E04JAF b|       1|       28|-9.8667e-001| 1.0000e+000|\n"
        " E04JBM --- Local search attempt...\n"
        "E04JAF c|       1|       30|-9.8667e-001| 1.0000e+000|\n"
        " E4JAF1 --- RETURN CODE =  5\n"
        "\n"
        " ----------------------------- END OF JOB -----------------------------\n"
        "\n"
        " Produced function minimum is equal to -0.9866739    \n"
        " at the point:\n"
        "\n"
        "   1.00000      0.430365    \n"
        "\n"
        "\n"
        " after         31 function evaluations,\n";
    std::size_t at = run.out.find("E04JAF a|Itr.Rem.");
    ASSERT_NE(at, std::string::npos) << run.out;
    EXPECT_EQ(run.out.substr(at, expected.size()), expected);
    EXPECT_EQ(run.exitCode, 0);
}

// Vf, Rin, roin, Rout, roout, dR, Rhs, tau at the end of job.
std::vector<double> finalPoint(const std::string& out) {
    std::vector<double> x;
    std::size_t at = out.rfind(" at the point:\n");
    if (at == std::string::npos) return x;
    std::istringstream rows(out.substr(at + 15));
    for (std::string row; std::getline(rows, row) && row.find("after") == std::string::npos;) {
        std::istringstream values(row);
        for (double v; values >> v;) x.push_back(v);
    }
    return x;
}

// The synthetic spheres (radius 50, width 5) with the radius bounded to
// 20..80 and the width to 1..10 by the answers file.  From radius 30 and
// width 2.5 SB recovers both within 2 percent; the simplex leaves the box
// for a broad distribution.  From radius 25 and width 7.5 the misfit rises
// towards radius 30 before it falls into the true valley, so a descent ends
// in the box's corner at the width 10 and the radius near 20, inside the
// bounds all the same.
TEST(MethodSBRun, ScatteringFitInsideTheBoundsOfTheAnswersFile) {
    const std::string source = std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/";
    struct Case {
        const char* start[2];  // radius and width lines of the answers file
        const char* method;
        bool truth;            // recovers radius 50 and width 5 within 2 percent
        bool inside;           // ends inside the bounds
    } cases[] = {{{"30 20 80", "2.5 1 10"}, "SB", true, true},
                 {{"30 20 80", "2.5 1 10"}, "N-M", false, false},
                 {{"25 20 80", "7.5 1 10"}, "SB", false, true}};
    for (const Case& c : cases) {
        std::string dir = freshFolder("sbfit");
        std::string answers = fileText(source + "below.ans");
        answers.replace(answers.find("30 20 80"), 8, c.start[0]);
        answers.replace(answers.find("2.5 1 10"), 8, c.start[1]);
        writeFile(dir + "/start.ans", answers);
        for (const char* f : {"synsphere.dat", "fixed.inp"}) writeFile(dir + "/" + f, fileText(source + f));
        writeFile(dir + "/fit.cmd", std::string("PROBLEM,USER\nLOAD,FILE=fixed.inp,IFIXER\nMETHOD,") +
                                        c.method + "\nRUN\nEXIT\n");
        ZemokRun run = runZemok("", {"/C=fit.cmd", "/UC=start.ans"}, dir);
        std::vector<double> x = finalPoint(run.out);
        ASSERT_EQ(x.size(), 8u) << run.out;
        const bool truth = std::abs(x[3] - 50) <= 1 && std::abs(x[5] - 5) <= 0.1;
        const bool inside = x[3] >= 20 && x[3] <= 80 && x[5] >= 1 && x[5] <= 10;
        EXPECT_EQ(truth, c.truth) << c.method << " " << c.start[0] << ": " << x[3] << " " << x[5];
        EXPECT_EQ(inside, c.inside) << c.method << " " << c.start[0] << ": " << x[3] << " " << x[5];
        if (inside && !truth) {
            EXPECT_EQ(x[5], 10.0);
        }
    }
}

}  // namespace
