// Name-and-value lines of the fit: nameValueLine, nameValueLineReal,
// nameValueLineInt.
#include "scatter/answers_file.h"

#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"

#include <algorithm>

namespace {
constexpr int kNameValueWidth = 132;  // room for a 60-character name behind column 57
}

void nameValueLine(int channel, std::string_view left, std::string_view middle, int pos,
                   char filler) {
    if (R02LEN(left) == 0 && R02LEN(middle) == 0) {
        write(writerChannel(channel), "(A)", " ");  // an all-blank line is one blank
        return;
    }
    std::string line(kNameValueWidth, ' ');
    int outLen = 0;
    R02LINE(left, middle, "", pos, 0, filler, line, outLen);
    int status = 0;
    I05LINE(channel, line.substr(0, static_cast<std::size_t>(R02LEN(line))), status);
}

void nameValueLineReal(int channel, std::string_view left, double value, int pos, char filler,
                       int nInt, int nFrac, int fmt) {
    std::string text = "0.0";
    if (value != 0.0) {
        if (nInt + nFrac < 1) {
            nInt = 1;
            nFrac = 3;
        }
        std::string field(32, ' ');
        int len = 0, err = 0;
        R02R2C1(value, field, nInt, nFrac, len, 2, fmt, err);
        text = field.substr(0, static_cast<std::size_t>(std::max(len, 0)));
    }
    nameValueLine(channel, left, text, pos, filler);
}

void nameValueLineInt(int channel, std::string_view left, int value, int pos, char filler) {
    std::string field(32, ' ');
    int len = 0, err = 0;
    R02I2C1(value, field, len, err);
    nameValueLine(channel, left, field.substr(0, static_cast<std::size_t>(std::max(len, 0))), pos,
                  filler);
}
