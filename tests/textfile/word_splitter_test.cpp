// Tests of R02GEL and its family: weak and strong delimiters, boundaries,
// linkers, cut words, failures, and the place kept in saveTTW.
#include "support/terminal_test.h"
#include "textfile/word_splitter.h"

#include "textfile/word_splitter.h"

#include <array>

namespace {

// One line under R02GEL, with the caller's state in one place.
struct Gel {
    explicit Gel(std::string text, std::string b = "", std::string l = "", int j = 0)
        : line(std::move(text)), bounds(std::move(b)), links(std::move(l)), join(j) {}
    std::string line, bounds, links;
    int join;
    std::string delims = " ,", word = std::string(32, ' '), open;
    int wordLen = 0, count = 0, start = 0, pos = 0, state = 0, depth = 0, status = 0;
    char ch = '?', lastDelim = '?';

    std::string call(int wordNo) {
        R02GEL(line, wordNo, delims, bounds, links, join, word, wordLen, count, start, pos, ch, lastDelim, state,
               depth, open, status);
        return word.substr(0, static_cast<std::size_t>(wordLen));
    }
    // The word, its status and start.
    std::string show(int wordNo) {
        std::string w = call(wordNo);
        return w + "/" + std::to_string(status) + " at " + std::to_string(start);
    }
    // The word with the character behind it and the delimiter before it.
    std::string around() {
        std::string w = call(-1);
        return w + ch + lastDelim;
    }
    // All next words as "word/status" joined by "|", up to the last or a failure.
    std::string all() {
        std::string got;
        for (int guard = 0; guard < 20; ++guard) {
            std::string w = call(-1);
            got += (status < 0 ? "" : w) + "/" + std::to_string(status) + "|";
            if (status != 0 && status != 2) break;
        }
        return got;
    }
};

class WordSplitterTest : public TerminalTest {};

TEST_F(WordSplitterTest, WordsOfLines) {
    EXPECT_EQ(Gel("A,,B").all(), "A/0|/0|B/1|");
    EXPECT_EQ(Gel("A  B").all(), "A/0|B/1|");
    EXPECT_EQ(Gel("A , B").all(), "A/0|B/1|");
    EXPECT_EQ(Gel(",A").all(), "/0|A/1|");
    EXPECT_EQ(Gel("A,").all(), "A/0|/1|");
    EXPECT_EQ(Gel("A\tB").all(), "A/0|B/1|");
    EXPECT_EQ(Gel("  ").all(), "/-1|");
    EXPECT_EQ(Gel("'A B' C", "''\"\"").all(), "'A B'/0|C/1|");
    EXPECT_EQ(Gel("\"a 'b' c\" d", "''\"\"").all(), "\"a 'b' c\"/0|d/1|");
    EXPECT_EQ(Gel("x (a [b, c]),y", "()[]").all(), "x/0|(a [b, c])/0|y/1|");
    EXPECT_EQ(Gel("f(a b)e", "()", "", 1).all(), "f(a b)/0|e/1|");
    EXPECT_EQ(Gel("(a] b", "()[]").all(), "/-3|");
    EXPECT_EQ(Gel("x (a b", "()").all(), "x/0|/-3|");
    EXPECT_EQ(Gel("\"it's\" x", "''\"\"").all(), "/-3|");  // ' opened inside " is still open
    EXPECT_EQ(Gel("A = B, C", "", "=").all(), "A=B/0|C/1|");
    EXPECT_EQ(Gel("A =B=,D", "", "=").all(), "A=B=/0|D/1|");
    EXPECT_EQ(Gel("A,=B", "", "=").all(), "A/0|/-2|");
    EXPECT_EQ(Gel(std::string(40, 'X') + " Y").all(), std::string(32, 'X') + "/2|Y/1|");
    Gel commaOnly("A B,C");
    commaOnly.delims = ",";
    EXPECT_EQ(commaOnly.all(), "A B/0|C/1|");
    Gel emptyList("A,B C");
    emptyList.delims = "  ";
    EXPECT_EQ(emptyList.all(), "A,B/0|C/1|");
}

TEST_F(WordSplitterTest, MessagesOfWarningsAndFailures) {
    Gel cut(std::string(40, 'X'));
    EXPECT_EQ(cut.all(), std::string(32, 'X') + "/3|");
    EXPECT_EQ(output(), " R02GEL ---W- Exceeded maximum word length (32).\n");
    Gel g("(a] b", "()[]");
    g.call(-1);
    EXPECT_EQ(g.state, 7);
    g.call(1);
    EXPECT_EQ(output(), " R02GEL ---E- Unmatched boundaries: ]\n R02GEL ---E- Processing failed.\n");
    g.state = 0;  // a new line leaves the failed state
    g.line = "[a] b";
    EXPECT_EQ(g.call(1), "[a]");
    output();
    Gel(" (a", "()").call(1);
    Gel("\"a'b\"c'", "''\"\"").call(1);  // fails at the second ", below the open '
    Gel("=A", "", "=").call(1);
    Gel twice("A,B", "", ",");
    twice.call(1);
    EXPECT_EQ(twice.status, -4);
    EXPECT_EQ(output(),
              " R02GEL ---E- Unmatched boundaries: (\n R02GEL ---E- Unmatched boundaries: \"\n"
              " R02GEL ---E- No left word for linking.\n"
              " R02GEL ---E- Nonunique character in delimiter/bound/link lists!\n"
              "              \" ,\"\n              \"\"\n              \",\"\n"
              " R02GEL ---E- Processing failed.\n");
}

}  // namespace
