// E4ERR1 and E4TOL1 on a user's problem that plays a script of values, so
// that every table, every step and every trace line can be worked out, on a
// smooth user function with deterministic pseudo-random noise of a chosen
// size, and on the constant test function.
#include "support/terminal_test.h"
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "objective/user_function.h"
#include "platform/units.h"

#include "app/module_registry.h"
#include "objective/user_function.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The value of call n (iStat(row::functionEvaluations) before the call) is values[n]; with
// `jump` the value is 0 at the start point and 1 anywhere else.
struct Script {
    std::vector<double> start{0.0};
    std::vector<int> fixer{1};
    std::vector<double> values;
    bool jump = false;
    std::vector<std::vector<double>> points;  // the argument of every call
};
Script script;

const double u = std::ldexp(1.0, -30);  // the unit of the scripted tables
const double eps = std::ldexp(1.0, -52);

std::vector<double> inUnits(std::vector<double> v) {
    for (double& e : v) e *= u;
    return v;
}

double noiseSize = 0.0;  // relative size of the noise of the user function

// A number in [-1, 1] that depends on the bits of x1 and x2 only.
double pseudoRandom(double x1, double x2) {
    std::uint64_t a = 0, b = 0;
    std::memcpy(&a, &x1, 8);
    std::memcpy(&b, &x2, 8);
    std::uint64_t z = a * 0x9E3779B97F4A7C15ull ^ (b + 0x632BE59BD9B4E019ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    z ^= z >> 31;
    return static_cast<double>(z >> 11) / static_cast<double>(1ull << 52) - 1.0;
}

}  // namespace

// The user's problem of this test program: a smooth quadratic of two
// variables near 100, with relative noise of size noiseSize.
static double noisyQuadraticUserf(double* x) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::functionEvaluations) == 0) {
        d.nVar() = 2;
        x[0] = 1.5;
        x[1] = -0.5;
        d.iFixer(1) = d.iFixer(2) = 1;
    }
    double smooth = 100.0 + x[0] * x[0] + 3.0 * x[1] * x[1] + x[0] * x[1];
    return smooth * (1.0 + noiseSize * pseudoRandom(x[0], x[1]));
}

static double scriptedUserf(double* x) {
    E4DataSetRecord& d = E4DataSet;
    const int call = d.iStat(row::functionEvaluations);
    const int n = static_cast<int>(script.start.size());
    if (call == 0) {
        d.nVar() = n;
        d.iStat(row::nFree) = 0;
        for (int i = 1; i <= n; ++i) {
            x[i - 1] = script.start[static_cast<std::size_t>(i - 1)];
            d.iFixer(i) = script.fixer[static_cast<std::size_t>(i - 1)];
            d.iStat(row::nFree) += d.iFixer(i) != 0;
        }
    }
    script.points.emplace_back(x, x + n);
    if (script.jump) return x[0] == script.start[0] ? 0.0 : 1.0;
    if (call >= static_cast<int>(script.values.size())) {
        ADD_FAILURE() << "script ran out at call " << call;
        return 0.0;
    }
    return script.values[static_cast<std::size_t>(call)];
}

namespace {

class ScriptedNoise : public TerminalTest {
protected:
    void SetUp() override { restart(); }
    void TearDown() override {
        unit::resetUnits();
        registerModules();
    }
    void restart() {
        resetProgramState();
        setUserFunction(scriptedUserf);
        out_.str("");
        unit::setTerminal(&in_, &out_);
        sysinf.MODEE4 = 1;
        script = Script{};
    }
    // Selects the user's problem (call 0) quietly, then sets the level.
    void play(const std::vector<double>& values, int level) {
        script.values = values;
        E4DataSet.iStat(row::problemCode) = 20;
        E4DataSet.fStart = E4FUN1(E4DataSet.xStart);
        E4DataSet.iStat(row::messageLevel) = level;
        out_.str("");
    }
    // Selects a problem as PROBLEM does, quietly: the first evaluation at xStart.
    void choose(int code) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = code;
        d.iStat(row::messageLevel) = 0;
        d.fStart = E4FUN1(d.xStart);
        d.iStat(row::nFree) = 0;
        for (int i = 1; i <= d.nVar(); ++i) d.iStat(row::nFree) += d.iFixer(i) != 0;
    }
    int estimate() {
        int err = -1;
        E4ERR1(E4DataSet.xStart.data(), E4DataSet.fStart, err, "TEST");
        return err;
    }
};

// f = 0 at x = 0; the probes give 0 (step times 11), 0.5 (times 0.07) and
// F13 = 8u; the table T(1..14) in units u = 2^-30 is
//   0 -4 -6 -9 -10 -12 -12 -10 -9 -6 -4 0 3 8.
// Column 2 has 11 of 12 pairs of one sign, column 3 (2 -1 2 -1 2 2 -1 2 -1
// 2 -1 2) only one: noise 2u*sqrt(2!^2/4!) = 2u/sqrt(6) = 7.604217E-10.
// A = 1, L = 26*sqrt(4*eps^0.66666) = 3.149215E-04, h = 11*0.07/13.  The
// curvatures at both ends are positive, the Newton steps 1.5h and -2h have
// opposite signs, so the step is linear: p = 14, q = 6, v = 20u, W =
// min(8*0.1/v, 1000)*h = 1000h and xStep = 1000*h*L = 1.865304E-02.
const std::vector<double> kTranscriptScript =
    inUnits({0, 0, 0.5 / u, 8, -4, -6, -9, -10, -12, -12, -10, -9, -6, -4, 0, 3});
const double kL = 3.14921465652116817e-04;
const double kH = 5.92307692307692327e-02;

const std::string kCorrection1 =
    " E4ERR1 --- RELSTP =   11.0000     .NE. RLSNEW =   1.00000    \n"
    "            Step length correction...\n";
const std::string kCorrection2 =
    " E4ERR1 --- RELSTP =  0.770000     .NE. RLSNEW =   11.0000    \n"
    "            Step length correction...\n";
const std::string kStepReport =
    " E4ERR1 --- Norm of direction vector =   1.00000    \n"
    "            Absolute step length     =  3.149215E-04\n"
    "            Step length multiplier   =  5.923077E-02\n"
    "            Machine precision        =  2.220446E-16\n"
    "            Scaled direction vector:\n"
    "  3.149215E-04\n\n";
const std::string kNoise =
    " E4ERR1 --- Absolute computational noise for the object\n"
    "            function has been estimated by using 3-th\n"
    "            column of the differences table as  7.604217E-10\n"
    "            REL/ABS value =                     7.604217E-10\n";
const std::string kTable =
    "            Finite-difference table is as follows:\n"
    "  0.0    -0.37E-08 0.19E-08\n"
    "-0.37E-08-0.19E-08-0.93E-09\n"
    "-0.56E-08-0.28E-08 0.19E-08\n"
    "-0.84E-08-0.93E-09-0.93E-09\n"
    "-0.93E-08-0.19E-08 0.19E-08\n"
    "-0.11E-07  0.0     0.19E-08\n"
    "-0.11E-07 0.19E-08-0.93E-09\n"
    "-0.93E-08 0.93E-09 0.19E-08\n"
    "-0.84E-08 0.28E-08-0.93E-09\n"
    "-0.56E-08 0.19E-08 0.19E-08\n"
    "-0.37E-08 0.37E-08-0.93E-09\n"
    "  0.0     0.28E-08 0.19E-08\n"
    " 0.28E-08 0.47E-08\n"
    " 0.75E-08\n";
const std::string kSteps =
    "            Linear estimation of initial argument step which\n"
    "            may be used by any local search routine is:\n"
    "  1.865304E-02\n\n";

// Level 6 adds the target function's two lines for every evaluation.
std::string evaluation(int nfe, const std::string& value) {
    return " 1-dimensional user's problem\n Function no. 20, " + std::string(7 - std::to_string(nfe).size(), ' ') +
           std::to_string(nfe) + " value =" + value + "\n";
}

TEST_F(ScriptedNoise, TranscriptAtLevelsOneFourAndSix) {
    const char* table[] = {" -3.7252902984619141E-09", " -5.5879354476928711E-09", " -8.3819031715393066E-09",
                           " -9.3132257461547852E-09", " -1.1175870895385742E-08", " -1.1175870895385742E-08",
                           " -9.3132257461547852E-09", " -8.3819031715393066E-09", " -5.5879354476928711E-09",
                           " -3.7252902984619141E-09", "   0.000000000000000    ", "  2.7939677238464355E-09"};
    std::string tableCalls;
    for (int k = 0; k < 12; ++k) tableCalls += evaluation(5 + k, table[k]);
    const std::string level6 = evaluation(2, "   0.000000000000000    ") + kCorrection1 +
                               evaluation(3, "  0.5000000000000000    ") + kCorrection2 +
                               evaluation(4, "  7.4505805969238281E-09") + kStepReport + tableCalls + kNoise +
                               kTable + kSteps + " E4ERR1 --- Return to   TEST\n";
    const std::pair<int, std::string> cases[] = {{1, kCorrection1 + kCorrection2 + kNoise + kSteps},
                                                 {4, kCorrection1 + kCorrection2 + kStepReport + kNoise + kTable + kSteps},
                                                 {6, level6}};
    for (const auto& [level, expected] : cases) {
        restart();
        play(kTranscriptScript, level);
        EXPECT_EQ(estimate(), 0);
        EXPECT_EQ(out_.str(), expected) << "level " << level;
        const E4DataSetRecord& d = E4DataSet;
        EXPECT_EQ(d.iStat(row::functionEvaluations), 16);
        EXPECT_DOUBLE_EQ(d.FrlErr, 2 * u / std::sqrt(6.0));
        EXPECT_EQ(d.iStat(row::FrlErrSet), 1);
        EXPECT_EQ(d.iStat(row::xStepSet), 1);
        EXPECT_NEAR(d.xStep(1), 1000 * kH * kL, 1e-15);
    }
    // The probes went to L, 11L and 0.77L; table value k sits at k*L*h.
    ASSERT_EQ(script.points.size(), 16u);
    EXPECT_NEAR(script.points[1][0], kL, 1e-17);
    EXPECT_NEAR(script.points[2][0], 11 * kL, 1e-16);
    EXPECT_NEAR(script.points[3][0], 0.77 * kL, 1e-17);
    EXPECT_NEAR(script.points[4][0], kL * kH, 1e-18);
    EXPECT_NEAR(script.points[15][0], 12 * kL * kH, 1e-18);
}

// Values that rise by u: column 3 is zero, so the fallback eps*A is taken,
// err is 1 and the table is listed even at level 1.  Both curvatures are
// zero, lifted to rMin, and the step of length L*L is out of range: 0.1.
TEST_F(ScriptedNoise, ZeroColumnTakesTheFallbackAndListsTheTable) {
    play(inUnits({0, 13, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), 1);
    EXPECT_EQ(estimate(), 1);
    EXPECT_EQ(out_.str(),
              " E4ERR1 -W- Zero norm of 3-th column of differences table.\n"
              "            ERROR ESTIMATING WAS FAILED TO FOUND.\n"
              "            Return with the value               2.220446E-16\n"
              "            REL/ABS value =                     2.220446E-16\n"
              "            Finite-difference table is as follows:\n"
              "  0.0     0.93E-09  0.0    \n"
              " 0.93E-09 0.93E-09  0.0    \n"
              " 0.19E-08 0.93E-09  0.0    \n"
              " 0.28E-08 0.93E-09  0.0    \n"
              " 0.37E-08 0.93E-09  0.0    \n"
              " 0.47E-08 0.93E-09  0.0    \n"
              " 0.56E-08 0.93E-09  0.0    \n"
              " 0.65E-08 0.93E-09  0.0    \n"
              " 0.75E-08 0.93E-09  0.0    \n"
              " 0.84E-08 0.93E-09  0.0    \n"
              " 0.93E-08 0.93E-09  0.0    \n"
              " 0.10E-07 0.93E-09  0.0    \n"
              " 0.11E-07 0.93E-09\n"
              " 0.12E-07\n"
              "            Quadratic estimation of initial argument step which\n"
              "            may be used by any local search routine is:\n"
              "  0.100000    \n\n");
    EXPECT_EQ(E4DataSet.FrlErr, eps);
    EXPECT_EQ(E4DataSet.xStep(1), 0.1);
}

// A function that jumps by 1 off its start point: 30 corrections, then
// every pass shrinks the step by 0.07/13 at one evaluation, until it falls
// below rMin after 121 passes (0.07^31/13 * (0.07/13)^120 < 2^-1022).
TEST_F(ScriptedNoise, StepBelowRminGivesUpWithoutTable) {
    script.jump = true;
    play({0.0}, 1);
    EXPECT_EQ(estimate(), 1);
    const std::string text = out_.str();
    auto count = [&text](const std::string& what) {
        int n = 0;
        for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
        return n;
    };
    EXPECT_EQ(count("Step length correction..."), 30);
    const std::string pad(12, ' ');
    EXPECT_EQ(count(" E4ERR1 -E- NO ACCEPTABLE ARGUMENT STEP FOUND\n" + pad + "after  30 allowed function evaluations.\n" +
                    pad + "Initial function value =" + std::string(10, ' ') + "   0.00000    \n" + pad +
                    "Change in the function value =" + std::string(4, ' ') + "   1.00000    \n"),
              122);
    EXPECT_EQ(count("Finite-difference table"), 0);
    EXPECT_NE(text.find("            Initial argument step which is to be used by local\n"
                        "            search was failed to found. So the step vector\n            is set as:\n"
                        "  0.100000    \n"),
              std::string::npos);
    EXPECT_EQ(E4DataSet.iStat(row::functionEvaluations), 1 + 151);
    EXPECT_EQ(E4DataSet.FrlErr, eps);
}

// The direction follows |xStep| where it is loaded and nonzero, |x| + 1
// elsewhere, and has the length L = 26*sqrt(S/nVar) with S summed over the
// free variables only (x1 = 1: S = 16*eps^0.66666, L = sqrt(2)*kL).  The
// first probe is x + d.
TEST_F(ScriptedNoise, DirectionFromStepsAndFixedVariables) {
    std::vector<double> v{0, 1e-6};
    for (int k = 1; k <= 12; ++k) v.push_back((k % 2 ? 1 : -1) * 1e-9);
    struct Case {
        std::vector<double> start;
        std::vector<int> fixer;
        std::vector<double> step;  // loaded steps, or none
        std::vector<double> probe;
    };
    const Case cases[] = {
        {{0, 0}, {1, 1}, {-3, 4}, {0.6 * kL, 0.8 * kL}},
        {{0, 0}, {1, 1}, {-3, 0}, {3 / std::sqrt(10.0) * kL, 1 / std::sqrt(10.0) * kL}},
        {{1, 5}, {1, 0}, {}, {1 + std::sqrt(2.0) * kL, 5}},
    };
    for (const Case& c : cases) {
        restart();
        script.start = c.start;
        script.fixer = c.fixer;
        play(v, 0);
        for (std::size_t i = 0; i < c.step.size(); ++i) E4DataSet.xStep(static_cast<int>(i) + 1) = c.step[i];
        E4DataSet.iStat(row::xStepSet) = c.step.empty() ? 0 : 1;
        estimate();
        ASSERT_EQ(script.points.size(), 14u);
        EXPECT_NEAR(script.points[1][0], c.probe[0], 1e-15);
        EXPECT_NEAR(script.points[1][1], c.probe[1], 1e-15);
        for (std::size_t k = 2; k < 14; ++k) EXPECT_EQ(script.points[k][1] == 5.0, c.fixer[1] == 0);
        if (!c.step.empty()) {
            EXPECT_EQ(E4DataSet.xStep(1), c.step[0]);  // loaded steps stay
            EXPECT_EQ(E4DataSet.xStep(2), c.step[1]);
        } else {
            EXPECT_EQ(E4DataSet.xStep(2), 0.0);  // a fixed variable gets no step
        }
    }
}

// With FrlErr loaded, E4TOL1 turns it into both relative tolerances (the
// fixed variable gets 0) and gives the absolute ones at x = (3, 5), f = 2.
TEST_F(ScriptedNoise, TolerancesFromALoadedNoise) {
    script.start = {3, 5};
    script.fixer = {1, 0};
    play({2.0}, 4);
    E4DataSetRecord& d = E4DataSet;
    d.FrlErr = 1e-8;
    d.iStat(row::FrlErrSet) = 1;
    Vec1<double, kMaxVar> xTol;
    double fTol = 0;
    int err = -1;
    E4TOL1(d.xStart.data(), d.fStart, xTol.data(), fTol, err, "TEST");
    EXPECT_EQ(err, 0);
    EXPECT_EQ(out_.str(),
              " E4TOL1 --- Relative function tolerance has been\n"
              "            estimated as  1.000000E-08\n"
              " E4TOL1 --- relative argument tolerance has been\n"
              "            estimated as:\n"
              "  1.000000E-04   0.00000    \n\n"
              " E4TOL1 --- Conventional tolerance estimation.\n"
              "            absolute function tolerance:  3.000000E-08\n"
              "            absolute argument tolerance:\n"
              "  4.000000E-04   0.00000    \n\n");
    EXPECT_EQ(d.iStat(row::rXTolSet), 1);
    EXPECT_EQ(d.iStat(row::rFTolSet), 1);
    EXPECT_EQ(d.rFTol, 1e-8);
    EXPECT_DOUBLE_EQ(d.rXTol(1), 1.00000001110223016e-04);
    EXPECT_EQ(d.rXTol(2), 0.0);
    EXPECT_DOUBLE_EQ(fTol, 3e-8);
    EXPECT_DOUBLE_EQ(xTol(1), 4.00000004440892064e-04);
    EXPECT_EQ(xTol(2), 0.0);
    EXPECT_EQ(d.iStat(row::functionEvaluations), 1);  // nothing evaluated

    // Multiplier switch on: both tolerances times tolScl + 1.
    out_.str("");
    d.iStat(row::messageLevel) = 6;
    d.iStat(row::tolMultiplierSwitch) = 1;
    d.tolScl = 9.0;
    E4TOL1(d.xStart.data(), d.fStart, xTol.data(), fTol, err, "TEST");
    EXPECT_EQ(out_.str(),
              " E4TOL1 --- Estimated absolute tolerances have been multiplied\n"
              "            by the factor 9.000000    \n"
              "            absolute function tolerance:  3.000000E-07\n"
              "            absolute argument tolerance:\n"
              "  4.000000E-03   0.00000    \n\n"
              " E4TOL1 --- Return to   TEST\n");
    EXPECT_DOUBLE_EQ(fTol, 3e-7);
}

TEST_F(ScriptedNoise, KnownNoiseIsFoundWithinAFactorOfThree) {
    for (double size : {1e-10, 1e-8, 1e-6}) {
        restart();
        setUserFunction(noisyQuadraticUserf);
        noiseSize = size;
        choose(20);
        EXPECT_EQ(estimate(), 0) << size;
        EXPECT_GT(E4DataSet.FrlErr, size / 3) << size;
        EXPECT_LT(E4DataSet.FrlErr, size * 3) << size;
        EXPECT_EQ(E4DataSet.iStat(row::FrlErrSet), 1);
        // A step search and a table of 12 values stay within about 42 evaluations.
        EXPECT_LE(E4DataSet.iStat(row::functionEvaluations), 1 + 31 + 12 * 3);
    }
    noiseSize = 0.0;
}

}  // namespace
