// Transcripts of coordinate descent: the final results and the end of the
// job on Rosenbrock's and Wood's functions (tight tolerances, so that the
// search ends at the minimum to the digits shown) and on a loaded
// quadratic.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace {

// Replaces the number behind `key` (to the end of its line) by "<f>" and
// returns it.
double maskValue(std::string& text, const std::string& key) {
    const std::size_t at = text.find(key);
    if (at == std::string::npos) return NAN;
    const std::size_t from = at + key.size();
    const double value = std::strtod(text.c_str() + from, nullptr);
    text.replace(from, text.find('\n', from) - from, "<f>");
    return value;
}

// `lines` lines of the text, from the line that begins with `first`.
std::string block(const std::string& text, const std::string& first, int lines) {
    const std::size_t a = text.find("\n" + first);
    if (a == std::string::npos) return "";
    std::size_t end = a + 1;
    for (int k = 0; k < lines && end != std::string::npos; ++k) end = text.find('\n', end) + 1;
    return text.substr(a + 1, end - a - 1);
}

struct Case {
    const char* name;
    bool fromFile;        // commands from zemok.cmd in auto mode, else typed
    std::string commands;
    double minimum;       // value at the minimum, and its tolerance
    double tolerance;
    const char* change;   // G14.6 fields: f(start) - minimum, |start - minimum|
    const char* norm;
    const char* point;    // the point line of the end of the job
};

TEST(CoordinateDescentTranscript, EndLinesOnThreeProblems) {
    const std::string tight = "MAXITR,100000\nLOAD,,RX,ALL,1E-12\nLOAD,,RF,1E-20\nRUN\nEXIT\n";
    // Starts: Rosenbrock (-1, 0.8), f = 100 * 0.04 + 4 = 8, path sqrt(4.04);
    // Wood (-3, -1, -3, -1), f = 6400 + 16 + 9000 + 16 + 80.8 + 79.2 = 15592,
    // path sqrt(40); the quadratic 3.5 + 0.5 z'Az with z = x - (1, -2) from
    // (0, 0): f = 11.5, path sqrt(5).
    const Case cases[] = {
        {"Rosenbrock", true, "PROBLEM,TEST,1\nMETHOD,C-D\n" + tight, 0.0, 1e-15, "   8.00000    ",
         "   2.00998    ", "   1.00000       1.00000    "},
        {"Wood", true, "PROBLEM,TEST,3\nMETHOD,C-D\n" + tight, 0.0, 1e-15, "   15592.0    ", "   6.32456    ",
         "   1.00000       1.00000       1.00000       1.00000    "},
        {"quadratic", false, "PROBLEM,TEST,8,2\n2 0.5\n4\nY\n3.5\n1 -2\n\nMETHOD,C-D\nRUN\n\nY\nEXIT\nY\nY\n", 3.5, 1e-12,
         "   8.00000    ", "   2.23607    ", "   1.00000      -2.00000    "},
    };
    for (const Case& c : cases) {
        const std::string dir = freshFolder("cd");
        if (c.fromFile) {
            writeFile(dir + "/zemok.cmd", c.commands);
            writeFile(dir + "/zemok.inp", "");
        }
        const ZemokRun run = runZemok(c.fromFile ? "MODE,AUTO\n" : c.commands, {}, dir);
        std::filesystem::remove_all(dir);
        std::string final = block(run.out, " E4CDM1 --- FINAL RESULTS:", 4);
        EXPECT_NEAR(maskValue(final, "Function value at the minimum ="), c.minimum, c.tolerance) << c.name;
        EXPECT_EQ(final, std::string(" E4CDM1 --- FINAL RESULTS:\n") +
                             "            Function value at the minimum =<f>\n" +
                             "            Change in the function value  =" + c.change + "\n" +
                             "            Norm of the argument change   =" + c.norm + "\n")
            << c.name;
        std::string end = block(run.out, " Produced function minimum", 4);
        EXPECT_NEAR(maskValue(end, " Produced function minimum is equal to"), c.minimum, c.tolerance) << c.name;
        EXPECT_EQ(end, std::string(" Produced function minimum is equal to<f>\n at the point:\n\n") + c.point + "\n")
            << c.name;
    }
}

}  // namespace
