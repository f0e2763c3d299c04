// E4FOM1: the loop shared by every method that uses a gradient.  An
// iteration makes one linear search from xStart along direct, tests the
// new point for a small change of the function, a small step and a small
// gradient, and forms the next direction by the rule of the method
// (first_order_driver_directions.cpp).  The loop is a sequence of stages;
// CONTINUE enters it at the stage behind the one that ended the last call.
#include "methods/first_order_driver.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "methods/bounded_driver.h"
#include "methods/first_order_driver_state.h"
#include "methods/hessian_update.h"
#include "methods/linear_search.h"
#include "methods/vector_routines.h"
#include "objective/computational_noise.h"
#include "objective/gradient.h"
#include "objective/target_function.h"

#include <cmath>

namespace {

using namespace first_order_trace;

FirstOrderState state;

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }
int nVar() { return ds().nVar(); }
bool keepsMatrix(int method) { return method >= 6 && method <= 11; }
bool weakMode() { return ds().iStat(row::overallTermination) == 1; }

enum class Stage {
    FullStart,
    SetUp,
    Head,
    FunctionTest,
    ArgumentTest,
    GradientTest,
    AllTest,
    IterationLimit,
    EvaluationLimit,
    Update,
    Done,
};

Stage resumePoint(int iFlag) {
    switch (iFlag) {
        case 1: return Stage::SetUp;
        case 2: return Stage::Head;
        case 3: return Stage::ArgumentTest;
        case 4: return Stage::GradientTest;
        case 5: return Stage::AllTest;
        case 6: return Stage::IterationLimit;
        case 7:
        case 8: return Stage::Update;
        default: return Stage::FullStart;
    }
}

Stage finish(int& iFlag, int code) {
    iFlag = code;
    TraceRecord r{TraceKind::Stop, Finished};
    r.count = {code, ds().iStat(row::iterations), ds().iStat(row::functionEvaluations), 0};
    traceTo(firstOrderReport(), r);
    return Stage::Done;
}

void renewLimits() {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::nFree) == 1) d.iStat(row::maxITR) = 1;  // one free variable: one iteration
    state.limNFE = d.iStat(row::functionEvaluations) + d.iStat(row::maxNFE);
    d.iStat(row::iterations) = 0;
    state.limITR = d.iStat(row::maxITR);
}

void gradientAtEnd() {
    E4DataSetRecord& d = ds();
    E4GRD1(d.xEnd.data(), d.fEnd, d.gEnd.data());
    state.gNorm = E4NRM1(d.gEnd.data(), nVar(), state.GKN2);
}

Stage fullStart(int& iFlag) {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart);
    for (int i = 1; i <= nVar(); ++i) d.xEnd(i) = d.xStart(i);
    d.fEnd = d.fStart;
    gradientAtEnd();
    firstOrderEvent(StartingGradient, state.gNorm, d.gEnd.data());
    if (state.gNorm < (std::fabs(d.fEnd) + 1.0) * d.FrlErr) return finish(iFlag, 1);
    return Stage::SetUp;
}

// The diagonal that starts the matrix and scales the first direction of
// methods 6 to 11: ones, or the accumulated one made positive and no
// element below a hundredth of the largest.
void startingDiagonal() {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::HdiagSet) == 0) {
        for (int i = 1; i <= nVar(); ++i) d.Hdiag(i) = isFree(i) ? 1.0 : 0.0;
        return;
    }
    double h = 0;
    for (int i = 1; i <= nVar(); ++i) {
        if (!isFree(i)) continue;
        if (d.Hdiag(i) < 0.0) {
            TraceRecord r{TraceKind::Event, NegativeDiagonal};
            r.count[0] = i;
            traceTo(firstOrderReport(), r);
            d.Hdiag(i) = -d.Hdiag(i);
        }
        h = std::max(h, d.Hdiag(i));
    }
    for (int i = 1; i <= nVar(); ++i) {
        if (isFree(i)) d.Hdiag(i) = h >= state.rMin ? std::max(d.Hdiag(i), 0.01 * h) : 1.0;
    }
}

Stage setUp() {
    E4DataSetRecord& d = ds();
    const int method = d.iStat(row::methodRunning);
    state.pathLen = 0;
    state.restart = false;
    if (method == 3) state.restartTol = 0.2;
    startingDiagonal();
    if (keepsMatrix(method) && d.iStat(row::HesseSet) == 0) {
        d.Hesse.a.fill(0.0);
        for (int i = 1; i <= nVar(); ++i) {
            if (isFree(i)) d.Hesse(i, i) = d.Hdiag(i);
        }
    }
    if (keepsMatrix(method)) {
        int flag = 0;
        E4HES3(flag);
        double sum = 0;
        for (int i = 1; i <= nVar(); ++i) {
            d.direct(i) = isFree(i) ? -d.gEnd(i) / d.Hdiag(i) : 0.0;
            sum += d.direct(i) * d.direct(i);
        }
        state.dirNorm = sum > 0 ? std::sqrt(sum) : 0.0;
    } else {
        for (int i = 1; i <= nVar(); ++i) d.direct(i) = isFree(i) ? -d.gEnd(i) : 0.0;
        state.dirNorm = state.gNorm;
    }
    if (method == 3) state.restart = true;
    state.cycle = -1;
    return Stage::Head;
}

// The first step of the linear search, in units of direct, and its bound.
void firstStep(int method) {
    E4DataSetRecord& d = ds();
    const int n = nVar();
    state.arbitrary = false;
    if (state.pathLen == 0.0 || state.dirNorm == 0.0) {
        int err = 0;
        if (d.iStat(row::xStepSet) == 0) E4ERR1(d.xStart.data(), d.fStart, err, "E4FOM1");
        if (state.dirNorm != 0.0) {
            E4RAT1(d.direct.data(), d.xStep.data(), n, state.alpha);
        } else {
            // No direction at all: search along the initial steps.
            for (int i = 1; i <= n; ++i) {
                if (isFree(i)) d.direct(i) = d.xStep(i);
            }
            if (state.pathLen == 0.0) {
                state.alpha = 1.0;
            } else {
                double sq = 0;
                state.dirNorm = E4NRM1(d.direct.data(), n, sq);
                state.alpha = state.pathLen / state.dirNorm;
            }
            state.arbitrary = true;
        }
    } else {
        state.alpha = keepsMatrix(method) ? 1.0 : state.pathLen / state.dirNorm;
    }
    if (d.iStat(row::stpMaxSet) > 0) {
        E4RAT1(d.direct.data(), d.stpMax.data(), n, state.alphaMax);
        if (std::fabs(state.alpha) > state.alphaMax) state.alpha = state.alpha < 0 ? -state.alphaMax : state.alphaMax;
    } else {
        state.alphaMax = 1000.0 * std::fabs(state.alpha);
    }
}

void headReport(int method) {
    E4DataSetRecord& d = ds();
    TraceRecord r{TraceKind::Event, IterationHead};
    r.pass = d.iStat(row::iterations);
    r.count = {method, state.restart ? 1 : 0, state.cycle == 0 ? 1 : 0, state.arbitrary ? 1 : 0};
    traceTo(firstOrderReport(), r);
    firstOrderEvent(Direction, 0, d.direct.data());
}

void stepReport(int method) {
    E4DataSetRecord& d = ds();
    firstOrderEvent(NewPoint, 0, d.xEnd.data());
    firstOrderEvent(StepResult, 0, nullptr, {d.deltaXn, state.pathLen, d.fEnd, d.deltaF});
    TraceRecord row{TraceKind::Pass, TableRow};
    row.pass = d.iStat(row::iterations);
    row.count = {state.limITR - d.iStat(row::iterations), d.iStat(row::functionEvaluations), keepsMatrix(method) ? 1 : 0, 0};
    row.value = d.fEnd;
    row.real = {state.pathLen, d.hCondNow, 0, 0};
    traceTo(firstOrderReport(), row);
}

Stage iterationHead(int& iFlag) {
    E4DataSetRecord& d = ds();
    const int method = d.iStat(row::methodRunning);
    const int n = nVar();
    d.iStat(row::iterations) += 1;
    state.cycle += 1;
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) continue;
        d.xStart(i) = d.xEnd(i);
        d.gStart(i) = d.gEnd(i);
    }
    d.fStart = d.fEnd;
    if (method == 1 || method == 2) state.GKOLD = state.GKN2;
    firstStep(method);
    headReport(method);
    if (d.iStat(row::tolSclSet) != 0) d.iStat(row::tolMultiplierSwitch) = 1;
    d.fEnd = d.fStart;
    int lsFlag = 1;
    E4SRH1(d.xStart.data(), d.xEnd.data(), d.direct.data(), state.alpha, state.alphaMax, d.fEnd, d.deltaXn,
           d.deltaF, d.aux3.data(), n, lsFlag, sysinf.dwUnit, d.iStat(row::messageLevel), state.lsSteps,
           d.iStat(row::localTermination), "E4FOM1");
    d.iStat(row::tolMultiplierSwitch) = 0;
    d.iStat(row::methodDone) = method;
    if (d.deltaXn == 0.0) {
        d.iStat(row::iterations) -= 1;
        state.cycle -= 1;
        return finish(iFlag, 0);
    }
    d.iStat(row::gEndSet) = 0;
    E4VAD1(d.deltaX.data(), d.xEnd.data(), '-', d.xStart.data(), n);
    state.pathLen = d.deltaXn * state.dirNorm;
    double sq = 0;
    state.xNorm = E4NRM1(d.xEnd.data(), n, sq);
    stepReport(method);
    return Stage::FunctionTest;
}

// A test that fires: in weak mode it ends the search, in hard mode it only
// leaves its number in iFlag and counts.
Stage fired(int& iFlag, int code, Stage next) {
    iFlag = code;
    state.nSat += 1;
    return weakMode() ? finish(iFlag, code) : next;
}

Stage stoppingTest(Stage stage, int& iFlag) {
    E4DataSetRecord& d = ds();
    const double scale = std::fabs(d.fEnd) + 1.0;
    switch (stage) {
        case Stage::FunctionTest:
            state.nSat = 0;
            if (-d.deltaF < scale * d.FrlErr) return fired(iFlag, 3, Stage::ArgumentTest);
            return Stage::ArgumentTest;
        case Stage::ArgumentTest:
            // Signed: a search that ended behind its start passes at once.
            if (state.pathLen < (state.xNorm + 1.0) * std::sqrt(d.FrlErr)) return fired(iFlag, 4, Stage::GradientTest);
            return Stage::GradientTest;
        case Stage::GradientTest:
            gradientAtEnd();
            firstOrderEvent(Gradient, state.gNorm, d.gEnd.data());
            if (state.gNorm < scale * std::pow(d.FrlErr, 0.333)) return fired(iFlag, 5, Stage::AllTest);
            return Stage::AllTest;
        case Stage::AllTest:
            if (!weakMode() && state.nSat == 3) return finish(iFlag, 6);
            return Stage::IterationLimit;
        case Stage::IterationLimit:
            if (d.iStat(row::iterations) >= state.limITR) return finish(iFlag, 7);
            return Stage::EvaluationLimit;
        default:
            if (d.iStat(row::functionEvaluations) >= state.limNFE) return finish(iFlag, 8);
            return Stage::Update;
    }
}

Stage update(int& iFlag) {
    E4DataSetRecord& d = ds();
    const int method = d.iStat(row::methodRunning);
    const int n = nVar();
    E4VAD1(d.deltaG.data(), d.gEnd.data(), '-', d.gStart.data(), n);
    E4NRM1(d.deltaG.data(), n, state.dgSq);
    state.dxdg = E4DOT1(d.deltaX.data(), d.deltaG.data(), n);
    firstOrderEvent(DxDg, state.dxdg);
    if (std::fabs(state.dxdg) < state.rMin) return finish(iFlag, 9);
    if (d.iStat(row::gradientScheme) == 0) {
        int flag = 0;
        E4HES2(d.Hdiag.data(), state.dxdg, flag);
        firstOrderEvent(HessianDiagonal, 0, d.Hdiag.data());
    }
    state.gdg = E4DOT1(d.gEnd.data(), d.deltaG.data(), n);
    const int code = newDirection(method);
    if (code != 0) return finish(iFlag, code);
    if (method != 3) {
        double sq = 0;
        state.dirNorm = E4NRM1(d.direct.data(), n, sq);
    }
    firstOrderEvent(NextDirection, 0, d.direct.data());
    return Stage::Head;
}

Stage advance(Stage stage, int& iFlag) {
    switch (stage) {
        case Stage::FullStart: return fullStart(iFlag);
        case Stage::SetUp: return setUp();
        case Stage::Head: return iterationHead(iFlag);
        case Stage::Update: return update(iFlag);
        case Stage::Done: return Stage::Done;
        default: return stoppingTest(stage, iFlag);
    }
}

}  // namespace

FirstOrderState& firstOrderState() { return state; }

void firstOrderEvent(int code, double value, const double* point, std::array<double, 4> real) {
    TraceRecord r{TraceKind::Event, code};
    r.value = value;
    r.point = point;
    r.real = real;
    traceTo(firstOrderReport(), r);
}

void resetFirstOrderDriver() { state = FirstOrderState{}; }

void E4FOM1(int& iFlag) {
    E4DataSetRecord& d = ds();
    const int method = d.iStat(row::methodRunning);
    if (method < 1 || method == 5 || method > 12 || d.iStat(row::nFree) == 0) return;
    if (d.nVar() < 1 || d.nVar() > kMaxVar) return;  // a count set by hand that no vector holds
    if (method == 12) {
        boundedMethodSearch(iFlag);  // the bounded quasi-Newton family
        return;
    }
    double rMax = 0;
    int digits = 0;
    X02MDC1(state.eps, state.rMin, rMax, state.rBig, digits);
    if (d.iStat(row::computationMode) == 0 || d.iStat(row::methodRunning) != d.iStat(row::methodDone)) iFlag = 0;
    if (iFlag == 0 || iFlag == 7 || iFlag == 8) {
        renewLimits();
        state.lsSteps = digits + 30;
    }
    Stage stage = resumePoint(iFlag);
    while (stage != Stage::Done) stage = advance(stage, iFlag);
}
