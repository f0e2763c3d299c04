// S14IBETA against S14BFRI over a grid of P, a and b, its refusals, and the
// range checks of S14BFRI.
#include "numlib/special_functions.h"

#include "platform/units.h"

#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

class IncompleteBeta : public TerminalTest {};

TEST_F(IncompleteBeta, RatioRangeChecksAndSymmetricPoint) {
    int err = 99;
    EXPECT_NEAR(S14BFRI(0.5, 2.0, 2.0, err), 0.5, 1e-15);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(S14BFRI(0.0, 2.0, 3.0, err), 0.0);
    EXPECT_EQ(S14BFRI(1.0, 2.0, 3.0, err), 1.0);
    // I(x; 1, 1) = x and I(x; a, 1) = x^a.
    EXPECT_NEAR(S14BFRI(0.3, 1.0, 1.0, err), 0.3, 1e-15);
    EXPECT_NEAR(S14BFRI(0.3, 3.0, 1.0, err), 0.027, 1e-16);
    EXPECT_EQ(output(), "");
    EXPECT_EQ(S14BFRI(1.5, 2.0, 2.0, err), 0.0);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " S14BFRI --E- X is not in the range (0.0,1.0).\n");
    EXPECT_EQ(S14BFRI(-0.1, 2.0, 2.0, err), 0.0);
    EXPECT_EQ(err, -1);
    output();
    EXPECT_EQ(S14BFRI(0.5, 0.0, 2.0, err), 0.0);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " S14BFRI --E- Both Beta parameters must be greater than 0.0.\n");
    EXPECT_EQ(S14BFRI(0.5, 2.0, -1.0, err), 0.0);
    EXPECT_EQ(err, -2);
}

TEST_F(IncompleteBeta, InverseMeetsTheRatioOverAGrid) {
    const double ps[] = {1e-10, 1e-6, 0.001, 0.01, 0.025, 0.1, 0.3, 0.5,
                         0.7,   0.9,  0.975, 0.999, 1.0 - 1e-6};
    const double ab[][2] = {{0.5, 0.5}, {0.1, 3.0},  {3.0, 0.1},  {1.0, 1.0},
                            {2.0, 3.0}, {1.5, 12.0}, {5.0, 5.0},  {20.0, 30.0},
                            {50.0, 60.0}, {0.8, 20.0}, {100.0, 2.0}, {2.5, 2.5}};
    for (const auto& p : ab) {
        for (double P : ps) {
            int err = 99;
            const double x = S14IBETA(P, p[0], p[1], err);
            EXPECT_TRUE(err == 0 || err == 3) << "P " << P << " a " << p[0] << " b " << p[1];
            EXPECT_GE(x, 0.0);
            EXPECT_LE(x, 1.0);
            // P must lie within 1e-10 of I over x and its two neighbouring
            // doubles.  Where I is steep the neighbours are what counts: for
            // a = 3, b = 0.1 and P = 0.999 the solution 1 - 1e-30 is no double,
            // and I leaps from 0.97 to 1 over the last step below 1.
            int e = 0;
            const double here = S14BFRI(x, p[0], p[1], e);
            const double below = S14BFRI(std::nextafter(x, 0.0), p[0], p[1], e);
            const double above = S14BFRI(std::nextafter(x, 1.0), p[0], p[1], e);
            EXPECT_GE(P, std::min(below, here) - 1e-10)
                << "P " << P << " a " << p[0] << " b " << p[1] << " x " << x;
            EXPECT_LE(P, std::max(above, here) + 1e-10)
                << "P " << P << " a " << p[0] << " b " << p[1] << " x " << x;
        }
    }
    EXPECT_EQ(output(), "");
}

}  // namespace
