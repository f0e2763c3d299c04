// Transcripts of EVALUATE,GRADIENT: Rosenbrock at message levels 0 and 5,
// byte for byte, with the trace of the adaptive procedure worked out here
// along its path; the scattering fit's gradient against central
// differences of the misfit taken in the same session.
#include "platform/edit_format.h"
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>

namespace {

// Rosenbrock in two variables chosen at the terminal: (-1, 0.8).
const std::string kRosenbrock = "\nPROBLEM,TEST,1\n\n\n\n\nMETHOD,B-F-G-S\n";
// The report of G: g1 = -2 (1 - x1) - 400 x1 (x2 - x1^2) = -84 and
// g2 = 200 (x2 - x1^2) = -40.
const std::string kReportOfG =
    " ZEMOK:  ----------------------------------------------------------------------\n"
    " gradient at the current point\n  -84.0000      -40.0000    \n\n"
    " //////////////////////////////////////////////////////////////////////\n";

std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t a = text.find(from), b = text.find(to, a + from.size());
    return a == std::string::npos ? "" : text.substr(a + from.size(), b - a - from.size());
}

std::string line(std::string_view format, const FmtItems& items) { return formatRecords(format, items).text + "\n"; }

ZemokRun session(const std::string& input, const std::vector<std::string>& args = {},
                 const std::vector<std::pair<std::string, std::string>>& files = {}) {
    const std::string dir = freshFolder("grad");
    for (const auto& [name, text] : files) writeFile(dir + "/" + name, text);
    ZemokRun run = runZemok(input, args, dir);
    std::filesystem::remove_all(dir);
    return run;
}

double rosenbrock(double a, double b) { return (1.0 - a) * (1.0 - a) + (10.0 * (b - a * a)) * (10.0 * (b - a * a)); }

// Level 5 with FrlErr loaded as 1e-15, so no noise estimate runs: FERROR =
// 9e-15 (f is 8 less an ulp: 0.8 - 1 is not -0.2).  Each variable starts at
// STEP = 10 sqrt(FrlErr) (|x| + 1), where f'' (882 and 200) leaves RCESDC =
// 4 FERROR / (f'' STEP^2) near 1e-4 and 6e-4, at most 0.001: too large an
// interval.  One shrink by 0.08 gives 0.016 and 0.087, accepted; the final
// phase takes HOPTIM = 2 sqrt(FERROR / |SDC|), one more value.  Five
// evaluations per variable, each shown by its trace line.
TEST(GradientTranscript, RosenbrockAtLevelFiveWithTheTrace) {
    ZemokRun run = session(kRosenbrock + "LOAD,,FRLERR,1E-15\nMESSAGE,5\nEVALUATE,GRADIENT\nN\nREPORT,TERMINAL,G\nEXIT\nY\nY\n");
    const double x[2] = {-1, 0.8}, eps = std::ldexp(1.0, -52), f = rosenbrock(x[0], x[1]), FERROR = (f + 1) * 1e-15;
    double g[2], H[2], finDif[2], step[2], stewart[2];
    int nfe = 1;
    std::string expected;
    for (int i = 0; i < 2; ++i) {
        expected += line("(' E4FDA1 ',20('-'),' data for',I3,' variable ',21('-'))", {i + 1});
        auto value = [&](double xi) {
            const double v = i == 0 ? rosenbrock(xi, x[1]) : rosenbrock(x[0], xi);
            expected += line("(' Function no. ',I2,', ',I7,' value =',1P,G24.16)", {1, ++nfe, v});
            return v;
        };
        const double D = std::fabs(x[i]) + 1.0, s1 = 10.0 * std::sqrt(1e-15) * D, s2 = 0.08 * s1;
        const double up1 = value(x[i] + s1), down1 = value(x[i] - s1), sdc1 = (down1 + (up1 - f) - f) / s1 / s1;
        const double up2 = value(x[i] + s2), down2 = value(x[i] - s2), sdc2 = (down2 + (up2 - f) - f) / s2 / s2;
        ASSERT_LE(4 * FERROR / (std::fabs(sdc1) * s1 * s1), 0.001);
        ASSERT_TRUE(4 * FERROR / (std::fabs(sdc2) * s2 * s2) > 0.001 && 4 * FERROR / (std::fabs(sdc2) * s2 * s2) < 0.1);
        const double p = std::fabs(sdc1 - sdc2), R = std::max(p / std::fabs(sdc1), p / std::fabs(sdc2));
        const double h = std::max(2.0 * std::sqrt(FERROR / std::fabs(sdc2)), std::pow(eps, 0.6) * std::fabs(x[i]));
        const double P = (value(x[i] + h) - f) / h, C = (up2 - down2) / (2.0 * s2);
        const double S = std::fabs(sdc2) * h * 0.5 + 2.0 * FERROR / h;
        ASSERT_LE(std::max(std::fabs(P - C), S), 0.5);
        expected += line("(12X,'Return with the values:',/,12X,'Current argument value               =',1P,G14.6,/,"
                         "12X,'Optimum finite-difference interval   =',1P,G14.6,/,"
                         "12X,'Forward-difference first derivative  =',1P,G14.6,/,"
                         "12X,'Central-difference first derivative  =',1P,G14.6,/,"
                         "12X,'Central-difference second derivative =',1P,G14.6,/,"
                         "12X,\"Summary error estimate in f'(x)      =\",1P,G14.6,/,"
                         "12X,'Relative error in f\"(x)              =',1P,G14.6)",
                         {x[i], h, P, C, sdc2, S, R});
        g[i] = C, H[i] = sdc2, finDif[i] = h / D, step[i] = std::fabs(P / sdc2);
        stewart[i] = std::max(eps, std::fabs(C) * (std::fabs(x[i]) + 1.0) * eps / (std::fabs(f) + 1.0));
    }
    const char* titles[] = {" E4FDA1 --- REL/ABS finite-difference intervals produced:\n",
                            "            Resultant gradient vector is:\n",
                            "            Revised vector of initial search steps:\n", "            Hessian diagonal obtained:\n"};
    const double* vectors[] = {finDif, g, step, H};
    for (int k = 0; k < 4; ++k) expected += titles[k] + line("(5(1P,G14.6))", {vectors[k][0], vectors[k][1]}) + "\n";
    for (double e : stewart) expected += line("(12X,\"Stewart's computational error        =\",1P,G14.6)", {e});
    expected += line("(12X,'Re-estimated computational error     =',1P,G14.6)", {std::max(stewart[0], stewart[1])});
    EXPECT_EQ(between(run.out, " Reset this value to 1? [ Y / N ] < Yes >: ", kReportOfG), expected) << run.out;
    EXPECT_NE(run.out.find("\n after         11 function evaluations,\n"), std::string::npos);
}

// The scattering fit of the demo at its start (Rout 40 and dR 4 free): the
// gradient against central differences of the misfit with steps 0.01, whose
// values EVALUATE shows at the loaded points in the same session.  The noise
// check finds nothing to warn about on this smooth problem.
TEST(GradientTranscript, ScatteringFitAgreesWithDifferencesOfTheMisfit) {
    std::vector<std::pair<std::string, std::string>> files;
    for (const char* f : {"synsphere.dat", "vardene.ans", "fixed.inp"})
        files.emplace_back(f, fileText(std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/" + f));
    std::string commands = "MESSAGE,1\nPROBLEM,USER\nLOAD,FILE=fixed.inp,IFIXER\nMETHOD,B-F-G-S\nEVALUATE,GRADIENT\n"
                           "REPORT,TERMINAL,G\n";
    const char* points[] = {"40.01 1 4", "39.99 1 4", "40 1 4.01", "40 1 3.99"};
    for (int k = 0; k < 4; ++k) {
        files.emplace_back("p" + std::to_string(k) + ".inp", std::string("xStart\n 1 0 0 ") + points[k] + " 0 0\n");
        commands += "CLOSE,DATA,READ\nLOAD,FILE=p" + std::to_string(k) + ".inp,XSTART\nEVALUATE\n";
    }
    ZemokRun run = session(commands + "EXIT\nY\nY\n", {"/UC=vardene.ans"}, files);
    std::istringstream report(between(run.out, " gradient at the current point\n", "//"));
    std::vector<double> g, f;
    for (double v; report >> v;) g.push_back(v);
    for (std::size_t at = run.out.find(" Function no. 20,"); at != std::string::npos; at = run.out.find(" Function no. 20,", at + 1))
        f.push_back(std::strtod(run.out.c_str() + run.out.find("value =", at) + 7, nullptr));
    ASSERT_EQ(g.size(), 8u) << run.out;
    ASSERT_EQ(f.size(), 4u) << run.out;
    for (int i : {0, 1, 2, 4, 6, 7}) EXPECT_EQ(g[i], 0.0) << i;
    EXPECT_NEAR(g[3], (f[0] - f[1]) / 0.02, 1e-4 * std::fabs(g[3]));
    EXPECT_NEAR(g[5], (f[2] - f[3]) / 0.02, 1e-4 * std::fabs(g[5]));
    EXPECT_EQ(run.out.find("ATTENTION"), std::string::npos);
}

}  // namespace
