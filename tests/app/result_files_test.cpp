// The result files of whole sessions of the scattering fit: the example at
// message level 11, with its picture, table and log, and the fixed names of
// a TEST run at level 10.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string curveFile() {
    std::string text = "Ten points: s, I, Err\n";
    for (int k = 1; k <= 10; ++k)
        text += std::to_string(0.01 * k) + " " + std::to_string(100.0 / k) + " 1.0\n";
    return text;
}

std::size_t count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// The first value of the example answers file at MESSAGE,11: the four files
// and the picture, the table behind the picture, the CR that ends the plot
// session, and the session going on to EVALUATE and EXIT.
TEST(ResultFiles, FirstEvaluationOfTheExampleAtLevelEleven) {
    std::string dir = freshFolder("example11");
    for (const char* f : {"synsphere.dat", "vardene.ans"})
        writeFile(dir + "/" + f, fileText(std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/" + f));
    ZemokRun run =
        runZemok("MESSAGE,11\nPROBLEM,USER\nN\n\nEVALUATE\n\nMESSAGE,1\nEXIT\nY\nY\n", {"/UC=vardene.ans"}, dir);
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
    // The header once, then one set of rows per evaluation at level 11: the
    // first value and EVALUATE.
    std::string log = fileText(dir + "/vardene.log");
    EXPECT_EQ(count(log, " Name   Parameters of phase\n"), 1u);
    EXPECT_EQ(count(log, " 1SPH"), 2u);
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
