// The factored Hessian approximation L D L' of the bounded quasi-Newton
// method: the solve for the direction, the positive rank-one update E04FAD1,
// the removal of a position E04FDL1 when a variable goes onto a bound, and
// the BFGS update E04FUP1, which adds the new curvature y y' / (s'y) and
// removes the old one, B s s' B / (s' B s), by a rank-one downdate.
#include "methods/bounded_factors.h"

#include <algorithm>
#include <cmath>

namespace {

double& Lij(double* L, int i, int j) { return L[packedIndex(i, j)]; }
double Lij(const double* L, int i, int j) { return L[packedIndex(i, j)]; }

}  // namespace

void solveFactors(int m, const double* L, const double* D, const double* gz, double* p) {
    for (int i = 1; i <= m; ++i) {
        double t = gz[i - 1];
        for (int j = 1; j < i; ++j) t -= Lij(L, i, j) * p[j - 1];
        p[i - 1] = t;
    }
    for (int i = m; i >= 1; --i) {
        double t = p[i - 1] / D[i - 1];
        for (int j = i + 1; j <= m; ++j) t -= Lij(L, j, i) * p[j - 1];
        p[i - 1] = t;
    }
}

bool E04FAD1(int m, double* L, double* D, double* z, double sigma, double big) {
    for (int j = 1; j <= m; ++j) {
        const double pj = z[j - 1];
        const double d = D[j - 1];
        const double dn = d + sigma * pj * pj;
        D[j - 1] = dn;
        if (dn < 1 && (dn <= 0 || big * dn < d)) return false;
        const double beta = d / dn;
        const double gam = sigma * pj / dn;
        sigma *= beta;
        for (int i = j + 1; i <= m; ++i) {
            const double tt = Lij(L, i, j);
            if (beta < 0.25) {
                const double zi = z[i - 1];
                z[i - 1] = zi - tt * pj;
                Lij(L, i, j) = gam * zi + beta * tt;
            } else {
                z[i - 1] -= pj * tt;
                Lij(L, i, j) = z[i - 1] * gam + tt;
            }
        }
    }
    return true;
}

bool E04FDL1(int k, int m, double* L, double* D, double* z, double big) {
    if (k == m + 1) {
        for (int j = 1; j <= m; ++j) Lij(L, m + 1, j) = 0;
        D[m] = 0;
        return true;
    }
    for (int i = 1; i < k; ++i) z[i - 1] = 0;
    const double dk = D[k - 1];
    for (int i = k; i <= m; ++i) {
        z[i - 1] = Lij(L, i + 1, k);
        D[i - 1] = D[i];
    }
    // Row and column k go: the rows behind k move up one place, the columns
    // behind k one place to the left; no entry moves behind its old place.
    for (int i = 2; i <= m; ++i) {
        const int oi = i < k ? i : i + 1;
        for (int j = 1; j < i; ++j) {
            const int oj = j < k ? j : j + 1;
            Lij(L, i, j) = Lij(L, oi, oj);
        }
    }
    const bool good = E04FAD1(m, L, D, z, dk, big);
    D[m] = 0;
    for (int j = 1; j <= m; ++j) Lij(L, m + 1, j) = 0;
    return good;
}

bool E04FUP1(int m, double* L, double* D, const double* gz, const double* gzs, double gtp,
             double gtpn, double alpha, double* z, double* v, double eps, double big,
             bool& updated) {
    updated = false;
    const double c = (gtpn - gtp) * alpha;
    if (c <= 0) return true;
    if (c < 1 && c * big <= 1) return false;
    const double rc = std::sqrt(c);
    for (int i = 0; i < m; ++i) z[i] = (gz[i] - gzs[i]) / rc;
    if (!E04FAD1(m, L, D, z, 1.0, big)) return false;
    const double b = std::abs(gtp);
    if (b < 1 && big * b <= 1) return false;
    // Removal of the old curvature: forward solve L w = v into z.
    const double rb = std::sqrt(b);
    double s = 0;
    for (int i = 1; i <= m; ++i) {
        double t = gzs[i - 1] / rb;
        for (int j = 1; j < i; ++j) t -= Lij(L, i, j) * z[j - 1];
        z[i - 1] = t;
        s += t * t / D[i - 1];
    }
    double al = std::max(eps, std::abs(1 - s));
    for (int j = m; j >= 1; --j) {
        const double pj = z[j - 1];
        const double d = D[j - 1];
        v[j - 1] = pj;
        const double bj = pj / d;
        const double cj = bj / al;
        const double d2 = d * al;
        al += bj * pj;
        D[j - 1] = d2 / al;
        for (int i = j + 1; i <= m; ++i) {
            const double tt = Lij(L, i, j);
            const double vi = v[i - 1];
            Lij(L, i, j) = tt - cj * vi;
            v[i - 1] = vi + tt * pj;
        }
    }
    updated = true;
    return true;
}
