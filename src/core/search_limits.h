// The limits of a search, maxITR and maxNFE: the rules that give them
// defaults and the warnings RUN writes when they look wrong.  Every place
// that sets a default limit takes it from here.
#pragma once

// Which rule a method's limits follow.
enum class LimitRule {
    None,               // no rule (undefined rows)
    FirstOrder,         // 10 n iterations; one free variable: 1 iteration, 50 calls
    CoordinateDescent,  // 10 n iterations, no rule for one variable
    Simplex,            // calls only: 300 n, maxITR = maxNFE
    MonteCarlo,         // 1000 n calls
    AnnealedMonteCarlo, // 1000 n calls unless maxITR is set
};

// Function evaluations for maxITR iterations of n free variables:
// (n + n/3 + 15) * maxITR.
int evaluationsForIterations(int n, int maxITR);
// Limits of a test problem of n variables: maxITR 20 n and its evaluations.
void testProblemLimits(int n, int& maxITR, int& maxNFE);
// Limits of the user's problem where they are not set: maxITR 10 n.
void userProblemLimits(int n, int& maxITR, int& maxNFE);
// CHECK's defaults when maxITR or maxNFE is not above 0; nVar and nFree
// are the data set's counts.
void defaultLimits(LimitRule rule, int nVar, int nFree, int& maxITR, int& maxNFE);

// The warnings of RUN about the limits of method `method` with nFree free
// variables; `fromTerminal` tells whether commands come from the terminal.
void limitWarnings(int method, int nFree, int maxITR, int maxNFE, bool fromTerminal);
