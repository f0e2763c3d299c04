// Command-driven array loaders I5LRA2 (reals) and I5LIA2 (integers), and
// the one-integer loader I5LIN1.
#include "textfile/array_io.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

namespace {

constexpr int kReplyWidth = 80;

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

std::string digits(int v) {
    std::string text(32, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(v, text, len, err);
    return trimmed(text);
}

// What differs between the real and the integer loader: conversion, the
// default shown in a question, and the wording.
struct RealLoader {
    using T = double;
    static constexpr std::string_view tag = "I5LRA2";
    static constexpr std::string_view indexError = "INDEX IS OUTSIDE OF BOUNDS!";
    static bool convert(std::string_view word, double& v) {
        int err = 0;
        double x = R02C2R1(trimmed(word), err);
        if (err < 0 || !std::isfinite(x)) return false;  // no NaN or infinity enters the data set
        v = x;
        return true;
    }
    static std::string defaultText(double v) {
        std::string text(32, ' ');
        int len = 0;
        int err = 0;
        R02R2C1(v, text, 1, 6, len, 2, -1, err);
        return trimmed(text);
    }
    static void askValue(const std::string& text, double v) { I05ASKD(text, defaultText(v), sysinf.CursorPosition); }
    static std::string elementQuestion(std::string_view name) {
        return "Enter the number of the element of \"" + std::string(name) + "\":";
    }
    static std::string rowQuestion(std::string_view name) {
        return "Enter the number of the row of the matrix \"" + std::string(name) + "\":";
    }
};

struct IntegerLoader {
    using T = int;
    static constexpr std::string_view tag = "I5LIA2";
    static constexpr std::string_view indexError = "INDEX IS OUTSIDE OF DIMENSION BOUNDS!";
    static bool convert(std::string_view word, int& v) {
        int err = 0;
        int x = R02C2I1(trimmed(word), err);
        if (err < 0) return false;
        v = x;
        return true;
    }
    static void askValue(const std::string& text, int v) {
        I05ASK(text + " < " + digits(v) + " >", sysinf.CursorPosition);
    }
    static std::string elementQuestion(std::string_view name) {
        return "Enter the number of the vector \"" + std::string(name) + "\" element:";
    }
    static std::string rowQuestion(std::string_view name) {
        return "Enter the row of the matrix \"" + std::string(name) + "\":";
    }
};

bool blank(std::string_view w) { return R02LEN(w) == 0; }

// Puts text into the word field, keeping its width.
void setWord(std::string& word, std::string_view text) {
    std::size_t width = word.size();
    word.assign(width, ' ');
    word.replace(0, std::min(width, text.size()), text.substr(0, width));
}
bool beginsWith(std::string_view w, char letter) { return R02PFX(w, std::string_view(&letter, 1), 1); }

// One line from the terminal; empty at the end of the input.
std::string readReply() {
    std::string reply(kReplyWidth, ' ');
    int len = 0;
    int status = 0;
    I05RSL(sysinf.inUnit, reply, len, "", status);
    if (status != 0) {
        unit::endOpenRecord(sysinf.outUnit);
        return std::string();
    }
    return reply;
}

// The first word of a reply, in a field of the word width.
void firstWordOf(const std::string& reply, std::string& word) {
    std::string one(word.size(), ' ');
    int status = 0;
    R02CLS(reply, &one, 1, 1, " ,;", "!#^", status);
    word = one;
}

// The state of one loader call.
template <class K>
struct Load {
    using T = typename K::T;
    T* a;
    int MD, m, n;
    std::string name, marker, comment;
    std::string* words;
    int last, first;
    std::string_view delimiters;
    int setFlag, channel;
    std::string_view fileName, access;
    int MODEE4;
    int& changed;
    int kind = 0;

    std::string& w(int k) { return words[first - 1 + k]; }  // w(0) is w1
    std::string wordOrBlank(int k) { return first + k <= last ? w(k) : std::string(); }
    T& at(int i, int j) { return a[(j - 1) * MD + i - 1]; }
    void message(std::string_view text) { I05MES(std::string(K::tag) + " -E- " + std::string(text)); }
    bool autoMode() const { return MODEE4 != 0; }

    int checkShape() {
        kind = (m == 1 && n == 1) ? 0 : (n == 1 ? 1 : 2);
        if (m > MD || m < 1 || n < 1) {
            message("WRONG ARRAY DIMENSIONS!");
            return 1;
        }
        if (m == 1 && n > 1) {
            message("VECTOR-ROW DECLARED INSTEAD OF VECTOR-COLUMN!");
            return 1;
        }
        if (first < 1 || first > last - kind) {
            message("INCORRECT NUMBER OF COMMANDS!");
            return 1;
        }
        return 0;
    }

    // Asks a question whose reply fills word k; false on an empty reply.
    bool askInto(int k) {
        std::string reply = readReply();
        if (blank(reply)) return false;
        firstWordOf(reply, w(k));
        return !blank(w(k));
    }

    int store(int i, int j, std::string_view word) {
        T v{};
        if (!K::convert(word, v)) {
            message("\"" + trimmed(word) + "\" IS NOT A FINITE NUMBER THAT CAN BE STORED!");
            return 1;
        }
        at(i, j) = v;
        changed = 1;
        return 0;
    }

    int index(std::string_view word, int limit, int& i) {
        if (!IntegerLoader::convert(word, i)) return 1;
        if (i >= 1 && i <= limit) return 0;
        message(K::indexError);
        return 1;
    }

    int run();
    int wholeOrRange();
    int element();
    bool rangeOf(std::string_view word, int& lo, int& hi);
};

template <class K>
int Load<K>::run() {
    if (int st = checkShape()) return st;
    bool terminal = channel < 1 || unit::isTerminal(channel);
    if (blank(w(0)) && (autoMode() || !terminal)) setWord(w(0), "ALL");
    while (true) {
        if (beginsWith(w(0), 'A') || w(0).find(':') != std::string::npos) return wholeOrRange();
        if (!blank(w(0))) break;
        if (autoMode()) return 1;
        if (kind == 0) K::askValue("Value of " + name + "?", at(1, 1));
        else I05ASK(kind == 1 ? K::elementQuestion(name) : K::rowQuestion(name), sysinf.CursorPosition);
        std::string reply = readReply();
        if (blank(reply)) {
            // An empty reply (or the end of the input) takes the value shown
            // as the default, which then counts as loaded.
            if (kind == 0) changed = 1;
            return 0;
        }
        // The reply's words become the value words, w1 on.
        int st = 0;
        R02CLS(reply, &w(0), last - first + 1, 1, delimiters, "!#^", st);
    }
    if (beginsWith(w(0), 'E')) return 0;
    if (kind == 0) return store(1, 1, w(0));
    return element();
}

template <class K>
int Load<K>::element() {
    int i = 0;
    if (index(w(0), m, i) != 0) return 1;
    if (blank(w(1))) {
        if (autoMode()) return 1;
        if (kind == 1) K::askValue("Value of the element " + name + "(" + digits(i) + ")?", at(i, 1));
        else I05ASK("Enter the column of the matrix \"" + name + "\":", sysinf.CursorPosition);
        if (!askInto(1)) {
            if (kind == 1) changed = 1;  // the default shown is taken
            return 0;
        }
    }
    if (beginsWith(w(1), 'E')) return 0;
    if (kind == 1) return store(i, 1, w(1));
    int j = 0;
    if (index(w(1), n, j) != 0) return 1;
    if (blank(w(2))) {
        if (autoMode()) return 1;
        K::askValue("Value of the element " + name + "(" + digits(i) + "," + digits(j) + ")?", at(i, j));
        if (!askInto(2)) {
            changed = 1;  // the default shown is taken
            return 0;
        }
    }
    if (beginsWith(w(2), 'E')) return 0;
    return store(i, j, w(2));
}

// The numbers of a range word such as "(2:5)": a missing or unreadable
// first is 1, a missing or unreadable second (or one above m) is m; the
// two are put in order.  False when the range lies outside 1 to m.
template <class K>
bool Load<K>::rangeOf(std::string_view word, int& lo, int& hi) {
    std::string text = trimmed(word);
    std::size_t colon = text.find(':');
    std::size_t open = text.rfind('(', colon);
    std::size_t from = open == std::string::npos ? 0 : open + 1;
    std::size_t close = text.find(')', colon);
    std::size_t to = close == std::string::npos ? text.size() : close;
    std::string firstText = text.substr(from, colon - from);
    std::string secondText = text.substr(colon + 1, to - colon - 1);
    lo = 1;
    hi = m;
    int v = 0;
    if (!blank(firstText) && IntegerLoader::convert(firstText, v)) lo = v;
    if (!blank(secondText) && IntegerLoader::convert(secondText, v)) hi = std::min(v, m);
    if (lo > m) return false;
    if (lo > hi) std::swap(lo, hi);
    return lo >= 1;
}

template <class K>
int Load<K>::wholeOrRange() {
    std::string value = wordOrBlank(1);
    if (blank(value)) {
        if (setFlag != 0) return 0;
        int status = 0;
        if constexpr (std::is_same_v<T, double>) {
            I5LRA1(comment + ":", name, marker, access, fileName, channel, a, MD, m, n, changed, status);
        } else {
            I5LIA1(comment + ":", name, marker, access, fileName, channel, a, MD, m, n, changed, status);
        }
        return status == 0 ? 0 : 1;
    }
    if (beginsWith(value, 'E')) return 0;
    T v{};
    if (!K::convert(value, v)) return 1;
    int lo = 1;
    int hi = m;
    if (w(0).find(':') != std::string::npos && !rangeOf(w(0), lo, hi)) {
        message(K::indexError);
        return 1;
    }
    for (int j = 1; j <= n; ++j)
        for (int i = lo; i <= hi; ++i) at(i, j) = v;
    changed = 1;
    return 0;
}

template <class K>
void loadArray(typename K::T* a, int MD, int m, int n, std::string_view name, std::string_view marker,
               std::string_view comment, std::string* words, int last, int first,
               std::string_view delimiters, int setFlag, int channel, std::string_view fileName,
               std::string_view access, int MODEE4, int& changed, int& status) {
    Load<K> load{a,     MD,         m,       n,       trimmed(name), std::string(marker), trimmed(comment),
                 words, last,       first,   delimiters, setFlag,    channel,             fileName,
                 access, MODEE4,    changed};
    status = load.run();
}

}  // namespace

void I5LIA2(int* a, int MD, int m, int n, std::string_view name, std::string_view marker,
            std::string_view comment, std::string* words, int last, int first,
            std::string_view delimiters, int setFlag, int channel, std::string_view fileName,
            std::string_view access, int MODEE4, int& changed, int& status) {
    loadArray<IntegerLoader>(a, MD, m, n, name, marker, comment, words, last, first, delimiters, setFlag,
                             channel, fileName, access, MODEE4, changed, status);
}

void I5LRA2(double* a, int MD, int m, int n, std::string_view name, std::string_view marker,
            std::string_view comment, std::string* words, int last, int first,
            std::string_view delimiters, int setFlag, int channel, std::string_view fileName,
            std::string_view access, int MODEE4, int& changed, int& status) {
    loadArray<RealLoader>(a, MD, m, n, name, marker, comment, words, last, first, delimiters, setFlag,
                          channel, fileName, access, MODEE4, changed, status);
}

void I5LIN1(int& value, std::string_view name, std::string_view marker, std::string_view comment,
            std::string_view word, std::string_view access, int channel, std::string_view dataFile,
            int MODEE4, int& changed, int& status) {
    status = 0;
    if (!blank(word) && !beginsWith(word, 'A')) {
        int v = 0;
        if (IntegerLoader::convert(word, v)) {
            value = v;
        } else if (MODEE4 != 0) {
            status = 1;
            return;
        }
    }
    if (value == 0) {
        I5LIA1("Enter " + trimmed(comment) + ":", name, marker, access, dataFile, channel, &value, 1, 1, 1,
               changed, status);
        if (status != 0) return;
    }
    changed = 1;
}
