// Keyed text reading: I05FTSF, the search for the line of a key, and the
// value readers I05RS2 and I05RIN2 built on it.
#include "textfile/keyed_reading.h"

#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

#include <array>
#include <cctype>

namespace {

// Width of a line of a keyed file as the value readers see it.
constexpr std::size_t kKeyedLineWidth = 256;

// The text without any white space, letters in upper case.
std::string squeezedUpper(std::string_view text) {
    std::string out;
    for (char c : text) {
        if (!isWhiteChar(c)) out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string_view trimmed(std::string_view text) {
    return text.substr(0, static_cast<std::size_t>(R02LEN(text)));
}

// The tokens as the messages show them: each given one in double quotes.
std::string quotedTokens(std::string_view token1, std::string_view token2) {
    std::string out;
    for (std::string_view t : {token1, token2}) {
        if (R02LEN(t) > 0) out += " \"" + std::string(trimmed(t)) + "\"";
    }
    return out;
}

// True when the line (already squeezed) holds every token that was given.
// Two tokens found at the same place must be found apart: token 2 is looked
// for again one position further on.
bool holdsTokens(const std::string& line, const std::string& t1, const std::string& t2) {
    std::size_t at1 = std::string::npos;
    std::size_t at2 = std::string::npos;
    if (!t1.empty()) {
        at1 = line.find(t1);
        if (at1 == std::string::npos) return false;
    }
    if (!t2.empty()) {
        at2 = line.find(t2);
        if (at2 == std::string::npos) return false;
        if (at1 == at2) return line.find(t2, at2 + 1) != std::string::npos;
    }
    return true;
}

void store(std::string& line, const std::string& record) {
    if (line.empty()) {
        line = record;
        return;
    }
    std::size_t width = line.size();
    line.assign(width, ' ');
    line.replace(0, std::min(width, record.size()), record.substr(0, width));
}

// The line cut before its first comment character; -3 for a comment in
// column 1, else 0.
int cutAtComment(std::string& line, std::string_view commentChars) {
    std::string_view set = trimmed(commentChars);
    if (set.empty()) return 0;
    std::size_t at = line.find_first_of(set);
    if (at == std::string::npos) return 0;
    if (at == 0) return -3;
    line.resize(at);
    return 0;
}

bool sameWord(std::string_view a, std::string_view b) { return R02EQ(a, b, 1); }

// The integer behind the word equal to the token; the value is 0 on failure.
int integerBehindToken(std::string line, std::string_view token, std::string_view commentChars,
                       int& value) {
    value = 0;
    if (int err = cutAtComment(line, commentChars)) return err;
    const int lineLen = R02LEN(line);
    const int tokenLen = R02LEN(token);
    if (lineLen == 0 || tokenLen == 0 || tokenLen > lineLen - 3) return -2;
    constexpr std::string_view delimiters = " =:";
    std::array<int, 6> saveTTW{};
    std::string word(kKeyedLineWidth, ' ');
    int wordLen = 0;
    int status = 0;
    bool found = false;
    while (!found && R02TNW1(line, delimiters, word, wordLen, saveTTW.data(), status)) {
        found = sameWord(word, token);
        if (status == 1) break;
    }
    if (!found) return -1;
    // The word behind it, by its number, from a new start of the line.
    const int tokenWord = saveTTW[1];
    std::array<int, 6> behind{};
    if (!R02GEL1(line, tokenWord + 1, delimiters, word, wordLen, behind.data(), status) || wordLen == 0) return -4;
    int err = 0;
    int v = R02C2I1(trimmed(word), err);
    if (err < 0) return -5;
    value = v;
    return 0;
}

}  // namespace

void I05FTSF(int channel, std::string_view token1, std::string_view token2, std::string_view access,
             std::string& line, int& status) {
    status = -1;
    const std::string t1 = squeezedUpper(token1);
    const std::string t2 = squeezedUpper(token2);
    if (t1.empty() && t2.empty()) {
        status = 0;
        return;
    }
    bool secondChance = true;
    if (R02PFX(access, "R", 1)) {
        unit::rewind(channel);
        secondChance = false;
    }
    std::string record;
    while (true) {
        int io = unit::readRecord(channel, record);
        if (io == unit::IOSTAT_END) {
            if (secondChance) {
                unit::rewind(channel);
                secondChance = false;
                continue;
            }
            I05MES("I05FTSF --E- NOT FOUND" + quotedTokens(token1, token2));
            return;
        }
        if (io != 0) {
            status = io;
            I05MES("I05FTSF --E- Search FAILED" + quotedTokens(token1, token2));
            I05ERR("I05FTSF", io);
            return;
        }
        if (holdsTokens(squeezedUpper(record), t1, t2)) {
            store(line, record);
            status = 0;
            return;
        }
    }
}

void I05RS2(int channel, std::string_view token, std::string& value, std::string_view commentChars,
            int& status) {
    if (R02LEN(token) == 0) {
        I05MES("I05RS2 ---E- No token specified.");
        status = -1;
        return;
    }
    std::string line(kKeyedLineWidth, ' ');
    I05FTSF(channel, token, " ", "REWINDED", line, status);
    if (status != 0) return;
    std::size_t first = 0;
    while (first < line.size() && isWhiteChar(line[first])) ++first;
    std::string_view set = trimmed(commentChars);
    if (first < line.size() && set.find(line[first]) != std::string_view::npos) {
        I05MES("I05RS2 ---W- No data associated with \"" + std::string(trimmed(token)) + "\".");
        status = 1;
        return;
    }
    std::array<int, 6> saveTTW{};
    std::string word(kKeyedLineWidth, ' ');
    int wordLen = 0;
    int got = 0;
    char ch = ' ';
    char lastDelim = ' ';
    R02GEL0(std::string_view(line).substr(first), 2, " =", word, wordLen, ch, lastDelim, saveTTW.data(),
            got);
    if (got < 0 || wordLen == 0) return;
    store(value, word.substr(0, static_cast<std::size_t>(wordLen)));
}

void I05RIN2(int channel, std::string_view token, int& value, std::string_view commentChars,
             int& status) {
    if (R02LEN(token) == 0) {
        status = -10;
        I05MES("I05RIN2 --E- No token string specified.");
        return;
    }
    std::string line(kKeyedLineWidth, ' ');
    int found = 0;
    I05FTSF(channel, token, " ", "REWINDED", line, found);
    if (found != 0) {
        status = -11;
        I05MES("I05RIN2 --E- No data lines with \"" + std::string(trimmed(token)) + "\" found.");
        return;
    }
    std::size_t from = 0;
    while (from < static_cast<std::size_t>(R02LEN(token)) && isWhiteChar(token[from])) ++from;
    status = integerBehindToken(line, trimmed(token).substr(from), commentChars, value);
}
