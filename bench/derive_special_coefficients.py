#!/usr/bin/python3
# Derives the coefficient tables of src/numlib/special_series.cpp from the
# definitions of the functions, in 60-digit arithmetic (Debian python3-mpmath):
#   - the three Chebyshev series (gammaSeries, lgammaCorrSeries, ln1pSeries),
#   - the rational form of Y1 on (4, 8] around its second zero y1.
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


def y1_rational(nd=7, dd=7, points=240):
    """Rational N(y)/D(y), y = x^2, D monic, fitted in relative error to
    (Y1(x) - (2/pi) ln(x/y1) J1(x)) * x / (x^2 - y1^2) on [4, 8]."""
    xy1 = mp.mpf('5.4296810407941351328')

    def target(x):
        j = mp.besselj(1, x)
        y = mp.bessely(1, x)
        return (y - 2 / mp.pi * mp.log(x / xy1) * j) * x / ((x - xy1) * (x + xy1))

    xs = [6 - 2 * mp.cos(mp.pi * (k + mp.mpf(1) / 2) / points) for k in range(points)]
    rows, rhs = [], []
    for x in xs:
        y = x * x
        r = target(x)
        w = 1 / r
        rows.append([-(y ** (nd - i)) * w for i in range(nd + 1)]
                    + [r * y ** (dd - 1 - i) * w for i in range(dd)])
        rhs.append(-r * y ** dd * w)
    sol = mp.qr_solve(mp.matrix(rows), mp.matrix(rhs))[0]
    coef = [sol[i] for i in range(nd + dd + 1)]
    worst = 0
    for k in range(1001):
        x = 4 + 4 * mp.mpf(k) / 1000
        y = x * x
        num = mp.mpf(0)
        for i in range(nd + 1):
            num = num * y + coef[i]
        den = mp.mpf(1)
        for i in range(dd):
            den = den * y + coef[nd + 1 + i]
        worst = max(worst, abs(num / den / target(x) - 1))
    return coef[:nd + 1], coef[nd + 1:], worst


def show(name, values):
    print(f"// {name}: {len(values)} terms")
    for v in values:
        print(f"    {mp.nstr(v, 20, min_fixed=1, max_fixed=0)},")


if __name__ == "__main__":
    show("gammaSeries", chebyshev(gamma_series, 42))
    show("lgammaCorrSeries", chebyshev(lgamma_corr_series, 15))
    show("ln1pSeries", chebyshev(ln1p_series, 43))
    num, den, worst = y1_rational()
    show("Y1 on (4,8]: numerator, highest power first", num)
    show("Y1 on (4,8]: denominator below the leading y^7", den)
    print(f"// largest relative error of the Y1 form on [4, 8]: {mp.nstr(worst, 3)}")
