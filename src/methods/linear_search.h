// The linear search E4SRH1: minimization along one direction d from a base
// point x0, first by bracketing with golden-ratio growth, then by
// safeguarded parabolic interpolation with golden-section fall-back; and the
// codes of its trace.
#pragma once

#include "methods/search_trace.h"

#include <string_view>

// Minimizes f(x0 + s * d) over the abstract argument s (the path measured
// in units of d).  Vectors have n (nVar) entries, x0[0] is x0(1).
//   x0       base point (evaluated in place when flag is 0 on entry)
//   x        out: the best point; during the search the trial point
//   step     first step in units of d, its sign honoured; overwritten
//   stepMax  bound on |s|; not positive means no bound
//   f        in: f(x0) (when flag is nonzero); out: the best value
//   path     out: s of the best point
//   dF       out: best value minus the value f held on entry
//   xTol     work: absolute argument tolerances (E4TOL1)
//   flag     in: nonzero when f holds f(x0); out: 0 normal, 1 the line was
//            seen not to be unimodal, 2 abnormal end (best point returned)
//   channel, msgLevel  where and how much it reports
//   maxSteps step limit of each phase
//   mode     local termination mode 0..5 (iStat(row::localTermination))
//   tag      the caller's name, shown at the return
void E4SRH1(double* x0, double* x, const double* d, double& step, double stepMax, double& f, double& path,
            double& dF, double* xTol, int n, int& flag, int channel, int msgLevel, int maxSteps, int mode,
            std::string_view tag);

// Codes of the linear search's trace records (one range apart from the
// other searches, since an observer sees them all).
//   Start (code Begin): real = {step, stepMax}.
//   Point Trial: pass = phase (1 or 2), count[0] the step count, real[0]
//   the abstract argument XTEST, value FXTEST, point the trial point.
//   Event StepLimited: real = {wanted, taken}.  Event Multimodal:
//   real = {D, FXTEST - FXMIN}.  Event Bracketed: real = {A, B, XMIN}.
//   Event Debug: real = {A, FA, B, FB} and count = {0}; then DebugPoint
//   records: count[0] 1 XMIN, 2 XL, 3 XSL, 4 XTEST with real = {x, fx};
//   then DebugTail with real = {E, AXTOL, AFTOL}.
//   Event Parabolic, Golden, StepToMake: real[0] the step D.
//   Event NoBracket, TooManySteps (count[0] the steps), StepTooSmall,
//   ParabolaDegenerate (real = {XMIN - XL, XMIN - XSL, XL - XSL, Q}).
//   Event Abnormal: real = {FXTEST, XTEST, FXMIN, XMIN}, count[0] the steps.
//   Stop Return: value the best value, real = {path, dF}, count[0] flag.
namespace linear_search_trace {
enum : int {
    Begin = 100,
    Trial,
    StepLimited,
    Multimodal,
    Bracketed,
    Debug,
    DebugPoint,
    DebugTail,
    Parabolic,
    Golden,
    StepToMake,
    NoBracket,
    TooManySteps,
    StepTooSmall,
    ParabolaDegenerate,
    Abnormal,
    Return,
};
}

// The report writer of the linear search for one call: the lines of its
// trace on `channel` at the message levels that show them.
SearchTrace& linearSearchReport(int channel, int msgLevel, std::string_view tag);
