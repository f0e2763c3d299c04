// Numbers into fields: R02I2C1 (integer to text) and the wrappers R02R2C2,
// R02R2C3, R02I2C2 that convert through a 32-character work field.
#include "textfile/number_text.h"

#include "core/console_layer.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kWorkWidth = 32;

// Columns of result that may be used.
int usable(const std::string& result, int resultLen) {
    const int size = static_cast<int>(result.size());
    return (resultLen < 1 || resultLen > size) ? size : resultLen;
}

// Puts text left-justified into the field, blanks behind.
void place(std::string& field, std::string_view text) {
    std::fill(field.begin(), field.end(), ' ');
    std::copy_n(text.begin(), std::min(text.size(), field.size()), field.begin());
}

// The number as text for a message, without blanks.
std::string numberText(int n) {
    std::string work(kWorkWidth, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(n, work, len, err);
    return work.substr(0, static_cast<std::size_t>(len));
}

// "<tag> --E- Unsufficient length of <tag>: <room>, required: <need>"
std::string lengthMessage(std::string_view tag, int room, int need) {
    const std::string t(tag);
    return t + " --E- Unsufficient length of " + t + ": " + numberText(room) + ", required: " +
           numberText(need);
}

// Copies the work text into result, or '*' when it does not fit.
bool deliver(std::string& result, int resultLen, const std::string& work, int& len) {
    const int room = usable(result, resultLen);
    if (len > room) {
        place(result, "*");
        return false;
    }
    place(result, std::string_view(work).substr(0, static_cast<std::size_t>(len)));
    return true;
}

}  // namespace

void R02I2C1(int i, std::string& text, int& len, int& err) {
    len = 0;
    if (text.empty()) {
        I05MES("R02I2C1 --E- Zero string length dimensioned.");
        err = -2;
        return;
    }
    std::fill(text.begin(), text.end(), ' ');
    std::int64_t n = i;
    const bool negative = n < 0;
    if (negative) n = -n;
    std::string digits;
    do {
        digits.insert(digits.begin(), static_cast<char>('0' + n % 10));
        n /= 10;
    } while (n > 0);
    if (negative) digits.insert(digits.begin(), '-');
    if (digits.size() > text.size()) {
        text[0] = '*';
        len = 1;
        err = -4;
        return;
    }
    place(text, digits);
    len = static_cast<int>(digits.size());
    err = 0;
}

void R02R2C2(std::string& result, int resultLen, double v, int nInt, int nFrac, int& len,
             int type, int fmt, int& err) {
    const bool talk = err <= -6;
    std::string work(kWorkWidth, ' ');
    R02R2C1(v, work, nInt, nFrac, len, type, fmt, err);
    if (deliver(result, resultLen, work, len)) return;
    if (talk) I05MES(lengthMessage("R02R2C2", usable(result, resultLen), len));
    err = -3;
    len = 1;
}

void R02R2C3(std::string& result, int resultLen, double v, int& len, int fmt, int& err) {
    const bool talk = err <= -6;
    std::string work(kWorkWidth, ' ');
    R02R2C1(v, work, 1, 3, len, 2, fmt, err);
    if (deliver(result, resultLen, work, len)) return;
    if (talk) I05MES("R02R2C3 --E- Unsufficient length of R02R2C3.");
    err = -3;
    len = 1;
}

void R02I2C2(std::string& result, int resultLen, int i, int& len, int& err) {
    std::string work(kWorkWidth, ' ');
    R02I2C1(i, work, len, err);
    if (deliver(result, resultLen, work, len)) return;
    I05MES(lengthMessage("R02I2C2", usable(result, resultLen), len));
    err = -4;
    len = 1;
}
