// Tests of the text-to-number converters R02C2R1 and R02C2I1 and of R02AINT:
// forms, limits, every message, round trips and random bytes.
#include "support/terminal_test.h"
#include "textfile/number_text.h"

#include <climits>
#include <cmath>
#include <cstdlib>
#include <random>

namespace {

class NumberTextTest : public TerminalTest {};

// Messages on: the incoming err that switches them on.
constexpr int kTalk = -10;

const std::string kNoConversion = "              No conversion is possible.\n";

double toReal(std::string_view text, int& err, int errIn = 0) {
    err = errIn;
    return R02C2R1(text, err);
}

int toInt(std::string_view text, int& err, int errIn = 0) {
    err = errIn;
    return R02C2I1(text, err);
}

using TextToRealTest = NumberTextTest;
using TextToIntegerTest = NumberTextTest;
using ToleranceTest = NumberTextTest;
using RoundTripTest = NumberTextTest;

TEST_F(TextToRealTest, PlainForms) {
    int err = 9;
    EXPECT_DOUBLE_EQ(toReal("-12.5e2", err), -1250.0);
    EXPECT_EQ(err, 0);
    EXPECT_DOUBLE_EQ(toReal("+.5", err), 0.5);
    EXPECT_EQ(toReal("0.3", err), 0.3);  // the nearest double, not 3 * 0.1
    EXPECT_DOUBLE_EQ(toReal("1d3", err), 1000.0);
    EXPECT_DOUBLE_EQ(toReal("1D-3", err), 0.001);
    EXPECT_DOUBLE_EQ(toReal("0000.00001", err), 1e-5);
    EXPECT_DOUBLE_EQ(toReal("7.", err), 7.0);
    EXPECT_DOUBLE_EQ(toReal("1e", err), 1.0);  // an exponent without digits is 0
    EXPECT_EQ(toReal("-0", err), 0.0);
    EXPECT_EQ(err, 0);
    // Digits are kept while the whole number holds them (20 here) and the
    // first one left out rounds: ...9963516 reads as the double nearest the
    // text, as the compiler reads the literal; with the 21st digit dropped
    // unrounded it would read one ulp lower (1.3621589977952995).
    EXPECT_EQ(toReal("1.36215899779529963516", err), 1.36215899779529963516);
    EXPECT_EQ(toReal("3.07025285753500953567", err), 3.07025285753500953567);
}

TEST_F(TextToRealTest, RangeOfTheExponent) {
    int err = 0;
    EXPECT_DOUBLE_EQ(toReal("1.7e308", err), 1.7e308);
    EXPECT_EQ(err, 0);
    EXPECT_DOUBLE_EQ(toReal("9e307", err), 9e307);
    EXPECT_EQ(err, 0);
    EXPECT_DOUBLE_EQ(toReal("3e-308", err), 3e-308);
    EXPECT_EQ(err, 0);
    EXPECT_DOUBLE_EQ(toReal("0.0000123e-302", err), 1.23e-307);
    EXPECT_EQ(err, 0);
    EXPECT_DOUBLE_EQ(toReal("1.8e308", err, kTalk), 1.8);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(),
              " R02C2R1 --E- Float-point (mantissa) overflow in \"1.8e308\".\n" + kNoConversion);
    EXPECT_DOUBLE_EQ(toReal("2e-308", err, kTalk), 2.0);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(),
              " R02C2R1 --E- Float-point (mantissa) underflow in \"2e-308\".\n" + kNoConversion);
    EXPECT_DOUBLE_EQ(toReal("1000e306", err, kTalk), 1000.0);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(),
              " R02C2R1 --E- Float-point (exponent) overflow in \"1000e306\".\n" + kNoConversion);
    EXPECT_DOUBLE_EQ(toReal("1e400", err, kTalk), 1.0);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " R02C2R1 --E- Exponent overflow in \"1e400\".\n" + kNoConversion);
}

TEST_F(TextToRealTest, EveryScanFailureWithItsText) {
    struct Case {
        const char* input;
        double value;
        const char* text;
    };
    const Case cases[] = {
        {"1..2", 1.0, "Period dot is not unique:"},
        {"1e5.2", 1.0, "Period dot is not unique:"},
        {"1ee2", 1.0, "Exponent character is not unique:"},
        {"1-3E2", 1.0, "Exponent character is not unique:"},
        {"e5", 0.0, "Not a numeric format:"},
        {"-.", 0.0, "Not a numeric format:"},
        {"1e5-3", 1.0, "Exponent sign in not unique:"},
        {"12.5x", 12.5, "String is not a number:"},
        {"-12.5x", -12.5, "String is not a number:"},
        {"abc", 0.0, "String is not a number:"},
    };
    for (const Case& c : cases) {
        int err = 0;
        EXPECT_DOUBLE_EQ(toReal(c.input, err, kTalk), c.value) << c.input;
        EXPECT_EQ(err, -1) << c.input;
        EXPECT_EQ(output(), std::string(" R02C2R1 --E- ") + c.text + " \"" + c.input + "\".\n" +
                                kNoConversion);
        toReal(c.input, err, -9);
        EXPECT_EQ(err, -1);
        EXPECT_EQ(output(), "") << c.input;
    }
}

TEST_F(TextToIntegerTest, DigitsAndTheirLimits) {
    int err = 9;
    EXPECT_EQ(toInt("0000000000012", err), 12);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(toInt("1 000", err), 1000);
    EXPECT_EQ(toInt("  -42  ", err), -42);
    EXPECT_EQ(toInt("+0", err), 0);
    EXPECT_EQ(toInt("2147483647", err), INT_MAX);
    EXPECT_EQ(toInt("-2147483647", err), -INT_MAX);
    EXPECT_EQ(err, 0);
    // Only the first 32 characters are read.
    EXPECT_EQ(toInt("1" + std::string(31, ' ') + "2", err), 1);

    EXPECT_EQ(toInt("12345678901", err, kTalk), 0);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " R02C2I1 --E- Too many significant digits in \"12345678901\".\n");
    EXPECT_EQ(toInt("2147483648", err, kTalk), 214748364);  // the value before the digit
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " R02C2I1 --E- Integer overflow at \"2147483648\".\n");
    EXPECT_EQ(toInt("-2147483648", err), -214748364);
    EXPECT_EQ(err, -2);
}

TEST_F(TextToIntegerTest, WhatIsNotANumber) {
    int err = 0;
    EXPECT_EQ(toInt("", err, kTalk), 0);
    EXPECT_EQ(err, 2);
    EXPECT_EQ(output(), " R02C2I1 --E- Empty input string assumes zero,  \"\".\n");
    EXPECT_EQ(toInt("   ", err), 0);
    EXPECT_EQ(err, 2);

    struct Case {
        const char* input;
        int err;
    };
    const Case cases[] = {{"1x", -1}, {"1-2", -1}, {"x1.5", -1}, {"-", -3}, {".", -3}, {"E", -3}};
    for (const Case& c : cases) {
        EXPECT_EQ(toInt(c.input, err, kTalk), 0) << c.input;
        EXPECT_EQ(err, c.err) << c.input;
        EXPECT_EQ(output(), std::string(" R02C2I1 --E- Not a number: \"") + c.input + "\".\n");
    }
    EXPECT_EQ(toInt("1.2.3", err, kTalk), 0);  // the real conversion fails
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), " R02C2I1 --E- Not a number: \"1.2.3\".\n");
}

TEST_F(RoundTripTest, RealTextWithFifteenDigitsReadsBackWithinItsLastDigit) {
    std::mt19937_64 gen(20240611);
    std::uniform_real_distribution<double> mantissa(1.0, 10.0);
    std::uniform_int_distribution<int> decade(-307, 307);
    for (int k = 0; k < 3000; ++k) {
        double x = mantissa(gen) * std::pow(10.0, decade(gen));
        if (gen() & 1) x = -x;
        std::string field(32, ' ');
        int len = 0;
        int err = 0;
        R02R2C1(x, field, 1, 14, len, 2, 0, err);
        ASSERT_EQ(err, 0) << x;
        ASSERT_EQ(len, 22) << field;  // sign, 15 digits, point, e, sign, 3 digits
        const double back = R02C2R1(field, err);
        ASSERT_EQ(err, 0) << field;
        const double unit = std::pow(10.0, std::floor(std::log10(std::abs(x))) - 14);
        EXPECT_LE(std::abs(back - x), unit) << field << " from " << x;
    }
}

// The text in the usual notation: blanks out, D as E, and an E put in front
// of a sign that follows the mantissa.
std::string usualNotation(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == ' ') continue;
        if (c == 'd' || c == 'D') c = 'E';
        if (c == 'e') c = 'E';
        const bool sign = c == '-' || c == '+';
        if (sign && !out.empty() && out.back() != 'E' && out != "-" && out != "+") out += 'E';
        out += c;
    }
    if (!out.empty() && (out.back() == 'E' || out.back() == '-' || out.back() == '+')) out += '0';
    return out;
}

TEST_F(RoundTripTest, RandomNumberLikeTextsAgreeWithTheLibraryReader) {
    std::mt19937 gen(5);
    const std::string alphabet = "0123456789012345678901234567890123456789.-+eEdD ";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(1, 24);
    int compared = 0;
    for (int k = 0; k < 20000; ++k) {
        std::string text;
        const int n = length(gen);
        for (int i = 0; i < n; ++i) text += alphabet[pick(gen)];
        int err = 0;
        const double v = R02C2R1(text, err);
        if (err != 0) continue;
        const std::string usual = usualNotation(text);
        char* end = nullptr;
        const double expected = std::strtod(usual.c_str(), &end);
        ASSERT_EQ(*end, '\0') << text << " as " << usual;
        EXPECT_NEAR(v, expected, std::abs(expected) * 1e-15) << text;
        ++compared;
    }
    EXPECT_GT(compared, 500);
}

}  // namespace
