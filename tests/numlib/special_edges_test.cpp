// Gamma next to zero from below and at the negative integers beyond -10, and
// Y1 on a dense grid of (4, 8], against references computed here in binary128
// (special_quad_reference.h).
#include "numlib/special_functions.h"

#include "support/terminal_test.h"
#include "special_quad_reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using quad_reference::Quad;

class SpecialEdges : public TerminalTest {};

const double kBig = std::ldexp(1.0, 1022);  // rBig of IEEE double
const double kEps = std::ldexp(1.0, -52);

double relativeError(double got, Quad ref) {
    return static_cast<double>(quad_reference::absq(Quad(got) - ref) / quad_reference::absq(ref));
}

TEST_F(SpecialEdges, GammaOfATinyNegativeArgumentIsNoNegativeInteger) {
    // For -2^-54 <= x < 0, x + 1 rounds to 1.  Near 0,
    // Gamma(x) = 1/x - gamma + (gamma^2/2 + pi^2/12) x + O(x^2) and
    // ln|Gamma(x)| = -ln|x| - gamma x + O(x^2) (the Taylor series of ln Gamma
    // at 1, less ln|x|); both are evaluated in binary128.
    const double rows[] = {-1e-17, -std::ldexp(1.0, -54), -std::ldexp(1.0, -60), -1e-300,
                           -std::ldexp(1.0, -53), -1e-16};
    const Quad g = quad_reference::euler();
    const Quad pi = quad_reference::pi();
    for (const double x : rows) {
        const Quad qx = x;
        const Quad gamma = 1 / qx - g + (g * g / 2 + pi * pi / 12) * qx;
        const Quad lnGamma = -quad_reference::log(-qx) - g * qx;
        int err = 99;
        EXPECT_LE(relativeError(S14GAM(x, err), gamma), 4 * kEps) << "Gamma(" << x << ")";
        EXPECT_EQ(err, 0) << x;
        EXPECT_LE(relativeError(S14LGAM(x, err), lnGamma), 2 * kEps) << "lnGamma(" << x << ")";
        EXPECT_EQ(err, 0) << x;
        EXPECT_LE(relativeError(S14GAM2(x, err), gamma), 4 * kEps) << "Gamma2(" << x << ")";
        EXPECT_EQ(err, 0) << x;
    }
    EXPECT_EQ(output(), "");
    // S14LGAM(-1e-17) = 39.1439465808988 (= 17 ln 10 + 5.8e-18).
    int err = 99;
    EXPECT_NEAR(S14LGAM(-1e-17, err), 39.14394658089878, 1e-13);
}

TEST_F(SpecialEdges, GammaRefusesEveryNegativeIntegerAndKeepsItsNeighbours) {
    // Beyond -10 the reflection divides by sin(pi y), which is never exactly
    // 0 in floating point: the integer is caught on x itself.
    struct Row {
        double x;
        const char* shown;  // eight significant digits, as the messages print x
    };
    const Row integers[] = {{-11.0, "-11.000000"}, {-12.0, "-12.000000"}, {-20.0, "-20.000000"},
                            {-99.0, "-99.000000"}, {-170.0, "-170.00000"}};
    for (const Row& r : integers) {
        int err = 99;
        EXPECT_EQ(S14GAM(r.x, err), kBig) << r.x;
        EXPECT_EQ(err, -1) << r.x;
        EXPECT_EQ(output(), std::string(" S14GAM ---E- The argument is a negative integer: ") +
                              r.shown + "\n");
    }
    // Half-way between integers the value stands: Gamma(1/2) = sqrt(pi) lowered
    // by exact quotients.  The reflection's error is that of exp(E), E up to 700.
    const double halves[] = {-10.5, -11.5, -20.5, -99.5, -169.5};
    for (const double x : halves) {
        int err = 99;
        const double got = S14GAM(x, err);
        EXPECT_LE(relativeError(got, quad_reference::gammaHalfInteger(x)), 2e-13) << x;
        EXPECT_EQ(err, 0) << x;
    }
    EXPECT_EQ(output(), "");
    // One ulp from -11 it is a number, with the loss-of-precision warning.
    int err = 99;
    const double x = std::nextafter(-11.0, 0.0);
    EXPECT_NE(S14GAM(x, err), kBig);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(output().rfind(" S14GAM ---W- Loss of precision because the argument is too close\n",
                           0),
              0u);
}

TEST_F(SpecialEdges, BesselOneOnADenseGridFromFourToEight) {
    // 8000 steps of 5e-4 and the point where a refitted form was worst.  J1
    // and Y1 are held to relative accuracy; near the zero of Y1 at 5.4297 and
    // of J1 at 7.0156 the forms factor out x - zero, so that relative
    // accuracy holds there too, down to 1e-4 of the value's scale.
    const int steps = 8000;
    double worstJ = 0.0;
    double worstY = 0.0;
    double worstAt = 0.0;
    for (int k = 0; k <= steps; ++k) {
        const double x = k == 0 ? 7.940060015003751 : 4.0 + 4.0 * k / steps;
        const quad_reference::BesselPair ref = quad_reference::besselOne(x);
        int errJ = 99;
        int errY = 99;
        const double j1 = S17J1Y1(x, 0, errJ);
        const double y1 = S17J1Y1(x, 1, errY);
        ASSERT_EQ(errJ, 0);
        ASSERT_EQ(errY, 0);
        const double scaleJ = std::max(std::fabs(static_cast<double>(ref.j1)), 1e-4);
        const double scaleY = std::max(std::fabs(static_cast<double>(ref.y1)), 1e-4);
        const double ej = static_cast<double>(quad_reference::absq(Quad(j1) - ref.j1)) / scaleJ;
        const double ey = static_cast<double>(quad_reference::absq(Quad(y1) - ref.y1)) / scaleY;
        worstJ = std::max(worstJ, ej);
        if (ey > worstY) {
            worstY = ey;
            worstAt = x;
        }
    }
    EXPECT_LE(worstJ, 4 * kEps);
    EXPECT_LE(worstY, 4 * kEps) << "at x = " << worstAt;
    RecordProperty("worst_Y1_4_8_in_eps", std::to_string(worstY / kEps));
    EXPECT_EQ(output(), "");
}

}  // namespace
