// Free-form reading: listItems (record to item texts), listReadInt,
// listReadReal (item conversion) and ListReader (one READ over records).
#include "platform/list_directed_read.h"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

constexpr long kMaxRepeat = 1000000;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool endsValue(char c) { return isBlank(c) || c == ',' || c == '/'; }

// A quoted text starting at rec[p]; p is left after the closing quote.  An
// unclosed text runs to the end of the record.
std::string quotedValue(std::string_view rec, size_t& p) {
    char q = rec[p++];
    std::string out;
    while (p < rec.size()) {
        char c = rec[p++];
        if (c != q) {
            out += c;
        } else if (p < rec.size() && rec[p] == q) {
            out += q;
            ++p;
        } else {
            break;
        }
    }
    return out;
}

std::string bareValue(std::string_view rec, size_t& p) {
    size_t start = p;
    while (p < rec.size() && !endsValue(rec[p])) ++p;
    return std::string(rec.substr(start, p - start));
}

// "r*" in front of a value: returns r and moves p past the '*', or 1.
int repeatCount(std::string_view rec, size_t& p) {
    size_t q = p;
    long r = 0;
    while (q < rec.size() && isDigit(rec[q]) && r <= kMaxRepeat) r = r * 10 + (rec[q++] - '0');
    if (q == p || q >= rec.size() || rec[q] != '*' || r < 1 || r > kMaxRepeat) return 1;
    p = q + 1;
    return static_cast<int>(r);
}

bool allDigits(std::string_view t) {
    if (t.empty()) return false;
    for (char c : t)
        if (!isDigit(c)) return false;
    return true;
}

bool equalsFolded(std::string_view t, std::string_view upper) {
    if (t.size() != upper.size()) return false;
    for (size_t i = 0; i < t.size(); ++i)
        if (std::toupper(static_cast<unsigned char>(t[i])) != upper[i]) return false;
    return true;
}

// Rewrites a Fortran real text (no sign) in the form from_chars reads:
// the exponent letter E, D or Q, or none before a signed exponent, becomes
// 'e'.  Empty when the text is not a real number.
std::string realForm(std::string_view t) {
    size_t i = 0, digits = 0;
    while (i < t.size() && isDigit(t[i])) ++i, ++digits;
    if (i < t.size() && t[i] == '.') ++i;
    while (i < t.size() && isDigit(t[i])) ++i, ++digits;
    if (digits == 0) return std::string();
    std::string out(t.substr(0, i));
    if (i == t.size()) return out;
    char c = static_cast<char>(std::toupper(static_cast<unsigned char>(t[i])));
    if (c == 'E' || c == 'D' || c == 'Q') ++i;
    else if (c != '+' && c != '-') return std::string();
    out += 'e';
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) out += t[i++];
    if (!allDigits(t.substr(i))) return std::string();
    out += t.substr(i);
    return out;
}

}  // namespace

std::vector<std::string> listItems(std::string_view record, bool* slash) {
    if (slash != nullptr) *slash = false;
    std::vector<std::string> items;
    size_t p = 0;
    bool afterValue = false;  // a value since the last comma
    for (;;) {
        while (p < record.size() && isBlank(record[p])) ++p;
        if (p >= record.size()) break;
        char c = record[p];
        if (c == ',') {
            if (!afterValue) items.emplace_back();
            afterValue = false;
            ++p;
            continue;
        }
        if (c == '/') {
            if (slash != nullptr) *slash = true;
            break;
        }
        int repeat = repeatCount(record, p);
        std::string value;
        if (p < record.size() && (record[p] == '\'' || record[p] == '"')) value = quotedValue(record, p);
        else if (p < record.size() && !endsValue(record[p])) value = bareValue(record, p);
        items.insert(items.end(), static_cast<size_t>(repeat), value);
        afterValue = true;
    }
    return items;
}

int listReadInt(std::string_view item, int& v) {
    if (item.empty()) return 0;
    bool negative = item[0] == '-';
    if (item[0] == '+' || item[0] == '-') item.remove_prefix(1);
    if (!allDigits(item)) return LIST_BAD_ITEM;
    std::int64_t magnitude = 0;
    auto res = std::from_chars(item.data(), item.data() + item.size(), magnitude);
    if (res.ec != std::errc()) return LIST_BAD_ITEM;
    std::int64_t value = negative ? -magnitude : magnitude;
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max()) return LIST_BAD_ITEM;
    v = static_cast<int>(value);
    return 0;
}

int listReadReal(std::string_view item, double& v) {
    if (item.empty()) return 0;
    bool negative = item[0] == '-';
    if (item[0] == '+' || item[0] == '-') item.remove_prefix(1);
    double x = 0.0;
    if (equalsFolded(item, "NAN")) {
        x = std::numeric_limits<double>::quiet_NaN();
    } else if (equalsFolded(item, "INF") || equalsFolded(item, "INFINITY")) {
        x = std::numeric_limits<double>::infinity();
    } else {
        std::string form = realForm(item);
        if (form.empty()) return LIST_BAD_ITEM;
        auto res = std::from_chars(form.data(), form.data() + form.size(), x, std::chars_format::general);
        if (res.ec != std::errc() || res.ptr != form.data() + form.size()) return LIST_BAD_ITEM;
    }
    v = negative ? -x : x;
    return 0;
}

ListReader::ListReader(std::function<int(std::string&)> nextRecord) : nextRecord_(std::move(nextRecord)) {}

int ListReader::readItems(int n, const std::function<int(const std::string&, int)>& store) {
    int filled = 0;
    bool slash = false;
    do {
        std::string record;
        int rc = nextRecord_(record);
        if (rc != 0) return rc;
        for (const std::string& item : listItems(record, &slash)) {
            if (filled == n) break;
            int err = store(item, filled);
            if (err != 0) return err;
            ++filled;
        }
    } while (filled < n && !slash);
    return 0;
}

int ListReader::readInts(int* v, int n) {
    return readItems(n, [v](const std::string& item, int k) { return listReadInt(item, v[k]); });
}

int ListReader::readReals(double* v, int n) {
    return readItems(n, [v](const std::string& item, int k) { return listReadReal(item, v[k]); });
}

int ListReader::readTexts(std::string* v, int n) {
    return readItems(n, [v](const std::string& item, int k) {
        if (item.empty()) return 0;
        std::string& target = v[k];
        if (target.empty()) {
            target = item;
        } else {
            size_t len = target.size();
            target = item.substr(0, len);
            target.resize(len, ' ');
        }
        return 0;
    });
}
