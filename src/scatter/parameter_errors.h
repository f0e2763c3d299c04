// Standard errors and correlations of the fitted parameters of the
// scattering fit, from the Hessian of the misfit at the point reached:
// written to <base>.err beside the other result files.
#pragma once

#include <string>
#include <vector>

// The errors of the free parameters.  The misfit is f = chi^2 / S with
// S = sum over the points of (I/Err)^2 (the weights of the fit), so the
// covariance of the parameters of the weighted least-squares fit is
// (J^T W J)^-1 = 2 (S H)^-1 = (2 / S) H^-1, H the Hessian of f.  The scale
// of the curve is eliminated in every evaluation; H of the reduced misfit
// gives the covariance of the other parameters directly.  The volume
// fractions are reported normalized, Vf(j) / sum |Vf|: their errors follow
// through the derivatives of the normalization, and when every phase's Vf
// is free their common scale, which no curve determines, is held at the
// largest of them.
struct ParameterErrors {
    std::vector<int> index;            // position of each free parameter in x (1-based)
    std::vector<std::string> name;     // phase and parameter, e.g. "1SPH Rout"
    std::vector<double> value;         // the value reported (Vf normalized)
    std::vector<double> sigma;         // its standard error
    std::vector<double> correlation;   // row after row, index.size() squared
    double chiSquare = 0.0;            // S f
    int points = 0;
    int determined = 0;                // parameters the inversion took
    bool positiveDefinite = false;     // false: no errors could be given
};

// The errors from the Hessian of f in the monitor's coordinates (column
// after column, leading dimension ld), at xEnd with the value fEnd.
ParameterErrors parameterErrors(const double* hessian, int ld);

// Writes <base>.err (test.err in a TEST run) when a curve is fitted; a file
// that cannot be written is reported by name on the console.
void writeParameterErrors(const double* hessian, int ld);
