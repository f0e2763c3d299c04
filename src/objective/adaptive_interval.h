// The search for the finite-difference interval of one variable, the heart
// of the adaptive procedure E4FDA1.
#pragma once

// What the search settles for variable i: the interval H, the forward
// difference P taken with it, the central first difference C, the central
// second difference SDC, the summary error S of C, the relative change R of
// the last second difference, and whether no trustworthy interval was found.
struct IntervalResult {
    double H = 0, P = 0, C = 0, SDC = 0, S = 0, R = 0;
    bool failed = false;
};

// FrlErr as the differences use it: never below the machine precision,
// whatever value was loaded.
double relativeNoise();

// Runs the interval search for free variable i (1-based) at x with value f
// and absolute noise FERROR; x is restored.  Writes the trace of the search
// at message levels 5 and 6.
IntervalResult adaptiveInterval(double* x, double f, int i, double FERROR);
