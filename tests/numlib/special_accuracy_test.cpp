// Accuracy of the special functions against the reference table made with an
// independent multiple-precision tool, over the whole domain of each function.
#include "numlib/special_functions.h"

#include "special_reference.h"

#include "platform/units.h"

#include "support/terminal_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

using special_reference::Row;
using special_reference::rowsOf;

class SpecialAccuracy : public TerminalTest {
protected:

    // Every row of the routine within tol relative to max(|ref|, scale(row)),
    // with err 0 and not a word on the console.
    template <class F, class S>
    void checkAll(const std::string& routine, double tol, F compute, S scale,
                  std::size_t expectedRows) {
        const std::vector<Row> rows = rowsOf(routine);
        ASSERT_EQ(rows.size(), expectedRows) << routine << " rows in the table";
        double worst = 0.0;
        for (const Row& r : rows) {
            int err = 99;
            const double got = compute(r, err);
            const double ref = r.v();
            const double size = std::max(std::fabs(ref), scale(r));
            const double rel = std::fabs(got - ref) / size;
            worst = std::max(worst, rel);
            EXPECT_LE(rel, tol) << routine << "(" << r.arg[0] << ", " << r.arg[1] << ", "
                                << r.arg[2] << ") = " << got << ", reference " << r.value;
            EXPECT_EQ(err, 0) << routine << "(" << r.arg[0] << ")";
        }
        EXPECT_EQ(out_.str(), "") << routine;
        std::ostringstream text;
        text << worst;
        RecordProperty("worst_" + routine, text.str());
    }
    template <class F>
    void checkAll(const std::string& routine, double tol, F compute, std::size_t expectedRows) {
        checkAll(routine, tol, compute, [](const Row&) { return 0.0; }, expectedRows);
    }
};

TEST_F(SpecialAccuracy, GammaOverItsWholeRange) {
    // Up to |x| = 10 the series and at most ten products or quotients: a few
    // ulps.  Beyond 10, Gamma = exp(E) with E up to 706: the rounding of E,
    // E * 1.1e-16, becomes the relative error of the result, and for negative x
    // sin(pi y) adds y * 1.1e-16 / |sin(pi y)|; 2e-13 covers both.
    const auto gamma = [](const Row& r, int& err) { return S14GAM(r.a(0), err); };
    const std::vector<Row> rows = rowsOf("S14GAM");
    ASSERT_EQ(rows.size(), 38u);
    for (const Row& r : rows) {
        int err = 99;
        const double x = r.a(0);
        const double got = gamma(r, err);
        const double tol = std::fabs(x) <= 10.0 ? 2e-15 : 2e-13;
        EXPECT_LE(std::fabs(got - r.v()), tol * std::fabs(r.v())) << "Gamma(" << r.arg[0] << ")";
        EXPECT_EQ(err, 0) << "Gamma(" << r.arg[0] << ")";
    }
    EXPECT_EQ(out_.str(), "");
}

TEST_F(SpecialAccuracy, CodysGammaOverItsWholeRange) {
    // Same reasons as S14GAM beyond 12 (exp of up to 706).  The reflection for
    // negative x divides by sin(pi frac): pi frac is rounded by up to 3.5e-16,
    // which is 1.1e-16/d relative to the sine at a distance d from the nearest
    // integer; 4e-16/d covers it (S14GAM divides by x + i exactly instead).
    const std::vector<Row> rows = rowsOf("S14GAM2");
    ASSERT_EQ(rows.size(), 38u);
    for (const Row& r : rows) {
        int err = 99;
        const double x = r.a(0);
        const double got = S14GAM2(x, err);
        double tol = std::fabs(x) < 12.0 ? 2e-15 : 2e-13;
        if (x < 0.0) tol += 4e-16 / std::fabs(x - std::round(x));
        EXPECT_LE(std::fabs(got - r.v()), tol * std::fabs(r.v())) << "Gamma2(" << r.arg[0] << ")";
        EXPECT_EQ(err, 0) << "Gamma2(" << r.arg[0] << ")";
    }
    EXPECT_EQ(out_.str(), "");
}

TEST_F(SpecialAccuracy, LogGammaAcrossEverySwitchPoint) {
    // The rational forms keep relative accuracy even next to the zeros at 1
    // and 2.  For negative x the reflection subtracts ln|sin(pi y)|, whose
    // argument carries y * 1.1e-16 absolute error: scaled by |x| * 1e-16.
    const std::vector<Row> rows = rowsOf("S14LGAM");
    ASSERT_EQ(rows.size(), 40u);
    for (const Row& r : rows) {
        int err = 99;
        const double x = r.a(0);
        const double got = S14LGAM(x, err);
        const double tol = x > 0.0 ? 5e-16 : 1e-15;
        EXPECT_LE(std::fabs(got - r.v()), tol * std::max(std::fabs(r.v()), std::fabs(x) * 1e-1))
            << "lnGamma(" << r.arg[0] << ")";
        EXPECT_EQ(err, 0) << "lnGamma(" << r.arg[0] << ")";
    }
    EXPECT_EQ(out_.str(), "");
}

TEST_F(SpecialAccuracy, InverseNormalInTheCentreAndBothTails) {
    checkAll("S15IND", 1e-15, [](const Row& r, int& err) { return S15IND(r.a(0), err); }, 24);
}

TEST_F(SpecialAccuracy, BesselJ1AndY1SmallSwitchPointsAndLarge) {
    // Up to 8 the rational forms are factored through the first zeros and stay
    // relatively accurate there, down to the rounding of the low part of each
    // zero (half an ulp of 1.8e-3 at most, 1.1e-19 absolute times a slope
    // below 1): a floor of 1e-4 * 1e-15.  Beyond 8 the result is modulus * (cos, sin)
    // of a reduced phase: its error is relative to the modulus sqrt(2/(pi x)),
    // and the phase reduction loses x * 1.1e-16 / (2 pi) absolute.
    const auto scale = [](const Row& r) {
        const double x = std::fabs(r.a(0));
        return x > 8.0 ? std::sqrt(2.0 / (3.141592653589793 * x)) * (1.0 + x * 1e-2) : 1e-4;
    };
    checkAll("S17J1Y1", 1e-15,
             [](const Row& r, int& err) { return S17J1Y1(r.a(0), r.n(1), err); }, scale, 52);
}

}  // namespace
