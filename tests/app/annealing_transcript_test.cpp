// Sessions with the searches that use chance: short runs of M-C, SA-MC and
// SA-NM checked line by line, refused values of the temperature schedule,
// and the annealed simplex on the scattering fit of examples/synthetic.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

ZemokRun autoSession(const std::string& commands) {
    std::string dir = freshFolder("anneal");
    writeFile(dir + "/zemok.cmd", commands);
    writeFile(dir + "/zemok.inp", "");
    return runZemok("MODE,AUTO\n", {}, dir);
}

// One session on problem 7 from (0, 0), f = -0.9322; the generators are
// seeded alike in every session, so the runs repeat.  Monte-Carlo with steps
// of 0.3, the running line of message level 1 after ten tries; the annealed
// Monte-Carlo at level 2, whose temperature halves at evaluation counts 12
// and 14 and lets the point climb; the annealed simplex with a budget of 3,
// then CONTINUE on the kept simplex, from the temperature left.
TEST(AnnealingTranscript, ShortRunsOfTheThreeMethodsLineByLine) {
    ZemokRun run = autoSession("PROBLEM,TEST,7\nMETHOD,M-C,10,0.3\nRUN\nMETHOD,SA-MC,4,0.3\nLOAD,,TE,0.5,2,0.5\n"
                               "MESSAGE,2\nRUN\nMETHOD,SA-NM\nMAXNFE,3\nLOAD,,STEP,ALL,0.5\nLOAD,,RF,1E-6\nMESSAGE,1\n"
                               "RUN\nCONTINUE\nEXIT\n");
    const char* pieces[] = {
        " sec\n\n"
        " E4MCM1 -s- 9 nfe remainded, f(x) = -0.9589758    ,  path =  0.33    \n\n"
        " E4MCM1 -s- 8 nfe remainded, f(x) = -0.9648360    ,  path =  8.24E-02\n\n"
        " E4MCM1 -s- 5 nfe remainded, f(x) = -0.9756967    ,  path =  0.37    \n\n"
        "+E4MCM1 --- 0 nfe remainded, f(x) = -0.9407163                    \n"
        " //////",
        " sec\n\n"
        "            temperature:   0.2500000    \n"
        " E4MCM1 -s- 3 nfe remainded, f(x) = -0.9856609    ,  path =  0.28    \n\n"
        " E4MCM1 -s- 2 nfe remainded, f(x) = -0.8189110    ,  path =  0.44    \n\n"
        "            temperature:   0.1250000    \n"
        " E4MCM1 -s- 1 nfe remainded, f(x) = -0.9300357    ,  path =  0.21    \n\n"
        " E4MCM1 -s- 0 nfe remainded, f(x) = -0.7857983    ,  path =  0.36    \n\n"
        " //////",
        " sec\n\n\n"
        " E04DSM --- information at the start of the search:\n\n"
        " step --------------------  0.500000    \n"
        " step1 -------------------  0.482963    \n"
        " step2 -------------------  0.129410    \n"
        " starting function value - -0.785798    \n"
        " initial vertex coordinates:\n"
        "  0.943231       1.42619       1.07264    \n\n"
        " -0.116642      1.276777E-02  0.366321    \n\n"
        " vertex function values:\n"
        " -0.785798     -0.667411     -0.980172    \n\n"
        " ----------------------------------------------------------------------\n"
        "              |       1|        1|-0.96461     |-0.179     |\n"
        "              |       2|       -1|-0.92035     | 4.426E-02 |\n"
        "              |       3|       -3|-0.89633     | 2.402E-02 |\n"
        " E04DSMSA --- * Temperature:  0.12    \n"
        "              |       4|        3|-0.67584     | 0.313     |\n"
        "              |       5|        1|-0.97755     |-0.302     |\n"
        "              |       6|       -1|-0.96769     | 9.859E-03 |\n"
        " E04DSMSA --- * Temperature:  0.12    \n\n"
        " ----------------------------- END OF JOB -----------------------------\n\n"
        " Produced function minimum is equal to -0.9890088    \n"
        " at the point:\n\n"
        "   1.86179      0.801917    \n\n\n"
        " after         25 function evaluations,\n"
        "                0 gradient evaluations,\n"
        "                6 iterations\n"};
    for (const char* piece : pieces) EXPECT_NE(run.out.find(piece), std::string::npos) << piece << "\n" << run.out;
    EXPECT_EQ(run.exitCode, 0);
}

// Interactive: a schedule factor below or at 0 and 0 tries per temperature
// with the temperature set are refused; so are deviates beyond nVar and a
// data file with too few of them.  Nothing of them is stored (the status
// listing shows the first schedule and no deviates), and the session goes on.
TEST(AnnealingTranscript, BadScheduleAndDeviatesAreRefused) {
    std::string dir = freshFolder("refuse");
    writeFile(dir + "/zemok.inp", "deviat 0.5\ntemper 3\n");
    ZemokRun run = runZemok("PROBLEM,TEST,7\n\nMETHOD,SA-MC,30\nLOAD,,TE,2.0,5,0.5\nLOAD,,TE,1.0,5,-0.5\nLOAD,,TS,0\n"
                            "LOAD,,NT,0\n0\nLOAD,,DEVIAT,3,0.5\nLOAD,FILE,DEVIAT\nREPORT,TERMINAL,STATUS\nEXIT\n",
                            {}, dir);
    for (const char* text :
         {" Tsced = ( -0.5000 ) IS OUTSIDE OF PERMITTED RANGE!\n The temperature schedule factor must be above 0;"
          " nothing is stored.\n COMMAND \"LOAD,,TE,1.0,5,-0.5\" WAS FAILED TO EXECUTE\n",
          " Tsced = ( 0.0 ) IS OUTSIDE OF PERMITTED RANGE!\n",
          " NtriesT = ( 0 ) IS OUTSIDE OF PERMITTED RANGE!\n The number of tries per temperature must be at least 1;"
          " nothing is stored.\n COMMAND \"LOAD,,NT,0\" WAS FAILED TO EXECUTE\n",
          " I5LRA2 -E- INDEX IS OUTSIDE OF BOUNDS!\n COMMAND \"LOAD,,DEVIAT,3,0.5\" WAS FAILED TO EXECUTE\n",
          " I5LRA1 -E- ERROR AT THE READING FROM THE FILE \"zemok.inp\"!\n",
          "  43      0   values of argument deviate for Monte-Carlo\n",
          "  65      1   temperature for simulated annealing\n  66      5   number of tries per temperature\n"
          "  67      1   temperature scedule factor\n"})
        EXPECT_NE(run.out.find(text), std::string::npos) << text << "\n" << run.out;
}

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
