// Reading of the initialization file zemok.ini: the places it is looked
// for, its 14 keys in their reading order, the check of each value before
// it replaces the start value, and the report of lines with unknown keys.
#include "monitor/initialization_file.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/help_sections.h"
#include "platform/clock.h"
#include "platform/units.h"
#include "textfile/keyed_reading.h"

#include <array>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kIniName = "zemok.ini";
// Comment characters of the file's lines; the key commentChars is read with
// a single blank instead, so that its value may hold any of them.
constexpr std::string_view kIniComments = "!#~";
constexpr int kPathWidth = 32;
constexpr int kCommentWidth = 4;

std::string trimmedText(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

void warn(const std::string& text) { I05MES("E4MAIN -W- zemok.ini: " + text); }

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The three places, in the order they are tried.
std::array<std::string, 3> places() {
    std::string home = environmentValue("HOME").substr(0, kPathWidth);
    std::string inHome;
    if (!home.empty()) inHome = (home + "/Zemok/" + std::string(kIniName)).substr(0, kPathWidth);
    return {std::string(kIniName), "c:\\zemok\\" + std::string(kIniName), inHome};
}

bool openFirstFound() {
    unit::OpenSpec spec;
    spec.status = unit::Status::Old;
    for (const std::string& path : places()) {
        if (!path.empty() && unit::open(kIniChannel, path, spec) == 0) return true;
    }
    return false;
}

bool knownFileSystem(std::string_view word) {
    for (std::string_view fs : {"FAT", "FAT32", "UNIX", "VMS"}) {
        if (R02EQ(word, fs, 1)) return true;
    }
    return false;
}

// A text key: the value replaces the field when it fits its width; a file
// system word must also be one the file-name services know.
void readTextKey(std::string_view key, std::string& field, int width, std::string_view comments) {
    std::string value;  // an empty field takes the word whole, so an overlong one is seen
    int status = 0;
    I05RS2(kIniChannel, key, value, comments, status);
    if (status != 0) return;  // missing key or comment line: the reader has said so
    const std::string kept = quoted(trimmedText(field)) + " is kept.";
    if (value.empty()) {
        warn(quoted(key) + " has no value; " + kept);
        return;
    }
    if (static_cast<int>(value.size()) > width) {
        warn(quoted(key) + " is longer than " + std::to_string(width) + " characters; " + kept);
        return;
    }
    if (key == "FileSystemType" && !knownFileSystem(value)) {
        warn(quoted(key) + " = " + value + " is none of FAT, FAT32, UNIX, VMS; " + kept);
        return;
    }
    field = padded(value, width);
}

struct IntKey {
    std::string_view key;
    int* field;
    bool channel;  // a file channel; otherwise a screen size or column
    int low;
};

// The terminal's channels and those of this file and the help file are taken.
bool freeChannel(int v) {
    return v >= 1 && v <= 99 && v != 5 && v != 6 && v != kIniChannel && v != kHelpFileChannel;
}

void readIntKey(const IntKey& k) {
    int value = *k.field;
    int status = 0;
    I05RIN2(kIniChannel, k.key, value, kIniComments, status);
    if (status == -11) return;  // missing key: the reader has said so
    const std::string kept = std::to_string(*k.field) + " is kept.";
    if (status != 0) {
        // The reader wants the value behind "=", ":" or blanks, with the
        // line at least three characters longer than the key.
        warn(quoted(k.key) + " has no integer value in the form  " + std::string(k.key) + " = number; " +
             kept);
    } else if (k.channel && !freeChannel(value)) {
        warn(quoted(k.key) + " = " + std::to_string(value) +
             " is no free channel (1 to 99, not 5, 6, 10, 40); " + kept);
    } else if (!k.channel && (value < k.low || value > 999)) {
        warn(quoted(k.key) + " = " + std::to_string(value) + " is outside " + std::to_string(k.low) +
             " to 999; " + kept);
    } else {
        *k.field = value;
    }
}

// The keys of the file, in reading order.
constexpr std::array<std::string_view, 14> kKeys = {
    "CPUtype",         "OStype",          "FileSystemType",  "HelpFile",        "ScreenWidth",
    "ScreenHight",     "CursorPosition",  "SaveFileUnit",    "CommandFileUnit", "ZEMOKdataUnit",
    "ZEMOKoutputUnit", "ZEMOKAuxIOUnit1", "ZEMOKAuxIOUnit2", "commentChars"};

// The first word of a line that is not a comment: the key it sets.
std::string keyOfLine(std::string line) {
    line.resize(std::min(line.size(), line.find_first_of(kIniComments)));
    std::size_t from = line.find_first_not_of(" \t");
    if (from == std::string::npos) return std::string();
    std::size_t to = line.find_first_of(" \t=:", from);
    return line.substr(from, to == std::string::npos ? std::string::npos : to - from);
}

void reportUnknownKeys() {
    unit::rewind(kIniChannel);
    std::string record;
    while (unit::readRecord(kIniChannel, record) == 0) {
        std::string key = keyOfLine(record);
        if (key.empty()) continue;
        bool known = false;
        for (std::string_view k : kKeys) known = known || R02EQ(key, k, 1);
        if (!known) warn("unknown key " + quoted(key) + " is ignored.");
    }
}

}  // namespace

void readInitializationFile() {
    if (!openFirstFound()) {
        write(sysinf.outUnit, "(A)", " E4MAIN -W- Initialization file zemok.ini not found!");
        return;
    }
    E4DataSetRecord& d = E4DataSet;
    readTextKey(kKeys[0], sysinf.CPUtype, kSysWordWidth, kIniComments);
    readTextKey(kKeys[1], sysinf.OStype, kSysWordWidth, kIniComments);
    readTextKey(kKeys[2], sysinf.FileSystemType, kSysWordWidth, kIniComments);
    readTextKey(kKeys[3], d.hpName, kFileNameWidth, kIniComments);
    ChannelTable& c = channelTable;
    const IntKey numbers[] = {{kKeys[4], &sysinf.screenW, false, 4},
                              {kKeys[5], &sysinf.screenH, false, 3},
                              {kKeys[6], &sysinf.CursorPosition, false, 1},
                              {kKeys[7], &c.SaveFileUnit, true, 1},
                              {kKeys[8], &c.CommandFileUnit, true, 1},
                              {kKeys[9], &c.ZEMOKdataUnit, true, 1},
                              {kKeys[10], &c.ZEMOKoutputUnit, true, 1},
                              {kKeys[11], &c.ZEMOKAuxIOUnit1, true, 1},
                              {kKeys[12], &c.ZEMOKAuxIOUnit2, true, 1}};
    for (const IntKey& k : numbers) readIntKey(k);
    sysinf.auxUnit1 = c.ZEMOKAuxIOUnit1;
    sysinf.auxUnit2 = c.ZEMOKAuxIOUnit2;
    readTextKey(kKeys[13], d.commentChars, kCommentWidth, " ");
    reportUnknownKeys();
    unit::close(kIniChannel);
    if (R02LEN(d.commentChars) == 0) d.commentChars = padded("!#~", kCommentWidth);
}
