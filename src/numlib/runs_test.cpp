// The Wald-Wolfowitz runs test: G02WALD1, G02WALD2 (counting, then the exact,
// normal or Beta critical values) and G02WALD3 (exact distribution of the runs).
#include "numlib/statistical_tests.h"

#include "core/console_layer.h"
#include "core/machine_constants.h"
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr int kFewestPoints = 20;
constexpr int kExactLimit = 50;        // larger class up to this: exact critical numbers
constexpr double kUnbalanced = 0.05;   // m/M up to this: exact as well
constexpr double kBalanced = 0.2;      // m/M above this: normal approximation

struct RunCount {
    int below = 0;
    int above = 0;
    int runs = 0;
};

// A point on the centre counts as below when it is the first, as above
// otherwise, and never ends a run.
RunCount countRuns(const double* x, int n, double centre) {
    RunCount c;
    const double d1 = centre - x[0];
    int sign = d1 >= 0.0 ? 1 : -1;
    if (sign > 0) ++c.below; else ++c.above;
    c.runs = 1;
    for (int i = 1; i < n; ++i) {
        const double d = centre - x[i];
        if (sign * d < 0.0) {
            sign = -sign;
            ++c.runs;
        }
        if (d <= 0.0) ++c.above; else ++c.below;
    }
    return c;
}

void exactBounds(int m, int M, double a, int runs, double& stat, double& low, double& up) {
    int lo = 0;
    int hi = 0;
    G02WALD3(m, M, a, lo, hi);
    low = lo;
    up = hi;
    stat = runs;
}

void normalBounds(double m, double M, double a, int runs, double& stat, double& low,
                  double& up) {
    const double t = 2.0 * m * M;
    const double s = m + M;
    const double sd = std::sqrt((t - s) * t / s / s / (s - 1.0));
    stat = (runs - (t / s + 1.0)) / sd;
    int err = 0;
    low = S15IND(a, err) - 0.5 / sd;
    up = S15IND(1.0 - a, err) + 0.5 / sd;
}

void betaBounds(double m, double M, double a, int runs, double& stat, double& low,
                double& up) {
    const double t = 2.0 * m * M;
    const double s = m + M;
    stat = 1.0 - (t / s) / (s - 1.0);
    const double q = runs - 2.0;
    const double r = (t - s) * (s - 1.0) / (m * (m - 1.0) + M * (M - 1.0));
    int err = 0;
    low = S14IBETA(a, q, 1.0 + r - q, err);
    up = 1.0 - S14IBETA(a, r - q, 1.0 + q, err);
}

}  // namespace

bool G02WALD1(const double* x, int n, double alpha, double& stat, double& low, double& up,
              int& err) {
    err = 0;
    if (n < kFewestPoints) {
        I05MES(" G02WALD1 -E- Number of data points less than 20.");
        err = -1;
        return true;
    }
    double sum = 0.0;
    for (int i = 0; i < n; ++i) sum += x[i];
    return G02WALD2(x, n, sum / n, alpha, stat, low, up, err);
}

bool G02WALD2(const double* x, int n, double centre, double alpha, double& stat, double& low,
              double& up, int& err) {
    if (n < kFewestPoints) {
        I05MES(" G02WALD2 -E- Number of data points less than 20.");
        stat = X02RMDC(5);
        low = up = 0.0;
        err = -1;
        return false;
    }
    if (!(alpha > 0.0 && alpha < 1.0)) {
        special::message(" G02WALD2 -E- Wrong significance level specified: " +
                         special::realTextSingle(alpha, 5));
        I05MES("              Must be in the range (0,1).");
        stat = low = up = -1.0;
        err = -2;
        return false;
    }
    const RunCount c = countRuns(x, n, centre);
    const int m = std::min(c.below, c.above);
    const int M = std::max(c.below, c.above);
    if (m < 2 || c.runs < 3) {
        stat = 1.0;
        low = up = 0.0;
        err = 1;
        return false;
    }
    err = 0;
    const double rho = static_cast<double>(m) / M;
    const double a = 0.5 * alpha;
    if (M <= kExactLimit || rho <= kUnbalanced) {
        exactBounds(m, M, a, c.runs, stat, low, up);
    } else if (rho > kBalanced) {
        normalBounds(m, M, a, c.runs, stat, low, up);
    } else {
        betaBounds(m, M, a, c.runs, stat, low, up);
    }
    return low < stat && stat < up;
}

void G02WALD3(int n1, int n2, double alpha, int& low, int& up) {
    if (n1 > n2) std::swap(n1, n2);
    const int N = n1 + n2;
    const int rmax = n1 < n2 - 1 ? 2 * n1 + 1 : 2 * n1;
    low = 1;
    up = rmax;
    if (rmax < 2) return;
    int err = 0;
    const double D = S03NOC(N, n1, err);
    double cum = 0.0;
    bool lowFound = false;
    for (int r = 2; r <= rmax; ++r) {
        int k = 0;
        double f = 0.0;
        if (r % 2 == 0) {
            k = r / 2;
            f = 2.0;
        } else {
            k = (r - 1) / 2;
            f = static_cast<double>(N) / k - 2.0;
        }
        cum += S03NOC(n1 - 1, k - 1, err) * S03NOC(n2 - 1, k - 1, err) * f / D;
        if (!lowFound && cum >= alpha) {
            low = r;
            lowFound = true;
        }
        if (cum > 1.0 - alpha) {
            up = r - 1;
            break;
        }
    }
}
