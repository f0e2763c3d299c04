// The Monte-Carlo search E4MCM1: each try adds a normal deviate times
// deviat(i) to every free variable of the current point.  The trial point
// is taken when its value is below the current one; with a temperature set
// the value is first lowered by a random amount of the order of the
// temperature, so that a worse point may be taken too, and the temperature
// falls by Tsced every NtriesT evaluations.  There is no convergence test:
// the number of tries is the whole budget.
#include "methods/monte_carlo.h"

#include "core/e4dataset.h"
#include "methods/random_generators.h"
#include "methods/vector_routines.h"
#include "objective/target_function.h"

#include <cmath>

namespace {

using namespace monte_carlo_trace;

bool success = false;  // a trial point was taken; kept under CONTINUE

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }

void emit(const TraceRecord& r) { traceTo(monteCarloReport(), r); }

// A normal deviate from the congruential generator, whose state is in the
// status vector.
double normalDeviate() {
    return E04NOR1(E04RAN2, ds().iStat(row::secondSeed), ds().iStat(row::randomsToSkip));
}

// The value a trial value is compared with: itself, or with a temperature
// set, lowered by a random amount of the order of the temperature, which
// falls every NtriesT evaluations.
double testValue(double f) {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::temperSet) == 0) return f;
    const int every = d.iStat(row::NtriesT);
    if (every != 0 && d.iStat(row::functionEvaluations) % every == 0) {
        d.temper *= d.Tsced;
        TraceRecord r{TraceKind::Event, Temperature};
        r.value = d.temper;
        emit(r);
    }
    return f - std::fabs(normalDeviate()) * d.temper;
}

// The trial point xEnd becomes the current point.
void take(double f) {
    E4DataSetRecord& d = ds();
    for (int i = 1; i <= d.nVar(); ++i) {
        if (isFree(i)) d.xStart(i) = d.xEnd(i);
    }
    d.fStart = f;
    success = true;
}

// A trial point accepted by the test: the step to it is kept in deltaX
// and its length reported.
void accept(double f, int left) {
    E4DataSetRecord& d = ds();
    for (int i = 1; i <= d.nVar(); ++i) d.deltaX(i) = d.xStart(i) - d.xEnd(i);
    take(f);
    double sq = 0;
    TraceRecord r{TraceKind::Event, Accepted};
    r.count[0] = left;
    r.value = f;
    r.real[0] = E4NRM1(d.deltaX.data(), d.nVar(), sq);
    emit(r);
}

}  // namespace

void E4MCM1(int& iFlag) {
    E4DataSetRecord& d = ds();
    const int tries = d.iStat(row::maxNFE);
    if (tries <= 0 || d.iStat(row::deviatSet) == 0) {
        iFlag = 1;
        return;
    }
    if (d.iStat(row::computationMode) != 1 || d.iStat(row::methodRunning) != d.iStat(row::methodDone)) {
        d.iStat(row::methodDone) = d.iStat(row::methodRunning);
        if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart.data());
        success = false;
    }
    for (int k = 1; k <= tries; ++k) {
        for (int i = 1; i <= d.nVar(); ++i)
            d.xEnd(i) = isFree(i) ? d.xStart(i) + d.deviat(i) * normalDeviate() : d.xStart(i);
        const double f = E4FUN1(d.xEnd.data());
        if (tries == 1) {
            take(f);  // the one try is taken as it comes
        } else if (!(d.fStart <= testValue(f))) {
            accept(f, tries - k);
        }
        TraceRecord r{TraceKind::Pass};
        r.pass = k;
        r.count[0] = tries - k;
        r.value = f;
        r.point = d.xEnd.data();
        emit(r);
    }
    iFlag = 0;
    if (!success) {
        TraceRecord r{TraceKind::Stop, NoBetterPoint};
        r.count[0] = tries;
        emit(r);
    }
    d.xEnd = d.xStart;
    d.fEnd = d.fStart;
}

void resetMonteCarloSearch() { success = false; }
