// Edge cases, err values and messages of the special functions, and the
// fatal stops of the Chebyshev routines (run in a child process).
#include "numlib/special_functions.h"

#include "core/machine_constants.h"
#include "platform/units.h"
#include "textfile/number_text.h"

#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <limits>
#include <sstream>

namespace {

class SpecialFunctions : public TerminalTest {};

const double kBig = std::ldexp(1.0, 1022);  // rBig of IEEE double

// ----- Chebyshev series ------------------------------------------------------


// ----- factorials and binomial coefficients --------------------------------------

TEST_F(SpecialFunctions, FactorialEdges) {
    int err = 99;
    EXPECT_EQ(S03FACT(0, err), 1.0);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(S03FACT(1, err), 1.0);
    EXPECT_EQ(output(), "");
    EXPECT_EQ(S03FACT(-3, err), 6.0);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(output(), " S03FACT --W- Factorial of negative integer: [ -3! ]\n");
    EXPECT_TRUE(std::isfinite(S03FACT(170, err)));
    EXPECT_EQ(err, 0);
    EXPECT_EQ(S03FACT(171, err), kBig);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S03FACT --E- Factorial overflows for [ 171! ]\n");
}

// ----- ln(1 + x) and Stirling's correction ---------------------------------------

// ----- Gamma ---------------------------------------------------------------------

TEST_F(SpecialFunctions, GammaExactPointsAndRefusals) {
    int err = 99;
    EXPECT_NEAR(S14GAM(5.0, err), 24.0, 24.0 * 4e-16);
    EXPECT_EQ(err, 0);
    EXPECT_NEAR(S14GAM(-0.5, err), -3.5449077018110318, 4e-15);  // -2 sqrt(pi)
    EXPECT_EQ(output(), "");
    EXPECT_EQ(S14GAM(0.0, err), kBig);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " S14GAM ---E- The argument for the Gamma function can not be zero.\n");
    EXPECT_EQ(S14GAM(-3.0, err), kBig);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S14GAM ---E- The argument is a negative integer: -3.0000000\n");
    EXPECT_EQ(S14GAM(172.0, err), kBig);
    EXPECT_EQ(err, -4);
    EXPECT_EQ(output(), " S14GAM ---E- The argument is too big: 172.00000, Gamma overflows.\n");
    EXPECT_EQ(S14GAM(-180.0, err), 0.0);
    EXPECT_EQ(err, -4);
    EXPECT_EQ(output(), " S14GAM ---E- The argument is too small: -180.00000, Gamma underflows.\n");
    // Below 1/rBig the quotient 1/x would overflow; the number prints in its
    // zero form because it is below rMin.
    EXPECT_EQ(S14GAM(1e-310, err), kBig);
    EXPECT_EQ(err, -3);
    EXPECT_EQ(output(), " S14GAM ---E- The argument is near 0.0: 0.0, Gamma overflows.\n");
    // Just above 1/rBig = rMin it is still a number: Gamma(x) = 1/x - 0.577...
    EXPECT_NEAR(S14GAM(1e-300, err), 1e300, 1e285);
    EXPECT_EQ(err, 0);
}

TEST_F(SpecialFunctions, GammaWarnsNextToANegativeInteger) {
    int err = 99;
    // x = -3 + 4.4e-16: (x + 3)/x = 1.5e-16 is below eps.  Gamma(-3 + d) is
    // about -1/(6 d) = -3.75e14.
    const double x = std::nextafter(-3.0, 0.0);
    const double d = x + 3.0;
    EXPECT_NEAR(S14GAM(x, err), -1.0 / (6.0 * d), 1e-2 / (6.0 * d));
    EXPECT_EQ(err, 1);
    std::string number(32, ' ');
    int len = 0;
    int cerr = 0;
    R02R2C1(x, number, 1, X02IMDC(4) - 1, len, 2, 1, cerr);
    EXPECT_EQ(output(), " S14GAM ---W- Loss of precision because the argument is too close\n"
                      "              to a negative integer: " +
                          number.substr(0, static_cast<std::size_t>(len)) + "\n");
    // Half an integer away nothing is said.
    S14GAM(-2.5, err);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(output(), "");
}

// ----- ln |Gamma| and ln Beta ------------------------------------------------------

TEST_F(SpecialFunctions, LogGammaRefusals) {
    const double lnBig = X02RMDC(8);
    int err = 99;
    EXPECT_EQ(S14LGAM(0.0, err), lnBig);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " S14LGAM --E- Argument can not be zero.\n");
    EXPECT_EQ(S14LGAM(-3.0, err), lnBig);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S14LGAM --E- Argument is a negative integer: -3.000\n");
    // Beyond 10 the same test catches a negative integer before the reflection.
    EXPECT_EQ(S14LGAM(-20.0, err), lnBig);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S14LGAM --E- Argument is a negative integer: -20.00\n");
    // xbig solves x (ln x - 1) = 0.99 rMax: about 2.54e305.
    EXPECT_EQ(S14LGAM(3e305, err), kBig);
    EXPECT_EQ(err, -3);
    EXPECT_EQ(output(), " S14LGAM --E- Argument overflow: 3.000e+305\n");
    EXPECT_EQ(S14LGAM(-3e305, err), kBig);
    EXPECT_EQ(err, -3);
    EXPECT_EQ(output(), " S14LGAM --E- Argument overflow: -3.000e+305\n");
    EXPECT_TRUE(std::isfinite(S14LGAM(2.5e305, err)));
    EXPECT_EQ(err, 0);
    // Inside 1/xbig of zero the argument counts as zero.
    S14LGAM(-1e-306, err);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " S14LGAM --E- Argument can not be zero.\n");
}

// ----- inverse normal and Bessel functions ----------------------------------------

TEST_F(SpecialFunctions, InverseNormalAtTheEnds) {
    int err = 99;
    EXPECT_EQ(S15IND(0.5, err), 0.0);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(S15IND(0.0, err), -std::ldexp(1.0, 511));  // -sqrt(rBig)
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S15IND ---E- Probability value .LE. zero.\n");
    EXPECT_EQ(S15IND(1.0, err), std::ldexp(1.0, 511));
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S15IND ---E- Probability value .GE. 1.0.\n");
    S15IND(-0.2, err);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S15IND ---E- Probability value .LE. zero.\n");
    // Symmetric about 1/2 (the pairs are exact complements in binary).
    EXPECT_EQ(S15IND(0.75, err), -S15IND(0.25, err));
    EXPECT_EQ(S15IND(1.0 - std::ldexp(1.0, -10), err), -S15IND(std::ldexp(1.0, -10), err));
}

TEST_F(SpecialFunctions, BesselTypesSmallArgumentsAndTheYOneDomain) {
    int err = 99;
    EXPECT_EQ(S17J1Y1(0.0, 0, err), 0.0);
    EXPECT_EQ(err, 0);
    // Below sqrt(eps)/2 only the first term: J1 = x/2, Y1 = -(2/pi)/x.
    EXPECT_EQ(S17J1Y1(1e-9, 0, err), 5e-10);
    EXPECT_EQ(S17J1Y1(-1e-9, 0, err), -5e-10);
    EXPECT_NEAR(S17J1Y1(1e-9, 1, err), -6.366197723675814e8, 1e-7);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(output(), "");
    // Y1 of zero or a negative argument, or where -2/(pi x) would overflow:
    // -rBig and err -1, without a message.
    for (double x : {0.0, -1.0, -1e-9, 1e-310}) {
        EXPECT_EQ(S17J1Y1(x, 1, err), -kBig) << x;
        EXPECT_EQ(err, -1) << x;
    }
    EXPECT_EQ(output(), "");
    // 1e-307 * rBig = 4.5 is above 2/pi: a number.
    EXPECT_NEAR(S17J1Y1(1e-307, 1, err), -6.366197723675814e306, 1e292);
    EXPECT_EQ(err, 0);
    // J1 is odd.
    EXPECT_EQ(S17J1Y1(-2.5, 0, err), -S17J1Y1(2.5, 0, err));
    EXPECT_EQ(S17J1Y1(-20.0, 0, err), -S17J1Y1(20.0, 0, err));
    EXPECT_EQ(S17J1Y1(1.0, 2, err), 0.0);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(),
              " S17J1Y1 --E- Wrong Bessel type specified, must be 0 (J1) or 1 (Y1).\n");
    // Beyond 1/sqrt(eps) = 6.7e7 the phase is lost.
    EXPECT_EQ(S17J1Y1(1e8, 0, err), 0.0);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(S17J1Y1(-1e8, 1, err), -kBig);  // the domain test comes first
    EXPECT_EQ(err, -1);
    EXPECT_EQ(S17J1Y1(1e8, 1, err), 0.0);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(output(), " S17J1Y1 --W- Loss of accuracy because X is too big.\n"
                      " S17J1Y1 --W- Loss of accuracy because X is too big.\n");
}

}  // namespace
