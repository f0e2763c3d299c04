// The active set of the bounded quasi-Newton iteration: the gradient of the
// free variables in factor order, the scan of the multipliers of the
// variables on a bound, the release of a variable and the addition of a
// bound, the condition of the diagonal and its rescaling, the report row.
#include "core/e4dataset.h"
#include "methods/bounded_factors.h"
#include "methods/bounded_iteration.h"

#include <algorithm>
#include <cmath>

double ratioLimit(const BqnRun& r, int nfree) {
    return nfree == 0 ? 0 : 0.01 / (std::sqrt(static_cast<double>(nfree)) * r.eps);
}

void gatherFreeGradient(BqnRun& r) {
    for (int i = 0; i < r.n; ++i)
        if (r.state[i] > 0) r.gz[r.state[i] - 1] = r.g[i];
    r.gtg = 0;
    for (int k = 0; k < r.nfree; ++k) r.gtg += r.gz[k] * r.gz[k];
}

void freeGradient(BqnRun& r) {
    E04JBN(r.iflag, r.n, r.state, r.f, r.x, r.delta, r.fun, r.box, r.method, r.nfcall, r.g, r.w1,
           r.w2, Serve::Free);
    gatherFreeGradient(r);
}

void boundGradient(BqnRun& r, int method) {
    E04JBN(r.iflag, r.n, r.state, r.f, r.x, r.delta, r.fun, r.box, method, r.nfcall, r.g, r.w1,
           r.w2, Serve::Bound);
}

// A variable on its upper bound (state -1) holds when its gradient is not
// positive, on the lower bound (-2) when it is not negative: v is the
// multiplier.  Those with v <= tolM are marked (state - 3); the most
// negative multiplier below -tolM names the variable to release.
void E04MUL1(BqnRun& r) {
    r.gmin = -r.tolM;
    r.release = 0;
    int marks = 0;
    for (int i = 0; i < r.n; ++i) {
        if (r.state[i] != -1 && r.state[i] != -2) continue;
        const double v = r.state[i] == -1 ? -r.g[i] : r.g[i];
        if (v > r.tolM) continue;
        ++marks;
        r.state[i] -= 3;
        if (v < r.gmin) {
            r.gmin = v;
            r.release = i + 1;
        }
    }
    r.ok = marks == 0;
}

double releaseThreshold(const BqnRun& r) {
    if (r.nfree == 0) return r.tolM;
    double sum = 0;
    for (int i = 0; i < r.n; ++i)
        if (r.state[i] > 0) sum += r.g[i] * r.g[i];
    return std::sqrt(sum) / r.nfree;
}

void clearMarks(BqnRun& r) {
    for (int i = 0; i < r.n; ++i)
        if (r.state[i] == -4 || r.state[i] == -5) r.state[i] += 3;
}

namespace {

// dmin and dmax over the free part of D.
void diagonalRange(const BqnRun& r, double& dmin, double& dmax) {
    dmin = dmax = r.D[0];
    for (int k = 0; k < r.nfree; ++k) {
        dmin = std::min(dmin, r.D[k]);
        dmax = std::max(dmax, r.D[k]);
    }
}

}  // namespace

double conditionOf(const BqnRun& r) {
    if (r.nfree == 0) return 0;
    double dmin = 0, dmax = 0;
    diagonalRange(r, dmin, dmax);
    if (dmin < r.eps || (r.nfree > 1 && dmin <= 1 && dmin * r.rmax < dmax)) return r.big;
    return r.nfree == 1 ? 1 : dmax / dmin;
}

// cond = dmax / dmin; above rmax every D(i) is raised to the power
// log rmax / log cond, which brings the ratio down to rmax.
void rescaleDiagonal(BqnRun& r) {
    if (r.nfree == 0) return;
    double dmin = 0, dmax = 0;
    diagonalRange(r, dmin, dmax);
    r.cond = dmax / dmin;
    if (r.cond <= r.rmax) return;
    const double power = std::log(r.rmax) / std::log(r.cond);
    for (int k = 0; k < r.nfree; ++k) r.D[k] = std::pow(r.D[k], power);
}

void releaseVariable(BqnRun& r, int k) {
    ++r.nfree;
    r.D[r.nfree - 1] = 1;
    r.state[k - 1] = r.nfree;
    r.gz[r.nfree - 1] = r.g[k - 1];
    r.gtg = 0;
    for (int j = 0; j < r.nfree; ++j) r.gtg += r.gz[j] * r.gz[j];
    r.rmax = r.rmax0 = ratioLimit(r, r.nfree);
    rescaleDiagonal(r);
}

int addBound(BqnRun& r, int i, const double* dir) {
    const int m = r.state[i];
    if (dir[i] <= 0) {
        r.x[i] = r.bL[i];
        r.state[i] = -2;
    } else {
        r.x[i] = r.bU[i];
        r.state[i] = -1;
    }
    --r.nfree;
    for (int j = 0; j < r.n; ++j)
        if (r.state[j] > m) --r.state[j];
    r.rmax = r.rmax0 = ratioLimit(r, r.nfree);
    return m;
}

int boundReached(const BqnRun& r, const double* dir, bool& moved) {
    for (int i = 0; i < r.n; ++i) {
        if (r.state[i] <= 0) continue;
        const double bound = dir[i] <= 0 ? r.bL[i] : r.bU[i];
        const double d = dir[i] <= 0 ? r.x[i] - r.bL[i] : r.bU[i] - r.x[i];
        const double tl = (std::abs(bound) + 1) * r.srt;
        if (d <= tl) {
            moved = d >= 10 * r.srt * tl;
            return i + 1;
        }
    }
    moved = false;
    return 0;
}

void evaluateAtX(BqnRun& r) {
    r.f = familyCall(r.fun, r.iflag, r.n, r.x, r.box);
    ++r.nfcall;
}

void reportRow(const BqnRun& r, char mark) {
    TraceRecord row{TraceKind::Pass, mark};
    row.pass = r.iter;
    row.count = {E4DataSet.iStat(row::maxITR) - r.iter, r.nfcall, 0, 0};
    row.value = r.f;
    row.real[0] = conditionOf(r);
    familyTrace(row);
    auto vector = [](int code, const double* v, int entries) {
        TraceRecord e{TraceKind::Event, code};
        e.point = v;
        e.count[0] = entries;
        familyTrace(e);
    };
    vector(bounded_trace::ReportPoint, r.x, r.n);
    vector(bounded_trace::ReportGradient, r.gz, r.nfree);
    vector(bounded_trace::ReportDirection, r.direct, r.n);
}
