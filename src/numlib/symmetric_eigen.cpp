// Symmetric eigenproblem: F02RSM1, F01TDR1 (Householder reduction with
// accumulated transformations), F02TDM1 (implicit QL iteration and sort).
#include "numlib/symmetric_eigen.h"

#include "core/console_layer.h"
#include "core/machine_constants.h"

#include <cmath>
#include <string>
#include <utility>

namespace {

// Threshold below which a row of the reduction needs no reflection, and the
// relative precision of the QL split test; both taken on the first call.
bool haveTol = false;
double rowTol = 0.0;
bool haveEps = false;
double splitEps = 0.0;
int sweepsDone = 0;

// Column-major matrix with leading dimension ld, 1-based access.
struct ColMatrix {
    double* a;
    int ld;
    double& operator()(int i, int j) const {
        return a[static_cast<long>(j - 1) * ld + (i - 1)];
    }
};

// 1-based view of a vector.
struct Vec {
    double* v;
    double& operator()(int i) const { return v[i - 1]; }
};

bool dimensionsRefused(std::string_view tag, int ldim, int n, int& err) {
    if (n >= 1 && n <= ldim) return false;
    err = -1;
    I05MES(std::string(tag) + " --E- Working dimension exceeds " + " maximum value.");
    return true;
}

// Reduction of row i (and column i): a reflection of the elements left of the
// diagonal that leaves only the subdiagonal one.  Its weight h goes to d(i).
void reduceRow(const ColMatrix& z, const Vec& d, const Vec& e, int i) {
    const int l = i - 1;
    double f = z(i, l);
    double g = 0.0;
    for (int k = 1; k < l; ++k) g += z(i, k) * z(i, k);
    if (g < rowTol) {
        e(i) = f;
        d(i) = 0.0;
        return;
    }
    double h = g + f * f;
    g = f >= 0.0 ? -std::sqrt(h) : std::sqrt(h);
    e(i) = g;
    h -= f * g;
    z(i, l) = f - g;
    f = 0.0;
    for (int j = 1; j <= l; ++j) {
        z(j, i) = z(i, j) / h;
        g = 0.0;
        for (int k = 1; k <= j; ++k) g += z(j, k) * z(i, k);
        for (int k = j + 1; k <= l; ++k) g += z(k, j) * z(i, k);
        e(j) = g / h;
        f += g * z(j, i);
    }
    const double hh = f / (h + h);
    for (int j = 1; j <= l; ++j) {
        f = z(i, j);
        g = e(j) - hh * f;
        e(j) = g;
        for (int k = 1; k <= j; ++k) z(j, k) -= f * e(k) + g * z(i, k);
    }
    d(i) = h;
}

// Builds the product of the reflections in z from the first row on; the
// diagonal of the tridiagonal matrix goes to d.
void accumulateTransformations(const ColMatrix& z, const Vec& d, int n) {
    for (int i = 1; i <= n; ++i) {
        const int l = i - 1;
        if (d(i) != 0.0) {
            for (int j = 1; j <= l; ++j) {
                double g = 0.0;
                for (int k = 1; k <= l; ++k) g += z(i, k) * z(k, j);
                for (int k = 1; k <= l; ++k) z(k, j) -= g * z(k, i);
            }
        }
        d(i) = z(i, i);
        z(i, i) = 1.0;
        for (int j = 1; j <= l; ++j) {
            z(i, j) = 0.0;
            z(j, i) = 0.0;
        }
    }
}

// First m from l on whose subdiagonal element is negligible; n if none.
int findSplit(const Vec& d, const Vec& e, int l, int n) {
    for (int m = l; m < n; ++m) {
        if (std::fabs(e(m)) <= splitEps * (std::fabs(d(m)) + std::fabs(d(m + 1)))) return m;
    }
    return n;
}

// Plane rotation of the columns i and i+1 of z.
void rotateColumns(const ColMatrix& z, int n, int i, double c, double s) {
    for (int k = 1; k <= n; ++k) {
        const double h = z(k, i + 1);
        z(k, i + 1) = s * z(k, i) + c * h;
        z(k, i) = c * z(k, i) - s * h;
    }
}

// One implicit QL sweep with shift over the block l..m.
void qlSweep(const ColMatrix& z, const Vec& d, const Vec& e, int l, int m, int n) {
    double g = (d(l + 1) - d(l)) / (2.0 * e(l));
    double r = std::hypot(g, 1.0);
    g = d(m) - d(l) + e(l) / (g + std::copysign(r, g));
    double s = 1.0;
    double c = 1.0;
    double p = 0.0;
    for (int i = m - 1; i >= l; --i) {
        const double f = s * e(i);
        const double b = c * e(i);
        if (f == 0.0 && g == 0.0) {
            // Both components underflowed: the block splits here.
            e(i + 1) = 0.0;
            d(i + 1) -= p;
            e(m) = 0.0;
            return;
        }
        if (std::fabs(f) >= std::fabs(g)) {
            c = g / f;
            r = std::sqrt(c * c + 1.0);
            e(i + 1) = f * r;
            s = 1.0 / r;
            c *= s;
        } else {
            s = f / g;
            r = std::sqrt(s * s + 1.0);
            e(i + 1) = g * r;
            c = 1.0 / r;
            s *= c;
        }
        g = d(i + 1) - p;
        r = (d(i) - g) * s + 2.0 * c * b;
        p = s * r;
        d(i + 1) = g + p;
        g = c * r - b;
        rotateColumns(z, n, i, c, s);
    }
    d(l) -= p;
    e(l) = g;
    e(m) = 0.0;
}

// Eigenvalues in descending order of magnitude, the columns of z alongside.
// Among equal magnitudes the earlier one stays first.
void sortByMagnitude(const ColMatrix& z, const Vec& d, int n) {
    for (int i = 1; i < n; ++i) {
        int j = i;
        for (int k = i + 1; k <= n; ++k) {
            if (std::fabs(d(k)) > std::fabs(d(j))) j = k;
        }
        if (j == i) continue;
        std::swap(d(i), d(j));
        for (int k = 1; k <= n; ++k) std::swap(z(k, i), z(k, j));
    }
}

}  // namespace

void F01TDR1(double* a, double* d, double* e, int ldim, int n, int& err) {
    if (dimensionsRefused("F01TDR1", ldim, n, err)) return;
    err = 0;
    if (!haveTol) {
        rowTol = X02RMDC(3) / X02RMDC(2);
        haveTol = true;
    }
    const ColMatrix z{a, ldim};
    const Vec dv{d};
    const Vec ev{e};
    for (int i = n; i >= 2; --i) reduceRow(z, dv, ev, i);
    dv(1) = 0.0;
    ev(1) = 0.0;
    accumulateTransformations(z, dv, n);
}

void F02TDM1(double* d, double* e, double* a, int ldim, int n, int& err) {
    sweepsDone = 0;
    if (dimensionsRefused("F02TDM1", ldim, n, err)) return;
    if (!haveEps) {
        splitEps = X02RMDC(2);
        haveEps = true;
    }
    const ColMatrix z{a, ldim};
    const Vec dv{d};
    const Vec ev{e};
    for (int i = 2; i <= n; ++i) ev(i - 1) = ev(i);
    ev(n) = 0.0;
    const int limit = 30 * (n / 2) + 30;
    for (int l = 1; l <= n; ++l) {
        int iterations = 0;
        for (int m = findSplit(dv, ev, l, n); m != l; m = findSplit(dv, ev, l, n)) {
            if (iterations == limit) {
                err = -2;
                I05MES(std::string("F02TDM1") + " --E- Convergence failure" + " in QL routine.");
                return;
            }
            ++iterations;
            ++sweepsDone;
            qlSweep(z, dv, ev, l, m, n);
        }
    }
    sortByMagnitude(z, dv, n);
    err = 0;
}

void F02RSM1(double* a, double* d, double* e, int ldim, int n, int& err) {
    F01TDR1(a, d, e, ldim, n, err);
    if (err >= 0) F02TDM1(d, e, a, ldim, n, err);
    if (err != 0) I05MES(std::string("F02RSM1") + " --E- Eigenproblem failed to solve.");
}

int F02TDM1Sweeps() { return sweepsDone; }

void resetSymmetricEigen() {
    haveTol = false;
    rowTol = 0.0;
    haveEps = false;
    splitEps = 0.0;
    sweepsDone = 0;
}
