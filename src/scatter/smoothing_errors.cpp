// Error estimate of a curve from its own scatter: ERREST with errestWindows,
// and the moving cubic smoother SMOERR with its error propagation.
#include "scatter/measured_curve.h"

#include "core/console_layer.h"
#include "numlib/statistical_tests.h"
#include "platform/units.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int kMaxNeighbours = 100;
constexpr double kTinyError = 1e-20;
constexpr double kFlatFraction = 0.03;

// Cubic in t fitted to one window: coefficients c1..c4 of
// c1 t^3 + c2 t^2 + c3 t + c4 and the inverse C of the normal matrix.
struct WindowFit {
    double coef[4] = {};
    double inv[4][4] = {};
    bool good = false;
};

void basis(double t, double v[4]) {
    v[0] = t * t * t;
    v[1] = t * t;
    v[2] = t;
    v[3] = 1.0;
}

// Inverse of a symmetric positive definite 4x4 matrix through its Cholesky
// factor L (a = L L^T), in packed lower-triangle storage.
bool choleskyInverse(const double a[4][4], double inv[4][4]) {
    double packed[10];
    auto at = [&](int i, int j) -> double& { return packed[i * (i + 1) / 2 + j]; };
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j <= i; ++j) {
            double sum = a[i][j];
            for (int k = 0; k < j; ++k) sum -= at(i, k) * at(j, k);
            if (i == j) {
                if (!(sum > 0.0)) return false;
                at(i, i) = std::sqrt(sum);
            } else {
                at(i, j) = sum / at(j, j);
            }
        }
    }
    // Columns of L^-1, then C = L^-T L^-1.
    double linv[4][4] = {};
    for (int col = 0; col < 4; ++col) {
        for (int i = col; i < 4; ++i) {
            double sum = (i == col) ? 1.0 : 0.0;
            for (int k = col; k < i; ++k) sum -= at(i, k) * linv[k][col];
            linv[i][col] = sum / at(i, i);
        }
    }
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            double sum = 0.0;
            for (int k = std::max(i, j); k < 4; ++k) sum += linv[k][i] * linv[k][j];
            inv[i][j] = sum;
        }
    }
    return true;
}

// Scale of the abscissae of the window centred on c (0-based) with m
// neighbours on each side.
double windowWidth(const double* s, int c, int m) {
    double width = s[c + m] - s[c - m];
    return width != 0.0 ? width : 1.0;
}

WindowFit fitWindow(const double* s, const double* y, const double* w, int c, int m) {
    WindowFit fit;
    double normal[4][4] = {};
    double rhs[4] = {};
    const double width = windowWidth(s, c, m);
    for (int i = c - m; i <= c + m; ++i) {
        double v[4];
        basis((s[i] - s[c]) / width, v);
        const double weight = (w[i] != 0.0) ? 1.0 / (w[i] * w[i]) : 1.0;
        for (int j = 0; j < 4; ++j) {
            rhs[j] += weight * v[j] * y[i];
            for (int k = 0; k < 4; ++k) normal[j][k] += weight * v[j] * v[k];
        }
    }
    fit.good = choleskyInverse(normal, fit.inv);
    if (!fit.good) return fit;
    for (int j = 0; j < 4; ++j) {
        fit.coef[j] = 0.0;
        for (int k = 0; k < 4; ++k) fit.coef[j] += fit.inv[j][k] * rhs[k];
    }
    return fit;
}

void evaluateAt(const WindowFit& fit, double t, double& value, double& error) {
    value = ((fit.coef[0] * t + fit.coef[1]) * t + fit.coef[2]) * t + fit.coef[3];
    double v[4];
    basis(t, v);
    double q = 0.0;
    for (int j = 0; j < 4; ++j)
        for (int k = 0; k < 4; ++k) q += v[j] * fit.inv[j][k] * v[k];
    error = std::sqrt(std::max(q, 0.0));
}

// Evaluates the window centred on c at points from..to (0-based) at their own t.
void evaluateRange(const double* s, const WindowFit& fit, int c, int m, int from, int to,
                   double* ySm, double* eSm) {
    const double width = windowWidth(s, c, m);
    for (int i = from; i <= to; ++i) evaluateAt(fit, (s[i] - s[c]) / width, ySm[i], eSm[i]);
}

}  // namespace

void SMOERR(int n, int m, const double* s, const double* y, const double* w, double* ySm,
            double* eSm) {
    if (m >= kMaxNeighbours) {
        if (m > kMaxNeighbours) I05MES("SMOERR -W- Number of neighbours reduced to 100");
        m = kMaxNeighbours;
    }
    if (m < 1 || n < 2 * m + 1) {  // the window does not fit: values kept
        for (int i = 0; i < n; ++i) {
            ySm[i] = y[i];
            eSm[i] = std::fabs(w[i]);
        }
        return;
    }
    // First window, centred on point m+1 (element m): points 1..m+1.
    evaluateRange(s, fitWindow(s, y, w, m, m), m, m, 0, m, ySm, eSm);
    // Inner windows, each evaluated at its centre.
    for (int c = m + 1; c <= n - m - 1; ++c) {
        const WindowFit fit = fitWindow(s, y, w, c, m);
        evaluateAt(fit, 0.0, ySm[c], eSm[c]);
    }
    // Last window, centred on point n-m: points n-m+1..n.
    const int last = n - m - 1;
    evaluateRange(s, fitWindow(s, y, w, last, m), last, m, last + 1, n - 1, ySm, eSm);
}

void errestWindows(int n, int& m1, int& m2) {
    m1 = std::max(static_cast<int>(std::sqrt(static_cast<double>(n))), 2);
    m1 = std::min(m1, n / 2 - 1);
    m1 = std::min(m1, 51);
    m2 = std::max(m1 / 2, 2);
}

namespace {

double flatErrors(int n, const double* y, double* e) {
    for (int i = 0; i < n; ++i) e[i] = std::fabs(kFlatFraction * y[i]) + kTinyError;
    return -kFlatFraction * kFlatFraction;
}

}  // namespace

double ERREST(int n, const double* s, const double* y, double* e) {
    // A curve of fewer than 5 points has no room for the second smoothing
    // window: it gets the flat errors.
    if (n < 5) return flatErrors(n, y, e);
    int m1 = 0;
    int m2 = 0;
    errestWindows(n, m1, m2);
    std::vector<double> y1(n), w1(n, 1.0), y2(n), e2(n), y3(n), e3(n), r(n);
    for (int i = 0; i < n; ++i) y1[i] = std::log(std::fabs(y[i]) + kTinyError);
    SMOERR(n, m1, s, y1.data(), w1.data(), y2.data(), e2.data());
    SMOERR(n, m2, s, y2.data(), e2.data(), y3.data(), e3.data());
    for (int i = 0; i < n; ++i) r[i] = std::exp(y3[i]) - y[i];

    double stat = 0.0;
    double low = 0.0;
    double up = 0.0;
    int err = 0;
    if (!G02WALD1(r.data(), n, 0.01, stat, low, up, err)) return flatErrors(n, y, e);

    std::vector<double> a(n), b(n), eb(n);
    for (int i = 0; i < n; ++i) a[i] = std::fabs(r[i]);
    SMOERR(n, m1, s, a.data(), w1.data(), b.data(), eb.data());
    double sumE = 0.0;
    double sumY = 0.0;
    for (int i = 0; i < n; ++i) {
        e[i] = std::fabs(b[i]) + kTinyError;
        sumE += e[i] * e[i];
        sumY += y[i] * y[i];
    }
    writeList(-1, " ERREST ----- Errors estimated by polynimial smoothing");
    return sumY > 0.0 ? sumE / sumY : 0.0;
}
