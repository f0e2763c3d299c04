#!/usr/bin/python3
# Writes tests/data/special_functions_reference.tsv: reference values of the
# special functions computed with Debian's python3-mpmath (50 significant
# digits and more) and the exact integer arithmetic of Python, and the
# critical values of the runs-test examples computed with python3-scipy and
# exact fractions.  Nothing of the program under test takes part.
# Run from the repository root:
#     /usr/bin/python3 tests/data/make_special_reference.py > tests/data/special_functions_reference.tsv
import math
import sys
from fractions import Fraction

import mpmath as mp
import scipy
import scipy.special as sps

mp.mp.dps = 50

rows = []


def emit(name, args, value):
    cols = [repr(float(a)) if not isinstance(a, int) else str(a) for a in args]
    cols += ["-"] * (3 - len(cols))
    rows.append("\t".join([name] + cols + [repr(float(value))]))


def x_of(a):
    # the exact binary value of the argument as the program receives it
    return mp.mpf(float(a))


# --- factorials and binomial coefficients ----------------------------------
for n in [0, 1, 2, 5, 10, 12, 13, 20, 21, 50, 100, 150, 169, 170]:
    emit("S03FACT", [n], math.factorial(n))
for m, n in [(0, 0), (5, 2), (10, 5), (10, 7), (40, 20), (52, 5), (100, 50),
             (1000, 3), (1000, 500), (1020, 510)]:
    emit("S03NOC", [m, n], math.comb(m, n))

# --- ln(1 + x) ---------------------------------------------------------------
for x in [-0.9999999, -0.9, -0.5, -0.375, -0.37499999, -0.1, -1e-5, -1e-300, 1e-300,
          1e-10, 1e-3, 0.2, 0.37499999, 0.375, 0.37500001, 1.0, 10.0, 1e10, 1e300]:
    emit("S05LN1PX", [x], mp.log1p(x_of(x)))


# --- Stirling's correction ---------------------------------------------------
def stirling_correction(x):
    x = x_of(x)
    if x < 1000:
        with mp.workdps(80):
            return mp.loggamma(x) - ((x - mp.mpf(1) / 2) * mp.log(x) - x + mp.log(2 * mp.pi) / 2)
    # the asymptotic series converges to far beyond double precision here
    s = mp.mpf(0)
    for k in range(1, 12):
        s += mp.bernoulli(2 * k) / (2 * k * (2 * k - 1) * x ** (2 * k - 1))
    return s


for x in [10.0, 10.5, 12.0, 15.0, 20.0, 50.0, 100.0, 999.0, 1000.0, 1e4, 1e7, 67108863.0,
          67108865.0, 1e8, 1e10, 1e100, 1e306, 3.7e306]:
    emit("S14LGCF", [x], stirling_correction(x))

# --- Gamma -------------------------------------------------------------------
gamma_points = [1e-300, 1e-10, 1e-3, 0.5, 1.0, 1.5, 2.0, 2.5, 3.7, 5.0, 9.99, 10.0,
                10.0000001, 10.5, 11.99, 12.0, 12.5, 20.0, 50.0, 100.0, 170.0, 171.0, 171.6,
                -0.5, -0.999999, -1.000001, -1.5, -2.5, -5.5, -9.5, -9.999999, -10.5,
                -20.5, -50.5, -100.5, -150.3, -169.5, -170.5]
for x in gamma_points:
    emit("S14GAM", [x], mp.gamma(x_of(x)))
for x in gamma_points:
    emit("S14GAM2", [x], mp.gamma(x_of(x)))

# --- ln |Gamma| ----------------------------------------------------------------
for x in [1e-300, 1e-17, 1e-10, 0.1, 0.5, 0.5000001, 0.6, 0.6796874, 0.6796875, 0.68, 0.9,
          0.99, 1.01, 1.5, 1.50001, 1.99, 2.01, 2.5, 3.9, 4.0, 4.01, 8.0, 12.0, 12.0001, 20.0,
          100.0, 1e5, 1e10, 1e100, 1e305, 2.5e305, -0.5, -1.5, -2.5, -9.5, -10.5, -11.3,
          -100.25, -1000.5, -1000000.5]:
    X = x_of(x)
    emit("S14LGAM", [x], mp.loggamma(X) if X > 0 else mp.log(abs(mp.gamma(X))))

# --- ln Beta -------------------------------------------------------------------
for a, b in [(0.5, 0.5), (1.0, 2.0), (2.0, 3.0), (0.1, 5.0), (9.5, 9.9), (5.0, 15.0),
             (15.0, 5.0), (0.001, 100.0), (10.0, 10.0), (10.0, 100.0), (50.0, 50.0),
             (1e3, 1e5), (1e-5, 1e5), (20.0, 1e10), (3.5, 1e6)]:
    A, B = x_of(a), x_of(b)
    emit("S14LBETA", [a, b], mp.loggamma(A) + mp.loggamma(B) - mp.loggamma(A + B))

# --- incomplete Beta ratio -------------------------------------------------------
for a, b in [(0.5, 0.5), (1.0, 1.0), (2.0, 2.0), (0.1, 10.0), (10.0, 0.1), (2.5, 7.0),
             (7.0, 2.5), (30.0, 40.0), (100.0, 100.0), (1.0, 5.0), (5.0, 1.0), (0.01, 0.01),
             (3.0, 3.5), (1.5, 40.0)]:
    for x in [0.0, 1e-10, 0.01, 0.1, 0.2, 0.35, 0.5, 0.65, 0.79, 0.8, 0.9, 0.999, 1.0]:
        v = mp.betainc(x_of(a), x_of(b), 0, x_of(x), regularized=True)
        if v != 0 and v < mp.mpf("1e-280"):
            continue  # below the range the sums keep
        emit("S14BFRI", [x, a, b], v)


# --- inverse normal --------------------------------------------------------------
def normal_quantile(p):
    with mp.workdps(340):
        return mp.sqrt(2) * mp.erfinv(2 * x_of(p) - 1)


for p in [1e-300, 1e-100, 1e-20, 1.38e-11, 1.39e-11, 1e-10, 1e-5, 0.001, 0.01, 0.05,
          0.074999, 0.075, 0.075001, 0.1, 0.3, 0.6, 0.9, 0.924999, 0.925, 0.925001, 0.95,
          0.99, 0.999999, 0.9999999999]:
    emit("S15IND", [p], normal_quantile(p))

# --- Bessel functions of order one ------------------------------------------------
for x in [7e-9, 1e-8, 1e-5, 0.1, 1.0, 2.5, 3.83, 3.8317059702075125, 3.9, 4.0, 4.0001, 5.0,
          7.0155866698156185, 7.9, 8.0, 8.0001, 10.0, 20.0, 100.0, 1000.0, 1e5, 1e7, 6.7e7,
          -1.0, -5.0, -10.0, -100.0]:
    emit("S17J1Y1", [x, 0], mp.besselj(1, x_of(x)))
for x in [1e-300, 1e-10, 7e-9, 1e-5, 0.1, 1.0, 2.197, 2.1971413260310170, 2.2, 3.0, 4.0,
          4.0001, 4.5, 5.4296810407941350, 5.43, 6.0, 7.5, 8.0, 8.0001, 8.5, 10.0, 100.0, 1e5,
          1e7, 6.7e7]:
    emit("S17J1Y1", [x, 1], mp.bessely(1, x_of(x)))


# --- runs test: exact critical numbers ----------------------------------------------
def exact_critical(n1, n2, alpha):
    """low: first r with P(R <= r) >= alpha; up: (first r with P(R <= r) >
    1 - alpha) - 1; the run counts go up to 2 n1, or 2 n1 + 1 when n1 <
    n2 - 1, the routine's own limit."""
    n1, n2 = min(n1, n2), max(n1, n2)
    total = Fraction(math.comb(n1 + n2, n1))
    rmax = 2 * n1 + 1 if n1 < n2 - 1 else 2 * n1
    low, up, cum = 1, rmax, Fraction(0)
    found = False
    for r in range(2, rmax + 1):
        k = r // 2
        if r % 2 == 0:
            ways = 2 * math.comb(n1 - 1, k - 1) * math.comb(n2 - 1, k - 1)
        else:
            ways = (math.comb(n1 - 1, k) * math.comb(n2 - 1, k - 1)
                    + math.comb(n1 - 1, k - 1) * math.comb(n2 - 1, k))
        cum += Fraction(ways) / total
        if not found and cum >= Fraction(alpha):
            low, found = r, True
        if cum > 1 - Fraction(alpha):
            up = r - 1
            break
    return low, up


for n1, n2, alpha in [(2, 2, 0.05), (10, 10, 0.025), (5, 12, 0.025), (3, 40, 0.05), (3, 60, 0.025),
                      (20, 30, 0.005)]:
    low, up = exact_critical(n1, n2, alpha)
    rows.append(f"G02WALD3\t{n1}\t{n2}\t{alpha!r}\t{low} {up}")

# --- runs test: Beta approximation (m = 10, M = 60, alpha = 0.05) ---------------
m, M, a = 10.0, 60.0, 0.025
t, s = 2 * m * M, m + M
r = (t - s) * (s - 1) / (m * (m - 1) + M * (M - 1))
for runs in [9, 15, 19]:
    q = runs - 2
    low = sps.betaincinv(q, 1 + r - q, a)
    up = 1 - sps.betaincinv(r - q, 1 + q, a)
    rows.append(f"G02WALD2-BETA\t{runs}\t{m!r}\t{M!r}\t{low!r} {up!r}")

print("# Reference values of the special functions and the runs test.")
print("# Made by tests/data/make_special_reference.py with Debian python3-mpmath "
      f"{mp.__version__} (50 digits, 80 for Stirling's correction, 340 for the")
print("# normal tails), Python's exact integers and fractions, and python3-scipy "
      f"{scipy.__version__} (betaincinv) for the Beta critical values.")
print("# Arguments are the exact binary doubles written; values are rounded to the")
print("# nearest double and written with 17 significant digits.")
print("# Columns: routine, arg1, arg2, arg3 ('-' unused), value.")
print("#   S17J1Y1: x, type.  S14BFRI: x, a, b.  S03NOC: m, n.")
print("#   G02WALD3: n1, n2, alpha -> 'low up' (exact critical numbers of runs).")
print("#   G02WALD2-BETA: runs, m, M -> 'low up' of the Beta approximation at alpha 0.05.")
for row in rows:
    print(row)
print(f"# {len(rows)} rows", file=sys.stderr)
