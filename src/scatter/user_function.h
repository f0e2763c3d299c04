// USERF of the scattering fit: the monitor's user problem.
#pragma once

// Every call goes through the fit session (dialogue, measured curve, model
// and misfit); x[0] is x(1).
double USERF(double* x);
