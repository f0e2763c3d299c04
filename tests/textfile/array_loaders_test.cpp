// Tests of the command-driven loaders I5LRA2, I5LIA2 and I5LIN1: ranges,
// single entries, the questions of interactive mode and the failures.
#include "support/terminal_test.h"
#include "textfile/array_io.h"
#include "textfile/line_splitters.h"

#include <array>
#include <vector>

namespace {

class ArrayLoaders : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        x_.assign(8, 0.0);
    }
    // Splits a LOAD command into the six words.
    void command(const std::string& line) {
        int status = 0;
        splitMonitorCommand(line, words_.data(), status);
    }
    // Loads the 6-entry vector x_ (leading dimension 8) from the words.
    int loadVector(int setFlag = 1, int mode = 0, int channel = 5) {
        int status = 9;
        changed_ = 0;
        I5LRA2(x_.data(), 8, 6, 1, "xStart", " ", "argument values", words_.data(), 6, 4, " ,;", setFlag,
               channel, "", "SEQUENTIAL", mode, changed_, status);
        return status;
    }
    std::vector<double> filled(std::initializer_list<int> entries, double v) {
        std::vector<double> out(8, 0.0);
        for (int i : entries) out[static_cast<std::size_t>(i - 1)] = v;
        return out;
    }
    std::array<std::string, 6> words_;
    std::vector<double> x_;
    int changed_ = 0;
};

TEST_F(ArrayLoaders, RangesFillTheirEntries) {
    struct Case {
        const char* range;
        std::initializer_list<int> entries;
    };
    const Case cases[] = {
        {"(2:5)", {2, 3, 4, 5}},    {"(5:2)", {2, 3, 4, 5}}, {"(:3)", {1, 2, 3}},
        {"(2:)", {2, 3, 4, 5, 6}}, {"(2:999)", {2, 3, 4, 5, 6}}, {"(x:2)", {1, 2}},
        {"3:4", {3, 4}},
    };
    for (const Case& c : cases) {
        x_.assign(8, 0.0);
        command(std::string("LOAD,TERMINAL,XSTART,") + c.range + ",1.5");
        EXPECT_EQ(loadVector(), 0) << c.range;
        EXPECT_EQ(changed_, 1) << c.range;
        EXPECT_EQ(x_, filled(c.entries, 1.5)) << c.range;
    }
    EXPECT_EQ(output(), "");
}

TEST_F(ArrayLoaders, RangeBeyondTheArrayIsRefused) {
    command("LOAD,TERMINAL,XSTART,(7:2),1.5");
    EXPECT_EQ(loadVector(), 1);
    EXPECT_EQ(changed_, 0);
    command("LOAD,TERMINAL,XSTART,(2:5),abc");
    EXPECT_EQ(loadVector(), 1);
    EXPECT_EQ(x_, filled({}, 0.0));
    EXPECT_EQ(output(), " I5LRA2 -E- INDEX IS OUTSIDE OF BOUNDS!\n");
}

TEST_F(ArrayLoaders, AutoModeFailsWhereAQuestionWouldBeNeeded) {
    command("LOAD,,XSTART,3");
    EXPECT_EQ(loadVector(1, 1), 1);
    command("LOAD,,XSTART,0,1.0");
    EXPECT_EQ(loadVector(1, 1), 1);
    command("LOAD,,XSTART,three,1.0");
    EXPECT_EQ(loadVector(1, 1), 1);
    EXPECT_EQ(x_, filled({}, 0.0));
    EXPECT_EQ(output(), " I5LRA2 -E- INDEX IS OUTSIDE OF BOUNDS!\n");
}

TEST_F(ArrayLoaders, InteractiveQuestionsFillTheMissingWords) {
    command("LOAD,TERMINAL,XSTART");
    feed("2 7.5\n");
    EXPECT_EQ(loadVector(), 0);
    EXPECT_EQ(x_, filled({2}, 7.5));
    EXPECT_EQ(output(), " Enter the number of the element of \"xStart\" " + std::string(13, '.') + ": ");
    command("LOAD,TERMINAL,XSTART,2");
    feed("8\n");
    EXPECT_EQ(loadVector(), 0);
    EXPECT_EQ(x_, filled({2}, 8.0));
    // The present value 7.5 is the default of the question.
    EXPECT_EQ(output(), " Value of the element xStart(2)? " + std::string(17, '.') + " < 7.5 >: ");
}

TEST_F(ArrayLoaders, EmptyReplyTakesTheDefaultAndEndWordLeavesTheArray) {
    const auto before = x_;
    command("LOAD,TERMINAL,XSTART,4");
    feed("\n");
    EXPECT_EQ(loadVector(), 0);
    EXPECT_EQ(changed_, 1);  // the value shown as the default counts as loaded
    EXPECT_EQ(x_, before);
    changed_ = 0;
    command("LOAD,TERMINAL,XSTART,EXIT,5");
    EXPECT_EQ(loadVector(), 0);
    command("LOAD,TERMINAL,XSTART,4,E");
    EXPECT_EQ(loadVector(), 0);
    EXPECT_EQ(x_, filled({}, 0.0));
    EXPECT_EQ(changed_, 0);
}

TEST_F(ArrayLoaders, ScalarsAndTheIntegerTwin) {
    double rFTol = 0.0;
    command("LOAD,TERMINAL,RFTOL");
    feed("2.5E-3\n");
    int status = 9;
    I5LRA2(&rFTol, 1, 1, 1, "rFTol", " ", "", words_.data(), 6, 4, " ,;", 0, 5, "", "SEQ", 0, changed_,
           status);
    EXPECT_EQ(rFTol, 2.5e-3);
    EXPECT_EQ(output(), " Value of rFTol? " + std::string(35, '.') + " < 0 >: ");
    int fix[3] = {1, 1, 1};
    command("LOAD,,IFIXER,(2:3),0");
    I5LIA2(fix, 3, 3, 1, "iFixer", " ", "", words_.data(), 6, 4, " ,;", 1, 5, "", "SEQ", 0, changed_, status);
    EXPECT_EQ(fix[0] * 100 + fix[1] * 10 + fix[2], 100);
    command("LOAD,,IFIXER,4,0");
    I5LIA2(fix, 3, 3, 1, "iFixer", " ", "", words_.data(), 6, 4, " ,;", 1, 5, "", "SEQ", 0, changed_, status);
    EXPECT_EQ(status, 1);
    int maxITR = 40;
    command("LOAD,TERMINAL,MAXITR");
    feed("\n");
    I5LIA2(&maxITR, 1, 1, 1, "maxITR", " ", "", words_.data(), 6, 4, " ,;", 1, 5, "", "SEQ", 0, changed_,
           status);
    EXPECT_EQ(maxITR, 40);
    EXPECT_EQ(output(), " I5LIA2 -E- INDEX IS OUTSIDE OF DIMENSION BOUNDS!\n"
                        " Value of maxITR? < 40 > " + std::string(33, '.') + ": ");
}

}  // namespace
