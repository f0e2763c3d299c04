// The target function E4FUN1 with its scaling, dispatch, added constant,
// counters and trace line; announceDimension and resetTargetFunction.
#include "objective/target_function.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/search_limits.h"
#include "core/sysinf.h"
#include "objective/test_problems.h"
#include "objective/user_function.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"

#include <string>

namespace {

constexpr int kUserProblem = 20;
constexpr int kMessageWidth = 80;

bool argumentsScaled() { return E4DataSet.iStat(row::xScaleSet) != 0 && E4DataSet.iStat(row::xScaled) != 0; }

// Divides (back to the problem's own coordinates) or multiplies (into the
// search's coordinates) every free variable by its scaling factor.
void unscale(double* x) {
    for (int i = 1; i <= E4DataSet.nVar(); ++i) {
        if (E4DataSet.iFixer(i) != 0) x[i - 1] /= E4DataSet.xScale(i);
    }
}
void scale(double* x) {
    for (int i = 1; i <= E4DataSet.nVar(); ++i) {
        if (E4DataSet.iFixer(i) != 0) x[i - 1] *= E4DataSet.xScale(i);
    }
}

// The constant added to a test problem, asked on its first call.
void askAddedConstant() {
    I05ASKD("Add a constant to the function", "0.0", sysinf.CursorPosition);
    std::string reply(kMessageWidth, ' ');
    int len = 0, status = 0;
    I05RSL(sysinf.inUnit, reply, len, E4DataSet.commentChars, status);
    int err = 0;
    double c = status == 0 ? R02C2R1(reply.substr(0, static_cast<std::size_t>(len)), err) : 0.0;
    targetFunctionState().addedConstant = err < 0 ? 0.0 : c;
}

std::string_view dimensionTail(int code) {
    if (code == 1 && targetFunctionState().modification != 0) {
        return "-dimensional Rosenbrock, R-Ze modification";
    }
    return testProblemInfo(code).tail;
}

// Steps 3 to 5 for a test problem.  False when the first call was broken
// off before the problem was set up; f is then 0.
bool evaluateTestProblem(int code, double* x, bool first, double& f) {
    TargetFunctionState& state = targetFunctionState();
    f = 0.0;
    if (first) {
        state.addedConstant = 0.0;
        if (!setUpTestProblem(code, x)) return false;
    }
    const int n = E4DataSet.nVar();
    f = testProblemValue(code, x, n);
    const bool verbose = E4DataSet.iStat(row::messageLevel) > 5;
    if (verbose || (first && code != 10)) announceDimension(n, dimensionTail(code));
    if (sysinf.MODEE4 == 0) {
        if (first) askAddedConstant();
        f += state.addedConstant;
    }
    return true;
}

// Steps 3 and 4 for the user's problem.  False when USERF left nVar at 0.
bool evaluateUserProblem(double* x, bool first, double& f) {
    E4DataSetRecord& ds = E4DataSet;
    if (first) E04MES("Welcome to user's problem");
    f = callUserFunction(x);
    const int n = ds.nVar();
    if (n == 0) return false;
    if (first) {
        userProblemLimits(n, ds.iStat(row::maxITR), ds.iStat(row::maxNFE));
        if (ds.iStat(row::xScaleSet) == 0) {
            for (int i = 1; i <= n; ++i) ds.xScale(i) = 1.0;
        }
    }
    if (first || ds.iStat(row::messageLevel) > 5) announceDimension(n, "-dimensional user's problem");
    return true;
}

}  // namespace

void announceDimension(int n, std::string_view tail) {
    std::string buffer(kMessageWidth, ' ');
    int len = 0, err = 0;
    R02I2C1(n, buffer, len, err);
    buffer = buffer.substr(0, static_cast<std::size_t>(len)) + std::string(tail);
    E04MES(padded(buffer, kMessageWidth));
}

double E4FUN1(double* x) {
    E4DataSetRecord& ds = E4DataSet;
    const int code = ds.iStat(row::problemCode);
    if (code < 1 || (code > kTestProblems && code < kUserProblem)) {
        E04MES("E4FUN1 -E- No target function specified!");
        return 0.0;
    }
    const bool first = ds.iStat(row::functionEvaluations) == 0;
    if (ds.iStat(row::functionEvaluations) > 0 && argumentsScaled()) unscale(x);

    double f = 0.0;
    const bool evaluated = code < kUserProblem ? evaluateTestProblem(code, x, first, f)
                                               : evaluateUserProblem(x, first, f);
    if (!evaluated) return f;

    ds.iStat(row::fSet) = 1;
    ds.iStat(row::xStartSet) = 1;
    ++ds.iStat(row::functionEvaluations);
    if (argumentsScaled()) scale(x);
    if (ds.iStat(row::messageLevel) > 4) {
        write(writerChannel(sysinf.dwUnit), "(' Function no. ',I2,', ',I7,' value =',1P,G24.16)", code,
              ds.iStat(row::functionEvaluations), f);
    }
    return f;
}

void resetTargetFunction() {
    TargetFunctionState& state = targetFunctionState();
    state.scale = 1.0;
    state.modification = 0;
    state.addedConstant = 0.0;
    state.residual.fill(0.0);
    state.hessian.a.fill(0.0);
    state.hessianCopy.a.fill(0.0);
    state.minimumValue = 0.0;
    state.minimumPoint.fill(0.0);
    state.linearTerm.fill(0.0);
    state.constantTerm = 0.0;
}
