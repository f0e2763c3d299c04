// String tools: R02LEN, R02BLANK, R02CASE, R02CMP, R02PFX, R02EQ, R02CHAR,
// R02SCAN, R02ABBR, R02DROP (R02LINE lives in line_composer.cpp).
#include "core/string_tools.h"

#include <algorithm>
#include <cstdlib>

namespace {

// The characters of a list that count: the trimmed list, or one blank when
// a non-empty field holds blanks only.
std::string_view effectiveSet(std::string_view set) {
    int n = R02LEN(set);
    if (n > 0) return set.substr(0, static_cast<std::size_t>(n));
    return set.empty() ? std::string_view() : std::string_view(" ");
}

bool inSet(char c, std::string_view set, int mode) {
    char folded = caseChar(c, mode);
    for (char s : set) {
        if (caseChar(s, mode) == folded) return true;
    }
    return false;
}

// First/last position (1-based) of the part of a field that R02CMP keeps.
int firstOfPart(std::string_view text, int first) {
    if (first == 0) return 1;
    if (first > 0) return first;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isWhiteChar(text[i])) return static_cast<int>(i) + 1;
    }
    return static_cast<int>(text.size()) + 1;
}

int lastOfPart(std::string_view text, int last) {
    int width = static_cast<int>(text.size());
    if (last == 0) return width;
    if (last < 0) return R02LEN(text);
    return std::min(last, width);
}

// Squeezes the blanks of a part: 0 keeps them, 1 leaves one of a run,
// any other value drops them all.
std::string squeezeBlanks(const std::string& part, int squeeze) {
    if (squeeze == 0) return part;
    std::string out;
    for (char c : part) {
        if (c != ' ') {
            out += c;
        } else if (squeeze == 1 && (out.empty() || out.back() != ' ')) {
            out += c;
        }
    }
    return out;
}

}  // namespace

bool isWhiteChar(char c) { return c == ' ' || c == '\0' || (c >= 9 && c <= 13); }

int R02LEN(std::string_view text) {
    int n = static_cast<int>(text.size());
    while (n > 0 && isWhiteChar(text[static_cast<std::size_t>(n - 1)])) --n;
    return n;
}

void R02BLANK(std::string& text) { std::fill(text.begin(), text.end(), ' '); }

char caseChar(char c, int mode) {
    bool upper = c >= 'A' && c <= 'Z';
    bool lower = c >= 'a' && c <= 'z';
    const char shift = 'a' - 'A';
    if (upper && (mode == -1 || mode == 2)) return static_cast<char>(c + shift);
    if (lower && (mode == 1 || mode == 2)) return static_cast<char>(c - shift);
    return c;
}

void R02CASE(std::string& text, int mode) {
    for (char& c : text) c = caseChar(c, mode);
}

void R02CMP(std::string& text, int first, int last, int squeeze, int mode, int& newLen) {
    int width = static_cast<int>(text.size());
    if (width == 0 || first > width) {
        newLen = -width;
        return;
    }
    for (char& c : text) {
        if (isWhiteChar(c)) c = ' ';
    }
    if (R02LEN(text) == 0) {
        newLen = 0;
        return;
    }
    int a = firstOfPart(text, first);
    int b = lastOfPart(text, last);
    std::string part;
    if (a <= b) part = text.substr(static_cast<std::size_t>(a - 1), static_cast<std::size_t>(b - a + 1));
    part = squeezeBlanks(part, squeeze);
    R02CASE(part, mode);
    R02BLANK(text);
    text.replace(0, part.size(), part);
    newLen = static_cast<int>(part.size());
}

bool R02PFX(std::string_view text, std::string_view key, int mode) {
    std::size_t nText = static_cast<std::size_t>(R02LEN(text));
    std::size_t nKey = static_cast<std::size_t>(R02LEN(key));
    if (nKey == 0) return nText == 0;
    if (nKey > nText) return false;
    for (std::size_t i = 0; i < nKey; ++i) {
        if (caseChar(text[i], mode) != caseChar(key[i], mode)) return false;
    }
    return true;
}

bool R02EQ(std::string_view a, std::string_view b, int mode) {
    return R02LEN(a) == R02LEN(b) && R02PFX(a, b, mode);
}

bool R02CHAR(char c, std::string_view set, int mode) { return inSet(c, effectiveSet(set), mode); }

int R02SCAN(std::string_view set, std::string_view text, int from, int to, int mode) {
    std::string_view s = effectiveSet(set);
    int start = std::abs(from);
    bool backwards = from < 0 || start > to;
    int lo = std::max(std::min(start, to), 1);
    int hi = std::min(std::max(start, to), static_cast<int>(text.size()));
    for (int k = 0; k <= hi - lo; ++k) {
        int p = backwards ? hi - k : lo + k;
        if (inSet(text[static_cast<std::size_t>(p - 1)], s, mode)) return p;
    }
    return 0;
}

void R02ABBR(std::string& word, const std::vector<std::string>& table, int count, int& match,
             int& length, int wordLen, int entryLen) {
    int width = wordLen > 0 ? std::min(wordLen, static_cast<int>(word.size())) : static_cast<int>(word.size());
    std::string_view key(word.data(), static_cast<std::size_t>(width));
    int n = R02LEN(key);
    length = n;
    match = 0;
    int found = -1;
    int entries = std::min(count, static_cast<int>(table.size()));
    for (int i = 0; i < entries; ++i) {
        std::string_view entry = table[static_cast<std::size_t>(i)];
        int eWidth = entryLen > 0 ? std::min(entryLen, static_cast<int>(entry.size())) : static_cast<int>(entry.size());
        if (n > eWidth) continue;
        if (!R02PFX(entry.substr(0, static_cast<std::size_t>(eWidth)), key.substr(0, static_cast<std::size_t>(n)), 1)) continue;
        if (found >= 0) {
            match = 2;
            return;
        }
        found = i;
    }
    if (found < 0) return;
    match = 1;
    std::string_view entry = table[static_cast<std::size_t>(found)];
    std::size_t copied = std::min(static_cast<std::size_t>(R02LEN(entry)), static_cast<std::size_t>(width));
    R02BLANK(word);
    word.replace(0, copied, entry.substr(0, copied));
    length = R02LEN(word);
}

void R02DROP(std::string& text, std::string_view set, int mode, int& length) {
    std::string_view s = effectiveSet(set);
    std::string kept;
    for (char c : text) {
        if (!inSet(c, s, mode)) kept += c;
    }
    R02BLANK(text);
    text.replace(0, kept.size(), kept);
    length = R02LEN(text);
}
