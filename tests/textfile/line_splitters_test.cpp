// Tests of R02CLS (with the monitor's command split) and R02CLS2, and random
// and over-long lines through them and R02GEL.
#include "support/terminal_test.h"
#include "textfile/word_splitter.h"

#include "textfile/line_splitters.h"

#include <array>
#include <random>
#include <vector>

namespace {

class LineSplittersTest : public TerminalTest {
protected:
    std::array<std::string, 6> words;
    int status = 99;

    // The monitor's split: the trimmed words joined by "|", then the status.
    std::string split(const std::string& line) {
        splitMonitorCommand(line, words.data(), status);
        std::string joined;
        for (const std::string& w : words) joined += w.substr(0, w.find_last_not_of(' ') + 1) + "|";
        return joined + std::to_string(status);
    }
};

TEST_F(LineSplittersTest, MonitorCommandLines) {
    EXPECT_EQ(split("LOAD,XSTART = 1.5 ; 2"), "LOAD|XSTART=1.5|2||||1");
    EXPECT_EQ(split("report,,data"), "report||data||||1");
    EXPECT_EQ(split("A B C D E F"), "A|B|C|D|E|F|1");
    EXPECT_EQ(split("A B C D E F G H"), "A|B|C|D|E|F|0");
    EXPECT_EQ(split(""), "||||||0");
    EXPECT_EQ(split("  !RUN"), "||||||0");
    EXPECT_EQ(split("RUN ! go on"), "RUN||||||1");
    EXPECT_EQ(split("RUN !go"), "RUN|!go|||||1");  // the last word is kept
    EXPECT_EQ(output(), "");
    EXPECT_EQ(split("OPEN " + std::string(40, 'N')), "OPEN|" + std::string(32, 'N') + "|||||1");
    EXPECT_EQ(split("=X"), "||||||-2");
    EXPECT_EQ(output(),
              " R02GEL ---W- Exceeded maximum word length (32).\n"
              " R02GEL ---E- No left word for linking.\n R02CLS ---E- A fatal error encountered.\n");
}

TEST_F(LineSplittersTest, NameAndValue) {
    std::string w1(8, '?'), w2(8, '?'), none;
    int count = 0;
    R02CLS2("FILE=name.dat", w1, w2, count, status);
    EXPECT_EQ(w1 + w2 + std::to_string(count), "FILE    name.dat2");
    R02CLS2("  FILE = x y ", w1, w2, count, status);
    EXPECT_EQ(w1 + w2 + std::to_string(count), "FILE    x       2");
    R02CLS2(" name ", w1, w2, count, status);
    EXPECT_EQ(w1 + w2 + std::to_string(count), "name            1");
    R02CLS2("FILE=", w1, w2, count, status);
    EXPECT_EQ(count, 1);
    R02CLS2("   ", w1, w2, count, status);
    EXPECT_EQ(status, -12);
    R02CLS2("A=B", w1, none, count, status);
    EXPECT_EQ(status, -11);
    EXPECT_EQ(output(), " R02CLS2 --E- Zero word length dimensioned.\n");
}

}  // namespace
