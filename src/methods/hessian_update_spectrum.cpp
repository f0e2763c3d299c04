// E4HES3: the eigenanalysis of the Hessian approximation.  The free rows and
// columns of Hesse are compressed into V_eigen and solved; the spectrum
// gives the condition number, and under the condition limit a negative
// eigenvalue is mirrored and every eigenvalue raised to at least
// largest / hCond, after which the repaired matrix replaces Hesse.  The
// eigenpairs are spread back to the full numbering of the variables, a fixed
// variable carrying a unit vector with eigenvalue 0.
#include "methods/hessian_update.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "numlib/symmetric_eigen.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace hessian_trace;

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }

void emit(int code, std::array<double, 4> real = {}, int c0 = 0, const double* point = nullptr) {
    TraceRecord r{TraceKind::Event, code};
    r.real = real;
    r.count[0] = c0;
    r.point = point;
    traceTo(hessianReport(), r);
}

// The free block of Hesse into the leading block of V_eigen; its order.
int compress() {
    E4DataSetRecord& d = ds();
    int col = 0;
    for (int j = 1; j <= d.nVar(); ++j) {
        if (!isFree(j)) continue;
        ++col;
        int r = 0;
        for (int i = 1; i <= d.nVar(); ++i) {
            if (isFree(i)) d.V_eigen(++r, col) = d.Hesse(i, j);
        }
    }
    return col;
}

// The floor of the eigenvalues under the condition limit (0: none).  The
// limit turns itself on, at n / eps, when the matrix is worse than that.
double eigenvalueFloor(int n, double cond, double L, double eps) {
    E4DataSetRecord& d = ds();
    const double t = n / eps;
    if (d.iStat(row::hCondSwitch) == 0) {
        if (cond <= t) return 0.0;
        d.hCond = t;
        d.iStat(row::hCondSwitch) = 1;
        d.iStat(row::hCondSet) = 1;
        return L / d.hCond;
    }
    return d.iStat(row::hCondSet) != 0 ? L / d.hCond : 0.0;
}

// Mirrors negative eigenvalues (under the limit) and raises small ones to
// the floor; true when anything changed.
bool repair(int n, double thr) {
    E4DataSetRecord& d = ds();
    bool changed = false;
    for (int i = 1; i <= n; ++i) {
        double v = d.R_eigen(i);
        if (v < 0.0 && d.iStat(row::hCondSwitch) != 0) {
            v = -v;
            emit(NotPositiveDefinite);
            changed = true;
        }
        if (std::fabs(v) < thr) {
            v = v < 0.0 ? -thr : thr;
            changed = true;
        }
        d.R_eigen(i) = v;
    }
    return changed;
}

// The compressed eigenpairs back to the full numbering, from the last
// variable to the first.
void spreadBack(int n) {
    E4DataSetRecord& d = ds();
    static Mat1<kMaxVar> V;
    static Vec1<double, kMaxVar> R;
    for (int k = 1; k <= n; ++k) {
        R(k) = d.R_eigen(k);
        for (int r = 1; r <= n; ++r) V(r, k) = d.V_eigen(r, k);
    }
    int k = n;
    for (int j = d.nVar(); j >= 1; --j) {
        for (int i = 1; i <= d.nVar(); ++i) d.V_eigen(i, j) = 0.0;
        if (!isFree(j)) {
            d.V_eigen(j, j) = 1.0;
            d.R_eigen(j) = 0.0;
            continue;
        }
        int r = 0;
        for (int i = 1; i <= d.nVar(); ++i) {
            if (isFree(i)) d.V_eigen(i, j) = V(++r, k);
        }
        d.R_eigen(j) = R(k--);
    }
}

// Hesse = V R V^T over the free variables.
void rebuildMatrix() {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) continue;
        for (int j = 1; j <= n; ++j) {
            if (!isFree(j)) continue;
            double sum = 0;
            for (int l = 1; l <= n; ++l) {
                if (isFree(l)) sum += d.V_eigen(i, l) * d.R_eigen(l) * d.V_eigen(j, l);
            }
            d.Hesse(i, j) = sum;
        }
    }
}

}  // namespace

void E4HES3(int& flag) {
    E4DataSetRecord& d = ds();
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    flag = 0;
    if (d.nVar() < 1 || d.nVar() > kMaxVar) {  // the eigenproblem's own error for an impossible order
        flag = -1;
        return;
    }
    const int n = compress();
    d.iStat(row::nFree) = n;
    Vec1<double, kMaxVar> work;
    int ierr = 0;
    F02RSM1(d.V_eigen.data(), d.R_eigen.data(), work.data(), kMaxVar, n, ierr);
    if (ierr < 0) {
        flag = ierr;
        return;
    }
    d.iStat(row::R_eigenSet) = d.iStat(row::V_eigenSet) = 1;
    // L and S the largest and smallest magnitude, C the eigenvalue of the
    // largest magnitude with its sign.
    double L = 0, S = std::fabs(d.R_eigen(1)), C = d.R_eigen(1), top = std::fabs(d.R_eigen(n));
    for (int i = 1; i <= n; ++i) {
        const double a = std::fabs(d.R_eigen(i));
        L = std::max(L, a);
        S = std::min(S, a);
        if (a > top) {
            top = a;
            C = d.R_eigen(i);
        }
    }
    if (L == 0.0) {
        flag = 1;
        emit(Empty);
        return;
    }
    const double cond = S / L <= rMin ? rBig : 1.0 / (S / L);
    d.hCondNow = cond;
    const double thr = eigenvalueFloor(n, cond, L, eps);
    emit(Eigenvalues, {}, n, d.R_eigen.data());
    if (C < 0.0) emit(LocalMaximum);
    const bool changed = repair(n, thr);
    emit(Condition, {cond, d.R_eigen(n) / d.R_eigen(1)}, changed ? 1 : 0);
    if (n < d.nVar()) spreadBack(n);
    if (d.iStat(row::hCondSwitch) != 0 && changed) {
        rebuildMatrix();
        emit(ModifiedMatrix);
    }
}
