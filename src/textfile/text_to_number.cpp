// Text to number: R02C2R1 (text to double), R02C2I1 (text to integer) and
// R02AINT (tolerant integer part).
#include "textfile/number_text.h"

#include "core/console_layer.h"
#include "textfile/number_text_limits.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr std::size_t kRealWork = 256;
constexpr std::size_t kIntegerWork = 32;

// The first `width` characters of text without blanks, characters 9 to 13
// and zero bytes, wherever they stand.
std::string squeezed(std::string_view text, std::size_t width) {
    std::string out;
    for (char c : text.substr(0, width)) {
        const auto u = static_cast<unsigned char>(c);
        if (c == ' ' || c == '\0' || (u >= 9 && u <= 13)) continue;
        out.push_back(c);
    }
    return out;
}

// "<tag><text> "<input>"."
void quoteMessage(std::string_view tag, std::string_view text, std::string_view input) {
    const std::string shown(input.substr(0, static_cast<std::size_t>(R02LEN(input))));
    I05MES(std::string(tag) + std::string(text) + " \"" + shown + "\".");
}

// ---- text to double ----------------------------------------------------------

// The scan of a real number.  Its significant digits are held as a whole
// number, exact up to 19 digits, with the power of ten that scales it to the
// mantissa (digits beyond those only move the scale, the first of them
// rounds); p is the number of digits in front of the point, negative for
// zeros behind it; the exponent is eSign * e.
struct RealScan {
    enum State { Integer, Fraction, Exponent };
    State state = Integer;
    std::uint64_t whole = 0;
    int wholeShift = 0;
    bool full = false;  // whole holds all the digits it can
    int p = 0;
    bool mantissaDigit = false;
    int e = 0;
    int eSign = 1;
    bool eSignSeen = false;
    bool eDigit = false;
    const char* failure = nullptr;  // text of the first failure
};

// x * 10^k in at most two steps, each by a power of ten that is a number.
double scaledByTen(double x, int k) {
    const int part = std::min(std::abs(k), 300);
    const int rest = std::abs(k) - part;
    if (k >= 0) return x * std::pow(10.0, rest) * std::pow(10.0, part);
    return x / std::pow(10.0, rest) / std::pow(10.0, part);
}

// The mantissa collected so far.
double mantissa(const RealScan& s) {
    return scaledByTen(static_cast<double>(s.whole), s.wholeShift);
}

// Largest whole number to which one more digit can be added.
constexpr std::uint64_t kWholeLimit = (std::numeric_limits<std::uint64_t>::max() - 9) / 10;

void keepDigit(RealScan& s, int d) {
    if (!s.full && s.whole <= kWholeLimit) {
        s.whole = 10 * s.whole + static_cast<std::uint64_t>(d);
        if (s.state == RealScan::Fraction) --s.wholeShift;
        return;
    }
    if (!s.full && d >= 5) s.whole += 1;  // the first digit that is left out rounds
    s.full = true;
    if (s.state == RealScan::Integer) ++s.wholeShift;
}

void scanDigit(RealScan& s, int d, int expLimit) {
    if (s.state == RealScan::Exponent) {
        s.e = 10 * s.e + d;
        s.eDigit = true;
        if (s.e > expLimit) s.failure = " --E- Exponent overflow in";
        return;
    }
    s.mantissaDigit = true;
    const bool leadingZero = s.whole == 0 && d == 0;
    if (s.state == RealScan::Integer) {
        if (leadingZero) return;  // skipped
        ++s.p;
    } else if (leadingZero) {
        --s.p;  // a zero behind the point lowers the mantissa's position
    }
    keepDigit(s, d);
}

void scanChar(RealScan& s, char c, int expLimit) {
    const char u = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (u == '.') {
        if (s.state != RealScan::Integer) s.failure = " --E- Period dot is not unique:";
        s.state = RealScan::Fraction;
    } else if (u == 'E' || u == 'D') {
        if (s.state == RealScan::Exponent)
            s.failure = " --E- Exponent character is not unique:";
        else if (!s.mantissaDigit)
            s.failure = " --E- Not a numeric format:";
        s.state = RealScan::Exponent;
    } else if (u == '-' || u == '+') {
        if (s.eSignSeen || s.eDigit) s.failure = " --E- Exponent sign in not unique:";
        s.eSignSeen = true;
        s.eSign = u == '-' ? -1 : 1;
        s.state = RealScan::Exponent;
    } else if (u >= '0' && u <= '9') {
        scanDigit(s, u - '0', expLimit);
    } else {
        s.failure = " --E- String is not a number:";
    }
}

// The range check of the total exponent: null when the number fits.
const char* rangeFailure(const RealScan& s) {
    if (s.whole == 0) return nullptr;
    const IntegerTextLimits& lim = integerTextLimits();
    const int total = s.eSign * s.e + s.p;
    const int T = std::abs(total);
    const int B = total < 0 ? -lim.minDecExp : lim.maxDecExp;
    if (T > B + 1) return " --E- Float-point (exponent) overflow in";
    if (T < B) return nullptr;
    // The mantissa reduced to below 1, held at the scale of 10^B.
    double reduced = scaledByTen(static_cast<double>(s.whole), s.wholeShift - s.p);
    if ((total < 0) == (T == B + 1)) reduced /= 10;
    if (total < 0 && reduced < lim.rMin * std::pow(10.0, B))
        return " --E- Float-point (mantissa) underflow in";
    if (total > 0 && reduced > lim.rMax / std::pow(10.0, B) / 10)
        return " --E- Float-point (mantissa) overflow in";
    return nullptr;
}

// ---- text to integer -----------------------------------------------------------

struct IntegerResult {
    int value = 0;
    int err = 0;
    const char* text = nullptr;  // message for a nonzero err
};

// Sign and digits only: the significant digits summed in double arithmetic
// against the largest integer.
IntegerResult integerDigits(const std::string& work) {
    const IntegerTextLimits& lim = integerTextLimits();
    std::size_t at = 0;
    int sign = 1;
    if (!work.empty() && (work[0] == '-' || work[0] == '+')) {
        sign = work[0] == '-' ? -1 : 1;
        at = 1;
    }
    if (at == work.size()) return {0, -3, " --E- Not a number:"};
    while (at < work.size() && work[at] == '0') ++at;
    const std::string digits = work.substr(at);
    if (static_cast<int>(digits.size()) > lim.largestDigits)
        return {0, -2, " --E- Too many significant digits in"};
    double sum = 0;
    for (char c : digits) {
        const double next = 10 * sum + (c - '0');
        if (next > lim.largest)
            return {sign * static_cast<int>(sum), -2, " --E- Integer overflow at"};
        sum = next;
    }
    return {sign * static_cast<int>(sum), 0, nullptr};
}

// The digits of the value before the point, as ten significant digits give them.
std::string integerPartText(double v, int digits) {
    std::string field(kIntegerWork, ' ');
    int len = 0;
    int err = 0;
    R02R2C1(v, field, digits, 0, len, 2, 1, err);
    field.resize(static_cast<std::size_t>(len));
    return field.substr(0, field.find('.'));
}

// A text with an exponent or a point: converted as a real, then taken to an
// integer if it is one within ten significant digits.
IntegerResult integerFromReal(const std::string& work, bool talk, std::string_view input) {
    if (work.size() == 1) return {0, -3, " --E- Not a number:"};
    int err = 0;
    const double v = R02C2R1(work, err);
    if (err != 0) return {0, -1, " --E- Not a number:"};
    const IntegerTextLimits& lim = integerTextLimits();
    int aintErr = 0;
    const double integral = R02AINT(v, aintErr);
    if (aintErr != 0 || std::abs(v - integral) > std::abs(v) / std::pow(10.0, lim.largestDigits)) {
        if (talk) quoteMessage("R02C2I1", " --W- Not an integer number:", input);
    }
    if (std::abs(v) > lim.largest) return {0, -2, " --E- Integer overflow at"};
    if (std::abs(v) < 1) return {0, -4, " --E- Not an integer number:"};
    IntegerResult r = integerDigits(integerPartText(v, lim.largestDigits));
    if (r.err == 0) r.err = 1;
    return r;
}

}  // namespace

double R02C2R1(std::string_view text, int& err) {
    const bool talk = err <= -10;
    const std::string work = squeezed(text, kRealWork);
    if (work.empty()) {
        err = 2;
        return 0.0;
    }
    err = 0;
    double sign = 1;
    std::size_t at = 0;
    if (work[0] == '-' || work[0] == '+') {
        sign = work[0] == '-' ? -1 : 1;
        at = 1;
    }
    RealScan s;
    const int expLimit = integerTextLimits().maxDecExp;
    for (; at < work.size() && !s.failure; ++at) scanChar(s, work[at], expLimit);
    if (!s.failure && !s.mantissaDigit) s.failure = " --E- Not a numeric format:";
    if (!s.failure) s.failure = rangeFailure(s);
    if (s.failure) {
        err = -1;
        if (talk) {
            quoteMessage("R02C2R1", s.failure, text.substr(0, kRealWork));
            I05MES("             No conversion is possible.");
        }
        return sign * mantissa(s);
    }
    return sign * scaledByTen(static_cast<double>(s.whole), s.wholeShift + s.eSign * s.e);
}

int R02C2I1(std::string_view text, int& err) {
    const bool talk = err <= -10;
    const std::string work = squeezed(text, kIntegerWork);
    IntegerResult r;
    if (work.empty()) {
        r = {0, 2, " --E- Empty input string assumes zero, "};
    } else {
        std::size_t at = 0;
        for (; at < work.size(); ++at) {
            const char c = work[at];
            if (c == 'E' || c == 'e' || c == 'D' || c == 'd' || c == '.') break;
            const bool sign = at == 0 && (c == '-' || c == '+');
            if (!sign && (c < '0' || c > '9')) break;
        }
        if (at == work.size())
            r = integerDigits(work);
        else if (work[at] == '.' || std::toupper(static_cast<unsigned char>(work[at])) == 'E' ||
                 std::toupper(static_cast<unsigned char>(work[at])) == 'D')
            r = integerFromReal(work, talk, text);
        else
            r = {0, -1, " --E- Not a number:"};
    }
    err = r.err;
    if (talk && r.err != 0 && r.err != 1) quoteMessage("R02C2I1", r.text, text);
    return r.value;
}

double R02AINT(double v, int& err) {
    const IntegerTextLimits& lim = integerTextLimits();
    const double eps = lim.eps;
    const int D = lim.largestDigits - 1;
    double a = std::abs(v);
    if (!std::isfinite(a)) {
        err = -1;
        return v;
    }
    const double quarter = 0.25 / eps;
    if (a < std::sqrt(quarter))
        a += 2 * eps * a;
    else if (a < quarter)
        a += eps * a;
    const int e = v == 0 ? 0 : static_cast<int>(std::log10(a));
    if (e > D && a > quarter) {
        err = -1;
        return std::trunc(v);
    }
    err = 0;
    return std::copysign(std::trunc(a), v);
}
