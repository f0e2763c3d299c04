// Gauss-Legendre quadrature of the scattering fit: GAUSSQ, its table of
// rules, gaussNodes, gaussRulePoints and resetGaussLegendre.
#pragma once

// An integrand of the scattering fit: one abscissa in, one value out; every
// other input travels in the shared record FormArgs.
using Integrand = double (*)(double);

// Integral of f on [a, b] by one Gauss-Legendre rule of the table (1, 2, 3,
// 4, 5, 6, 8, 10, 12, 14, 16, 20, 24, 32, 48, 64 points).  A request of 64 or
// more points takes the 64-point rule and sets status 1 when it was more
// than 64; otherwise status is 0.  A request between two rules takes the
// smaller rule with at least as many points, and a request below 1 takes the
// one-point rule.  With h = (b - a)/2 and c = (a + b)/2 the nodes are
// c + h x_i and c - h x_i with weights h w_i; f is called, and the sum built,
// from the node next to b down to the node next to a.
double GAUSSQ(double a, double b, int n, Integrand f, int& status);

// The largest rule of the table.
constexpr int kGaussMaxPoints = 64;

// The nodes and weights h w_i of the rule that GAUSSQ(a, b, n, ...) uses, in
// the order in which GAUSSQ sums them; node and weight hold at least
// kGaussMaxPoints values.  Returns the number of points; status as GAUSSQ.
int gaussNodes(double a, double b, int n, double* node, double* weight, int& status);

// Number of points of the rule that a request of n points is given.
int gaussRulePoints(int n);

// Forgets the computed table, so that the next GAUSSQ computes it again.
void resetGaussLegendre();
