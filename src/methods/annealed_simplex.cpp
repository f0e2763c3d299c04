// The downhill simplex with simulated annealing: E04DSMSA shares the
// evaluation budget out over up to 100 falling temperatures; at each one
// E04DSMS1 runs the simplex on values disturbed by thermal fluctuations,
// so that at a high temperature the simplex may climb out of a shallow
// minimum, and at T = 0 it is the plain downhill simplex with the trial
// factors -1, 2 and 0.5.  The best point ever met is kept apart in xEnd.
#include "methods/annealed_simplex.h"

#include "core/machine_constants.h"
#include "methods/random_generators.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace annealed_trace;

constexpr std::string_view kEstimateTag = "E04DSMNM ";  // the tag of the estimates it asks for

struct AnnealingState {
    bool seeded = false;  // the seeds are set the first time the search runs
    int seedI = 0, seedJ = 0;  // seeds of the lagged generator
    int nVert = 0;             // vertices of the saved simplex; 0: none
};

AnnealingState state;

// Private to the inner search: the sum of the vertices on the free
// variables (the value of vertex 1 on the fixed ones) and the trial point.
Vec1<double, kMaxVar> psum, ptry;

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }
int evaluations() { return ds().iStat(row::functionEvaluations); }

void emit(const TraceRecord& r) { traceTo(annealedSimplexReport(), r); }

// log(gd + u) of a new uniform number u, never the log of 0: gd is the
// smallest number whose subtraction from 1 changes 1.  Always below 0.
double logUniform() {
    const float u = E04RAN1(state.seedI, state.seedJ);
    return std::log(X02RMDC(1) + static_cast<double>(u));
}

// A vertex value as the selection sees it: raised by a thermal fluctuation.
double raised(double y, double T) { return y - T * logUniform(); }

// --- the start: the regular simplex round xStart, as the plain simplex builds it

void buildSimplex() {
    E4DataSetRecord& d = ds();
    int err = 0;
    if (d.iStat(row::xStepSet) == 0) E4ERR1(d.xStart.data(), d.fStart, err, kEstimateTag);
    if (d.iStat(row::rFTolSet) == 0) {
        Vec1<double, kMaxVar> xTol;
        double fTol = 0;
        E4TOL1(d.xStart.data(), d.fStart, xTol.data(), fTol, err, kEstimateTag);
    }
    int n = 0;
    double sum = 0;
    for (int i = 1; i <= d.nVar(); ++i) {
        if (!isFree(i)) continue;
        ++n;
        sum += d.xStep(i);
    }
    state.nVert = n + 1;
    const double step = n > 0 ? sum / n : 0.0;
    const double p = n > 0 ? step / (n * 1.4142135623730951) : 0.0;
    const double root = std::sqrt(static_cast<double>(n) + 1.0) - 1.0;
    const double step1 = (n + root) * p, step2 = root * p;
    const auto start = d.xStart;
    for (int k = 1; k <= state.nVert; ++k) {
        int freeNo = 0;
        for (int i = 1; i <= d.nVar(); ++i) {
            d.Hesse(i, k) = start(i);
            if (!isFree(i) || k == 1) continue;
            ++freeNo;
            d.Hesse(i, k) += freeNo == k - 1 ? step1 : step2;
        }
    }
    d.Hdiag(1) = d.fStart;
    for (int k = 2; k <= state.nVert; ++k) {
        for (int i = 1; i <= d.nVar(); ++i) d.xStart(i) = d.Hesse(i, k);
        d.Hdiag(k) = E4FUN1(d.xStart.data());
    }
    TraceRecord r{TraceKind::Start};
    r.real = {step, step1, step2, d.fStart};
    r.count[0] = state.nVert;
    emit(r);
}

void start() {
    E4DataSetRecord& d = ds();
    if (evaluations() == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart.data());
    d.xEnd = d.xStart;
    d.fEnd = d.fStart;
    buildSimplex();
}

// --- the inner search

void sumOfVertices(const SimplexVertices& p, int nVar, int nVert) {
    for (int i = 1; i <= nVar; ++i) {
        if (!isFree(i)) {
            psum(i) = p(i, 1);
            continue;
        }
        double s = 0;
        for (int k = 1; k <= nVert; ++k) s += p(i, k);
        psum(i) = s;
    }
}

struct Selection {
    int ilo = 1, ihi = 2;
    double ylo = 0, ynhi = 0, yhi = 0;
};

// The least, the largest and the second-largest of the raised values.
Selection select(const VertexValues& y, int nVert, double T) {
    Selection s;
    const double v1 = raised(y(1), T);
    if (nVert < 2) {  // no free variable: one vertex, nothing to search
        s.ihi = 1;
        s.ylo = s.ynhi = s.yhi = v1;
        return s;
    }
    const double v2 = raised(y(2), T);
    if (v1 <= v2) {
        s.ylo = s.ynhi = v1;
        s.yhi = v2;
    } else {
        s.ylo = s.ynhi = v2;
        s.yhi = v1;
        s.ihi = 1;
        s.ilo = 2;
    }
    for (int k = 3; k <= nVert; ++k) {
        const double v = raised(y(k), T);
        if (v <= s.ylo) {
            s.ylo = v;
            s.ilo = k;
        }
        if (v > s.yhi) {
            s.ynhi = s.yhi;
            s.yhi = v;
            s.ihi = k;
        } else if (v > s.ynhi) {
            s.ynhi = v;
        }
    }
    return s;
}

void reportSelection(const Selection& s, double prev) {
    TraceRecord r{TraceKind::Pass};
    r.pass = ds().iStat(row::iterations);
    r.count = {ds().iStat(row::annealingScratch) - evaluations(), s.ilo, s.ihi, 0};
    r.value = s.ylo;
    r.real = {s.ylo - prev, s.yhi, 0, 0};
    emit(r);
}

// Vertex ilo goes to place 1.
void bestFirst(SimplexVertices& p, VertexValues& y, int nVar, int ilo) {
    std::swap(y(1), y(ilo));
    for (int i = 1; i <= nVar; ++i) {
        if (isFree(i)) std::swap(p(i, 1), p(i, ilo));
    }
}

// Every vertex but ilo moves half way to it and is evaluated anew.
void reduce(TargetFunction fun, SimplexVertices& p, VertexValues& y, int nVar, int nVert, int ilo) {
    for (int k = 1; k <= nVert; ++k) {
        if (k == ilo) continue;
        for (int i = 1; i <= nVar; ++i) {
            if (!isFree(i)) continue;
            p(i, k) = (p(i, k) + p(i, ilo)) * 0.5;
            psum(i) = p(i, k);
        }
        y(k) = fun(psum.data());
        TraceRecord r{TraceKind::Point, Reduced};
        r.value = y(k);
        r.count[0] = k;
        r.point = psum.data();
        emit(r);
    }
}

}  // namespace

double E04DSMS2(TargetFunction fun, SimplexVertices& p, VertexValues& y, Vec1<double, kMaxVar>& sums,
                Vec1<double, kMaxVar>& pb, double& yb, int nVar, int nVert, int ihi, double& yhi, double fac,
                double T) {
    const double a = (1.0 - fac) / (nVert - 1);
    const double b = a - fac;
    for (int i = 1; i <= nVar; ++i) ptry(i) = isFree(i) ? sums(i) * a - p(i, ihi) * b : p(i, 1);
    const double ytry = fun(ptry.data());
    if (ytry <= yb) {
        for (int i = 1; i <= nVar; ++i) {
            if (isFree(i)) pb(i) = ptry(i);
        }
        yb = ytry;
    }
    const double yflu = ytry + T * logUniform();
    const bool replaces = yflu < yhi;
    if (replaces) {
        y(ihi) = ytry;
        yhi = yflu;
        for (int i = 1; i <= nVar; ++i) {
            if (!isFree(i)) continue;
            sums(i) += ptry(i) - p(i, ihi);
            p(i, ihi) = ptry(i);
        }
    }
    TraceRecord r{TraceKind::Point, fac < 0 ? Reflected : (fac > 1 ? Extrapolated : Contracted)};
    r.value = ytry;
    r.real[0] = yflu;
    r.count = {ihi, replaces ? 1 : 0, 0, 0};
    r.point = ptry.data();
    emit(r);
    return yflu;
}

void E04DSMS1(TargetFunction fun, SimplexVertices& p, VertexValues& y, Vec1<double, kMaxVar>& pb, double& yb,
              int nVar, int nVert, double ftol, int& iter, double T) {
    E4DataSetRecord& d = ds();
    double prev = yb;
    int nfe0 = evaluations();
    while (true) {
        sumOfVertices(p, nVar, nVert);
        while (true) {
            Selection s = select(y, nVert, T);
            d.iStat(row::iterations) += 1;
            reportSelection(s, prev);
            prev = s.ylo;
            const int used = evaluations() - nfe0;
            nfe0 = evaluations();
            if (s.yhi - s.ylo < (std::fabs(s.ylo) + 1.0) * ftol || iter < 1 || nVert < 2) {
                bestFirst(p, y, nVar, s.ilo);
                return;
            }
            iter -= used;
            double yhi = s.yhi;
            double yflu = E04DSMS2(fun, p, y, psum, pb, yb, nVar, nVert, s.ihi, yhi, -1.0, T);
            if (yflu <= s.ylo) {
                E04DSMS2(fun, p, y, psum, pb, yb, nVar, nVert, s.ihi, yhi, 2.0, T);
                continue;
            }
            if (yflu < s.ynhi) continue;
            const double ysave = yhi;
            yflu = E04DSMS2(fun, p, y, psum, pb, yb, nVar, nVert, s.ihi, yhi, 0.5, T);
            if (yflu < ysave) continue;
            reduce(fun, p, y, nVar, nVert, s.ilo);
            break;  // the sums are made afresh
        }
    }
}

void E04DSMSA(int& iFlag) {
    E4DataSetRecord& d = ds();
    if (!state.seeded) {
        state.seedI = 1802;
        state.seedJ = 9373;
        state.seeded = true;
    }
    iFlag = 0;
    const int maxNFE = d.iStat(row::maxNFE);
    d.iStat(row::annealingScratch) = maxNFE + evaluations();
    const bool carryOn = d.iStat(row::computationMode) == 1 &&
                         d.iStat(row::methodRunning) == d.iStat(row::methodDone) && state.nVert > 0;
    if (!carryOn) start();
    // Up to 100 temperatures with an equal share of the budget each; what
    // one temperature overdraws is taken from the next, and the last one
    // takes what is left.
    const int nT = std::min(maxNFE, 100);
    const int share = nT > 0 ? std::max(maxNFE / nT, 1) : 0;
    int iter = 0;
    for (int t = 1; t <= nT; ++t) {
        iter = std::max(iter + share, 1);
        const int rem = d.iStat(row::annealingScratch) - evaluations();
        if (rem <= iter || t == nT) iter = rem;
        if (iter < 0) break;
        const int allowed = iter;
        E04DSMS1(E4FUN1, d.Hesse, d.Hdiag, d.xEnd, d.fEnd, d.nVar(), state.nVert, d.rFTol, iter, d.temper);
        TraceRecord r{TraceKind::Event, Temperature};
        r.value = d.temper;
        r.count = {t, allowed, iter, 0};
        emit(r);
        if (iter > 0 || d.iStat(row::annealingScratch) - evaluations() <= 0) break;
        d.temper *= d.Tsced;
    }
    d.xStart = d.xEnd;
    d.fStart = d.fEnd;
    d.iStat(row::methodDone) = d.iStat(row::methodRunning);
}

void resetAnnealedSimplex() {
    state = AnnealingState{};
    psum = ptry = Vec1<double, kMaxVar>{};
}
