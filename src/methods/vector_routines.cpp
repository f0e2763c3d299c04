// The vector routines over the free variables.
#include "methods/vector_routines.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"

#include <algorithm>
#include <cmath>

namespace {

bool isFree(int i) { return E4DataSet.iFixer(i) != 0; }
// No vector of the data set holds more than kMaxVar entries.
int count(int n) { return std::min(n, kMaxVar); }

double smallestNormal() {
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    return rMin;
}

}  // namespace

double E4NRM1(const double* v, int n, double& sq) {
    n = count(n);
    sq = 0.0;
    if (n < 1) return 0.0;
    if (n == 1) {
        // The one component counts whether it is free or not.
        sq = v[0] * v[0];
        return std::fabs(v[0]);
    }
    double m = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (isFree(i)) m = std::max(m, std::fabs(v[i - 1]));
    }
    if (m == 0.0) return 0.0;
    double sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) continue;
        const double t = v[i - 1] / m;
        sum += t * t;
    }
    sq = m * m * sum;
    return m * std::sqrt(sum);
}

double E4DOT1(const double* a, const double* b, int n) {
    n = count(n);
    double sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (isFree(i)) sum += a[i - 1] * b[i - 1];
    }
    return sum;
}

void E4VAD1(double* r, const double* a, char op, const double* b, int n) {
    n = count(n);
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) {
            r[i - 1] = 0.0;
        } else {
            r[i - 1] = op == '+' ? a[i - 1] + b[i - 1] : a[i - 1] - b[i - 1];
        }
    }
}

void E4STP1(const double* x, double* y, const double* d, int n, double sign, double s, int& same) {
    n = count(n);
    same = 1;
    for (int i = 1; i <= n; ++i) {
        const double old = x[i - 1];
        if (!isFree(i)) {
            y[i - 1] = old;
            continue;
        }
        y[i - 1] = old + sign * d[i - 1] * s;
        if (y[i - 1] != old) same = 0;
    }
}

void E4RAT1(const double* a, const double* b, int n, double& r) {
    n = count(n);
    const double rMin = smallestNormal();
    double largest = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) continue;
        double aa = std::fabs(a[i - 1]), bb = std::fabs(b[i - 1]);
        if (aa == 0.0) aa = rMin;
        if (bb == 0.0) bb = rMin;
        largest = std::max(largest, aa / bb);
    }
    r = largest == 0.0 ? 1.0 : 1.0 / largest;
}
