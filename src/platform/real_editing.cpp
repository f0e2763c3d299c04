// Field editing of single items: exactDecimal, roundDigits, editInteger,
// editFixed, editExponent, editGeneral, editText, listInteger, listReal.
#include "platform/real_editing.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace editing {
namespace {

// A double has at most 767 significant decimal digits; asking for more
// makes to_chars write the exact value followed by zeros.
constexpr int kExactPrecision = 800;

// Right-justifies `s` in w columns; w asterisks when it does not fit.
std::string padLeft(std::string_view s, int w) {
    if (w <= 0) return std::string();
    if (static_cast<int>(s.size()) > w) return std::string(static_cast<size_t>(w), '*');
    std::string out(static_cast<size_t>(w) - s.size(), ' ');
    out += s;
    return out;
}

// Puts the sign in front of a number body and fits it into w columns.  A
// body beginning "0." with digits after the point loses its zero when that
// is what it takes to fit (a lone "." is never written).
std::string fitNumber(bool negative, std::string_view body, int w) {
    std::string s = negative ? "-" : "";
    s += body;
    if (static_cast<int>(s.size()) > w && body.size() > 2 && body[0] == '0' && body[1] == '.') {
        s = negative ? "-" : "";
        s += body.substr(1);
    }
    return padLeft(s, w);
}

// NaN and the infinities, right-justified in w.
std::string editNonFinite(double x, int w) {
    if (std::isnan(x)) return padLeft("NaN", w);
    if (x > 0) return padLeft(w >= 8 ? "Infinity" : "Inf", w);
    return padLeft(w >= 9 ? "-Infinity" : "-Inf", w);
}

char digitAt(const Decimal& v, int i) {
    if (i < 0 || i >= static_cast<int>(v.digits.size())) return '0';
    return v.digits[static_cast<size_t>(i)];
}

// 10^n for n >= 0 by repeated multiplication in double (exact up to 10^22).
double powerOfTen(int n) {
    double p = 1.0;
    while (n-- > 0) p *= 10.0;
    return p;
}

std::string decimalText(std::int64_t v) {
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, res.ptr);
}

// Exponent part of an E or D field: letter, sign and two digits while
// |e| <= 99, else sign and three digits without the letter.  Empty when
// the exponent needs more than three digits.
std::string exponentText(int e, char letter) {
    int a = std::abs(e);
    if (a > 999) return std::string();
    std::string s;
    if (a <= 99) s += letter;
    s += e < 0 ? '-' : '+';
    std::string n = decimalText(a);
    s += std::string((a <= 99 ? 2 : 3) - n.size(), '0');
    s += n;
    return s;
}

// Integer part, point and d fraction digits of a rounded value.
std::string fixedBody(const Decimal& r, int d) {
    int e = r.digits.empty() ? 0 : r.exp;
    std::string s;
    for (int i = 0; i < e; ++i) s += digitAt(r, i);
    if (s.empty()) s = "0";
    s += '.';
    for (int i = 0; i < d; ++i) s += digitAt(r, e + i);
    return s;
}

}  // namespace

Decimal exactDecimal(double x) {
    Decimal v;
    x = std::fabs(x);
    if (x == 0.0) return v;
    char buf[kExactPrecision + 32];
    auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific, kExactPrecision);
    std::string_view t(buf, static_cast<size_t>(res.ptr - buf));
    size_t ePos = t.find('e');
    v.digits += t[0];
    v.digits += t.substr(2, ePos - 2);
    int e10 = 0;
    std::string_view et = t.substr(ePos + 1);
    if (!et.empty() && et[0] == '+') et.remove_prefix(1);
    std::from_chars(et.data(), et.data() + et.size(), e10);
    v.exp = e10 + 1;
    while (!v.digits.empty() && v.digits.back() == '0') v.digits.pop_back();
    return v;
}

Decimal roundDigits(const Decimal& v, int keep) {
    if (v.digits.empty() || keep >= static_cast<int>(v.digits.size())) return v;
    if (keep < 0) return Decimal{};
    size_t k = static_cast<size_t>(keep);
    char next = v.digits[k];
    bool beyond = v.digits.find_first_not_of('0', k + 1) != std::string::npos;
    bool oddLast = keep > 0 && (v.digits[k - 1] - '0') % 2 == 1;
    bool up = next > '5' || (next == '5' && (beyond || oddLast));
    Decimal r{v.digits.substr(0, k), v.exp};
    if (up) {
        int i = keep - 1;
        while (i >= 0 && r.digits[static_cast<size_t>(i)] == '9') r.digits[static_cast<size_t>(i--)] = '0';
        if (i < 0) {
            r.digits.insert(r.digits.begin(), '1');
            r.exp += 1;
        } else {
            r.digits[static_cast<size_t>(i)] += 1;
        }
    }
    while (!r.digits.empty() && r.digits.back() == '0') r.digits.pop_back();
    return r;
}

std::string editInteger(std::int64_t v, int w) { return padLeft(decimalText(v), w); }

std::string editFixed(double x, int w, int d, int k) {
    if (!std::isfinite(x)) return editNonFinite(x, w);
    Decimal v = exactDecimal(x);
    if (!v.digits.empty()) v.exp += k;
    Decimal r = roundDigits(v, v.exp + d);
    return fitNumber(std::signbit(x), fixedBody(r, d), w);
}

std::string editExponent(double x, int w, int d, int k, char letter) {
    if (k <= -d || k > d + 1) throw std::logic_error("scale factor out of range for E/D editing");
    if (!std::isfinite(x)) return editNonFinite(x, w);
    int significant = k > 0 ? d + 1 : d + k;
    Decimal r = roundDigits(exactDecimal(x), significant);
    int e = r.digits.empty() ? 0 : r.exp - k;
    std::string body;
    if (k > 0) {
        for (int i = 0; i < k; ++i) body += digitAt(r, i);
        body += '.';
        for (int i = k; i < significant; ++i) body += digitAt(r, i);
    } else {
        body = "0.";
        body += std::string(static_cast<size_t>(-k), '0');
        for (int i = 0; i < significant; ++i) body += digitAt(r, i);
    }
    std::string ex = exponentText(e, letter);
    if (ex.empty()) return std::string(static_cast<size_t>(w), '*');
    return fitNumber(std::signbit(x), body + ex, w);
}

std::string editGeneral(double x, int w, int d, int k) {
    if (d < 1) throw std::logic_error("G editing needs at least one digit");
    if (!std::isfinite(x)) return editNonFinite(x, w);
    // The switch points allow for the rounding to d digits; they are
    // computed in double arithmetic, as the run-time library does.
    double m = std::fabs(x);
    double r = 1.0 - 0.5 / powerOfTen(d);
    if (m != 0.0 && (m < 0.1 * r || 0.5 >= powerOfTen(d) - m)) return editExponent(x, w, d, k, 'E');
    int decimals = d;
    if (m == 0.0) {
        decimals = d - 1;
    } else {
        for (int j = 0; j < d; ++j)
            if (m >= powerOfTen(j) * r) --decimals;
    }
    return editFixed(x, w - 4, decimals, 0) + "    ";
}

std::string editText(std::string_view s, int w) {
    if (w <= 0) return std::string(s);
    size_t width = static_cast<size_t>(w);
    if (s.size() >= width) return std::string(s.substr(0, width));
    return std::string(width - s.size(), ' ') + std::string(s);
}

std::string listInteger(std::int64_t v) {
    // A value beyond 4-byte range can only come from an 8-byte integer,
    // whose free-form field is 20 columns.
    bool fourBytes = v >= INT32_MIN && v <= INT32_MAX;
    return padLeft(decimalText(v), fourBytes ? 11 : 20);
}

std::string listReal(double x) {
    if (!std::isfinite(x)) return editNonFinite(x, 25);
    double m = std::fabs(x);
    if (m == 0.0 || (m >= 0.1 && m < 1e17)) {
        // Fixed form with 17 significant digits in 20 columns, 5 blanks.
        int decimals = m == 0.0 ? 16 : 17;
        for (int j = 0; j < 17 && m != 0.0; ++j)
            if (m >= powerOfTen(j)) --decimals;
        return editFixed(x, 20, decimals, 0) + "     ";
    }
    // d.dddddddddddddddd E sign and three exponent digits.
    Decimal r = roundDigits(exactDecimal(x), 17);
    std::string s = std::signbit(x) ? "-" : "";
    s += digitAt(r, 0);
    s += '.';
    for (int i = 1; i < 17; ++i) s += digitAt(r, i);
    int e = r.exp - 1;
    std::string n = decimalText(std::abs(e));
    s += 'E';
    s += e < 0 ? '-' : '+';
    s += std::string(n.size() < 3 ? 3 - n.size() : 0, '0') + n;
    return padLeft(s, 25);
}

}  // namespace editing
