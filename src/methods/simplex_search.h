// The downhill simplex search (Nelder and Mead), method 15: E04DSMNM, the
// reset of its saved simplex, and the codes of its trace.
#pragma once

#include "methods/search_trace.h"

// Runs the search on E4DataSet; iFlag is 0 on return.
void E04DSMNM(int& iFlag);
// Forgets the saved simplex (the program's start state).
void resetSimplexSearch();

// Codes of the simplex's trace records.
//   Start: real = {step, step1, step2, fStart}, count[0] the number of
//   vertices, which are in Hesse (coordinates) and Hdiag (values).
//   Event VertexTable at the head of a pass (pass, count[0] the number of
//   vertices); Event Extremes with
//   count = {jh, jl}, real = {fH, fL}; Pass with count[0] the evaluations
//   left, value the least vertex value, real[0] its change.
//   Point Reflected, Extrapolated, Contracted: value and point.
//   Event Replaced with count[0] the point that replaced the largest vertex;
//   Event SecondLargest with value; Event Reduced.
//   Stop Converged or BudgetSpent with pass and count[0] the evaluations.
namespace simplex_trace {
enum : int {
    VertexTable = 1,
    Extremes,
    Reflected,
    Extrapolated,
    Contracted,
    Replaced,
    SecondLargest,
    Reduced,
    Converged,
    BudgetSpent,
};
}

// The report writer of the simplex: the lines of its trace at the message
// levels that show them, on dwUnit.
SearchTrace& simplexReport();
