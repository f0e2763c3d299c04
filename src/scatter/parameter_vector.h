// The argument vector of the fit and the phase table: parameterCount,
// layoutParameters, unpackParameters.
#pragma once

// Sum of the block lengths of the phases in the table (the phase count is
// taken as at most the table's room).
int parameterCount();

// Lays the phase table out in the argument vector x (x[0] is x(1)): the
// start values in x, the bounds in bL and bU of E4DataSet (the lower bound
// of Rhs is the start value of Rout; Len has its value as both bounds),
// every variable free in iFixer, nVar and the number to be varied set, and
// the set flags of the argument values and of both bounds raised.  Returns
// nVar.
int layoutParameters(double* x);

// Copies the values of x back into the phase table, block by block, driven
// by the phase count and types; the bounds are not touched.
void unpackParameters(const double* x);
