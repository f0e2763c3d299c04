// Real to text: R02R2C1, with its passes (digit count, digits, rounding,
// layout, exponent) and the fit into the caller's field.
#include "textfile/number_text.h"

#include "core/console_layer.h"
#include "textfile/number_text_limits.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// A remainder at or above this rounds the last digit up.
constexpr double kRoundUp = 0.449999999999;

constexpr std::string_view kTag = "R02R2C1";
constexpr std::string_view kNoConversion = "             No conversion REAL->CHAR is possible.";

// One conversion: the request, the limits and what the passes find.
struct Job {
    double v = 0;
    int nInt = 0;
    int nFrac = 0;
    int fmt = 0;
    int width = 0;  // the caller's field
    RealTextLimits lim;
    bool talk = false;
    int err = 0;

    // Filled by each pass.
    int D = 0;         // digits to produce
    int len = 0;       // length of the field computed from the widths
    int E = 0;         // decimal exponent, value = 0.d1d2... * 10^E
    double m = 0;      // fraction still to be turned into digits
    std::string digits;
    bool pendingSmall = false;  // "too small" waiting on the rounding
    bool withExponent = false;
    bool failed = false;
};

int absFmt(const Job& j) { return j.fmt < 0 ? -j.fmt : j.fmt; }

void say(const Job& j, std::string_view text) {
    if (j.talk) I05MES(std::string(kTag) + std::string(text));
}

// A failure: its text, the closing line, err.
void fail(Job& j, int err, std::string_view text) {
    j.err = err;
    j.failed = true;
    if (!text.empty()) say(j, text);
    if (j.talk) I05MES(kNoConversion);
}

// The field of a failure: '*' over the computed length, '-' for a negative value.
std::string stars(const Job& j) {
    std::string s(static_cast<std::size_t>(std::max(j.len, 0)), '*');
    if (j.v < 0 && !s.empty()) s[0] = '-';
    return s;
}

// Step 1: the checks of the request that change it and go on.
void checkRequest(Job& j) {
    if (j.fmt > 3 || j.fmt < -3) {
        say(j, " --W- Wrong format, must be 0, +-1, +-2, or +-3, assumed 1.");
        j.err = 1;
        j.fmt = 1;
    }
    if (j.nInt < 0) {
        say(j, " --W- Negative integer field width, assumed positive.");
        j.err = 10;
        j.nInt = -j.nInt;
    }
    if (j.nFrac < 0) {
        say(j, " --W- Negative fractional field width, assumed positive.");
        j.err = 10;
        j.nFrac = -j.nFrac;
    }
}

// Steps 2 and 3: digits to produce, computed length, the cut to S digits.
void sizeField(Job& j) {
    const int S = j.lim.S;
    j.D = j.nInt + j.nFrac;
    const int shown = std::min(j.D, S);
    j.len = absFmt(j) <= 1 ? shown + 4 + j.lim.X : shown + 2;
    if (j.D <= S) return;
    if (absFmt(j) == 2) {
        j.nInt = std::min(j.nInt, S);
        j.nFrac = std::min(j.nFrac, S);
    } else {
        say(j, " --W- Too many significant digits specified.");
        j.err = 2;
        int surplus = j.D - S;
        const int offFrac = std::min(surplus, j.nFrac);
        j.nFrac -= offFrac;
        surplus -= offFrac;
        j.nInt -= surplus;
    }
    j.D = S;
}

// The text for a magnitude below the smallest number.
std::string zeroForm(const Job& j) {
    if (j.fmt < 0) return "0";
    if (j.fmt == 0) {
        return " " + std::string(static_cast<std::size_t>(j.nInt), '0') + "." +
               std::string(static_cast<std::size_t>(j.nFrac), '0') + "e+" +
               std::string(static_cast<std::size_t>(j.lim.X), '0');
    }
    std::string s = j.nInt >= 1 ? "0." : ".";
    if (j.fmt == 1)
        s += j.nFrac >= 1 ? "0" : "";
    else
        s += std::string(static_cast<std::size_t>(j.nFrac), '0');
    return s;
}

double powerOfTen(int n) { return std::pow(10.0, n); }

// Step 6: decimal exponent and the fraction from 0.1 to below 1.  A
// power beyond the largest number is divided out in two steps.
bool findExponent(Job& j) {
    const double a = std::abs(j.v);
    if (!std::isfinite(a)) {
        fail(j, -4, " --E- Exponent overflow.");
        return false;
    }
    const double decades = std::log10(a);
    j.E = static_cast<int>(decades) + (decades >= 0 ? 1 : 0);
    if (j.E <= 0)
        j.m = a * powerOfTen(-j.E);
    else if (std::isfinite(powerOfTen(j.E)))
        j.m = a / powerOfTen(j.E);
    else
        j.m = a / powerOfTen(j.E - 1) / 10;
    if (j.m >= 1) {
        j.m /= 10;
        ++j.E;
    } else if (j.m < 0.1) {
        j.m *= 10;
        --j.E;
    }
    if (std::abs(j.E) > j.lim.L) {
        fail(j, -4, " --E- Exponent overflow.");
        return false;
    }
    return true;
}

// Step 7: how many digits the layout asks for.
bool countDigits(Job& j) {
    const int af = absFmt(j);
    if (af == 2) {
        if (j.E < 0) {
            j.D = j.nFrac + j.E;
            j.pendingSmall = j.D < 1;
        } else {
            j.D = std::min(j.nFrac + j.E, j.lim.S);
        }
    } else if (af == 3 && j.E < 0) {
        j.D += j.E;
        j.pendingSmall = j.D < 1;
    }
    if (af >= 2 && j.E > j.D) {
        fail(j, -4, " --E- Overflow, use exponential format.");
        return false;
    }
    return true;
}

// Step 8: the digits, and the remainder rule at the last trustworthy digit.
void makeDigits(Job& j) {
    j.digits.clear();
    for (int i = 0; i < j.D; ++i) {
        const double t = 10 * j.m;
        const int d = std::min(static_cast<int>(t), 9);
        j.digits.push_back(static_cast<char>('0' + d));
        j.m = t - d;
    }
    if (j.D >= j.lim.S) j.m = j.m >= 0.7 ? 0.999 : 0.0;
}

// Step 9, rounding: the last digit goes up when the remainder reaches the
// threshold; a carry out of the first digit moves the exponent.
void roundDigits(Job& j) {
    if (j.m < kRoundUp || j.D < 0) return;
    if (j.D == 0) {
        j.digits = "1";
        j.D = 1;
        ++j.E;
        return;
    }
    int i = j.D - 1;
    while (i >= 0 && j.digits[static_cast<std::size_t>(i)] == '9') {
        j.digits[static_cast<std::size_t>(i)] = '0';
        --i;
    }
    if (i >= 0) {
        ++j.digits[static_cast<std::size_t>(i)];
        return;
    }
    j.digits[0] = '1';
    ++j.E;
    const int af = absFmt(j);
    if (af == 2 || (af == 3 && j.E < 1)) {
        j.digits.push_back('0');
        ++j.D;
    }
}

// Step 9, no digit left to show.
std::string noDigit(Job& j) {
    if (j.pendingSmall) say(j, " --E- Number too small, use exponential format.");
    if (absFmt(j) == 2 && j.nInt == 1 && j.nFrac == 0) {
        j.err = 4;
        return "0.";
    }
    fail(j, -3, "");
    if (j.width == 1) {
        if (j.v >= 1 && j.v < 10) return std::string(1, static_cast<char>('0' + int(j.v)));
        return "*";
    }
    return zeroForm(j);
}

// Step 10: the digits with the point, and whether an exponent follows.
bool layoutDigits(Job& j, std::string& body) {
    const int af = absFmt(j);
    int P = j.nInt;
    j.withExponent = false;
    if (af == 0) {
        j.withExponent = true;
    } else if (af == 1) {
        if (j.E >= 0 && j.E <= j.D)
            P = j.E;
        else
            j.withExponent = true;
    } else {
        P = j.E;
        if (j.nInt < P) {
            fail(j, -4, " --E- Overflow, use exponential format.");
            return false;
        }
    }
    if (P > 0) {
        const std::size_t front = static_cast<std::size_t>(P);
        std::string digits = j.digits;
        if (digits.size() < front) digits.resize(front, '0');
        body = digits.substr(0, front) + "." + digits.substr(front);
    } else {
        body = ((af == 1 || af == 2) && j.nInt >= 1) ? "0." : ".";
        body += std::string(static_cast<std::size_t>(-P), '0') + j.digits;
    }
    return true;
}

// Step 11: a negative layout drops the trailing zeros of the fraction.
void dropZeros(const Job& j, std::string& body) {
    if (j.fmt >= 0) return;
    const std::size_t point = body.find('.');
    if (point == std::string::npos) return;
    const std::size_t keep = j.fmt == -1 ? point + 2 : point + 1;
    while (body.size() > keep && body.back() == '0') body.pop_back();
    if (j.fmt != -1 && body.size() == point + 1) body.pop_back();
}

// Step 12: the exponent E - nInt where the layout calls for one.
bool appendExponent(Job& j, std::string& body) {
    if (!j.withExponent) return true;
    const int x = j.E - j.nInt;
    if (x == 0 && j.fmt != 0) return true;
    std::string digits = std::to_string(std::abs(x));
    if (static_cast<int>(digits.size()) > j.lim.X) {
        fail(j, -4, " --E- Exceeded exponent field length.");
        return false;
    }
    if (j.fmt == 0) digits.insert(0, static_cast<std::size_t>(j.lim.X) - digits.size(), '0');
    body += std::string("e") + (x < 0 ? "-" : "+") + digits;
    return true;
}

// Steps 2 to 12 and 14 once: the text for the current widths.
std::string runPass(Job& j) {
    j.failed = false;
    j.pendingSmall = false;
    sizeField(j);
    if (std::abs(j.v) < j.lim.Z) return zeroForm(j);
    const std::string sign = j.v < 0 ? "-" : (j.fmt == 0 ? " " : "");
    if (!findExponent(j) || !countDigits(j)) return stars(j);
    makeDigits(j);
    roundDigits(j);
    if (j.D <= 0) {
        const std::string shown = noDigit(j);
        return j.failed ? shown : sign + shown;
    }
    j.pendingSmall = false;  // a digit came, through the rounding if need be
    std::string body;
    if (!layoutDigits(j, body)) return stars(j);
    dropZeros(j, body);
    if (!appendExponent(j, body)) return stars(j);
    return sign + body;
}

// Step 13: shortens the widths by the excess; false when nothing is left.
bool shorten(Job& j, int excess) {
    say(j, " --W- Unsufficient space for mantissa field, will be adjusted... ");
    j.err = 3;
    const int offFrac = std::min(excess, j.nFrac);
    j.nFrac -= offFrac;
    j.nInt = std::max(j.nInt - (excess - offFrac), 0);
    if (j.nInt + j.nFrac > 0) return true;
    fail(j, -3, " --E- No space for mantissa field.");
    return false;
}

// The passes, restarted with shorter widths while the text does not fit.
std::string convert(Job& j) {
    for (int restart = 0;; ++restart) {
        std::string out = runPass(j);
        if (j.failed || static_cast<int>(out.size()) <= j.width) return out;
        if (restart == 1) {
            fail(j, -3, "");
            return out;
        }
        if (!shorten(j, static_cast<int>(out.size()) - j.width)) return stars(j);
    }
}

}  // namespace

void R02R2C1(double v, std::string& text, int nInt, int nFrac, int& len, int type, int fmt,
             int& err) {
    Job j;
    j.v = v;
    j.nInt = nInt;
    j.nFrac = nFrac;
    j.fmt = fmt;
    j.width = static_cast<int>(text.size());
    j.talk = err <= -10;
    j.lim = realTextLimits(type);
    std::fill(text.begin(), text.end(), ' ');
    len = 0;
    if (text.empty()) {
        fail(j, -2, " --E- Zero output string length specified.");
        err = j.err;
        return;
    }
    if (static_cast<long long>(nInt) + nFrac <= 0) {
        fail(j, -1, " --E- Zero mantissa length specified.");
        err = j.err;
        return;
    }
    checkRequest(j);
    std::string out = convert(j);
    if (static_cast<int>(out.size()) > j.width) out.resize(static_cast<std::size_t>(j.width));
    std::copy(out.begin(), out.end(), text.begin());
    len = static_cast<int>(out.size());
    err = j.err;
}
