// E04HES4: the Hessian from function values.  Element (i, j) is the mixed
// forward second difference
//     (((f(x + hj ej + hi ei) - f(x + hi ei)) - f(x + hj ej)) + f(x)) / hj / hi,
// which for j = i is the one-sided second difference on x, x + h, x + 2h.
// Its truncation error is of order h f''', so the step is the square root
// of the relative interval that balances noise against truncation for a
// first derivative: the second difference divides the noise by h^2.
// With m free variables the matrix costs m (m + 1) + m evaluations.
#include "methods/hessian_differences.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "methods/hessian_update.h"
#include "objective/computational_noise.h"
#include "objective/gradient.h"
#include "objective/target_function.h"

#include <algorithm>
#include <cmath>

namespace {

Mat1<kMaxVar> rawHessian;
UserHessianUse userUse = nullptr;

bool isFree(int i) { return E4DataSet.iFixer(i) != 0; }

// The step of variable i.  An interval that is not positive (loaded so)
// would give no difference at all: the interval of a central first
// difference at the machine precision, eps^(2/3), stands in for it.
double stepOf(const double* x, const double* finDif, int i) {
    double r = finDif[i - 1];
    if (!(r > 0.0)) r = std::cbrt(X02RMDC(2) * X02RMDC(2));
    return (std::fabs(x[i - 1]) + 0.1) * std::sqrt(r);
}

// f at x + a ei + b ej (b ignored when j is 0); the coordinates are put
// back by copying their saved values.
double valueAt(double* x, int i, double a, int j = 0, double b = 0.0) {
    const double xi = x[i - 1];
    const double xj = j != 0 ? x[j - 1] : 0.0;
    if (j != 0) x[j - 1] = xj + b;
    x[i - 1] = x[i - 1] + a;
    const double v = E4FUN1(x);
    if (j != 0) x[j - 1] = xj;
    x[i - 1] = xi;
    return v;
}

// Row i and the part of the upper triangle right of the diagonal.
void differencesOfRow(double* x, double f, const double* h, int i) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    if (!isFree(i)) {
        for (int j = 1; j <= n; ++j) d.Hesse(i, j) = d.Hesse(j, i) = 0.0;
        return;
    }
    const double Fi = valueAt(x, i, h[i - 1]);
    for (int j = i; j <= n; ++j) {
        if (!isFree(j)) {
            d.Hesse(i, j) = d.Hesse(j, i) = 0.0;
            continue;
        }
        const double Fj = valueAt(x, j, h[j - 1]);
        // For j = i the point x + hi ei + hi ei is x + 2 hi ei.
        const double Fij = j == i ? valueAt(x, i, h[i - 1] + h[i - 1]) : valueAt(x, i, h[i - 1], j, h[j - 1]);
        d.Hesse(i, j) = d.Hesse(j, i) = (((Fij - Fi) - Fj) + f) / h[j - 1] / h[i - 1];
    }
}

}  // namespace

void E04HES4(double* x, double& f, double* finDif, int& err, [[maybe_unused]] std::string_view name) {
    E4DataSetRecord& d = E4DataSet;
    err = 0;
    if (d.nVar() < 1 || d.nVar() > kMaxVar || d.iStat(row::problemCode) == 0 || d.iStat(row::xStartSet) == 0) {
        err = -10;
        return;
    }
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) f = E4FUN1(x);
    if (d.iStat(row::FrlErrSet) == 0) E4ERR1(x, f, err, "E04HES4");
    if (d.iStat(row::finDifSet) == 0) {
        Vec1<double, kMaxVar> w;
        E4FDA1(x, f, finDif, w.data(), d.Hdiag.data(), err, "E04HES4");
    }
    // What the preparations found they have reported; it is dropped here.
    err = 0;
    const int n = d.nVar();
    Vec1<double, kMaxVar> h;
    for (int i = 1; i <= n; ++i) h(i) = stepOf(x, finDif, i);

    const int nfe0 = d.iStat(row::functionEvaluations);
    for (int i = 1; i <= n; ++i) differencesOfRow(x, f, h.data(), i);
    d.iStat(row::HesseSet) = 1;
    for (int j = 1; j <= n; ++j) {
        for (int i = 1; i <= n; ++i) rawHessian(i, j) = d.Hesse(i, j);
    }

    E4HES3(err);
    d.iStat(row::R_eigenSet) = 1;
    d.iStat(row::V_eigenSet) = 1;
    TraceRecord r{TraceKind::Event, hessian_differences_trace::Written};
    r.count[0] = d.iStat(row::functionEvaluations) - nfe0;
    traceTo(hessianDifferencesReport(), r);
}

const double* hessianOfDifferences() { return rawHessian.data(); }

bool inverseHessianDiagonal(double* diag) {
    const E4DataSetRecord& d = E4DataSet;
    const int n = std::min(d.nVar(), kMaxVar);
    if (d.hCondNow > X02RMDC(5)) return false;
    for (int j = 1; j <= n; ++j) {
        if (isFree(j) && d.R_eigen(j) == 0.0) return false;
    }
    for (int i = 1; i <= n; ++i) {
        double s = 0.0;
        if (isFree(i)) {
            for (int j = 1; j <= n; ++j) {
                if (isFree(j)) s += d.V_eigen(i, j) * d.V_eigen(i, j) / d.R_eigen(j);
            }
        }
        diag[i - 1] = s;
    }
    return true;
}

void setUserHessianUse(UserHessianUse use) { userUse = use; }

void passHessianToUserProblem() {
    if (userUse != nullptr) userUse(rawHessian.data(), kMaxVar);
}
