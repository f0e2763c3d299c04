// The bounded quasi-Newton family behind method 12: the easy entry E04JAF,
// the function adapter E04CGY, the finite differences E04HBF and E04JBN, the
// active-set iteration E04JBF with its factor updates, the step search
// E04LSH1/E04LSH2, the local search E04JBM/E04LSD1, the failure reporter
// E04ERP1 and the iteration report E04RPT1.
//
// The family is written in the style of a general library: every routine
// gets its data through arguments, 0-based arrays of n entries.  Positions
// in the factors (state values of free variables) count from 1.
#pragma once

#include "methods/search_trace.h"

#include <string_view>

// The function routine of the family: f at x(0..n-1).  A negative iflag asks
// the family to stop.
using FamilyFun = void (*)(int& iflag, int n, double* x, double& f);

// The box the family works in.  Every point the family evaluates lies in it:
// trial points are held inside, and a difference step that would cross a
// bound is taken on the other side of the point.
struct Box {
    const double* lo = nullptr;
    const double* hi = nullptr;
};

// The number that serves as infinity for the bounds everywhere in the family.
constexpr double kBoundInfinity = 1000000.0;

// Machine values of the family: eps = X02RMDC(2), big = X02RMDC(5).
struct FamilyConstants {
    double eps;
    double big;
};
const FamilyConstants& familyConstants();

// Evaluates fun at x, after moving any component that lies outside the box
// (by rounding) onto its bound; tells the trace of the evaluation.
double familyCall(FamilyFun fun, int& iflag, int n, double* x, const Box& box);

// --- Part of the driver -------------------------------------------------

// The function adapter: f = E4FUN1(x).  iflag is left alone.
void E04CGY(int& iflag, int n, double* x, double& f);

// Routine names the failure reporter knows (its A6 field).
enum class FamilyRoutine { E04JAF, E04JBF, E04HBF };

// Returns code; when code is not 0 it writes what soft asks for (see the
// rules in bounded_driver.cpp).
int E04ERP1(int soft, int code, FamilyRoutine name);

// The easy entry: chooses the tuning values, finds the first Hessian
// diagonal, runs E04JBF and classifies the result.  soft is 1 on entry and
// receives the return code.  x, bL, bU have n entries; iw n + 2 entries;
// w 12n + max(1, n(n-1)/2) entries.
void E04JAF(int n, int ibound, double* bL, double* bU, double* x, double& f, int* iw, int liw,
            double* w, int lw, int& soft, int iprint, int maxcal, int& nfe, int& iter, double eta,
            double xtol, double stepmx, double fest);

// Central differences at x: intervals delta, the diagonal D (at least 0.01),
// the gradient g, f at x; L is zeroed.  nf counts the evaluations.  w holds
// at least 2n entries of work.  Returns the code (0, 1 or 2).
int E04HBF(int n, FamilyFun fun, const Box& box, double* x, int& nf, double* delta, double* L,
           int lh, double* D, double& f, double* g, int liw, double* w, int lw, int soft);

// Which variables E04JBN gives a new gradient component.
enum class Serve { Free, Bound };

// Finite-difference gradient at x (value f): see the methods in the .cpp.
// w1 keeps the values on the first side and must survive between calls at
// the same x; w2 those on the second side.
void E04JBN(int& iflag, int n, const int* state, double f, double* x, const double* delta,
            FamilyFun fun, const Box& box, int& method, int& nfcall, double* g, double* w1,
            double* w2, Serve serve);

// --- Step search ---------------------------------------------------------

// Memory of E04LSH2, kept by the caller between the calls.
struct LshMemory {
    double xbest = 0, fbest = 0, xsec = 0, fsec = 0, xthird = 0, fthird = 0;
    double lo = 0, flo = 0, hi = 0, f0 = 0, fitHi = 0, room = 0, prev = 0, step = 0;
    double decr = 0, slopeTest = 0, tol = 0, shrink = 0.5, sx = 0;
    int bracketed = -1, sb = -1;
    int phase = 1;   // 1 start, 2 after the first evaluation, 3 later, 4 re-evaluation, 5 retreat
    int result = 0;  // 1 evaluate at xbest + xtry, 0 success, 2 refused, 3 no decrease, 4 below alpmin
};

void E04LSH2(double tolrel, double tolabs, double eta, double alpmin, double am, double& xtry,
             double& ftry, double gtp, LshMemory& m);

// Step search along direct from x: alpha is the first step on entry.  iflag 2
// success (x, f, alpha the new point, value and step), 3 failure (x, f
// unchanged), negative when fun asked to stop.  trial: n entries of work.
void E04LSH1(int n, FamilyFun fun, const Box& box, double tolrel, double tolabs, double eta,
             double alpmin, double am, const double* direct, double gtp, double* x, double& f,
             double& alpha, int& nfls, int& iflag, double* trial);

using StepSearch = decltype(&E04LSH1);

// --- The iteration -------------------------------------------------------

struct BqnRun;  // the state of one run of E04JBF (bounded_iteration.h)

// Gives dir the factors of zero sum and finds the room ahead and behind;
// code 5 when there is no room.
void E04LSD1(int n, int nfree, double& hcur, const double* bL, const double* bU,
             const int* state, const double* base, double* dir, double& ahead, double& behind,
             int& code);

// The local search at the point of the run with the step h; finish 0 means
// the iteration goes on from the new point.
void E04JBM(BqnRun& r, double h, int& finish);

// --- Trace of the family -------------------------------------------------

// Codes of the family's trace records.
//   Point Evaluated: every evaluation, value f and point x (count[0] = n).
//   Event HbfTrialStep: value h0.  Event HbfVariable: count[0] = i,
//     point -> {x, DI, GI, H, CNCERR, ERRSUM}.
//   Event JbnIntervals / JbnForward / JbnCentral: point the vector, count[0] = n.
//   Event Direction: point the full direction, count[0] = n.
//   Pass Report: code is the mark ('a', 'b', 'c'), pass = iter,
//     count = {iterations left, nfcall}, value f, real[0] cond.
//   Event ReportPoint / ReportGradient / ReportDirection: point, count[0] entries.
//   Event LocalSearch: a local search starts.
//   Event ExceededSteps / FatalError / SoftError: count[0] the routine
//     (FamilyRoutine), count[1] the code.
//   Event WrongBound: count = {i, 1 lower / 0 upper}.
//   Stop ReturnCode: count = {flag, iter, maxITR}.
namespace bounded_trace {
enum : int {
    Evaluated = 1,
    HbfTrialStep,
    HbfVariable,
    JbnIntervals,
    JbnForward,
    JbnCentral,
    Direction,
    Report,
    ReportPoint,
    ReportGradient,
    ReportDirection,
    LocalSearch,
    ExceededSteps,
    FatalError,
    SoftError,
    WrongBound,
    ReturnCode,
};
}

// Hands a record to the family's report writer and the observer.
void familyTrace(const TraceRecord& r);
// The report writer of the family: its lines on dwUnit at the message levels
// that show them.
SearchTrace& boundedReport();
