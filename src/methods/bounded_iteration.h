// The active-set quasi-Newton iteration E04JBF of method 12: its arguments
// and working state in one record, BqnRun, which the local search E04JBM
// shares.
#pragma once

#include "methods/bounded_family.h"

struct BqnRun {
    // Arguments, set by the caller.
    int n = 0;
    FamilyFun fun = nullptr;
    StepSearch search = nullptr;
    bool local = true;     // the local search is made
    int start = 1;         // 1 warm: f, g, L and D are supplied; 0 cold
    int maxcal = 0;        // limit of nfcall
    int nfcall = 0;        // calls of fun, counted across the family (in and out)
    int iter = 0;          // iterations (out)
    double eta = 0.5, xtol = 0, stepmx = 10, fest = 0;
    int ibound = 0;
    double* delta = nullptr;  // finite-difference intervals, n
    double* bL = nullptr;     // bounds, n each, in and out
    double* bU = nullptr;
    double* x = nullptr;      // the point, n, in and out
    double* L = nullptr;      // strict lower triangle, packed by rows
    int lh = 0;
    double* D = nullptr;      // diagonal factor, n
    int* state = nullptr;     // state of each variable, n
    double f = 0;             // value at x, in and out
    double* g = nullptr;      // gradient, n
    int liw = 0;
    double* w = nullptr;      // work, 9n
    int lw = 0;
    int iprint = 0;           // reports when above 0
    int soft = 1;

    // Working state.
    Box box;
    double *gz = nullptr, *gzs = nullptr, *p = nullptr, *direct = nullptr;
    double *base = nullptr, *xt2 = nullptr, *w1 = nullptr, *w2 = nullptr, *work = nullptr;
    int nfree = 0, nfix = 0, method = 0, lsCount = 0, code = 0, iflag = 0;
    double gtg = 0, pnorm = 0, gtp = 0, fold = 0, alpha = 0;
    double rmax = 0, rmax0 = 0, cond = 1;
    bool ok = true, fail3 = false;
    int release = 0;          // variable chosen for release by the scan, 0 none
    double gmin = 0;
    // Constants formed at entry.
    double eps = 0, big = 0, srt = 0, tolM = 0, tolG0 = 0, tolF = 0, tolG = 0, tolX = 0;
    double tiny = 0, dpow = 0, t = 0;
};

// Runs the iteration; returns the code (see E04JAF), after the reporter.
int E04JBF(BqnRun& r);

// --- Pieces shared by the iteration and the local search -------------------

// 0.01 / (sqrt(nfree) * eps), 0 when nfree is 0.
double ratioLimit(const BqnRun& r, int nfree);
// Copies g into gz by the positions of the free variables; gtg anew.
void gatherFreeGradient(BqnRun& r);
// E04JBN for the free variables, then gz and gtg.
void freeGradient(BqnRun& r);
// E04JBN serving the variables on a bound with the given method.
void boundGradient(BqnRun& r, int method);
// Number of variables on a bound that are not fixed.
inline int onBoundNotFixed(const BqnRun& r) { return r.n - r.nfree - r.nfix; }
// The scan of the bound multipliers, E04MUL1: marks, gmin, release, ok.
void E04MUL1(BqnRun& r);
// The threshold of a strongly negative multiplier.
double releaseThreshold(const BqnRun& r);
// Clears the marks of the scan.
void clearMarks(BqnRun& r);
// Releases variable k (from 1): a new last position of the factors.
void releaseVariable(BqnRun& r, int k);
// Puts variable i (from 1) on its bound ahead along dir; returns its former
// position.  rmax and rmax0 follow the new nfree.
int addBound(BqnRun& r, int i, const double* dir);
// The first free variable within reach of its bound ahead along dir, 0 if
// none; moved tells whether it stood far enough off to need a new value.
int boundReached(const BqnRun& r, const double* dir, bool& moved);
// The bound that the step along direct reached, if any, joins the active
// set (with a new value when the point had to move); m is its former
// position, 0 when none.  False, with code 4, when the factors fail.
bool addReachedBound(BqnRun& r, int& m);
// Ratio of the largest to the least diagonal entry; big when the factors
// are bad (the check of E04JAF), 1 for one free variable, 0 with none.
double conditionOf(const BqnRun& r);
// cond = dmax / dmin of the free diagonal; above rmax the diagonal is
// brought down to that ratio by a power.
void rescaleDiagonal(BqnRun& r);
// Evaluates fun at x into f, counting the call.
void evaluateAtX(BqnRun& r);
// The iteration report row with the given mark.
void reportRow(const BqnRun& r, char mark);
