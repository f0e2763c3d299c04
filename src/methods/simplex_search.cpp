// The downhill simplex search of Nelder and Mead, E04DSMNM: the regular
// simplex, the pass with its table, reflection, extrapolation, contraction
// and reduction, and CONTINUE on the stored simplex.  What it does is
// told through its trace (simplex_report.cpp writes the lines).
#include "methods/simplex_search.h"

#include "core/e4dataset.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"

#include <cmath>

namespace {

constexpr std::string_view kTag = "E04DSMNM";  // tag of the estimates it asks for

// State that outlives a call, so that CONTINUE goes on with the simplex.
struct SimplexState {
    double n = 0;     // number of free variables, the divisor of the centroid
    int nVert = 0;    // number of vertices
    double fLowPrev = 0;
    Vec1<double, kMaxVar> c, r, e, q;  // centroid, reflected, extrapolated, contracted
};

SimplexState simplex;

E4DataSetRecord& ds() { return E4DataSet; }
using namespace simplex_trace;

bool isFree(int i) { return ds().iFixer(i) != 0; }

double& vertex(int k, int i) { return ds().Hesse(i, k); }
double& vertexValue(int k) { return ds().Hdiag(k); }

void emit(const TraceRecord& r) { traceTo(simplexReport(), r); }

void trialPoint(int code, double f, const Vec1<double, kMaxVar>& p) {
    TraceRecord r{TraceKind::Point, code};
    r.value = f;
    r.point = p.data();
    emit(r);
}

void replaced(int by) {
    TraceRecord r{TraceKind::Event, Replaced};
    r.count[0] = by;
    emit(r);
}

// Step sizes of the regular simplex from the mean initial step.
void simplexSizes(double& step, double& step1, double& step2) {
    int nFree = 0;
    double sum = 0;
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (!isFree(i)) continue;
        ++nFree;
        sum += ds().xStep(i);
    }
    simplex.n = nFree;
    simplex.nVert = nFree + 1;
    step = nFree > 0 ? sum / nFree : 0.0;
    double p = nFree > 0 ? step / (nFree * 1.4142135623730951) : 0.0;
    double root = std::sqrt(static_cast<double>(nFree) + 1.0) - 1.0;
    step1 = (nFree + root) * p;
    step2 = root * p;
}

void estimateWhatIsMissing() {
    E4DataSetRecord& d = ds();
    int err = 0;
    if (d.iStat(row::xStepSet) == 0) E4ERR1(d.xStart.data(), d.fStart, err, kTag);
    if (d.iStat(row::rFTolSet) == 0) {
        Vec1<double, kMaxVar> xTol;
        double fTol = 0;
        E4TOL1(d.xStart.data(), d.fStart, xTol.data(), fTol, err, kTag);
    }
}

void buildVertices(double step1, double step2) {
    E4DataSetRecord& d = ds();
    const int nv = d.nVar();
    const auto start = d.xStart;
    for (int k = 1; k <= simplex.nVert; ++k) {
        int freeNo = 0;
        for (int i = 1; i <= nv; ++i) {
            vertex(k, i) = start(i);
            if (!isFree(i) || k == 1) continue;
            ++freeNo;
            vertex(k, i) += freeNo == k - 1 ? step1 : step2;
        }
    }
    vertexValue(1) = d.fStart;
    for (int k = 2; k <= simplex.nVert; ++k) {
        for (int i = 1; i <= nv; ++i) d.xStart(i) = vertex(k, i);
        vertexValue(k) = E4FUN1(d.xStart.data());
    }
    simplex.fLowPrev = d.fStart;
    simplex.c = simplex.r = simplex.e = simplex.q = start;
}

void startReport(double step, double step1, double step2) {
    TraceRecord r{TraceKind::Start};
    r.real = {step, step1, step2, ds().fStart};
    r.count[0] = simplex.nVert;
    emit(r);
}

void buildSimplex() {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart.data());
    estimateWhatIsMissing();
    double step = 0, step1 = 0, step2 = 0;
    simplexSizes(step, step1, step2);
    buildVertices(step1, step2);
    startReport(step, step1, step2);
}

// The largest and the least vertex, in one walk.
void extremes(int& jh, int& jl) {
    jh = jl = 1;
    for (int k = 2; k <= simplex.nVert; ++k) {
        if (vertexValue(k) > vertexValue(jh)) {
            jh = k;
        } else if (vertexValue(k) < vertexValue(jl)) {
            jl = k;
        }
    }
}

void passTable(int passes, int limit, int jl, double fL) {
    TraceRecord r{TraceKind::Pass};
    r.pass = passes;
    r.count[0] = limit - ds().iStat(row::functionEvaluations);
    r.value = vertexValue(jl);
    r.real[0] = fL - simplex.fLowPrev;
    emit(r);
}

void setVertex(int k, const Vec1<double, kMaxVar>& p, double f) {
    for (int i = 1; i <= ds().nVar(); ++i) vertex(k, i) = p(i);
    vertexValue(k) = f;
}

double evaluate(Vec1<double, kMaxVar>& p) { return E4FUN1(p.data()); }

void centroidAndReflection(int jh) {
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (!isFree(i)) continue;
        double sum = 0;
        for (int k = 1; k <= simplex.nVert; ++k) {
            if (k != jh) sum += vertex(k, i);
        }
        simplex.c(i) = sum / simplex.n;
        simplex.r(i) = 2.0 * simplex.c(i) - vertex(jh, i);
    }
}

void reduce(int jl) {
    E4DataSetRecord& d = ds();
    for (int k = 1; k <= simplex.nVert; ++k) {
        if (k == jl) continue;
        for (int i = 1; i <= d.nVar(); ++i) {
            if (isFree(i)) vertex(k, i) = (vertex(k, i) + vertex(jl, i)) * 0.5;
            d.xStart(i) = vertex(k, i);
        }
        vertexValue(k) = E4FUN1(d.xStart.data());
    }
    emit(TraceRecord{TraceKind::Event, Reduced});
}

// One change of the simplex after the stop test: steps 7 to 12.
void move(int jh, int jl, double fH, double fL) {
    centroidAndReflection(jh);
    double fR = evaluate(simplex.r);
    trialPoint(Reflected, fR, simplex.r);
    if (fR <= fL) {
        for (int i = 1; i <= ds().nVar(); ++i) {
            if (isFree(i)) simplex.e(i) = 2.0 * simplex.r(i) - simplex.c(i);
        }
        double fE = evaluate(simplex.e);
        trialPoint(Extrapolated, fE, simplex.e);
        bool reflect = fR < fE;
        setVertex(jh, reflect ? simplex.r : simplex.e, reflect ? fR : fE);
        replaced(reflect ? Reflected : Extrapolated);
        return;
    }
    if (fR <= fH) {
        setVertex(jh, simplex.r, fR);
        replaced(Reflected);
        double s = vertexValue(jh == 1 ? 2 : 1);
        for (int k = 1; k <= simplex.nVert; ++k) {
            if (k != jh && vertexValue(k) > s) s = vertexValue(k);
        }
        TraceRecord second{TraceKind::Event, SecondLargest};
        second.value = s;
        emit(second);
        if (fR <= s) return;
    }
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (isFree(i)) simplex.q(i) = (vertex(jh, i) + simplex.c(i)) * 0.5;
    }
    double fC = evaluate(simplex.q);
    trialPoint(Contracted, fC, simplex.q);
    if (fC <= fH) {
        setVertex(jh, simplex.q, fC);
        replaced(Contracted);
        return;
    }
    reduce(jl);
}

void endReport(int passes, int limit) {
    TraceRecord r{TraceKind::Stop, ds().iStat(row::functionEvaluations) < limit ? Converged : BudgetSpent};
    r.pass = passes;
    r.count[0] = ds().iStat(row::functionEvaluations);
    emit(r);
}

void finish(int jl, int passes, int& iFlag) {
    E4DataSetRecord& d = ds();
    for (int i = 1; i <= d.nVar(); ++i) d.xStart(i) = d.xEnd(i) = vertex(jl, i);
    d.fStart = d.fEnd = vertexValue(jl);
    d.iStat(row::methodDone) = d.iStat(row::methodRunning);
    iFlag = 0;
    d.iStat(row::iterations) += passes;
}

void passHeader(int passes) {
    TraceRecord r{TraceKind::Event, VertexTable};
    r.pass = passes;
    r.count[0] = simplex.nVert;
    emit(r);
}

}  // namespace

void resetSimplexSearch() { simplex = SimplexState{}; }

void E04DSMNM(int& iFlag) {
    E4DataSetRecord& d = ds();
    iFlag = 0;
    const int limit = d.iStat(row::functionEvaluations) + d.iStat(row::maxNFE);
    bool carryOn = d.iStat(row::computationMode) == 1 && d.iStat(row::methodRunning) == d.iStat(row::methodDone) && simplex.nVert > 0;
    if (!carryOn) buildSimplex();
    int passes = 0;
    while (true) {
        passHeader(passes);
        int jh = 1, jl = 1;
        extremes(jh, jl);
        double fH = vertexValue(jh), fL = vertexValue(jl);
        TraceRecord ends{TraceKind::Event, Extremes};
        ends.count = {jh, jl, 0, 0};
        ends.real = {fH, fL, 0, 0};
        emit(ends);
        passTable(passes, limit, jl, fL);
        simplex.fLowPrev = fL;
        d.deltaF = fH - fL;
        if (std::fabs(d.deltaF) < (std::fabs(fL) + 1.0) * d.rFTol || d.iStat(row::functionEvaluations) > limit) {
            endReport(passes, limit);
            finish(jl, passes, iFlag);
            return;
        }
        move(jh, jl, fH, fL);
        ++passes;
    }
}
