// R02GEL and splitWord: the state machine that cuts a line into words at weak
// and strong delimiters, with nesting boundaries and linkers.
#include "textfile/word_splitter.h"

#include "core/console_layer.h"
#include "textfile/message_head.h"
#include "textfile/split_engine.h"
#include "core/string_tools.h"

namespace {

const std::string kHeadE = messageHead("R02GEL", 'E');
const std::string kHeadW = messageHead("R02GEL", 'W');

std::string_view trimmedList(std::string_view list) {
    return list.substr(0, static_cast<std::size_t>(R02LEN(list)));
}

bool holds(std::string_view list, char c) { return list.find(c) != std::string_view::npos; }

// Role of a boundary character: the position of its first appearance
// decides; a pair of one character twice toggles.
enum class BoundRole { Open, Close, Toggle };

class Splitter {
public:
    Splitter(const SplitCall& call, bool warnCut) : a_(call), warnCut_(warnCut) {
        delims_ = trimmedList(a_.delimiters);
        if (delims_.empty()) delims_ = " ";
        bounds_ = trimmedList(a_.boundaries);
        links_ = trimmedList(a_.linkers);
        blankIsDelim_ = holds(delims_, ' ');
    }

    void run();

private:
    enum class Next { Go, Stop };

    bool listsUnique() const;
    void reportNonunique();
    void startOrContinue();
    Next step(char c, int i);
    Next delimiter(char c);
    Next linker(char c);
    Next boundaryOutside(char c, int i);
    Next boundaryInside(char c);
    Next other(char c, int i);
    Next endWord(char delimiterBehind);
    void endOfLine();
    BoundRole roleOf(char c, char& opener) const;
    void openBoundary(char c);
    void closeBoundary(char c);
    bool openBelowTop(char c) const;
    void newWord(int i);
    void blankWord();
    void store(char c);
    void fail(int code, const std::string& text);

    const SplitCall& a_;
    bool warnCut_;
    std::string_view delims_;
    std::string_view bounds_;
    std::string_view links_;
    bool blankIsDelim_ = false;
    char prevDelim_ = ' ';  // strong delimiter before the word being built
    bool cut_ = false;      // the word being built lost characters
};

bool Splitter::listsUnique() const {
    for (char c : delims_) {
        if (holds(bounds_, c) || holds(links_, c)) return false;
    }
    for (char c : bounds_) {
        if (holds(links_, c)) return false;
    }
    return true;
}

void Splitter::reportNonunique() {
    I05MES(kHeadE + "Nonunique character in delimiter/bound/link lists!");
    for (std::string_view list : {delims_, bounds_, links_}) {
        I05MES("             \"" + std::string(list) + "\"");
    }
    fail(-4, kHeadE + "Processing failed.");
}

void Splitter::run() {
    blankWord();
    a_.status = 0;
    if (a_.state < 1 && !listsUnique()) return reportNonunique();
    if (a_.state == kSplitFailed) {
        I05MES(kHeadE + "Processing failed.");
        a_.status = -1;
        return;
    }
    startOrContinue();
    const int length = R02LEN(a_.line);
    while (a_.pos < length) {
        int i = a_.pos + 1;
        a_.pos = i;
        char c = a_.line[static_cast<std::size_t>(i - 1)];
        if (isWhiteChar(c)) c = ' ';
        a_.ch = c;
        if (step(c, i) == Next::Stop) return;
    }
    endOfLine();
}

void Splitter::startOrContinue() {
    bool continuing = a_.state > 0 && a_.count > 0 && a_.pos > 0 && a_.wordNo < 0;
    if (!continuing) {
        a_.state = kSplitNothingRead;
        a_.pos = 0;
        a_.count = 0;
        a_.depth = 0;
        R02BLANK(a_.openStack);
        prevDelim_ = ' ';
        return;
    }
    // A word handed out at a strong delimiter left pos on it.
    std::size_t at = static_cast<std::size_t>(a_.pos - 1);
    char last = at < a_.line.size() ? a_.line[at] : ' ';
    prevDelim_ = (last != ' ' && holds(delims_, last)) ? last : ' ';
}

Splitter::Next Splitter::step(char c, int i) {
    if (a_.depth > 0) return holds(bounds_, c) ? boundaryInside(c) : (store(c), Next::Go);
    if (a_.state == kSplitBehindLinker && c == ' ') return Next::Go;
    if (holds(delims_, c) && (c != ' ' || blankIsDelim_)) return delimiter(c);
    if (holds(links_, c)) return linker(c);
    if (holds(bounds_, c)) return boundaryOutside(c, i);
    return other(c, i);
}

Splitter::Next Splitter::delimiter(char c) {
    if (c == ' ') {
        if (a_.state == kSplitInWord) a_.state = kSplitBehindBlank;
        return Next::Go;
    }
    if (a_.state == kSplitBehindDelimiter || a_.state == kSplitNothingRead) blankWord();
    return endWord(c);
}

Splitter::Next Splitter::linker(char c) {
    if (a_.state == kSplitNothingRead || a_.state == kSplitBehindDelimiter) {
        fail(-2, kHeadE + "No left word for linking.");
        return Next::Stop;
    }
    store(c);
    a_.state = kSplitBehindLinker;
    return Next::Go;
}

Splitter::Next Splitter::other(char c, int i) {
    if (a_.state == kSplitBehindBlank) {
        a_.pos = i - 1;  // read this character again as the start of the next word
        return endWord(' ');
    }
    if (a_.state == kSplitNothingRead || a_.state == kSplitBehindDelimiter) newWord(i);
    store(c);
    a_.state = kSplitInWord;
    return Next::Go;
}

// The word being built ends; delimiterBehind is the strong delimiter that
// ends it, or blank.
Splitter::Next Splitter::endWord(char delimiterBehind) {
    ++a_.count;
    a_.lastDelim = prevDelim_;
    prevDelim_ = delimiterBehind;
    a_.state = kSplitBehindDelimiter;
    if (a_.wordNo == a_.count || a_.wordNo < 0) {
        a_.status = cut_ ? 2 : 0;
        return Next::Stop;
    }
    return Next::Go;
}

BoundRole Splitter::roleOf(char c, char& opener) const {
    std::size_t k = bounds_.find(c);
    if (k % 2 == 1) {
        opener = bounds_[k - 1];
        return BoundRole::Close;
    }
    opener = c;
    bool twice = k + 1 < bounds_.size() && bounds_[k + 1] == c;
    return twice ? BoundRole::Toggle : BoundRole::Open;
}

Splitter::Next Splitter::boundaryOutside(char c, int i) {
    char opener = ' ';
    if (roleOf(c, opener) == BoundRole::Close) {
        fail(-3, kHeadE + "Unmatched boundaries: " + std::string(1, c));
        return Next::Stop;
    }
    bool afterWord = a_.state == kSplitInWord || a_.state == kSplitBehindBlank;
    if (afterWord && a_.joinBounds == 0) {
        a_.pos = i - 1;  // the boundary starts the next word
        return endWord(' ');
    }
    if (a_.state == kSplitNothingRead || a_.state == kSplitBehindDelimiter) newWord(i);
    openBoundary(c);
    return Next::Go;
}

Splitter::Next Splitter::boundaryInside(char c) {
    char opener = ' ';
    BoundRole role = roleOf(c, opener);
    char top = a_.openStack[static_cast<std::size_t>(a_.depth - 1)];
    bool closes = (role == BoundRole::Close && top == opener) || (role == BoundRole::Toggle && top == c);
    bool mismatch = (role == BoundRole::Close && top != opener) || (role == BoundRole::Toggle && top != c && openBelowTop(c));
    if (mismatch) {
        fail(-3, kHeadE + "Unmatched boundaries: " + std::string(1, c));
        return Next::Stop;
    }
    if (closes) {
        closeBoundary(c);
    } else {
        openBoundary(c);
    }
    return Next::Go;
}

bool Splitter::openBelowTop(char c) const {
    for (int k = 0; k < a_.depth - 1; ++k) {
        if (a_.openStack[static_cast<std::size_t>(k)] == c) return true;
    }
    return false;
}

void Splitter::openBoundary(char c) {
    ++a_.depth;
    if (static_cast<int>(a_.openStack.size()) < a_.depth) a_.openStack.resize(static_cast<std::size_t>(a_.depth), ' ');
    a_.openStack[static_cast<std::size_t>(a_.depth - 1)] = c;
    store(c);
    a_.state = kSplitInBoundaries;
}

void Splitter::closeBoundary(char c) {
    a_.openStack[static_cast<std::size_t>(a_.depth - 1)] = ' ';
    --a_.depth;
    store(c);
    a_.state = a_.depth > 0 ? kSplitInBoundaries : kSplitBehindBlank;
}

void Splitter::endOfLine() {
    a_.ch = ' ';
    switch (a_.state) {
    case kSplitNothingRead:
    case kSplitLineFinished:
        blankWord();
        a_.status = -1;
        break;
    case kSplitBehindDelimiter:
        ++a_.count;
        blankWord();
        a_.lastDelim = prevDelim_;
        a_.status = a_.wordNo > a_.count ? -1 : 1;
        break;
    case kSplitInBoundaries:
        fail(-3, kHeadE + "Unmatched boundaries: " +
                     std::string(1, a_.openStack[static_cast<std::size_t>(a_.depth - 1)]));
        return;
    default:
        ++a_.count;
        a_.lastDelim = prevDelim_;
        if (a_.wordNo == a_.count || a_.wordNo <= 0) {
            a_.status = 1;
        } else {
            blankWord();
            a_.status = -1;
        }
    }
    a_.state = kSplitLineFinished;
    if (a_.status >= 0 && cut_) a_.status += 2;
}

void Splitter::newWord(int i) {
    blankWord();
    a_.start = i;
}

void Splitter::blankWord() {
    R02BLANK(a_.word);
    a_.wordLen = 0;
    a_.start = 0;
    cut_ = false;
}

void Splitter::store(char c) {
    if (a_.wordLen < static_cast<int>(a_.word.size())) {
        a_.word[static_cast<std::size_t>(a_.wordLen)] = c;
        ++a_.wordLen;
        return;
    }
    if (cut_) return;
    cut_ = true;
    if (warnCut_) {
        I05MES(kHeadW + "Exceeded maximum word length (" + std::to_string(a_.word.size()) + ").");
    }
}

void Splitter::fail(int code, const std::string& text) {
    I05MES(text);
    blankWord();
    a_.state = kSplitFailed;
    a_.status = code;
}

}  // namespace

void splitWord(const SplitCall& call, bool warnCut) {
    Splitter splitter(call, warnCut);
    splitter.run();
}

void R02GEL(std::string_view line, int wordNo, std::string_view delimiters,
            std::string_view boundaries, std::string_view linkers, int joinBounds,
            std::string& word, int& wordLen, int& count, int& start, int& pos, char& ch,
            char& lastDelim, int& state, int& depth, std::string& openStack, int& status) {
    SplitCall call{line,  wordNo,   delimiters, boundaries, linkers, joinBounds, word,      wordLen, count,
                   start, pos,      ch,         lastDelim,  state,   depth,      openStack, status};
    splitWord(call, true);
}
