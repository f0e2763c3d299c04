// E4TFG1: the analytical gradients of Rosenbrock, Powell-Wood and Wood, and
// the user's gradient hook.
#include "objective/gradient.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "objective/test_problems.h"

#include <array>

namespace {

double cube(double v) { return v * v * v; }

// Problem 1.  Every third variable enters as u = x/s; the derivatives are
// those with respect to u, so the factor s of those variables is not
// applied again.
void rosenbrockGradient(const double* x, int n, double* g) {
    const double s = targetFunctionState().scale;
    auto u = [&](int i) { return i % 3 == 0 ? x[i - 1] / s : x[i - 1]; };
    if (targetFunctionState().modification == 0) {
        for (int k = 1; k <= n / 2; ++k) {
            double a = u(2 * k - 1), d = u(2 * k) - a * a;
            g[2 * k - 2] = -2.0 * (1.0 - a) - 400.0 * a * d;
            g[2 * k - 1] = 200.0 * d;
        }
        return;
    }
    g[0] = -2.0 * (1.0 - x[0]) - 400.0 * (x[1] - x[0] * x[0]) * x[0];
    for (int i = 2; i <= n; ++i) {
        g[i - 1] = 200.0 * (u(i) - u(i - 1) * u(i - 1));
        if (i < n) g[i - 1] -= 400.0 * (u(i + 1) - u(i) * u(i)) * u(i);
    }
}

// Problem 2, block by block: f = p^2 + 5 q^2 + r^4 + 10 t^4.
void powellWoodGradient(const double* x, int n, double* g) {
    for (int k = 1; k <= n / 4; ++k) {
        double a = x[4 * k - 4], b = x[4 * k - 3], c = x[4 * k - 2], d = x[4 * k - 1];
        double t = a - d, p = a + 10.0 * b, q = c - d, r = b - 2.0 * c;
        g[4 * k - 4] = 2.0 * p + 40.0 * cube(t);
        g[4 * k - 3] = 20.0 * p + 4.0 * cube(r);
        g[4 * k - 2] = 10.0 * q - 8.0 * cube(r);
        g[4 * k - 1] = -10.0 * q - 40.0 * cube(t);
    }
}

// Problem 3.
void woodGradient(const double* x, double* g) {
    double x1 = x[0], x2 = x[1], x3 = x[2], x4 = x[3];
    double w = 400.0 * (x1 * x1 - x2 * x2), v = x3 * x3 - x4;
    g[0] = x1 * w - 2.0 * (1.0 - x1);
    g[1] = -x2 * w - 20.2 * (1.0 - x2) + 19.8 * (x4 - 1.0);
    g[2] = 360.0 * v * x3 - 2.0 * (1.0 - x3);
    g[3] = -180.0 * v - 20.2 * (1.0 - x4) + 19.8 * (x2 - 1.0);
}

bool argumentsScaled() {
    return E4DataSet.iStat(row::xScaleSet) != 0 && E4DataSet.iStat(row::xScaled) != 0;
}

}  // namespace

void E4TFG1(double* x, double& /*f*/, double* g, int& err) {
    E4DataSetRecord& d = E4DataSet;
    const int code = d.iStat(row::problemCode);
    const int n = d.nVar();
    const int least = code == 1 ? 2 : 4;  // the formulas' smallest dimension
    if (code < 1 || code > 3 || n < least || n > kMaxVar) {
        E04MES("E4TFG1 -E- Analytical gradient is not available for this function!");
        d.iStat(row::gradientScheme) = 0;
        err = 1;
        return;
    }
    err = 0;
    // The search sees x times xScale when the arguments are scaled: the
    // formulas take the problem's own coordinates, and the chain rule
    // divides by the factor again.
    const bool scaled = argumentsScaled();
    std::array<double, kMaxVar> u{};
    for (int i = 1; i <= n; ++i) {
        u[static_cast<std::size_t>(i - 1)] = scaled && d.iFixer(i) != 0 ? x[i - 1] / d.xScale(i) : x[i - 1];
    }
    switch (code) {
        case 1: rosenbrockGradient(u.data(), n, g); break;
        case 2: powellWoodGradient(u.data(), n, g); break;
        default: woodGradient(u.data(), g); break;
    }
    if (!scaled) return;
    for (int i = 1; i <= n; ++i) {
        if (d.iFixer(i) != 0) g[i - 1] /= d.xScale(i);
    }
}

void userGradient(double* /*x*/, double& /*f*/, double* /*g*/, int& err) { err = 1; }
