// Chebyshev series: C06CHEB (value by Clenshaw's recurrence) and C06NTOS
// (number of terms for a given accuracy).
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"

#include <cmath>
#include <string>

namespace {

constexpr int kManyTerms = 1000;

struct ChebyshevState {
    bool started = false;
    double tLimit = 0.0;  // 1 + eps: the widest argument accepted
};

ChebyshevState cheb;

}  // namespace

namespace special {
void resetChebyshev() { cheb = ChebyshevState{}; }
}  // namespace special

double C06CHEB(double t, const double* c, int n) {
    if (!cheb.started) {
        cheb.tLimit = 1.0 + X02RMDC(2);
        cheb.started = true;
    }
    if (n < 1) {
        special::message("C06CHEB -E- Number of terms less than 0: " + special::intText(n));
        special::fatalStop(" C06CHEB FATAL ERROR");
    }
    if (n > kManyTerms) {
        special::message("C06CHEB -W- Number of terms greater than 1000: " +
                         special::intText(n));
    }
    if (std::fabs(t) > cheb.tLimit) {
        special::message("C06CHEB -E- Argument is outside (-1,+1): " + special::realText(t, 7));
        special::fatalStop(" C06CHEB FATAL ERROR");
    }
    double b0 = 0.0;
    double b1 = 0.0;
    double b2 = 0.0;
    const double twoT = 2.0 * t;
    for (int k = n; k >= 1; --k) {
        b2 = b1;
        b1 = b0;
        b0 = twoT * b1 - b2 + c[k - 1];
    }
    return 0.5 * (b0 - b2);
}

int C06NTOS(const double* c, int n, double tol) {
    if (n < 1) {
        special::message("C06NTOS --E- Number of coefficients is less than 1");
        special::fatalStop(" FATAL ERROR");
    }
    double sum = 0.0;
    int k = n;
    for (; k >= 1; --k) {
        sum += std::fabs(c[k - 1]);
        if (sum > tol) break;
    }
    if (k < 1) k = 1;  // even the whole series stays within tol
    if (k == n) special::message("C06NTOS --W- Series too short for specified accuracy");
    return k;
}
