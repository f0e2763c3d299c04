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
    ZemokRun run = runZemok("MESSAGE,11\nPROBLEM,USER\nN\nEVALUATE\nEXIT\nY\nY\n", {"/UC=run.ans"}, dir);
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
