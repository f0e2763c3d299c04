// Gauss-Legendre quadrature of the scattering fit: GAUSSQ, the table of its
// sixteen rules (computed on first call), gaussNodes, gaussRulePoints, resetGaussLegendre.
#include "scatter/gauss_legendre.h"

#include <cmath>

namespace {

constexpr int kRuleCount = 16;
constexpr int kRulePoints[kRuleCount] = {1, 2, 3, 4, 5, 6, 8, 10, 12, 14, 16, 20, 24, 32, 48, 64};
constexpr int kLargestRule = 64;
constexpr int kMaxHalf = (kLargestRule + 1) / 2;
constexpr int kNewtonLimit = 100;

// One half of each symmetric rule: the non-negative nodes in descending
// order and their weights on [-1, 1]; an odd rule ends with the node 0.
struct GaussTable {
    bool ready = false;
    double node[kRuleCount][kMaxHalf] = {};
    double weight[kRuleCount][kMaxHalf] = {};
};

GaussTable table;

// P_n(x) and P_{n-1}(x) by the three-term recurrence, in extended precision.
void legendrePair(int n, long double x, long double& pn, long double& pnm1) {
    long double p0 = 1.0L;
    long double p1 = x;
    if (n == 0) {
        pn = p0;
        pnm1 = 0.0L;
        return;
    }
    for (int k = 1; k < n; ++k) {
        const long double p2 = ((2 * k + 1) * x * p1 - k * p0) / (k + 1);
        p0 = p1;
        p1 = p2;
    }
    pn = p1;
    pnm1 = p0;
}

// Derivative of P_n at x from P_n and P_{n-1}.
long double legendreSlope(int n, long double x, long double pn, long double pnm1) {
    return n * (x * pn - pnm1) / (x * x - 1.0L);
}

// The i-th largest zero of P_n (i = 1..(n+1)/2) by Newton's method from the
// asymptotic estimate, and its weight 2/((1 - x^2) P_n'(x)^2).
void legendreZero(int n, int i, double& node, double& weight) {
    const long double pi = 3.141592653589793238462643383279502884L;
    long double x = std::cos(pi * (i - 0.25L) / (n + 0.5L));
    if (2 * i - 1 == n) x = 0.0L;  // the middle zero of an odd rule is exact
    long double pn = 0.0L;
    long double pnm1 = 0.0L;
    for (int iter = 0; iter < kNewtonLimit && x != 0.0L; ++iter) {
        legendrePair(n, x, pn, pnm1);
        const long double dx = pn / legendreSlope(n, x, pn, pnm1);
        x -= dx;
        if (std::fabs(dx) <= 4.0L * x * 1.0e-19L) break;
    }
    legendrePair(n, x, pn, pnm1);
    const long double slope = legendreSlope(n, x, pn, pnm1);
    node = static_cast<double>(x);
    weight = static_cast<double>(2.0L / ((1.0L - x * x) * slope * slope));
}

void buildTable() {
    for (int r = 0; r < kRuleCount; ++r) {
        const int n = kRulePoints[r];
        for (int i = 1; i <= (n + 1) / 2; ++i) {
            legendreZero(n, i, table.node[r][i - 1], table.weight[r][i - 1]);
        }
    }
    table.ready = true;
}

// Row of the table for a request of n points (n already cut to 64).
int ruleRow(int n) {
    for (int r = 0; r < kRuleCount; ++r) {
        if (kRulePoints[r] >= n) return r;
    }
    return kRuleCount - 1;
}

}  // namespace

int gaussRulePoints(int n) {
    if (n >= kLargestRule) return kLargestRule;
    return kRulePoints[ruleRow(n)];
}

int gaussNodes(double a, double b, int n, double* node, double* weight, int& status) {
    if (!table.ready) buildTable();
    status = n > kLargestRule ? 1 : 0;
    const int row = ruleRow(n >= kLargestRule ? kLargestRule : n);
    const int points = kRulePoints[row];
    const int half = (points + 1) / 2;
    const double h = (b - a) / 2.0;
    const double c = (a + b) / 2.0;
    const double* x = table.node[row];
    const double* w = table.weight[row];
    int k = 0;
    // From the node next to b inward: c + h x_1, ..., c + h x_half.
    for (int i = 0; i < half; ++i, ++k) {
        node[k] = c + h * x[i];
        weight[k] = h * w[i];
    }
    // Then outward to a, without the middle node of an odd rule a second time.
    for (int i = points / 2 - 1; i >= 0; --i, ++k) {
        node[k] = c - h * x[i];
        weight[k] = h * w[i];
    }
    return points;
}

double GAUSSQ(double a, double b, int n, Integrand f, int& status) {
    double node[kLargestRule];
    double weight[kLargestRule];
    const int points = gaussNodes(a, b, n, node, weight, status);
    double sum = 0.0;
    for (int k = 0; k < points; ++k) sum += weight[k] * f(node[k]);
    return sum;
}

void resetGaussLegendre() { table = GaussTable{}; }
