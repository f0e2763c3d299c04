// Line splitters R02CLS and R02CLS2, and splitMonitorCommand, the call the
// monitor makes for every command line.
#include "textfile/line_splitters.h"

#include "core/console_layer.h"
#include "textfile/message_head.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

namespace {

// The splitter's place within one line.
struct LineScan {
    int count = 0;
    int start = 0;
    int pos = 0;
    int state = 0;
    int depth = 0;
    char ch = ' ';
    char lastDelim = ' ';
    std::string openStack;

    int next(std::string_view line, int wordNo, std::string_view delimiters, std::string_view linkers,
             std::string& word) {
        int wordLen = 0;
        int status = 0;
        R02GEL(line, wordNo, delimiters, "", linkers, 0, word, wordLen, count, start, pos, ch, lastDelim,
               state, depth, openStack, status);
        return status;
    }
};

bool firstCharIsComment(std::string_view line, std::string_view comments) {
    for (char c : line) {
        if (!isWhiteChar(c)) return comments.find(c) != std::string_view::npos;
    }
    return false;
}

// Checks the word numbers and widths; writes the message of a failure.
bool wordFieldsUsable(const std::string* words, int last, int first, int& status) {
    const std::string head = messageHead("R02CLS", 'E');
    if (first > last) {
        I05MES(head + "Exceeded max. number of words.");
        status = -11;
        return false;
    }
    for (int k = first; k <= last; ++k) {
        if (!words[k - 1].empty()) continue;
        I05MES(head + "Zero word length dimensioned.");
        status = -12;
        return false;
    }
    return true;
}

}  // namespace

void R02CLS(std::string_view line, std::string* words, int last, int first,
            std::string_view delimiters, std::string_view comments, int& status) {
    status = 0;
    if (first < 1) first = 1;
    if (!wordFieldsUsable(words, last, first, status)) return;
    std::string_view delims = delimiters.substr(0, static_cast<std::size_t>(R02LEN(delimiters)));
    std::string_view linkers = delims.find('=') == std::string_view::npos ? "=" : "";
    for (int k = first; k <= last; ++k) R02BLANK(words[k - 1]);
    if (R02LEN(line) == 0) return;

    std::string_view comment = comments.substr(0, static_cast<std::size_t>(R02LEN(comments)));
    const int width = static_cast<int>(words[first - 1].size());
    bool testComments = !comment.empty() && static_cast<int>(comment.size()) < width;
    if (testComments && firstCharIsComment(line, comment)) return;

    LineScan scan;
    for (int k = first; k <= last; ++k) {
        std::string& word = words[k - 1];
        int got = scan.next(line, k == first ? first : -1, delimiters, linkers, word);
        if (got == -1 || got == 1 || got == 3) {
            status = 1;  // the line is used up
            return;
        }
        if (got < 0) {
            I05MES(messageHead("R02CLS", 'E') + "A fatal error encountered.");
            status = got;
            return;
        }
        bool wordCanHold = static_cast<int>(word.size()) >= static_cast<int>(comment.size());
        if (!comment.empty() && wordCanHold && comment.find(word[0]) != std::string_view::npos) {
            R02BLANK(word);
            status = 1;
            return;
        }
    }
}

void R02CLS2(std::string_view text, std::string& word1, std::string& word2, int& count,
             int& status) {
    R02BLANK(word1);
    R02BLANK(word2);
    count = 0;
    status = 0;
    const std::string head = messageHead("R02CLS2", 'E');
    if (word1.empty() || word2.empty()) {
        I05MES(head + "Zero word length dimensioned.");
        status = -11;
        return;
    }
    const std::size_t end = static_cast<std::size_t>(R02LEN(text));
    std::size_t from = 0;
    while (from < end && isWhiteChar(text[from])) ++from;
    std::string_view body = text.substr(from, end - from);
    if (body.empty()) {
        status = -12;
        return;
    }
    LineScan scan;
    int got = scan.next(body, 1, " =", "", word1);
    if (got >= 0) {
        count = 1;
        if (got == 0 || got == 2) got = scan.next(body, -1, " =", "", word2);
    }
    if (got < 0) {
        I05MES(head + "A fatal error encountered.");
        status = got;
        return;
    }
    if (R02LEN(word2) > 0) count = 2;
}

void splitMonitorCommand(std::string_view line, std::string* words, int& status) {
    for (int k = 0; k < 6; ++k) words[k].assign(32, ' ');
    R02CLS(line, words, 6, 1, kCommandDelimiters, kCommandComments, status);
}
