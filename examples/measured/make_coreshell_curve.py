#!/usr/bin/env python3
"""Writes coreshell.dat: a synthetic SAXS curve laid out as measured files are.

Core-shell spheres: core radius 20 angstrom (contrast 3), outer radius 40
angstrom (shell contrast 1) with a Schulz distribution of the outer radius of
width 4 angstrom; 500 points of q = 4 pi sin(theta)/lambda from 0.1 to 2.6
1/nm; relative Gaussian noise of 2 percent (seed 7) whose size is given as
the error of each point.  The file has three header lines (the third a "#"
line naming the columns), a "!" comment line inside the data and four
columns q, I, dI, dq; dq (the resolution) is not used by the fit.

The model is computed here on its own, in plain Python: the intensity of a
core-shell sphere of outer radius R over its contrast-weighted volume,
A(R)^2 / ((V(R) - V(Rc)) roout + roin V(Rc)), with
A(R) = roout (F(qR) V(R) - F(qRc) V(Rc)) + roin V(Rc) F(qRc) and
F(x) = 3 (sin x - x cos x) / x^3, averaged over the gamma (Schulz) density
of mean 40 and standard deviation 4 on [Rout - 3 dR, Rout + 3 dR] by
Simpson's rule.

Usage: python3 make_coreshell_curve.py [directory]
"""
import math
import os
import random
import sys

R_CORE, R_OUT, WIDTH = 20.0, 40.0, 4.0
RHO_CORE, RHO_SHELL = 3.0, 1.0
NOISE, SEED, POINTS = 0.02, 7, 500


def amplitude(x):
    return 3.0 * (math.sin(x) - x * math.cos(x)) / x ** 3


def schulz(r, mean, width):
    k = (mean / width) ** 2  # shape of the gamma density
    theta = mean / k
    return math.exp((k - 1.0) * math.log(r) - r / theta - math.lgamma(k) - k * math.log(theta))


def intensity(s):
    """s in 1/angstrom."""
    vc = 4.0 / 3.0 * math.pi * R_CORE ** 3
    lo, hi, n = R_OUT - 3.0 * WIDTH, R_OUT + 3.0 * WIDTH, 400
    h = (hi - lo) / n
    total = 0.0
    for i in range(n + 1):
        r = lo + i * h
        vr = 4.0 / 3.0 * math.pi * r ** 3
        a = RHO_SHELL * (amplitude(s * r) * vr - amplitude(s * R_CORE) * vc) + RHO_CORE * vc * amplitude(s * R_CORE)
        g = a * a / ((vr - vc) * RHO_SHELL + RHO_CORE * vc) * schulz(r, R_OUT, WIDTH)
        total += g * (1 if i in (0, n) else 4 if i % 2 else 2)
    return total * h / 3.0


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    random.seed(SEED)
    q = [0.1 + 2.5 * k / (POINTS - 1) for k in range(POINTS)]  # 1/nm
    model = [intensity(0.1 * qk) for qk in q]                   # s = q / 10 in 1/angstrom
    scale = 500.0 / model[0]
    lines = [
        "Synthetic SAXS curve of core-shell spheres in a measured layout (make_coreshell_curve.py)",
        "Rc 20 A, R 40 A, Schulz width 4 A, contrasts 3 and 1; noise 2 percent, seed 7",
        "#  q [1/nm]         I [1/cm]          dI [1/cm]         dq [1/nm]",
    ]
    for k, (qk, m) in enumerate(zip(q, model)):
        if k == POINTS // 2:
            lines.append("! beam-stop attenuator out from here on (no change to the data)")
        i = scale * m * (1.0 + NOISE * random.gauss(0.0, 1.0))
        lines.append("%13.6E %17.8E %17.8E %13.6E" % (qk, i, NOISE * scale * m, 0.05 * qk))
    with open(os.path.join(folder, "coreshell.dat"), "w") as f:
        f.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
