// The whole road of a scattering fit, as `make demo` travels it: the answers
// file, the synthetic curve of spheres of known radius, the fixed
// parameters, the bounded quasi-Newton search, and the radii it recovers.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace {

std::string example(const std::string& name) {
    return fileText(std::string(ZEMOK_SOURCE_DIR) + "/examples/" + name);
}

// The numbers of the point written under "at the point:" of the end of job.
std::vector<double> finalPoint(const std::string& out) {
    std::vector<double> x;
    std::size_t at = out.rfind(" at the point:\n");
    if (at == std::string::npos) return x;
    std::istringstream rows(out.substr(at + 15));
    std::string row;
    while (std::getline(rows, row)) {
        if (row.find("after") != std::string::npos) break;
        std::istringstream values(row);
        for (double v; values >> v;) x.push_back(v);
    }
    return x;
}

TEST(ScatteringFit, DemoRecoversTheRadiusAndTheWidthOfTheSpheres) {
    std::string dir = freshFolder("fit");
    writeFile(dir + "/demo.cmd", example("demo.cmd"));
    for (const char* f : {"synsphere.dat", "vardene.ans", "fixed.inp"})
        writeFile(dir + "/" + f, example(std::string("synthetic/") + f));
    ZemokRun run = runZemok("", {"/C=demo.cmd", "/UC=vardene.ans"}, dir);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.out.find(" Number of points reduced to : 100\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(" 8-dimensional user's problem\n"), std::string::npos);
    EXPECT_NE(run.out.find(" iFixer CHANGED\n"), std::string::npos);
    EXPECT_NE(run.out.find("E04JAF c|"), std::string::npos);  // the end row of METHOD,SB
    // Vf, Rin, roin, Rout, roout, dR, Rhs, tau: started at Rout 40 and dR 4,
    // 20 percent away from the truth 50 and 5; the rest stays fixed.
    std::vector<double> x = finalPoint(run.out);
    ASSERT_EQ(x.size(), 8u) << run.out;
    EXPECT_NEAR(x[3], 50.0, 2.5);
    EXPECT_NEAR(x[5], 5.0, 0.25);
    EXPECT_EQ(x[0], 1.0);
    EXPECT_EQ(x[4], 1.0);
    EXPECT_EQ(x[1], 0.0);
    // MESSAGE,11 and EVALUATE wrote the result files and the table.
    std::string fit = fileText(dir + "/synsphere.fit");
    EXPECT_EQ(fit.substr(0, 5), " 1SPH") << fit;
    EXPECT_NE(fileText(dir + "/vardene.log").find(" 1SPH"), std::string::npos);
    EXPECT_FALSE(fileText(dir + "/synsphere.pam").empty());
    EXPECT_NE(run.out.find(" Comp     Vf       Rin     roin     Rout     roout     dR\n 1SPH"),
              std::string::npos);
    // The picture of the fit, and the end of its plot session: with no
    // terminal input the end of input counts as the CR.
    EXPECT_NE(run.out.find(" ==> EVALUATE\n Graphics Window written to synsphere.svg\n Comp "), std::string::npos);
    EXPECT_NE(run.out.find(" Press CR to terminate the program\n 8-dimensional user's problem\n"), std::string::npos);
    EXPECT_NE(run.out.find(" E4MAIN --- Normal termination\n"), std::string::npos);
    std::string svg = fileText(dir + "/synsphere.svg");
    EXPECT_EQ(svg.rfind("</svg>"), svg.size() - 7) << svg.substr(svg.size() - 20);
    for (const char* legend : {">(1) Exp<", ">(2) Fit<", ">(3) 1SPH<", ">PLOT<", ">log I<", ">S<"})
        EXPECT_NE(svg.find(legend), std::string::npos) << legend;
    std::string check = "python3 -c \"import sys, xml.dom.minidom; xml.dom.minidom.parse(sys.argv[1])\" '" +
                        dir + "/synsphere.svg'";
    EXPECT_EQ(std::system(check.c_str()), 0);
}

// The first value of the fit, from the trace line at message level 5,
// against the same misfit computed here: an ellipsoid of axis ratio 1 is a
// sphere of radius Rell, whose curve has the shape [3 (sin x - x cos x) / x^3]^2
// with x = s Rell; the misfit does not depend on the scale of the model.
TEST(ScatteringFit, FirstValueMatchesAnIndependentCalculation) {
    std::string dir = freshFolder("first");
    std::string curve = "Ten points: s, I, Err\n";
    for (int k = 1; k <= 10; ++k)
        curve += std::to_string(0.01 * k) + " " + std::to_string(100.0 / k) + " " + std::to_string(1.0 + 0.1 * k) + "\n";
    writeFile(dir + "/curve.dat", curve);
    writeFile(dir + "/run.ans",
              "Series\nComment\nEXPERIMENT\n1\n0.0\nELLIPSOID\n1 1 1\n40 40 40\n1 1 1\n2\ncurve.dat\n1\n1.0\n");
    ZemokRun run = runZemok("MESSAGE,5\nPROBLEM,USER\nN\nEXIT\nY\nY\n", {"/UC=run.ans"}, dir);
    const std::string key = " Function no. 20,       1 value =";
    std::size_t at = run.out.find(key);
    ASSERT_NE(at, std::string::npos) << run.out;
    double value = std::strtod(run.out.c_str() + at + key.size(), nullptr);

    // A fraction of 1 keeps the points below the last s: nine of them.
    const int n = 9;
    double sumRatio = 0, up = 0, down = 0, f = 0;
    std::vector<double> I(n), err(n), m(n), w(n);
    for (int k = 0; k < n; ++k) {
        double s = std::stod(std::to_string(0.01 * (k + 1))), x = 40.0 * s;
        double amplitude = 3.0 * (std::sin(x) - x * std::cos(x)) / (x * x * x);
        I[k] = std::stod(std::to_string(100.0 / (k + 1)));  // as the file holds it
        err[k] = std::stod(std::to_string(1.0 + 0.1 * (k + 1)));
        m[k] = amplitude * amplitude;
        sumRatio += (I[k] / err[k]) * (I[k] / err[k]);
    }
    for (int k = 0; k < n; ++k) {
        w[k] = (1.0 / err[k]) / std::sqrt(sumRatio);
        up += I[k] * m[k] * w[k] * w[k];
        down += m[k] * w[k] * m[k] * w[k];
    }
    const double scale = up / down;
    for (int k = 0; k < n; ++k) f += ((I[k] - scale * m[k]) * w[k]) * ((I[k] - scale * m[k]) * w[k]);
    EXPECT_NEAR(value, f, 1e-12 * f) << run.out;
}

// The measured-like example as README runs it: a header with a "#" line,
// a "!" comment line inside the data, four columns, q in 1/nm.  The core
// radius, the outer radius and the width come back from 16, 34 and 3 to
// the 20, 40 and 4 of the curve, which an independent Python model made.
TEST(ScatteringFit, MeasuredLikeCoreShellExampleIsFittedByItsInstructions) {
    std::string dir = freshFolder("coreshell");
    for (const char* f : {"coreshell.dat", "coreshell.ans", "free.inp", "fit.cmd"})
        writeFile(dir + "/" + f, example(std::string("measured/") + f));
    ZemokRun run = runZemok("", {"/C=fit.cmd", "/UC=coreshell.ans"}, dir);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out.find("--W-"), std::string::npos) << run.out;  // no point lost or invented
    EXPECT_NE(run.out.find(" Angular units multiplied by : 0.1000000\n"), std::string::npos) << run.out;
    std::vector<double> x = finalPoint(run.out);
    ASSERT_EQ(x.size(), 8u) << run.out;
    EXPECT_NEAR(x[1], 20.0, 0.5);
    EXPECT_NEAR(x[3], 40.0, 0.5);
    EXPECT_NEAR(x[5], 4.0, 0.2);
    EXPECT_EQ(fileText(dir + "/coreshell.csv").substr(0, 39), "s,I,error,weight,model,phase1_SPH\n1.100");
}

// A curve file that is refused, and then the end of the input: there is
// nothing to fit, so PROBLEM,USER fails, RUN never searches (no "perfect
// fit" of an empty curve) and the auto session ends with status 1.
TEST(ScatteringFit, RefusedCurveAndEndedInputFailTheProblemInAutoMode) {
    std::string dir = freshFolder("refused");
    writeFile(dir + "/notes.dat", "Sample notes\nno numbers here\n");
    writeFile(dir + "/run.ans", "S\nC\nEXPERIMENT\n1\n0.0\nELLIPSOID\n1 1 1\n40 30 50\n1 1 1\n2\nnotes.dat\n1\n1.0\n");
    writeFile(dir + "/zemok.cmd", "PROBLEM,USER\nMETHOD,N-M\nRUN\nEXIT\n");
    writeFile(dir + "/zemok.inp", "\n");
    ZemokRun run = runZemok("MODE,AUTO\n", {"/UC=run.ans"}, dir);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.out.find(" USERF ----E- No curve was read: there is nothing to fit, the problem is not set up.\n"),
              std::string::npos) << run.out;
    EXPECT_NE(run.out.find(" COMMAND \"PROBLEM,USER\" WAS FAILED TO EXECUTE\n"), std::string::npos);
    EXPECT_EQ(run.out.find("-dimensional user's problem"), std::string::npos);
    EXPECT_EQ(run.out.find("convergence"), std::string::npos);
}

}  // namespace
