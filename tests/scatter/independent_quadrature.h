// Reference quadrature of the scattering tests: simpson, a composite Simpson
// rule that shares nothing with the Gauss-Legendre table under test.
#pragma once

// Integral of f on [a, b] with an even number of intervals.
template <class F>
double simpson(F f, double a, double b, int intervals) {
    const double h = (b - a) / intervals;
    double sum = f(a) + f(b);
    for (int i = 1; i < intervals; ++i) sum += (i % 2 == 1 ? 4.0 : 2.0) * f(a + i * h);
    return sum * h / 3.0;
}
