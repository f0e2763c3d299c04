// Field editing of single items for the edit-notation formatter: exact
// decimal digits of a double, Iw, Fw.d, Ew.d/Dw.d, Gw.d, Aw and the
// list-directed number fields.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace editing {

// A non-negative decimal value 0.d1d2d3... * 10^exp.  `digits` holds no
// leading zero; an empty `digits` is the value zero.
struct Decimal {
    std::string digits;
    int exp = 0;
};

// The exact decimal expansion of |x| (x finite).
Decimal exactDecimal(double x);

// Rounds to the first `keep` digits, to nearest, an exact tie to the even
// digit.  keep <= 0 keeps no digit: the result is zero or, when rounded
// up, the single digit 1 one place higher.
Decimal roundDigits(const Decimal& v, int keep);

// Iw: right-justified, w asterisks when it does not fit.
std::string editInteger(std::int64_t v, int w);

// Fw.d with scale factor k (the value is multiplied by 10^k).
std::string editFixed(double x, int w, int d, int k);

// Ew.d (letter 'E') or Dw.d (letter 'D') with scale factor k.  Throws
// std::logic_error when k leaves no significant digit (k <= -d or k > d+1).
std::string editExponent(double x, int w, int d, int k, char letter);

// Gw.d with scale factor k: the F form (scale ignored, 4 blanks after) or
// the E form, chosen by the magnitude.
std::string editGeneral(double x, int w, int d, int k);

// Aw (w > 0) or A (w == 0): the whole text, or a field of w.
std::string editText(std::string_view s, int w);

// List-directed fields: an integer in 11 columns (20 for a value beyond
// the 4-byte range) and a real in 25 columns (without the separating blank
// in front of them).
std::string listInteger(std::int64_t v);
std::string listReal(double x);

}  // namespace editing
