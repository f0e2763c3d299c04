// Factorials and binomial coefficients: S03FACT (table of n! built on the
// first call) and S03NOC (C(m, n) by a running product).
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

namespace {

constexpr int kTableCap = 256;

struct FactorialState {
    bool started = false;
    int limit = 0;              // largest n whose factorial is a number
    std::vector<double> table;  // 0! .. min(limit, 256)!
};

FactorialState fact;

void startFactorials() {
    fact.limit = X02IMDC(16);
    const int top = std::min(fact.limit, kTableCap);
    fact.table.assign(static_cast<std::size_t>(std::max(top, 1)) + 1, 1.0);
    for (int i = 2; i <= top; ++i) {
        fact.table[static_cast<std::size_t>(i)] =
            fact.table[static_cast<std::size_t>(i - 1)] * static_cast<double>(i);
    }
    fact.started = true;
}

}  // namespace

namespace special {
void resetFactorials() { fact = FactorialState{}; }
}  // namespace special

double S03FACT(int n, int& err) {
    err = 0;
    if (n < 0) {
        special::message("S03FACT --W- Factorial of negative integer: [ " + special::intText(n) +
                         "! ]");
        err = 1;
        n = (n == INT_MIN) ? INT_MAX : -n;
    }
    if (!fact.started) startFactorials();
    if (n < static_cast<int>(fact.table.size())) return fact.table[static_cast<std::size_t>(n)];
    if (n > fact.limit) {
        special::message("S03FACT --E- Factorial overflows for [ " + special::intText(n) + "! ]");
        err = -1;
        return X02RMDC(5);
    }
    // Beyond the table but still a number: Stirling's formula with its correction.
    const double y = static_cast<double>(n) + 1.0;
    int lgErr = 0;
    return std::exp((y - 0.5) * std::log(y) + S14LGCF(y, lgErr) + special::kLnSqrt2Pi - y);
}

double S03NOC(int m, int n, int& err) {
    if (m < n || m < 0 || n < 0) {
        err = -1;
        special::message("S03NOC ---E- For C(m,n) must be  m >= n, m > 0, n > 0:");
        special::message("             m = " + special::intText(m) + ", n = " +
                         special::intText(n));
        return 0.0;
    }
    err = 0;
    const int k = std::min(n, m - n);
    if (k == 0) return 1.0;
    if (k == 1) return static_cast<double>(m);
    const double rMin = X02RMDC(3);
    const double mk = static_cast<double>(m - k);
    double c = mk + 1.0;
    for (int i = 2; i <= k; ++i) {
        // c * (m - k + i) / i written as c + 1/r, r = (i/(m-k))/c.
        const double r = (static_cast<double>(i) / mk) / c;
        if (r < rMin) {
            special::message("S03NOC --E- Float-point overflow for C(" + special::intText(m) + "," +
                             special::intText(n) + ")");
            err = -3;
            return X02RMDC(4);
        }
        c += 1.0 / r;
    }
    if (c > static_cast<double>(X02IMDC(12))) err = -2;
    return c;
}
