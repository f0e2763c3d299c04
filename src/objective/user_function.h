// The user's problem behind problem code 20 of the target function.  The
// problem itself lives above this layer (the scattering fit); it is plugged
// in once at the program's start, and tests plug in their own.
#pragma once

// The user's function at x (x[0] is x(1); nVar entries, in and out).  On a
// call with no evaluation counted yet it introduces its problem: it sets
// nVar, the count of free variables, iFixer, the bounds and their set flags
// and writes the start point into x.
using UserFunction = double (*)(double* x);

void setUserFunction(UserFunction f);
// Calls the plugged-in function; without one there is no user's problem:
// nVar stays 0 and the value is 0.
double callUserFunction(double* x);
