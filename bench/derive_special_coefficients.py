#!/usr/bin/python3
# Derives the coefficient tables of src/numlib/special_series.cpp from the
# definitions of the functions, in 60-digit arithmetic (Debian python3-mpmath):
#   the three Chebyshev series (gammaSeries, lgammaCorrSeries, ln1pSeries).
# Run:  /usr/bin/python3 bench/derive_special_coefficients.py > /tmp/coef.txt
# and compare with the tables in the source.  Nothing in the build runs this.
import mpmath as mp

mp.mp.dps = 60


def chebyshev(f, n, nodes=160):
    """First n Chebyshev coefficients c(1..n) of f on [-1, 1], in the
    convention value = c(1)/2 + sum_{k>=2} c(k) T(k-1)(t)."""
    th = [mp.pi * (j + mp.mpf(1) / 2) / nodes for j in range(nodes)]
    fv = [f(mp.cos(a)) for a in th]
    return [2 * mp.fsum(fv[j] * mp.cos(k * th[j]) for j in range(nodes)) / nodes
            for k in range(n)]


def gamma_series(t):
    # Gamma(1 + y) - 0.9375 for y in [0, 1], t = 2y - 1.
    return mp.gamma(1 + (t + 1) / 2) - mp.mpf(15) / 16


def lgamma_corr_series(t):
    # x * c(x), c the correction of Stirling's formula, x >= 10,
    # t = 2 (10/x)^2 - 1.
    x = 10 / mp.sqrt((t + 1) / 2)
    c = mp.loggamma(x) - ((x - mp.mpf(1) / 2) * mp.log(x) - x + mp.log(2 * mp.pi) / 2)
    return x * c


def ln1p_series(t):
    # (1 - ln(1 + x)/x)/x for |x| <= 0.375, t = x/0.375.
    x = t * mp.mpf(3) / 8
    return (1 - mp.log1p(x) / x) / x


def show(name, values):
    print(f"// {name}: {len(values)} terms")
    for v in values:
        print(f"    {mp.nstr(v, 20, min_fixed=1, max_fixed=0)},")


if __name__ == "__main__":
    show("gammaSeries", chebyshev(gamma_series, 42))
    show("lgammaCorrSeries", chebyshev(lgamma_corr_series, 15))
    show("ln1pSeries", chebyshev(ln1p_series, 43))
