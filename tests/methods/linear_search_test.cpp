// The linear search along a line of problem 7, whose value is a parabola in
// the abstract argument s: with x0 = (0, 0) and d = (1, 0),
// f(s) = 0.2575 s^2 - 0.1726 s - 0.9322, least at s* = 0.1726 / 0.515.
// Phase 1 tries X0 + step with step growing by the golden ratio g, so from
// step 0.1 the trials are 0.1, 0.1 + 0.1 g, 0.1 + 0.1 g + 0.1 g^2; one
// parabola through three points of a parabola lands on s*.
#include "methods/linear_search.h"
#include "methods/vector_routines.h"
#include "methods_fixture.h"

#include <cmath>

namespace {

using namespace linear_search_trace;

constexpr double g = 1.618033988749895;
constexpr double sStar = 0.1726 / 0.515;
double f7(double s) { return (0.2575 * s - 0.1726) * s - 0.9322; }

class LinearSearch : public MethodsFixture {
protected:
    // One search from (base, 0) along (1, 0); returns the trials' arguments.
    std::vector<double> search(double base, double step, double stepMax, int maxSteps, int mode) {
        select(7);
        E4DataSetRecord& dset = E4DataSet;
        dset.xStart(1) = base;
        double f = f7(base), d[2] = {1.0, 0.0}, xTol[2];
        flag = 1;
        trace.seen.clear();
        out_.str("");
        E4SRH1(dset.xStart.data(), dset.xEnd.data(), d, step, stepMax, f, path, dF, xTol, 2, flag, 6, 0, maxSteps,
               mode, "TEST");
        fBest = f;
        std::vector<double> s;
        for (const TraceRecord& r : trace.withCode(Trial)) s.push_back(r.real[0]);
        return s;
    }
    int flag = 0;
    double path = 0, dF = 0, fBest = 0;
};

TEST_F(LinearSearch, TrialsFollowTheBracketAndTheParabola) {
    struct Case {
        const char* what;
        double base, step, stepMax;
        int maxSteps, mode;
        std::vector<double> trials;
        double path;
        int flag;
    };
    const double s2 = 0.1 + 0.1 * g, s3 = s2 + 0.1 * g * g;
    const double b2 = 0.1 * g, b3 = b2 + 0.1 * g * g, b4 = b3 + 0.1 * g * g * g;
    const Case cases[] = {
        {"mode 4: a new best point in phase 2 ends", 0, 0.1, 0, 46, 4, {0.1, s2, s3, sStar}, sStar, 0},
        {"mode 5: the first step not worse ends", 0, 0.1, 0, 46, 5, {0.1}, 0.1, 0},
        {"uphill first: the walk turns round from 0", 0, -0.1, 0, 46, 4, {-0.1, b2, b3, b4, sStar}, sStar, 0},
        {"a limited step that improves ends", 0, 0.1, 0.2, 46, 0, {0.1, 0.2}, 0.2, 0},
        {"the step limit keeps the best point", 0, 0.1, 0, 2, 0, {0.1, s2}, 0.1, 2},
    };
    for (const Case& c : cases) {
        std::vector<double> s = search(c.base, c.step, c.stepMax, c.maxSteps, c.mode);
        ASSERT_EQ(s.size(), c.trials.size()) << c.what;
        for (std::size_t k = 0; k < s.size(); ++k) EXPECT_NEAR(s[k], c.trials[k], 1e-12) << c.what << " " << k;
        EXPECT_NEAR(path, c.path, 1e-12) << c.what;
        EXPECT_EQ(flag, c.flag) << c.what;
        EXPECT_NEAR(fBest, f7(c.path), 1e-15) << c.what;
        EXPECT_NEAR(dF, f7(c.path) - f7(0), 1e-15) << c.what;
        EXPECT_NEAR(E4DataSet.xEnd(1), c.path, 1e-15) << c.what;  // x is left at the best point
    }
    // The limited step was told with the step wanted and the step taken.
    search(0, 0.1, 0.2, 46, 0);
    std::vector<TraceRecord> limited = trace.withCode(StepLimited);
    ASSERT_EQ(limited.size(), 1u);
    EXPECT_NEAR(limited[0].real[0], s2, 1e-15);
    EXPECT_EQ(limited[0].real[1], 0.2);
}

// The abnormal end is reported at every message level, with the last and
// the best point; the search of mode 0 with 2 steps stops in phase 1.
TEST_F(LinearSearch, AbnormalEndIsReportedWithTheBestPoint) {
    search(0, 0.1, 0, 2, 0);
    const std::string expected =
        " E4SRH1 -E- Too many search steps has been made:  2\n"
        "            Linear search has failed to normally terminate.\n"
        "            Last function value  = -0.959738    \n"
        "            at ABSTRACT argument =  0.261803    \n"
        "            Least function value = -0.946885    \n"
        "            at ABSTRACT argument =  0.100000    \n"
        "            here \"ABSTRACT argument\" means the linear search path\n"
        "            measured in fractions of the euclidean norm of\n"
        "            the direction vector.\n"
        "            Return with the best point after  2 performed steps.\n";
    EXPECT_EQ(out_.str(), expected);
}

}  // namespace
