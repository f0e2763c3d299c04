// File names asked of the user: I05EFND (a name completed from a default)
// and Z1OPN1 (opening a file, with another name typed when it fails).
#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/file_spec_internal.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <algorithm>

using namespace filespec;

namespace {

// Reads one reply from the terminal into a field of `width`, blanks cut at
// both ends.  Empty when nothing could be read.
std::string readReply(int width, std::string_view commentChars) {
    std::string line(static_cast<std::size_t>(width), ' ');
    int length = 0, status = 0;
    I05RSL(sysinf.inUnit, line, length, commentChars, status);
    if (status != 0 || length == 0) return std::string();
    int newLen = 0;
    R02CMP(line, -1, -1, 0, 0, newLen);
    return line.substr(0, static_cast<std::size_t>(std::max(newLen, 0)));
}

bool isBlankOrStar(const std::string& field) {
    std::string t = trimmed(field);
    return t.empty() || t == "*";
}

// Completes the parsed answer from the default fields.
void completeFromDefault(SpecFields& answer, const SpecFields& deflt, const std::string& reply) {
    bool noDot = reply.find('.') == std::string::npos;
    if ((R02LEN(answer[kSpecExtension]) == 0 && noDot) || trimmed(answer[kSpecExtension]) == "*") {
        answer[kSpecExtension] = deflt[kSpecExtension];
        answer[kSpecOther] = deflt[kSpecOther];
    }
    if (isBlankOrStar(answer[kSpecName])) {
        for (int k : {kSpecNode, kSpecDevice, kSpecDirectory, kSpecName}) answer[static_cast<std::size_t>(k)] = deflt[static_cast<std::size_t>(k)];
    }
}

std::string upperTrimmed(std::string_view word) {
    std::string w(word);
    int len = 0;
    R02CMP(w, -1, -1, 0, 1, len);
    return w.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

unit::OpenSpec openSpecFor(const std::string& access, const std::string& status) {
    unit::OpenSpec spec;
    switch (status.empty() ? ' ' : status[0]) {
        case 'O': spec.status = unit::Status::Old; break;
        case 'N': spec.status = unit::Status::New; break;
        case 'R': spec.status = unit::Status::Replace; break;
        case 'S': spec.status = unit::Status::Scratch; break;
        default: spec.status = unit::Status::Unknown; break;
    }
    if (!access.empty() && access[0] == 'D') spec.access = unit::Access::Direct;
    if (!access.empty() && access[0] == 'A') spec.position = unit::Position::Append;
    return spec;
}

// Cleans the name: a double quotation mark asks for a new file and is
// blanked out; the name moves to column 1.  Returns the trimmed name.
std::string cleanName(std::string& name, std::string& status) {
    if (name.find('"') != std::string::npos) {
        status = "NEW";
        std::replace(name.begin(), name.end(), '"', ' ');
    }
    int len = 0;
    if (!name.empty()) R02CMP(name, -1, -1, 0, 0, len);
    return name.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

// Shows the name that failed and asks for another until one parses.
// False when the user gave up (an empty reply).
bool askAnotherName(std::string& name, const std::string& current) {
    write(sysinf.outUnit, "(A)", " Z1OPN1 ----- Current file name: \"" + current + "\"");
    const int width = name.empty() ? kMaxSpecLength : static_cast<int>(name.size());
    for (;;) {
        I05ASK("Give new file name or press \"CR\" to quit", sysinf.CursorPosition);
        std::string reply = readReply(width, "");
        if (reply.empty()) return false;
        SpecFields fields = makeSpecFields(kMaxSpecLength);
        int err = 0;
        R02PFS(reply, fields, sysinf.FileSystemType, err);
        if (err >= 0) {
            if (name.empty()) name.assign(static_cast<std::size_t>(width), ' ');
            putField(name, reply);
            return true;
        }
    }
}

}  // namespace

void I05EFND(std::string_view prompt, std::string& defaultSpec, std::string_view commentChars,
             int column, int& err) {
    err = 0;
    if (R02LEN(defaultSpec) == 0) {
        I05MES("I05EFND --W- No default name string specified.");
        err = kSpecBlank;
    }
    if (R02LEN(sysinf.FileSystemType) == 0) {
        I05MES("I05EFND --W- No file system specified, FAT will be used.");
        sysinf.FileSystemType.resize(std::max<std::size_t>(sysinf.FileSystemType.size(), kSysWordWidth), ' ');
        putField(sysinf.FileSystemType, "FAT32");
        err = 3;
    }
    const std::string fs = sysinf.FileSystemType;
    SpecFields deflt = makeSpecFields(kMaxSpecLength);
    int e = 0;
    R02PFS(defaultSpec, deflt, fs, e);
    if (e < 0) {
        R02BLANK(defaultSpec);
        err = e;
        return;
    }
    for (;;) {
        I05ASKD(prompt, trimmed(defaultSpec), column);
        std::string reply = readReply(kMaxSpecLength, commentChars);
        if (reply.empty() || reply == ".") return;
        SpecFields answer = makeSpecFields(kMaxSpecLength);
        R02PFS(reply, answer, fs, e);
        if (e != 0) continue;
        completeFromDefault(answer, deflt, reply);
        std::string composed(std::max<std::size_t>(defaultSpec.size(), 1), ' ');
        R02CFS(composed, answer, fs, e);
        if (e < 0) continue;
        putField(defaultSpec, trimmed(composed));
        err = e;
        return;
    }
}

void Z1OPN1(int channel, std::string& name, std::string_view access, std::string_view statusWord,
            int& result) {
    std::string acc = upperTrimmed(access);
    std::string status = upperTrimmed(statusWord);
    const bool writing = !acc.empty() && acc[0] == 'W';
    const bool reading = !acc.empty() && acc[0] == 'R';
    for (;;) {
        if (status.empty() || (!acc.empty() && acc[0] == 'R')) status = "OLD";
        if (acc.empty() || acc[0] == 'R' || acc[0] == 'W') acc = "SEQUENTIAL";
        std::string file = cleanName(name, status);
        if (file.empty()) {
            result = -2;
            if (!writing) {
                I05ERR("Z1OPN1", result);
                return;
            }
            I05MES("Z1OPN1 ---W- NO SUCH FILE: \"" + file + "\"");
            if (status[0] == 'O') return;
            I05MES("             It will now be created");
            status = "NEW";
        }
        result = 0;
        unit::close(channel);
        unit::OpenSpec spec = openSpecFor(acc, status);
        if (writing) spec.action = unit::Action::Write;
        if (reading && status[0] == 'O') spec.action = unit::Action::Read;
        int io = unit::open(channel, file, spec);
        if (io == 0) return;
        result = io;
        I05ERR("Z1OPN1", io);
        // Another name is asked only of a person writing: in a script the
        // next line is a command, not a file name.
        const bool dialogue = writing && sysinf.MODEE4 == 0 && sysinf.crUnit == sysinf.inUnit &&
                              unit::terminalIsPerson();
        if (!dialogue) {
            write(sysinf.outUnit, "(A)", " Z1OPN1 ----- Current file name: \"" + file + "\"");
            return;
        }
        if (!askAnotherName(name, file)) return;
        result = 0;
    }
}
