// The result files of the scattering fit at message levels 10 and 11: the
// phase rows in their edit notation, the curves, the log growing by one set
// of rows per evaluation, the table on the terminal, and the fixed names of
// a TEST run.
#include "run_zemok_support.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string curveFile() {
    std::string text = "Ten points: s, I, Err\n";
    for (int k = 1; k <= 10; ++k)
        text += std::to_string(0.01 * k) + " " + std::to_string(100.0 / k) + " 1.0\n";
    return text;
}

// A dumbbell and an ellipsoid; Rout 1e7 is too wide for F9.2.
const std::string kPhases =
    "2\n0.0\nDUMBBELL\n3 0 4\n0 0 0\n0 0 0\n1e7 1e7 1e7\n1 1 1\n0 0 0\n1\n"
    "ELLIPSOID\n1 0 2\n40 30 50\n1 1 1\n";

std::string firstLines(const std::string& text, int n) {
    std::istringstream in(text);
    std::string line, out;
    for (int i = 0; i < n && std::getline(in, line); ++i) out += line + "\n";
    return out;
}

TEST(ResultFiles, LevelElevenWritesEveryFileAndTheTable) {
    std::string dir = freshFolder("results");
    writeFile(dir + "/curve.dat", curveFile());
    writeFile(dir + "/run.ans", "Title\nComment\nEXPERIMENT\n" + kPhases + "2\ncurve.dat\n1\n1.0\n");
    // Each call at level 11 ends its plot session by reading one line (CR).
    ZemokRun run = runZemok("MESSAGE,11\nPROBLEM,USER\nN\n\nEVALUATE\n\nEXIT\nY\nY\n", {"/UC=run.ans"}, dir);
    // Vf 3 and 1 are normalized to 0.75 and 0.25; the radius 1e7 does not fit
    // F9.2 and shows as asterisks.
    std::string fit = fileText(dir + "/curve.fit");
    std::string rows = firstLines(fit, 2);
    EXPECT_EQ(rows.substr(0, 5 + 9 * 4), " 1DMB     0.75     0.00     0.00*********") << fit;
    EXPECT_EQ(rows.substr(rows.find('\n') + 1, 32), " 2ELL     0.25    40.00     1.00") << fit;
    // Nine points, each (3D15.7): s, I and the scaled model.
    std::istringstream lines(fit);
    std::string line;
    int count = 0;
    while (std::getline(lines, line)) ++count;
    EXPECT_EQ(count, 2 + 9);
    EXPECT_EQ(fit.substr(fit.find("\n", fit.find("\n") + 1) + 1, 30), "  0.1000000D-01  0.1000000D+03");
    // The structure factor of phase 1, which is no SPHERE: all zero.
    std::string str = fileText(dir + "/curve.str");
    EXPECT_EQ(str.substr(0, 28), "  cur 0.000    0.00    0.00\n");
    // G15.7 of 0 is F11.6 and four blanks.
    EXPECT_NE(str.find("  1.0000000E-02   0.000000    \n"), std::string::npos) << str;
    EXPECT_FALSE(fileText(dir + "/curve.pam").empty());
    // The log: its header once, then one set of rows for each evaluation at
    // level 11 (the first value and EVALUATE).
    std::string log = fileText(dir + "/vardene.log");
    EXPECT_NE(log.find(" Name   Parameters of phase\n"), std::string::npos);
    std::size_t sets = 0;
    for (std::size_t at = log.find(" 2ELL"); at != std::string::npos; at = log.find(" 2ELL", at + 1)) ++sets;
    EXPECT_EQ(sets, 2u);
    // The table on the terminal: the heading and 72 columns of each row.
    EXPECT_NE(run.out.find(" Comp     Vf       Rin     roin     Rout     roout     dR\n"
                           " 1DMB     0.75     0.00     0.00*********"),
              std::string::npos)
        << run.out;
}

std::size_t count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// The first value of the example answers file at MESSAGE,11: the four files
// and the picture, the table behind the picture, the CR that ends the plot
// session, and the session going on to EXIT.
TEST(ResultFiles, FirstEvaluationOfTheExampleAtLevelEleven) {
    std::string dir = freshFolder("example11");
    for (const char* f : {"synsphere.dat", "vardene.ans"})
        writeFile(dir + "/" + f, fileText(std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/" + f));
    ZemokRun run = runZemok("MESSAGE,11\nPROBLEM,USER\nN\n\nMESSAGE,1\nEXIT\nY\nY\n", {"/UC=vardene.ans"}, dir);
    EXPECT_EQ(run.exitCode, 0);
    // The start of the answers file: Vf 1, Rin 0, roin 0, Rout 40, roout 1,
    // dR 4, Rhs 0; A72 stops inside the field of tau.
    EXPECT_NE(run.out.find(" Graphics Window written to synsphere.svg\n"
                           " Comp     Vf       Rin     roin     Rout     roout     dR\n"
                           " 1SPH     1.00     0.00     0.00    40.00     1.00     4.00     0.00    \n"
                           " Press CR to terminate the program\n"
                           " 8-dimensional user's problem\n"
                           " Function no. 20,       1 value ="),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find(" E4MAIN --- Normal termination\n"), std::string::npos);
    // The row, then the 100 points of the reduced curve.
    std::string fit = fileText(dir + "/synsphere.fit");
    EXPECT_EQ(fit.substr(0, 82), " 1SPH     1.00     0.00     0.00    40.00     1.00     4.00     0.00     0.00    2") << fit;
    EXPECT_EQ(count(fit, "\n"), 101u);
    EXPECT_EQ(count(fileText(dir + "/synsphere.pam"), "\n"), 101u);
    EXPECT_EQ(count(fileText(dir + "/synsphere.str"), "\n"), 101u);
    EXPECT_EQ(count(fileText(dir + "/vardene.log"), " 1SPH"), 1u);
    // Measured, fitted and phase curve: a legend each and a marker on each
    // of the 100 points (c, d and r in the colours 9, 12 and 13).
    std::string svg = fileText(dir + "/synsphere.svg");
    for (const char* legend : {">(1) Exp<", ">(2) Fit<", ">(3) 1SPH<", ">PLOT<"})
        EXPECT_EQ(count(svg, legend), 1u) << legend;
    EXPECT_EQ(count(svg, "fill=\"none\" stroke=\"#5555FF\""), 100u + 1u);  // and its polyline
    EXPECT_EQ(count(svg, "rx=\"2\" ry=\"2\" fill=\"#FF5555\""), 100u);
    EXPECT_EQ(count(svg, "height=\"4\" fill=\"none\" stroke=\"#FF55FF\""), 100u);
}

TEST(ResultFiles, TestRunUsesTheFixedNames) {
    std::string dir = freshFolder("testrun");
    writeFile(dir + "/curve.dat", curveFile());
    // The run mode TEST asks for the noise right after the concentration.
    writeFile(dir + "/run.ans", "Title\nComment\nTEST\n2\n0.0\n0.0\n"
                                "DUMBBELL\n3 0 4\n0 0 0\n0 0 0\n1e7 1e7 1e7\n1 1 1\n0 0 0\n1\n"
                                "ELLIPSOID\n1 0 2\n40 30 50\n1 1 1\n2\ncurve.dat\n1\n1.0\n");
    runZemok("MESSAGE,10\nPROBLEM,USER\nN\n2\nDUMBBELL\n3 0 4\n0 0 0\n0 0 0\n1e7 1e7 1e7\n1 1 1\n0 0 0\n1\n"
             "ELLIPSOID\n1 0 2\n40 30 50\n1 1 1\nEXIT\nY\nY\n",
             {"/UC=run.ans"}, dir);
    std::string data = fileText(dir + "/test.dat");
    EXPECT_EQ(data.substr(0, 5), " 1DMB") << data;
    EXPECT_FALSE(fileText(dir + "/test.fit").empty());
    EXPECT_TRUE(fileText(dir + "/curve.fit").empty());
}

}  // namespace
