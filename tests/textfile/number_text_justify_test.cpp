// Tests of R02JUST: left and right justification of a column range, the
// cases that change nothing, and the three refusals with their texts.
#include "support/terminal_test.h"
#include "textfile/number_text.h"

namespace {

class NumberTextTest : public TerminalTest {};

using JustifyTest = NumberTextTest;

std::string justified(std::string text, int first, int last, char mode, int& err) {
    err = 99;
    R02JUST(text, first, last, mode, err);
    return text;
}

TEST_F(JustifyTest, MovesThePartToEitherEndOfTheColumns) {
    int err = 0;
    EXPECT_EQ(justified("  ab c  ", 1, 8, 'L', err), "ab c    ");
    EXPECT_EQ(err, 0);
    EXPECT_EQ(justified("  ab c  ", 1, 8, 'R', err), "    ab c");
    EXPECT_EQ(justified("  ab c  ", 1, 8, 'r', err), "    ab c");
    EXPECT_EQ(justified("ab c    ", 1, 8, 'l', err), "ab c    ");
    // Only the columns first..last move; the rest of the field stays.
    EXPECT_EQ(justified("x  ab  |y", 2, 7, 'R', err), "x    ab|y");
    EXPECT_EQ(justified("x  ab  |y", 2, 6, 'L', err), "xab    |y");
    EXPECT_EQ(justified("|\t 7\t|", 2, 5, 'R', err), "|   7|");
    EXPECT_EQ(err, 0);
    EXPECT_EQ(output(), "");
}

TEST_F(JustifyTest, RefusalsWithTheirTexts) {
    int err = 0;
    std::string empty;
    R02JUST(empty, 1, 2, 'L', err);
    EXPECT_EQ(err, -1);
    EXPECT_EQ(output(), "  R02JUST --E- No string specified.\n");

    EXPECT_EQ(justified("abc", 0, 2, 'L', err), "abc");
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " R02JUST --E- Wrong substring offsets: (0:2)\n");
    justified("abc", 2, 4, 'L', err);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " R02JUST --E- Wrong substring offsets: (2:4)\n");
    justified("abc", 3, 1, 'L', err);
    EXPECT_EQ(err, -2);
    EXPECT_EQ(output(), " R02JUST --E- Wrong substring offsets: (3:1)\n");
    justified("abc", -1, 2, 'L', err);
    EXPECT_EQ(output(), " R02JUST --E- Wrong substring offsets: (-1:2)\n");

    EXPECT_EQ(justified(" ab ", 1, 4, 'C', err), " ab ");
    EXPECT_EQ(err, -3);
    EXPECT_EQ(output(), " R02JUST --E- Wrong justification mode \"C\", must be L or R.\n");
}

}  // namespace
