// Inverse of the standard normal distribution function: S15IND, Wichura's
// rational approximations (algorithm AS 241, the 16-digit form).
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/machine_constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kCentral = 0.425;         // |p - 0.5| up to here: the central form
constexpr double kCentralShift = 0.180625;  // 0.425^2
constexpr double kTailSwitch = 5.0;         // r = sqrt(-ln p) up to here: the near tail

// Coefficients in increasing powers; the denominators start with 1.
constexpr double kA[8] = {3.3871328727963666080e0, 1.3314166789178437745e+2,
                          1.9715909503065514427e+3, 1.3731693765509461125e+4,
                          4.5921953931549871457e+4, 6.7265770927008700853e+4,
                          3.3430575583588128105e+4, 2.5090809287301226727e+3};
constexpr double kB[8] = {1.0,
                          4.2313330701600911252e+1, 6.8718700749205790830e+2,
                          5.3941960214247511077e+3, 2.1213794301586595867e+4,
                          3.9307895800092710610e+4, 2.8729085735721942674e+4,
                          5.2264952788528545610e+3};
constexpr double kC[8] = {1.42343711074968357734e0, 4.63033784615654529590e0,
                          5.76949722146069140550e0, 3.64784832476320460504e0,
                          1.27045825245236838258e0, 2.41780725177450611770e-1,
                          2.27238449892691845833e-2, 7.74545014278341407640e-4};
constexpr double kD[8] = {1.0,
                          2.05319162663775882187e0, 1.67638483018380384940e0,
                          6.89767334985100004550e-1, 1.48103976427480074590e-1,
                          1.51986665636164571966e-2, 5.47593808499534494600e-4,
                          1.05075007164441684324e-9};
constexpr double kE[8] = {6.65790464350110377720e0, 5.46378491116411436990e0,
                          1.78482653991729133580e0, 2.96560571828504891230e-1,
                          2.65321895265761230930e-2, 1.24266094738807843860e-3,
                          2.71155556874348757815e-5, 2.01033439929228813265e-7};
constexpr double kF[8] = {1.0,
                          5.99832206555887937690e-1, 1.36929880922735805310e-1,
                          1.48753612908506148525e-2, 7.86869131145613259100e-4,
                          1.84631831751005468180e-5, 1.42151175831644588870e-7,
                          2.04426310338993978564e-15};

double polynomial(const double* c, double x) {
    double s = c[7];
    for (int i = 6; i >= 0; --i) s = s * x + c[i];
    return s;
}

}  // namespace

double S15IND(double p, int& err) {
    const double q = p - 0.5;
    if (std::fabs(q) <= kCentral) {
        err = 0;
        const double r = kCentralShift - q * q;
        return q * polynomial(kA, r) / polynomial(kB, r);
    }
    if (p <= 0.0) {
        special::message("S15IND ---E- Probability value .LE. zero.");
        err = -1;
        return -std::sqrt(X02RMDC(5));
    }
    if (p >= 1.0) {
        special::message("S15IND ---E- Probability value .GE. 1.0.");
        err = -1;
        return std::sqrt(X02RMDC(5));
    }
    err = 0;
    double r = std::sqrt(-std::log(std::min(p, 1.0 - p)));
    double v = 0.0;
    if (r <= kTailSwitch) {
        r -= 1.6;
        v = polynomial(kC, r) / polynomial(kD, r);
    } else {
        r -= kTailSwitch;
        v = polynomial(kE, r) / polynomial(kF, r);
    }
    return q < 0.0 ? -v : v;
}
