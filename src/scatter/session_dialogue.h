// The dialogue of the fit session: runSessionPartA, runSessionPartB,
// findAnswersFile, readPhaseDescription, readPhaseDescriptions, restoreFitSysinf.
#pragma once

// Steps A1 to A8, once per run: the answers file, title and comment, run
// mode, phase count, concentration, noise of a TEST run and the phases.
void runSessionPartA();

// Steps B1 to B6, on every call with no evaluations counted: lays the phase
// table out in x (nVar, iFixer, bounds, set flags), asks the format code,
// reads the curve, and ends the first pass.  False when no curve was read
// (the terminal input ended first) or there are no variables: nVar is then
// 0 and the curve empty, so that nothing is fitted.
bool runSessionPartB(double* x);

// Step A1: the name of the answers file into FitSession.ansFile, from the
// "/UC=name" key of the program's command line, "vardene.ans" without keys.
void findAnswersFile();

// The phase count, asked until it lies in 1..10 (0 when the terminal input
// ended first).  Clears the phase table and the model's per-phase curves.
void readPhaseCount();

// Name word and rows of phase `phase` (1-based).  A word that matches no
// phase type is refused and asked again.  False when the terminal input
// ended before the phase was complete.
bool readPhaseDescription(int phase);

// Every phase of the count in turn; the count is cut to the phases that
// were complete when the terminal input ended.
void readPhaseDescriptions();

// The system record as the fit sees it: x86, MS_DOS, FAT32, 80 by 25,
// cursor column 60, terminal channels 5 and 6.
void restoreFitSysinf();
