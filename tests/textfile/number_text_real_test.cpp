// Tests of the number-to-text converters: R02R2C1 by layout, its limits,
// rounding, fitting and messages; the wrappers R02R2C2, R02R2C3; R02I2C1, R02I2C2.
#include "support/terminal_test.h"
#include "textfile/number_text.h"

#include <climits>
#include <cmath>

namespace {

class NumberTextTest : public TerminalTest {};

// Messages on: the incoming err that switches them on.
constexpr int kTalk = -10;

struct Shown {
    std::string text;
    int len;
    int err;
};

// R02R2C1 into a field of `width` characters; the field must come back with
// its width and blanks behind the text.
Shown real(double v, int nInt, int nFrac, int fmt, int width = 40, int type = 2, int errIn = 0) {
    std::string field(static_cast<std::size_t>(width), '#');
    int len = -7;
    int err = errIn;
    R02R2C1(v, field, nInt, nFrac, len, type, fmt, err);
    EXPECT_EQ(field.size(), static_cast<std::size_t>(width));
    EXPECT_GE(len, 0);
    const std::size_t used = static_cast<std::size_t>(std::max(len, 0));
    EXPECT_EQ(field.find_first_not_of(' ', used), std::string::npos) << field;
    return {field.substr(0, used), len, err};
}

std::string text(double v, int nInt, int nFrac, int fmt, int width = 40, int type = 2) {
    return real(v, nInt, nFrac, fmt, width, type).text;
}

const std::string kNoConversion = "              No conversion REAL->CHAR is possible.\n";

using RealToTextTest = NumberTextTest;

TEST_F(RealToTextTest, ExampleTableWithFiveDecimals) {
    struct Row {
        double v;
        const char* fmt0;
        const char* fmt1;
        const char* fmtMinus1;
    };
    const Row rows[] = {
        {3.14159265, " 3.14159e+000", "3.14159", "3.14159"},
        {1234.5, " 1.23450e+003", "1234.50", "1234.5"},
        {3.0, " 3.00000e+000", "3.00000", "3.0"},
        {1000000, " 1.00000e+006", "1.00000e+6", "1.0e+6"},
        {0.05, " 5.00000e-002", "5.00000e-2", "5.0e-2"},
        {0.5, " 5.00000e-001", "0.500000", "0.5"},
    };
    for (const Row& r : rows) {
        const Shown s0 = real(r.v, 1, 5, 0);
        EXPECT_EQ(s0.text, r.fmt0);
        EXPECT_EQ(s0.len, 13);
        EXPECT_EQ(s0.err, 0);
        EXPECT_EQ(text(r.v, 1, 5, 1), r.fmt1);
        EXPECT_EQ(text(r.v, 1, 5, -1), r.fmtMinus1);
    }
    EXPECT_EQ(output(), "");
}

// Every layout of R02R2C1 in one table: the zero forms (one "0" whatever nInt
// is for fmt 3; below the smallest normal number everything is zero), fixed
// decimals with the rounding that brings a digit, a lost value (err -3), no
// digit at all (err 4), a carry into a new integer digit, an overflow of the
// field filled with stars (err -4), and the rounding threshold: below S
// digits the last digit goes up from a remainder of 0.45, at S digits (7 for
// type 1) only from 0.7.
TEST_F(RealToTextTest, LayoutsOfOneRealNumber) {
    const struct {
        double v;
        int nInt, nFrac, fmt, type;
        const char* text;
        int err;
    } rows[] = {
        {0.0, 1, 3, 0, 2, " 0.000e+000", 0},   {0.0, 2, 3, 0, 2, " 00.000e+000", 0},
        {0.0, 0, 2, 0, 2, " .00e+000", 0},     {0.0, 1, 3, 1, 2, "0.0", 0},
        {0.0, 0, 3, 1, 2, ".0", 0},            {0.0, 1, 0, 1, 2, "0.", 0},
        {0.0, 1, 3, 2, 2, "0.000", 0},         {0.0, 3, 1, 3, 2, "0.0", 0},
        {0.0, 0, 2, 2, 2, ".00", 0},           {0.0, 1, 3, -1, 2, "0", 0},
        {0.0, 1, 3, -2, 2, "0", 0},            {-0.0, 1, 3, -3, 2, "0", 0},
        {std::ldexp(1.0, -1030), 1, 3, 1, 2, "0.0", 0}, {-1e-39, 1, 3, 0, 1, " 0.000e+00", 0},
        {3.14159265, 1, 3, 2, 2, "3.142", 0},  {0.05, 1, 3, 2, 2, "0.050", 0},
        {0.5, 1, 3, 2, 2, "0.500", 0},         {0.5, 1, 3, -2, 2, "0.5", 0},
        {3.0, 1, 5, -2, 2, "3", 0},            {0.0006, 1, 3, 2, 2, "0.001", 0},
        {0.0001, 1, 3, 2, 2, "0.000", -3},     {0.3, 1, 0, 2, 2, "0.", 4},
        {0.6, 1, 0, 2, 2, "1.", 0},            {9.9996, 2, 3, 2, 2, "10.000", 0},
        {12345.0, 3, 1, 2, 2, "******", -4},   {-12345.0, 3, 1, 2, 2, "-*****", -4},
        {9.9996, 1, 3, 2, 2, "******", -4},    {12.5, 1, 3, 3, 2, "******", -4},
        {0.99996, 1, 3, 1, 2, "1.000", 0},     {1.23446, 1, 3, 1, 2, "1.235", 0},
        {1.23444, 1, 3, 1, 2, "1.234", 0},     {1.2345675, 1, 5, 1, 1, "1.23457", 0},
        {1.2345675, 1, 6, 1, 1, "1.234567", 0}, {1.2345678, 1, 6, 1, 1, "1.234568", 0},
    };
    for (const auto& r : rows) {
        const Shown s = real(r.v, r.nInt, r.nFrac, r.fmt, 40, r.type);
        EXPECT_EQ(s.text, r.text) << r.v << " " << r.nInt << " " << r.nFrac << " " << r.fmt;
        EXPECT_EQ(s.err, r.err) << r.v << " " << r.nInt << " " << r.nFrac << " " << r.fmt;
    }
}

// ---- wrappers and integers ---------------------------------------------------

TEST_F(RealToTextTest, IntegersToText) {
    struct Case {
        int i;
        const char* text;
    };
    const Case cases[] = {{0, "0"},
                          {7, "7"},
                          {12345, "12345"},
                          {-12345, "-12345"},
                          {INT_MAX, "2147483647"},
                          {INT_MIN, "-2147483648"}};
    for (const Case& c : cases) {
        std::string field(12, '#');
        int len = 0;
        int err = 9;
        R02I2C1(c.i, field, len, err);
        const std::string expected = c.text;
        EXPECT_EQ(field, expected + std::string(12 - expected.size(), ' '));
        EXPECT_EQ(len, static_cast<int>(expected.size()));
        EXPECT_EQ(err, 0);
    }
    std::string narrow(10, '#');
    int len = 0;
    int err = 0;
    R02I2C1(INT_MIN, narrow, len, err);
    EXPECT_EQ(narrow, "*         ");
    EXPECT_EQ(err, -4);
    EXPECT_EQ(output(), "");  // that text stays unsent

    std::string empty;
    R02I2C1(5, empty, len, err);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(len, 0);
    EXPECT_EQ(output(), " R02I2C1 --E- Zero string length dimensioned.\n");
}

}  // namespace
