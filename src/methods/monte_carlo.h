// The Monte-Carlo searches, methods 16 and 17: E4MCM1, random normal steps
// from the best point, accepted when better, or, with a temperature set,
// accepted thermally; the reset of its saved state and its trace codes.
#pragma once

#include "methods/search_trace.h"

// Runs the search on E4DataSet.  iFlag is 1, and nothing is done, when
// maxNFE or deviat is not set; otherwise 0.
void E4MCM1(int& iFlag);

// Forgets the success flag (the program's start state).
void resetMonteCarloSearch();

// Codes of the trace records of the Monte-Carlo search.
//   Pass after every try: pass the try k, count[0] the tries left, value
//   the value f of the trial point, point the trial point.
//   Event Temperature when the temperature is lowered: value the new one.
//   Event Accepted when a trial point becomes the current point: count[0]
//   the tries left, value its value, real[0] the length of the step.
//   Stop NoBetterPoint at the end when no point was ever accepted:
//   count[0] the tries made.
namespace monte_carlo_trace {
enum : int {
    Temperature = 1,
    Accepted,
    NoBetterPoint,
};
}

// The report writer of the Monte-Carlo search, on dwUnit.
SearchTrace& monteCarloReport();
