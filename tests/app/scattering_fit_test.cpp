// The whole road of a scattering fit, as `make demo` travels it: the answers
// file, the synthetic curve of spheres of known radius, the fixed
// parameters, the simplex, and the radii it recovers.
#include "run_zemok_support.h"

#include <gtest/gtest.h>

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
    EXPECT_NE(run.out.find("all convergence criteria have been satisfied."), std::string::npos);
    // Vf, Rin, roin, Rout, roout, dR, Rhs, tau: started at Rout 40 and dR 4,
    // 20 percent away from the truth 50 and 5; the rest stays fixed.
    std::vector<double> x = finalPoint(run.out);
    ASSERT_EQ(x.size(), 8u) << run.out;
    EXPECT_NEAR(x[3], 50.0, 2.5);
    EXPECT_NEAR(x[5], 5.0, 0.25);
    EXPECT_EQ(x[0], 1.0);
    EXPECT_EQ(x[4], 1.0);
    EXPECT_EQ(x[1], 0.0);
}

}  // namespace
