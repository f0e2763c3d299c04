// The splitter family R02TNW, R02TNW3, R02GEL0, R02TNW1, R02GEL1: R02GEL with
// its place kept in saveTTW, and the first-call check of each.
#include "textfile/word_splitter.h"

#include "core/console_layer.h"
#include "textfile/message_head.h"
#include "textfile/split_engine.h"
#include "core/string_tools.h"

namespace {

// Elements of saveTTW, 0-based.
constexpr int kState = 0;
constexpr int kCount = 1;
constexpr int kPos = 2;
constexpr int kLength = 3;
constexpr int kStart = 5;
constexpr int kDepth = 6;
constexpr int kJoin = 7;

struct FirstCalls {
    bool tnw = true;
    bool tnw3 = true;
    bool gel0 = true;
    bool tnw1 = true;
    bool gel1 = true;
};
FirstCalls firstCalls;

// Open boundaries of R02TNW3, kept between its calls.
std::string tnw3OpenStack;

void checkFirstCall(bool& first, std::string_view tag, char mark, int* saveTTW) {
    if (!first) return;
    first = false;
    if (saveTTW[kState] == 0) return;
    I05MES(messageHead(tag, mark) + "\"saveTTW(1)\" must be set to 0 at the first call");
    I05MES("             with the given line.");
    saveTTW[kState] = 0;
}

struct Lists {
    std::string_view delimiters;
    std::string_view boundaries;
    std::string_view linkers;
    int joinBounds = 0;
};

// Runs the splitter from the place kept in saveTTW; depth and openStack are
// the caller's boundary state.
void runSaved(std::string_view line, int wordNo, const Lists& lists, std::string& word, int& wordLen,
              char& ch, char& lastDelim, int* saveTTW, int& depth, std::string& openStack, int& status,
              bool warnCut) {
    int start = 0;
    SplitCall call{line,           wordNo,        lists.delimiters, lists.boundaries, lists.linkers,
                   lists.joinBounds, word,        wordLen,          saveTTW[kCount],  start,
                   saveTTW[kPos],  ch,            lastDelim,        saveTTW[kState],  depth,
                   openStack,      status};
    splitWord(call, warnCut);
    saveTTW[kLength] = R02LEN(line);
    saveTTW[kStart] = start;
}

// The splitter without boundaries and linkers.
void runPlain(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
              int& wordLen, char& ch, char& lastDelim, int* saveTTW, int& status, bool warnCut) {
    int depth = 0;
    std::string openStack;
    runSaved(line, wordNo, Lists{delimiters, {}, {}, 0}, word, wordLen, ch, lastDelim, saveTTW, depth,
             openStack, status, warnCut);
}

// R02TNW1 and R02GEL1: no message for a cut word, status -2 instead.
bool runQuiet(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
              int& wordLen, int* saveTTW, int& status) {
    char ch = ' ';
    char lastDelim = ' ';
    runPlain(line, wordNo < 0 ? -1 : wordNo, delimiters, word, wordLen, ch, lastDelim, saveTTW, status, false);
    if (status == 2 || status == 3) status = -2;
    return status == 0 || status == 1 || status == -2;
}

}  // namespace

void R02TNW(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
            int& wordLen, int* saveTTW, int& status) {
    checkFirstCall(firstCalls.tnw, "R02TNW", 'E', saveTTW);
    char ch = ' ';
    char lastDelim = ' ';
    runPlain(line, wordNo, delimiters, word, wordLen, ch, lastDelim, saveTTW, status, true);
    if (status == 2) status = -2;
}

void R02TNW3(std::string_view line, int wordNo, std::string_view delimiters,
             std::string_view boundaries, std::string_view linkers, std::string& word,
             int& wordLen, char& lastDelim, char& ch, int* saveTTW, int& status) {
    checkFirstCall(firstCalls.tnw3, "R02TNW3", 'W', saveTTW);
    Lists lists{delimiters, boundaries, linkers, saveTTW[kJoin]};
    runSaved(line, wordNo, lists, word, wordLen, ch, lastDelim, saveTTW, saveTTW[kDepth], tnw3OpenStack,
             status, true);
}

void R02GEL0(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
             int& wordLen, char& ch, char& lastDelim, int* saveTTW, int& status) {
    checkFirstCall(firstCalls.gel0, "R02GEL0", 'E', saveTTW);
    runPlain(line, wordNo, delimiters, word, wordLen, ch, lastDelim, saveTTW, status, true);
}

bool R02TNW1(std::string_view line, std::string_view delimiters, std::string& word, int& wordLen,
             int* saveTTW, int& status) {
    checkFirstCall(firstCalls.tnw1, "R02TNW1", 'E', saveTTW);
    return runQuiet(line, -1, delimiters, word, wordLen, saveTTW, status);
}

bool R02GEL1(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
             int& wordLen, int* saveTTW, int& status) {
    checkFirstCall(firstCalls.gel1, "R02GEL1", 'E', saveTTW);
    return runQuiet(line, wordNo, delimiters, word, wordLen, saveTTW, status);
}

void resetWordSplitter() {
    firstCalls = FirstCalls{};
    tnw3OpenStack.clear();
}
