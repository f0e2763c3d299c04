// E4CDM1: coordinate descent.  Each free variable in turn is searched with
// the linear search along its own axis, starting with one step xStep(j); a
// sweep over all of them is one iteration.  The run ends after maxITR
// sweeps or at the first sweep that does not lower the function.  No
// derivatives are used and no evaluation budget is consulted: the sweeps
// and the step limit of each linear search bound the work.
#include "methods/coordinate_descent.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "methods/linear_search.h"
#include "methods/vector_routines.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"

#include <cmath>

namespace {

using namespace coordinate_descent_trace;

constexpr double kPathWithoutBound = 1000.0;  // steps of xStep(j) without stpMax

bool isFree(const E4DataSetRecord& d, int i) { return d.iFixer(i) != 0; }

// Steps of one linear search: ten per decimal digit of the arithmetic.
int maxLineSteps() {
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    return 10 * digits;
}

struct CoordinateDescent {
    E4DataSetRecord& d;
    int n;
    int first = 1, last = 1;
    bool single = false;
    double F0 = 0.0;
    double sweepPath = 0.0;  // norm of the argument change of the last sweep
    // The point at the start of the sweep.  It is kept here and not in aux1,
    // which the noise estimate of the first search uses as its trial point.
    Vec1<double, kMaxVar> sweepStart{};
    Vec1<double, kMaxVar> work{};  // tolerances of the linear search
    int maxSteps = maxLineSteps();
    SearchTrace& report = coordinateDescentReport();

    void emit(const TraceRecord& r) { traceTo(report, r); }
    void searchAlong(int j, int sweep, int& iFlag);
    bool sweepOnce(int sweep, int& iFlag);
    void finish(int iFlag);
};

// One linear search along coordinate j from xStart; xStart and fStart move
// to the best point it found.
void CoordinateDescent::searchAlong(int j, int sweep, int& iFlag) {
    d.iStat(row::iterations) += 1;
    if (d.iStat(row::xStepSet) == 0) E4ERR1(d.xStart.data(), d.fStart, iFlag, "E4CDM1");
    for (int i = 1; i <= n; ++i) d.direct(i) = 0.0;
    d.direct(j) = d.xStep(j);
    double step = 1.0;
    double stepMax = kPathWithoutBound;
    if (d.iStat(row::stpMaxSet) != 0) {
        E4RAT1(d.direct.data(), d.stpMax.data(), n, stepMax);
        if (std::fabs(step) > stepMax) step = std::copysign(std::fabs(stepMax), step);
    }
    d.fEnd = d.fStart;
    iFlag = 1;  // fStart is the value at xStart
    double path = 0.0;
    double dF = 0.0;
    E4SRH1(d.xStart.data(), d.xEnd.data(), d.direct.data(), step, stepMax, d.fEnd, path, dF, work.data(), n,
           iFlag, sysinf.dwUnit, d.iStat(row::messageLevel), maxSteps, d.iStat(row::localTermination), "E4CDM1");
    TraceRecord r{TraceKind::Point, Coordinate, sweep, d.fEnd};
    r.count = {j, single ? 1 : 0, 0, 0};
    r.real = {dF, d.xStart(j) - d.xEnd(j), 0.0, 0.0};
    r.point = d.xEnd.data();
    emit(r);
    d.fStart = d.fEnd;
    d.xStart(j) = d.xEnd(j);
}

// One sweep; false when the sweeps end here.
bool CoordinateDescent::sweepOnce(int sweep, int& iFlag) {
    for (int i = 1; i <= n; ++i) sweepStart(i) = d.aux1(i) = isFree(d, i) ? d.xStart(i) : 0.0;
    const double fBeg = d.fStart;
    for (int j = first; j <= last; ++j) {
        if (isFree(d, j)) searchAlong(j, sweep, iFlag);
    }
    if (single) return false;
    for (int i = 1; i <= n; ++i) d.aux1(i) = isFree(d, i) ? sweepStart(i) - d.xStart(i) : 0.0;
    const double decrease = fBeg - d.fStart;
    double sq = 0.0;
    sweepPath = E4NRM1(d.aux1.data(), n, sq);
    const int sweeps = d.iStat(row::maxITR);
    TraceRecord r{TraceKind::Pass, 0, sweep, d.fEnd};
    r.count = {sweeps - sweep, sweeps, 0, 0};
    r.real = {decrease, sweepPath, 0.0, 0.0};
    emit(r);
    return decrease > 0.0;  // a sweep that gains nothing ends the run
}

// deltaF, deltaX and deltaXn of the whole run, each start minus end.
void CoordinateDescent::finish(int iFlag) {
    d.deltaF = F0 - d.fStart;
    if (d.iStat(row::maxITR) < 2 && !single) {
        for (int i = 1; i <= n; ++i) {
            if (isFree(d, i)) d.deltaX(i) = d.aux1(i);
        }
        d.deltaXn = sweepPath;
    } else {
        for (int i = 1; i <= n; ++i) {
            if (isFree(d, i)) d.deltaX(i) -= d.xStart(i);
        }
        double sq = 0.0;
        d.deltaXn = E4NRM1(d.deltaX.data(), n, sq);
    }
    TraceRecord r{TraceKind::Stop, Finished, 0, d.fStart};
    r.real = {d.deltaF, d.deltaXn, 0.0, 0.0};
    r.count[0] = iFlag;
    emit(r);
}

}  // namespace

void E4CDM1(int& iFlag) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(row::methodDone) = d.iStat(row::methodRunning);
    const int n = d.nVar();
    const int chosen = d.iStat(row::cdVariable);
    if (chosen > n || n < 1 || n > kMaxVar) {  // no vector of the data set has more than 128 entries
        iFlag = 1;
        return;
    }
    iFlag = 0;
    CoordinateDescent cd{.d = d, .n = n};
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart.data());
    cd.F0 = d.fStart;
    for (int i = 1; i <= n; ++i) d.deltaX(i) = isFree(d, i) ? d.xStart(i) : 0.0;
    if (chosen >= 1) {
        cd.first = cd.last = chosen;
        if (!isFree(d, chosen)) {
            d.deltaF = d.fStart;
            TraceRecord r{TraceKind::Event, Closed};
            r.count[0] = chosen;
            cd.emit(r);
            iFlag = 2;
            return;
        }
    } else {
        cd.last = n;
    }
    if (cd.first == cd.last) {
        d.iStat(row::maxITR) = 1;
        cd.single = true;
    }
    TraceRecord start{TraceKind::Start, 0, 0, cd.F0};
    start.count = {cd.first, cd.last, d.iStat(row::maxITR), cd.single ? 1 : 0};
    cd.emit(start);
    d.deltaF = cd.F0;
    for (int sweep = 1; sweep <= d.iStat(row::maxITR); ++sweep) {
        if (!cd.sweepOnce(sweep, iFlag)) break;
    }
    cd.finish(iFlag);
}
