// Formulas of the fourteen test problems: testProblemValue and the value
// routine of each problem, spiralAngle, and the private state's instance.
#include "objective/test_problems.h"

#include <cmath>

namespace {

// Constants written to the digits the problems were defined with.
constexpr double kSqrt5 = 2.23606797749979;
constexpr double kSqrt10 = 3.1622776601683795;
constexpr double kInverseTwoPi = 0.15915494309189535;
constexpr double kSqrtPi = 1.772453850905516;

double square(double v) { return v * v; }

// Sum of the squares of the first m residuals.
double sumOfSquares(int m) {
    const auto& r = targetFunctionState().residual;
    double f = 0.0;
    for (int k = 0; k < m; ++k) f += square(r[static_cast<std::size_t>(k)]);
    return f;
}

double& residual(int k) { return targetFunctionState().residual[static_cast<std::size_t>(k - 1)]; }

// u(i) of problem 1: every third variable divided by the scaling factor.
double rosenbrockArgument(const double* x, int i) {
    return i % 3 == 0 ? x[i - 1] / targetFunctionState().scale : x[i - 1];
}

// p - q of the polynomial approximations at grid point t: the polynomial of
// the arguments less the target polynomial with coefficients `coefficient`.
double polynomialGap(const double* x, int n, double t, double coefficient, double first) {
    double p = x[0];
    double q = first;
    double power = 1.0;
    for (int i = 2; i <= n; ++i) {
        power *= t;
        p += x[i - 1] * power;
        q += coefficient * power;
    }
    return p - q;
}

}  // namespace

TargetFunctionState& targetFunctionState() {
    static TargetFunctionState state;
    return state;
}

double rosenbrockValue(const double* x, int n) {
    double f = 0.0;
    if (targetFunctionState().modification == 0) {
        for (int k = 1; k <= n / 2; ++k) {
            double a = rosenbrockArgument(x, 2 * k - 1);
            double b = rosenbrockArgument(x, 2 * k);
            f += square(1.0 - a) + square(10.0 * (b - a * a));
        }
        return f;
    }
    f = square(1.0 - rosenbrockArgument(x, 1));
    for (int i = 2; i <= n; ++i) {
        double prev = rosenbrockArgument(x, i - 1);
        f += square(10.0 * (rosenbrockArgument(x, i) - prev * prev));
    }
    return f;
}

double powellWoodValue(const double* x, int n) {
    for (int k = 1; k <= n / 4; ++k) {
        double a = x[4 * k - 4], b = x[4 * k - 3], c = x[4 * k - 2], d = x[4 * k - 1];
        residual(4 * k - 3) = a + 10.0 * b;
        residual(4 * k - 2) = kSqrt5 * (c - d);
        residual(4 * k - 1) = square(b - 2.0 * c);
        residual(4 * k) = kSqrt10 * square(a - d);
    }
    return sumOfSquares(4 * (n / 4));
}

double woodValue(const double* x) {
    double x1 = x[0], x2 = x[1], x3 = x[2], x4 = x[3];
    return 100.0 * square(x1 * x1 - x2 * x2) + square(1.0 - x1) + 90.0 * square(x3 * x3 - x4) +
           square(1.0 - x3) + 10.1 * (square(1.0 - x2) + square(1.0 - x4)) +
           19.8 * (1.0 - x2) * (1.0 - x4);
}

double trigonometricValue(const double* x, int n) {
    for (int i = 1; i <= n; ++i) {
        double sine = std::sin(x[i - 1] - 1.0);
        double bend = i * (1.0 - std::cos(x[i - 1] - 1.0));
        double sum = 0.0;
        for (int j = 1; j <= n; ++j) sum += std::cos(x[j - 1] - 1.0) - sine + bend;
        residual(i) = n - sum;
    }
    residual(n + 1) = (1.0 - x[0]) * 0.001 * 10.0;
    for (int i = 2; i <= n; ++i) residual(n + i) = (x[i - 1] - square(x[i - 2])) * 3.333 * 10.0 * 0.001;
    return sumOfSquares(2 * n);
}

double spiralAngle(double x1, double x2) {
    if (x1 > 0.0) return std::atan(x2 / x1) * kInverseTwoPi;
    if (x1 < 0.0) return std::atan(x2 / x1) * kInverseTwoPi + 0.5;
    return 0.25;
}

double spiralChuteValue(const double* x) {
    double t = spiralAngle(x[0], x[1]);
    residual(1) = 10.0 * (x[2] - 10.0 * t);
    residual(2) = 10.0 * (std::sqrt(x[0] * x[0] + x[1] * x[1]) - 1.0);
    residual(3) = x[2];
    return sumOfSquares(3);
}

double cunningProblemValue(const double* x) {
    return (square(x[0] - x[1]) - 2.0) / (square(x[0] + x[1]) + 2.0);
}

double friedenSquaredValue(const double* x) {
    double x1 = x[0], x2 = x[1];
    return (0.7525 * x2 + 0.2097) * x2 - 0.9322 + (0.2575 * x1 - 0.8574 * x2 - 0.1726) * x1;
}

double userSquaredValue(const double* x, int n) {
    const auto& s = targetFunctionState();
    double linear = 0.0, quadratic = 0.0;
    for (int i = 1; i <= n; ++i) {
        linear += s.linearTerm(i) * x[i - 1];
        double row = 0.0;
        for (int j = 1; j <= n; ++j) row += s.hessian(i, j) * x[j - 1];
        quadratic += x[i - 1] * row;
    }
    return linear + s.constantTerm + 0.5 * quadratic;
}

double sinusoidalChuteValue(const double* x, int n) {
    double w = kSqrtPi * x[0];
    double c = std::cos(w), s = std::sin(w);
    if (n == 2) return 100.0 * square(x[1] - s) + square(1.0 - x[0]);
    double f = 100.0 * square(x[n - 1] - std::pow(c, n - 2)) + square(1.0 - x[0]);
    double sum = 0.0;
    double power = 1.0;  // (cos w)^(i-2)
    for (int i = 2; i <= n - 1; ++i) {
        sum += square(x[i - 1] - power * s);
        power *= c;
    }
    return f + 100.0 * sum;
}

double oneDimensionalValue(const double* x) {
    return (0.01 * x[0] * x[0] - 2.0) * x[0] * 0.1 - 5.0;
}

double exponentialFitValue(const double* x) {
    double f = 0.0;
    for (int k = 1; k <= 10; ++k) {
        double t = 0.2 * k;
        f += square(std::exp(-t) + 2.0 * std::exp(-2.0 * t) - x[2] * std::exp(-x[3] * t) -
                    x[0] * std::exp(-x[1] * t));
    }
    return f;
}

double polynomialFitValue(const double* x, int n) {
    double f = 0.0;
    for (int j = 1; j <= 101; ++j) f += square(polynomialGap(x, n, 0.01 * (j - 1), 1.0, 1.0));
    return f;
}

double nonsmoothPolynomialValue(const double* x, int n) {
    double share = 1.0 / n;
    double f = 0.0;
    for (int j = 1; j <= 101; ++j) f += std::fabs(polynomialGap(x, n, 0.01 * (j - 1), share, share));
    return f;
}

double testProblemValue(int code, const double* x, int n) {
    switch (code) {
        case 1: return rosenbrockValue(x, n);
        case 2: return powellWoodValue(x, n);
        case 3: return woodValue(x);
        case 4: return trigonometricValue(x, n);
        case 5: return spiralChuteValue(x);
        case 6: return cunningProblemValue(x);
        case 7: return friedenSquaredValue(x);
        case 8: return userSquaredValue(x, n);
        case 9: return sinusoidalChuteValue(x, n);
        case 10: return oneDimensionalValue(x);
        case 11: return exponentialFitValue(x);
        case 12: return polynomialFitValue(x, n);
        case 13: return nonsmoothPolynomialValue(x, n);
        default: return 0.0;  // problem 14, the constant function
    }
}
