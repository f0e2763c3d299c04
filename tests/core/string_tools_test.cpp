// Tests of the string tools: lengths, case, compression, prefix and set
// tests, scanning, abbreviations, dropping characters and composed lines.
#include "core/string_tools.h"

#include <gtest/gtest.h>

namespace {

TEST(StringToolsTest, LengthCaseAndBlanks) {
    EXPECT_EQ(R02LEN("AB\t\n\v\f\r "), 2);
    EXPECT_EQ(R02LEN(std::string("AB\0 ", 4)), 2);
    EXPECT_EQ(R02LEN(" A\x01"), 3);  // other control characters count
    EXPECT_EQ(R02LEN(""), 0);
    std::string t = "aB1z", u = t, s = t;
    R02CASE(t, 1);
    R02CASE(u, -1);
    R02CASE(s, 2);
    EXPECT_EQ(t + u + s, "AB1Zab1zAb1Z");
    R02BLANK(s);
    EXPECT_EQ(s, "    ");
}

TEST(StringToolsTest, CompressCutsSqueezesAndMovesLeft) {
    auto cmp = [](std::string t, int first, int last, int squeeze, int mode) {
        int n = 0;
        R02CMP(t, first, last, squeeze, mode, n);
        return t + "|" + std::to_string(n);
    };
    const std::string text = "  Hello   World     ";
    EXPECT_EQ(cmp(text, -1, -1, 1, 1), "HELLO WORLD         |11");
    EXPECT_EQ(cmp(text, -1, -1, 2, 0), "HelloWorld          |10");
    EXPECT_EQ(cmp(text, 1, 0, 0, 0), text + "|20");  // the defaults change nothing
    EXPECT_EQ(cmp("abcdefgh", 3, 5, 0, 0), "cde     |3");
    EXPECT_EQ(cmp("abcdefgh", 9, 0, 0, 0), "abcdefgh|-8");
    EXPECT_EQ(cmp(" \t  ", -1, -1, 0, 0), "    |0");
}

TEST(StringToolsTest, PrefixEqualityAndSets) {
    EXPECT_TRUE(R02PFX("RUNNING", "RU", 1));
    EXPECT_TRUE(R02PFX("run   ", "RU  ", 1));
    EXPECT_FALSE(R02PFX("run", "RU", 0));
    EXPECT_FALSE(R02PFX("R", "RU", 1));
    EXPECT_TRUE(R02PFX("  ", "", 0));
    EXPECT_FALSE(R02PFX("AB", "   ", 0));
    EXPECT_TRUE(R02EQ("abc  ", "ABC", 1));
    EXPECT_FALSE(R02EQ("abc", "abcd", 1));
    EXPECT_TRUE(R02CHAR(' ', " ,;", 0));
    EXPECT_FALSE(R02CHAR(' ', ",;  ", 0));
    EXPECT_FALSE(R02CHAR('a', "ABC", 0));
    EXPECT_EQ(R02SCAN(",;", "ab,cd;ef", 4, 8, 0), 6);
    EXPECT_EQ(R02SCAN(",;", "ab,cd;ef", 8, 1, 0), 6);
    EXPECT_EQ(R02SCAN(",;", "ab,cd;ef", -5, 1, 0), 3);
    EXPECT_EQ(R02SCAN(",;", "ab,cd;ef", 1, 2, 0), 0);
    EXPECT_EQ(R02SCAN("X", "abxd", 1, 40, 1), 3);
}

TEST(StringToolsTest, ComposedLines) {
    auto line = [](std::string_view left, std::string_view middle, std::string_view right, int pos, int pos2,
                   char filler, std::size_t width = 80) {
        std::string out(width, '#');
        int n = 0;
        R02LINE(left, middle, right, pos, pos2, filler, out, n);
        return out.substr(0, static_cast<std::size_t>(R02LEN(out))) + "|" + std::to_string(n);
    };
    EXPECT_EQ(line("1", "TAVLO format", "", -58, 0, ' '), std::string(53, ' ') + "1 : TAVLO format|69");
    EXPECT_EQ(line("Number of points reduced to", "101", "", 0, 0, '.'), "Number of points reduced to : 101|33");
    EXPECT_EQ(line("Water  concentration", "0.500", "", 60, 0, '.'),
              "Water  concentration " + std::string(34, '.') + "  : 0.500|64");
    EXPECT_EQ(line("Water  concentration", "0.5", "", 60, 0, ':'),
              "Water  concentration " + std::string(35, ':') + " : 0.5|62");
    EXPECT_EQ(line("Chosen algorithm", "Broyden", "(x)", 25, 55, '-'),
              "Chosen algorithm ---  : Broyden" + std::string(23, ' ') + "(x)|57");
    EXPECT_EQ(line("ab", "cd", "ef", 5, 3, ' '), "ab : cd ef|10");
    EXPECT_EQ(line("Objective function", "Rosenbrock", "", 25, 0, '-', 20), "Objecti : Rosenbrock|20");
    EXPECT_EQ(line("Left", "Middle", "Right side", 0, 0, ' ', 15), " : Middle Right|15");
}

}  // namespace
