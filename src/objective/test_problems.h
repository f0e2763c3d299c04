// The test problems behind E4FUN1: their private state, their catalogue
// entries, their first-call dialogues and set-up, and their formulas.
#pragma once

#include "core/e4dataset.h"

#include <array>
#include <string_view>

constexpr int kTestProblems = 14;
constexpr int kResiduals = 256;

// What the target function keeps from call to call.
struct TargetFunctionState {
    double scale = 1.0;          // problem 1: factor s of every third variable
    int modification = 0;        // problem 1: 0 classical, 1 R-Ze modification
    double addedConstant = 0.0;  // added to a test problem's value
    std::array<double, kResiduals> residual{};  // terms of the sum-of-squares problems
    // Problem 8: the matrix used by the function and the copy given to the
    // eigenproblem routine, the desired minimum value m, its coordinates z,
    // the linear term b and the constant c.
    Mat1<kMaxVar> hessian, hessianCopy;
    double minimumValue = 0.0;
    Vec1<double, kMaxVar> minimumPoint, linearTerm;
    double constantTerm = 0.0;
};

TargetFunctionState& targetFunctionState();

// Catalogue entry of a test problem.  A problem with a free dimension asks
// for it in the range minVar..128 and has a default; one with a fixed
// dimension has its own limits maxITR and maxNFE.
struct TestProblemInfo {
    std::string_view welcome;  // "Welcome to " text; empty: none
    bool freeDimension;
    int minVar;
    int defaultVar;            // the dimension of a fixed one
    int maxITR;                // fixed dimension only
    int maxNFE;                // fixed dimension only
    std::string_view tail;     // tail of the dimension message
};

// Entry of test problem `code`, 1..14.
const TestProblemInfo& testProblemInfo(int code);

// First call of test problem `code`: the dialogue, the dimension, the limits,
// the start point written into x, iFixer and the bounds.  False when the
// user broke the dialogue off (problem 8): nothing is set then.
bool setUpTestProblem(int code, double* x);

// The dimension message: n left-justified, then the tail, through E04MES.
void announceDimension(int n, std::string_view tail);

// Value of test problem `code` at the unscaled point x of n variables.
double testProblemValue(int code, const double* x, int n);

// Formulas of the test problems, x(1) at x[0].
double rosenbrockValue(const double* x, int n);
double powellWoodValue(const double* x, int n);
double woodValue(const double* x);
double trigonometricValue(const double* x, int n);
double spiralChuteValue(const double* x);
double cunningProblemValue(const double* x);
double friedenSquaredValue(const double* x);
double userSquaredValue(const double* x, int n);
double sinusoidalChuteValue(const double* x, int n);
double oneDimensionalValue(const double* x);
double exponentialFitValue(const double* x);
double polynomialFitValue(const double* x, int n);
double nonsmoothPolynomialValue(const double* x, int n);

// The angle of the spiral chute, in turns, with its guard at x1 = 0.
double spiralAngle(double x1, double x2);
