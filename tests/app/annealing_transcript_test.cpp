// Sessions with the searches that use chance: short runs of M-C, SA-MC and
// SA-NM checked line by line, refused values of the temperature schedule,
// and the annealed simplex on the scattering fit of examples/synthetic.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {


// The misfit at the end of a fit of examples/synthetic (radius 50, width 5)
// with only the radius and the width free, from starts 50 percent away.
double misfitOfFit(const std::string& method, const char* radius, const char* width) {
    std::string dir = freshFolder("annealfit");
    const std::string examples = std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/";
    for (const char* f : {"synsphere.dat", "fixed.inp"}) writeFile(dir + "/" + f, fileText(examples + f));
    std::string answers = fileText(examples + "vardene.ans");
    answers.replace(answers.find("\n40 20 80\n"), 10, std::string("\n") + radius + " 20 80\n");
    answers.replace(answers.find("\n4 1 10\n"), 8, std::string("\n") + width + " 1 10\n");
    writeFile(dir + "/vardene.ans", answers);
    ZemokRun run = runZemok("MESSAGE,0\nPROBLEM,USER\nLOAD,FILE=fixed.inp,IFIXER\nMETHOD," + method + "\nRUN\nEXIT\nY\nY\n",
                            {"/UC=vardene.ans"}, dir);
    const std::string key = "Produced function minimum is equal to";
    std::size_t at = run.out.rfind(key);
    return at == std::string::npos ? -1.0 : std::strtod(run.out.c_str() + at + key.size(), nullptr);
}

// From above the annealed simplex reaches the simplex's minimum; from
// below, where the simplex stops in a broad distribution of width 40
// (misfit 0.23), it finds the spheres of radius 50 and width 5.
TEST(AnnealingTranscript, AnnealedSimplexOnTheScatteringFit) {
    const std::string annealed = "SA-NM\nLOAD,,TE,1E-2,1,0.8";
    for (auto [radius, width] : {std::pair{"75", "2.5"}, std::pair{"25", "7.5"}}) {
        const double plain = misfitOfFit("N-M", radius, width);
        const double chance = misfitOfFit(annealed, radius, width);
        EXPECT_GT(chance, 0.0) << radius;
        EXPECT_LE(chance, plain * (1 + 1e-6)) << radius;
        EXPECT_LT(chance, 3.6e-4) << radius;
    }
}

}  // namespace
