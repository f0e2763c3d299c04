// Console layer: I05ASK, I05RSL, I05RSLD, I05MES, E04MES, I05ERR, I05LINE
// and writerChannel (the channel convention of every writer).
#include "core/console_layer.h"

#include "core/sysinf.h"
#include "platform/units.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cstdlib>

namespace {

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

// The short form of I05MES: cut at 80 characters, no failure check.
void shortMessage(std::string_view text) {
    std::string line = " " + std::string(text);
    if (line.size() > 80) line.resize(80);
    write(-1, "(A)", trimmed(line));
}

// Blanks the line from the first comment character on.
int cutComment(std::string& line, int length, std::string_view commentChars) {
    std::string_view set = commentChars.substr(0, static_cast<std::size_t>(R02LEN(commentChars)));
    if (set.empty()) return length;
    std::size_t at = line.find_first_of(set);
    if (at == std::string::npos || static_cast<int>(at) >= length) return length;
    std::fill(line.begin() + static_cast<long>(at), line.end(), ' ');
    return at == 0 ? 0 : R02LEN(line);
}

}  // namespace

int writerChannel(int channel) {
    if (channel < 1 || channel == 5 || channel == 6) return sysinf.outUnit;
    return channel;
}

void I05ASK(std::string_view text, int cursor) {
    int w = sysinf.screenW;
    if (w < 4) {
        I05MES("I05ASK ---E- \"screenW\" from  @sysinf.fi  not defined!");
        I05MES("             Don't forget to include  @sysinf.fd  in the main program!");
        w = 60;
    }
    int len = std::min({R02LEN(text), w - 4, 76});
    int c = std::min({cursor, w - 1, 79});
    std::string field(text.substr(0, static_cast<std::size_t>(std::max(len, 0))));
    if (len > 0 && field[static_cast<std::size_t>(len - 1)] == ':') field.resize(static_cast<std::size_t>(--len));
    if (len + 3 < c) {
        field += ' ';
        if (len + 4 < c) field.resize(static_cast<std::size_t>(c - 3), '.');
    }
    if (field.empty()) {
        write(sysinf.outUnit, "(1X,': ',$)");
    } else {
        write(sysinf.outUnit, "(1X,A,': ',$)", field);
    }
}

void I05RSL(int channel, std::string& line, int& length, std::string_view commentChars,
            int& status) {
    length = 0;
    if (channel < 1) {
        I05MES("I05RSL ---E- Zero or negative input channel number!");
        status = -1;
        std::exit(1);
    }
    if (line.empty()) {
        status = -2;
        return;
    }
    std::size_t width = line.size();
    std::string record;
    int io = unit::readRecord(channel, record);
    line.assign(width, ' ');
    if (io == unit::IOSTAT_END) {
        status = 1;
        return;
    }
    if (io != 0) {
        status = -1;
        I05ERR("I05RSL", io);
        return;
    }
    status = 0;
    line.replace(0, std::min(width, record.size()), record.substr(0, width));
    for (char& ch : line) {
        if (ch == '\t' || ch == '\0' || (ch >= 10 && ch <= 13)) ch = ' ';
    }
    length = R02LEN(line);
    length = cutComment(line, length, commentChars);
}

void I05RSLD(int channel, std::string& line, int& length, std::string_view commentChars,
             int& status) {
    std::string saved = line;
    I05RSL(channel, line, length, commentChars, status);
    if (length == 0 && R02LEN(saved) > 0) {
        line = saved;
        length = R02LEN(line);
    }
}

void I05MES(std::string_view text) {
    std::string line = " " + std::string(text);
    if (line.size() > 256) line.resize(256);
    int io = write(-1, "(A)", trimmed(line));
    if (io != 0) I05ERR("I05MES", io);
}

void E04MES(std::string_view text) {
    std::string line = " " + std::string(text);
    if (line.size() > 80) line.resize(80);
    if (R02LEN(line) == 0) return;
    line = trimmed(line);
    int io = write(writerChannel(sysinf.dwUnit), "(A)", line);
    if (io != 0) I05ERR("E04MES", io);
    if (sysinf.MODEE4 == 0 && writerChannel(sysinf.dwUnit) != sysinf.outUnit) {
        write(sysinf.outUnit, "(A)", line);
    }
}

void I05ERR(std::string_view tag, int iostat) {
    std::string line(tag);
    line += ' ';
    while (line.size() < 9) line += '-';
    line += "-E- Error code: {" + std::to_string(iostat) + "}. " + unit::ioText(iostat);
    shortMessage(line);
}

void I05LINE(int channel, std::string_view text, int& status) {
    status = 0;
    if (R02LEN(text) == 0) return;
    status = write(writerChannel(channel), "(1X,A)", trimmed(text));
}
