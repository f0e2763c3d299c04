#!/usr/bin/env python3
"""The three bounded cases of the README table, solved by scipy's L-BFGS-B
with its own finite-difference gradient, for orientation next to METHOD,SB.

The functions are those of the test-problem catalogue (problems 1, 3 and 7)
written out again here; run: python3 bench/bounded_peer.py
"""
from scipy.optimize import minimize

BIG = 1e20


def rosenbrock(x):
    return (1 - x[0]) ** 2 + (10 * (x[1] - x[0] ** 2)) ** 2


def wood(x):
    x1, x2, x3, x4 = x
    return (100 * (x1 ** 2 - x2 ** 2) ** 2 + (1 - x1) ** 2 + 90 * (x3 ** 2 - x4) ** 2 + (1 - x3) ** 2
            + 10.1 * ((1 - x2) ** 2 + (1 - x4) ** 2) + 19.8 * (1 - x2) * (1 - x4))


def frieden(x):
    x1, x2 = x
    return (0.7525 * x2 + 0.2097) * x2 - 0.9322 + (0.2575 * x1 - 0.8574 * x2 - 0.1726) * x1


CASES = [
    ("Rosenbrock, x1 <= 0.5", rosenbrock, [-1.0, 0.8], [(-BIG, 0.5), (-BIG, BIG)]),
    ("Wood, every x(i) <= 0.5", wood, [-3.0, -1.0, -3.0, -1.0], [(-BIG, 0.5)] * 4),
    ("Frieden's quadratic, x1 <= 1", frieden, [0.0, 0.0], [(-BIG, 1.0), (-BIG, BIG)]),
]

for name, f, x0, bounds in CASES:
    r = minimize(f, x0, method="L-BFGS-B", bounds=bounds)
    print(f"{name:32s} nfev {r.nfev:4d}  f {r.fun:.7g}  x {[round(v, 6) for v in r.x]}")
