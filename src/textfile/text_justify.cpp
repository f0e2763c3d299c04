// Justification of a part of a text field: R02JUST.
// Moves the non-blank part of columns first..last to their left or right end.
#include "textfile/number_text.h"

#include "core/console_layer.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cctype>

namespace {

// "R02JUST --E- Wrong substring offsets: (first:last)"
std::string offsetMessage(int first, int last) {
    std::string a(16, ' ');
    std::string b(16, ' ');
    int la = 0, lb = 0, err = 0;
    R02I2C1(first, a, la, err);
    R02I2C1(last, b, lb, err);
    return "R02JUST --E- Wrong substring offsets: (" + a.substr(0, static_cast<std::size_t>(la)) +
           ":" + b.substr(0, static_cast<std::size_t>(lb)) + ")";
}

}  // namespace

void R02JUST(std::string& text, int first, int last, char mode, int& err) {
    err = 0;
    if (text.empty()) {
        I05MES(" R02JUST --E- No string specified.");
        err = -1;
        return;
    }
    if (first == last) return;
    const int size = static_cast<int>(text.size());
    if (first < 1 || last < 1 || first > size || last > size || last < first) {
        I05MES(offsetMessage(first, last));
        err = -2;
        return;
    }
    // Columns (0-based) of the first and last character that is not white space.
    int from = first - 1;
    int to = last - 1;
    while (from <= to && isWhiteChar(text[static_cast<std::size_t>(from)])) ++from;
    if (from > to) return;
    while (isWhiteChar(text[static_cast<std::size_t>(to)])) --to;

    const char m = static_cast<char>(std::toupper(static_cast<unsigned char>(mode)));
    if (m != 'L' && m != 'R') {
        I05MES("R02JUST --E- Wrong justification mode \"" + std::string(1, mode) +
               "\", must be L or R.");
        err = -3;
        return;
    }
    const std::string part = text.substr(static_cast<std::size_t>(from),
                                         static_cast<std::size_t>(to - from + 1));
    std::fill(text.begin() + first - 1, text.begin() + last, ' ');
    const int start = m == 'L' ? first - 1 : last - static_cast<int>(part.size());
    std::copy(part.begin(), part.end(), text.begin() + start);
}
