// USERF: the scattering fit is the monitor's user problem; every call goes
// through the fit session (dialogue, measured curve, model and misfit).
#include "scatter/user_function.h"

#include "scatter/vardene_session.h"

double USERF(double* x) { return vardeneSessionCall(x); }
