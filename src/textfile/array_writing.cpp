// The word joiner R02AWL and the storage-file writers R2WIA1 (integers) and
// R02WRA1 (reals).
#include "textfile/array_io.h"

#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/message_head.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kNumberWidth = 32;
constexpr int kWrittenLineWidth = 160;

// Puts `text` into line from column `column` (1-based); false when it does
// not fit.
bool place(std::string& line, int column, std::string_view text) {
    const std::size_t at = static_cast<std::size_t>(column - 1);
    if (at + text.size() > line.size()) {
        if (at < line.size()) line.replace(at, line.size() - at, text.substr(0, line.size() - at));
        return false;
    }
    line.replace(at, text.size(), text);
    return true;
}

bool dimensionsUsable(std::string_view tag, int MD, int m, int n, int& status) {
    if (MD >= 1 && m >= 1 && n >= 1) return true;
    I05MES(messageHead(tag, 'E') + "Zero array dimension (MD, m, n):");
    write(-1, "(' MD =',I8,/,' m  =',I8,/,' n  =',I8)", MD, m, n);
    status = -1;
    return false;
}

std::string numberText(int v) {
    std::string text(kNumberWidth, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(v, text, len, err);
    return text;
}

std::string numberText(double v) {
    std::string text(kNumberWidth, ' ');
    int len = 0;
    int err = 0;
    R02R2C1(v, text, 1, 6, len, 2, 1, err);
    if (err < 0) {
        I05MES("R02WRA1 --E- Fatal conversion error.");
        write(6, "(A)", " R02WRA1");
        unit::flush(6);
        std::exit(1);
    }
    return text;
}

// Writes one line, or an empty one for an empty text; returns the status.
int writeLine(int channel, std::string_view text) {
    int status = 0;
    if (R02LEN(text) == 0) return write(writerChannel(channel), "(A)", "");
    I05LINE(channel, text, status);
    return status;
}

template <class T>
void writeArray(std::string_view tag, int perLine, int tab, int channel, const T* a, int MD, int m,
                int n, std::string_view label, int& status) {
    status = 0;
    if (!dimensionsUsable(tag, MD, m, n, status)) return;
    status = writeLine(channel, label);
    std::vector<std::string> words;
    for (int i = 0; i < m && status == 0; ++i) {
        for (int j0 = 0; j0 < n && status == 0; j0 += perLine) {
            words.clear();
            for (int j = j0; j < std::min(n, j0 + perLine); ++j) words.push_back(numberText(a[j * MD + i]));
            std::string line(kWrittenLineWidth, ' ');
            int length = 0;
            int joined = 0;
            R02AWL(words.data(), static_cast<int>(words.size()), ',', tab, line, length, joined);
            status = writeLine(channel, line);
        }
        if (status == 0) status = writeLine(channel, "");
    }
    if (status != 0) I05ERR(tag, status);
}

}  // namespace

void R02AWL(const std::string* words, int n, char separator, int tab, std::string& line, int& length,
            int& status) {
    R02BLANK(line);
    length = 0;
    status = 0;
    if (n >= 1 && words[0].empty()) {
        I05MES("R02AWL ---E- Zero word field length.");
        status = -2;
        return;
    }
    if (line.empty()) {
        I05MES("R02AWL ---E- Zero line field length.");
        status = -2;
        return;
    }
    int count = n;
    while (count > 0 && R02LEN(words[count - 1]) == 0) --count;
    if (count == 0) {
        I05MES("R02AWL ---W- All words are empty.");
        status = 1;
        return;
    }
    auto word = [&](int k) { return std::string_view(words[k - 1]).substr(0, static_cast<std::size_t>(R02LEN(words[k - 1]))); };
    bool fits = place(line, 1, word(1));
    length = static_cast<int>(word(1).size());
    int p = std::max(length + 1, tab);
    for (int k = 2; k <= count && fits; ++k) {
        fits = place(line, length + 1, std::string(1, separator)) && place(line, p + 1, word(k));
        length = p + static_cast<int>(word(k).size());
        p = std::max(length + 1, k * tab);
    }
    if (!fits) {
        I05MES("R02AWL ---E- Unsufficient output line length.");
        length = std::min(length, static_cast<int>(line.size()));
        status = -1;
    }
}

void R2WIA1(int channel, const int* a, int MD, int m, int n, std::string_view label, int& status) {
    writeArray("R2WIA1", 10, 8, channel, a, MD, m, n, label, status);
}

void R02WRA1(int channel, const double* a, int MD, int m, int n, std::string_view label,
             int& status) {
    writeArray("R02WRA1", 5, 15, channel, a, MD, m, n, label, status);
}
