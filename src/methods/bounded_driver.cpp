// The outer layers of method 12: E4JAF1 adapts E4DataSet to the bounded
// quasi-Newton family (limits, tolerance, default bounds, the check of the
// start against its bounds), E04JAF chooses the tuning values, finds the
// first Hessian diagonal by differences, runs the iteration and classifies
// its end by the size of the projected gradient; E04CGY is the function
// adapter and E04ERP1 the failure reporter of the family.
#include "methods/bounded_driver.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "methods/bounded_iteration.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace {

// Integer work of the family: entries 3 on hold the state of each variable.
std::array<int, kMaxVar + 2> integerWork{};

// Euclidean norm over the variables with a nonzero iFixer, scaled by the
// largest magnitude so that no square overflows.
double freeNorm(const double* v, int n) {
    double m = 0;
    for (int i = 0; i < n; ++i)
        if (E4DataSet.iFixer(i + 1) != 0) m = std::max(m, std::abs(v[i]));
    if (m == 0) return 0;
    double sum = 0;
    for (int i = 0; i < n; ++i)
        if (E4DataSet.iFixer(i + 1) != 0) sum += (v[i] / m) * (v[i] / m);
    return m * std::sqrt(sum);
}

// A diagonal with an entry below eps, or too wide a spread, is not trusted.
bool diagonalBad(int n, const double* D, double eps) {
    double dmin = D[0], dmax = D[0];
    for (int i = 0; i < n; ++i) {
        if (D[i] < eps) return true;
        dmin = std::min(dmin, D[i]);
        dmax = std::max(dmax, D[i]);
    }
    const double r = 0.01 / (std::sqrt(static_cast<double>(n)) * eps);
    return n > 1 && dmin <= 1 && dmin * r < dmax;
}

// The end codes 3 and 5 split by the size of the projected gradient.
int classify(int code, int n, double f, const double* g, const int* state) {
    if (code < 3 || code == 4) return code;
    const double s = (std::abs(f) + 1) * (std::abs(f) + 1) * std::pow(familyConstants().eps, 0.66666);
    double q = 0;
    for (int i = 0; i < n; ++i)
        if (state[i] > 0) q += g[i] * g[i];
    if (code == 5) code = 3;
    if (q <= 1000 * s) code = 8;
    if (q <= 100 * s) code = 7;
    if (q <= 10 * s) code = 6;
    if (q <= s) code = 5;
    return code;
}

void emitEvent(int code, int a, int b) {
    TraceRecord r{TraceKind::Event, code};
    r.count[0] = a;
    r.count[1] = b;
    familyTrace(r);
}

// Default bounds and the check of the start point; false when a free
// variable lies outside its bounds (reported).
bool prepareBounds(E4DataSetRecord& d, int& ibound) {
    const double big = std::sqrt(X02RMDC(5));
    const int n = d.nVar();
    if (d.iStat(row::bLSet) == 0)
        for (int i = 1; i <= n; ++i) d.bL(i) = d.iStat(row::boundsMode) == 2 ? 0 : -big;
    if (d.iStat(row::bUSet) == 0)
        for (int i = 1; i <= n; ++i) d.bU(i) = big;
    for (int i = 1; i <= n; ++i) {
        if (d.iFixer(i) == 0) {
            if (ibound == 1 || ibound == 2) ibound = 0;
            d.bL(i) = d.bU(i) = d.xEnd(i);
        } else if (d.xEnd(i) < d.bL(i) || d.xEnd(i) > d.bU(i)) {
            emitEvent(bounded_trace::WrongBound, i, d.xEnd(i) < d.bL(i) ? 1 : 0);
            return false;
        }
    }
    return true;
}

}  // namespace

const FamilyConstants& familyConstants() {
    static const FamilyConstants c{X02RMDC(2), X02RMDC(5)};
    return c;
}

void familyTrace(const TraceRecord& r) { traceTo(boundedReport(), r); }

double familyCall(FamilyFun fun, int& iflag, int n, double* x, const Box& box) {
    if (box.lo != nullptr)
        for (int i = 0; i < n; ++i) x[i] = std::clamp(x[i], box.lo[i], box.hi[i]);
    double f = 0;
    fun(iflag, n, x, f);
    TraceRecord r{TraceKind::Point, bounded_trace::Evaluated};
    r.value = f;
    r.point = x;
    r.count[0] = n;
    familyTrace(r);
    return f;
}

void E04CGY(int&, int, double* x, double& f) { f = E4FUN1(x); }

int E04ERP1(int soft, int code, FamilyRoutine name) {
    if (code == 0) return 0;
    const int routine = static_cast<int>(name);
    if (code == 2 && E4DataSet.iStat(row::messageLevel) > 1 && name != FamilyRoutine::E04HBF)
        emitEvent(bounded_trace::ExceededSteps, routine, code);
    if (soft % 10 != 1) {
        emitEvent(bounded_trace::FatalError, routine, code);
        unit::flush(-1);
        unit::flush(6);
        std::exit(1);
    }
    if ((soft / 10) % 10 != 0) emitEvent(bounded_trace::SoftError, routine, code);
    return code;
}

void E04JAF(int n, int ibound, double* bL, double* bU, double* x, double& f, int* iw, int liw,
            double* w, int lw, int& soft, int iprint, int maxcal, int& nfe, int& iter, double eta,
            double xtol, double stepmx, double fest) {
    if (soft != 0 && soft != 1) soft = 0;
    const int nh = std::max(1, n * (n - 1) / 2);
    if (n < 1 || n > kMaxVar || ibound < 0 || ibound > 3 || lw < 12 * n + nh || liw < n + 2) {
        soft = E04ERP1(soft, 1, FamilyRoutine::E04JAF);
        return;
    }
    const double eps = familyConstants().eps;
    if (n == 1) eta = 0;
    stepmx = 1 + freeNorm(x, n);
    double* delta = w + 9 * n;
    double* L = w + 10 * n;
    double* D = L + nh;
    double* g = D + n;
    const Box box{bL, bU};
    int nf = 0;
    E04HBF(n, E04CGY, box, x, nf, delta, L, nh, D, f, g, liw, w, 9 * n, 1);
    if (diagonalBad(n, D, eps)) {
        std::fill(D, D + n, 1.0);
        std::fill(L, L + nh, 0.0);
    }
    if (std::abs(f) <= std::sqrt(eps)) fest = -1;
    if (f < -std::sqrt(eps)) fest = -10 * f;

    BqnRun r;
    r.n = n;
    r.fun = E04CGY;
    r.search = E04LSH1;
    r.maxcal = maxcal;
    r.nfcall = nf;
    r.iter = iter;
    r.eta = eta;
    r.xtol = xtol;
    r.stepmx = stepmx;
    r.fest = fest;
    r.ibound = ibound;
    r.delta = delta;
    r.bL = bL;
    r.bU = bU;
    r.x = x;
    r.L = L;
    r.lh = nh;
    r.D = D;
    r.state = iw + 2;
    r.f = f;
    r.g = g;
    r.liw = liw;
    r.w = w;
    r.lw = 9 * n;
    r.iprint = iprint;
    r.soft = 1;
    int code = E04JBF(r);
    f = r.f;
    iter = r.iter;
    nfe += r.nfcall;
    iw[0] = r.nfree;
    iw[1] = r.nfix;
    code = classify(code, n, f, g, r.state);
    for (int i = 0; i < n; ++i)
        if (!(x[i] > -999990.0 && x[i] < 999990.0)) code = 9;
    soft = code == 0 ? 0 : E04ERP1(soft, code, FamilyRoutine::E04JAF);
}

void E4JAF1(int& flag) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    if (n < 1 || n > kMaxVar) {
        flag = 1;
        return;
    }
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    const double stepmx = 10, eta = 0.5;
    const long long byIterations = static_cast<long long>(n + 3) * d.iStat(row::maxITR);
    int maxcal = static_cast<int>(std::clamp<long long>(byIterations, INT_MIN, INT_MAX));
    const int m = d.iStat(row::maxNFE) != 0 ? d.iStat(row::maxNFE) : maxcal;
    maxcal = std::min(maxcal, m);
    const double xtol = d.iStat(row::rXTolSet) == 0 ? 10 * std::sqrt(eps) : freeNorm(d.rXTol.data(), n);
    int ibound = d.iStat(row::boundsMode);
    const double fest = 0;
    const int iprint = d.iStat(row::messageLevel) > 0 ? 1 : 0;
    if (!prepareBounds(d, ibound)) {
        flag = 1;
        return;
    }
    const int liw = n + 2;
    const int lw = 12 * n + std::max(1, n * (n - 1) / 2);
    int iter = 0, nfe = 0;
    flag = 1;
    E04JAF(n, ibound, d.bL.data(), d.bU.data(), d.xEnd.data(), d.fEnd, integerWork.data(), liw,
           d.Hesse.data(), lw, flag, iprint, maxcal, nfe, iter, eta, xtol, stepmx, fest);
    if (flag != 0) {
        TraceRecord r{TraceKind::Stop, bounded_trace::ReturnCode};
        r.count = {flag, iter, d.iStat(row::maxITR), 0};
        familyTrace(r);
    }
    d.xStart = d.xEnd;
    d.fStart = d.fEnd;
    d.iStat(row::iterations) = 0;
}

void boundedMethodSearch(int&) {
    if (E4DataSet.iStat(row::nFree) == 0) return;
    int flag = 0;
    E4JAF1(flag);
}
