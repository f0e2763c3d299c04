// The Wald-Wolfowitz runs test: G02WALD1 (about the mean), G02WALD2 (about a
// given centre) and G02WALD3 (exact critical numbers of runs).
#pragma once

// Tests whether the n values of x, split at their mean into the points below
// and above it, can be taken as random at the two-sided level alpha.  True
// means accepted.  n below 20: message, err -1, result true, stat, low and
// up untouched.  Otherwise as G02WALD2.
bool G02WALD1(const double* x, int n, double alpha, double& stat, double& low, double& up,
              int& err);

// The same about a given centre.  stat is the statistic and (low, up) the
// acceptance interval on the scale of the method used: the number of runs
// against exact critical numbers (larger class up to 50 points, or a very
// unbalanced split), a normal score, or a Beta approximation.  err -1 for n
// below 20 (result false, stat X02RMDC(5), low = up = 0), -2 for alpha
// outside (0, 1) (stat = low = up = -1), 1 for fewer than 2 points in the
// smaller class or fewer than 3 runs (stat 1, low = up = 0, result false).
bool G02WALD2(const double* x, int n, double centre, double alpha, double& stat, double& low,
              double& up, int& err);

// Exact critical numbers of runs of two classes of n1 and n2 points for the
// one-sided level alpha: low is the first count whose cumulative
// probability reaches alpha, up one less than the first whose cumulative
// probability exceeds 1 - alpha.
void G02WALD3(int n1, int n2, double alpha, int& low, int& up);
