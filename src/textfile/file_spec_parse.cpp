// R02PFS: a full file specification taken apart into node, device,
// directory, name, extension and other, for FAT, FAT32, UNIX and VMS.
#include "core/console_layer.h"
#include "textfile/file_spec_internal.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

#include <algorithm>

using namespace filespec;

namespace {

// The state of one parse: the file name text, the fields being filled, the
// limits, the order reached so far and the failure with its field.
struct Parse {
    std::string spec;
    SpecFields& fields;
    std::string_view fileSystem;
    int limits[kSpecFieldCount] = {};
    int order = 1;
    int err = 0;
    int failedField = kSpecNode;
    int steps = 0;  // directory steps that added something

    bool fail(int code, int field) {
        err = code;
        failedField = field;
        return false;
    }
    void warn() { err = std::max(err, kSpecTruncated); }
};

// Stores a word in a field: order (no field may follow a later one),
// multiple definition, limit, width.
bool setField(Parse& p, int field, std::string word, std::string_view tooLong) {
    if (p.order > field + 1) return p.fail(kSpecOrder, field);
    if (R02LEN(p.fields[static_cast<std::size_t>(field)]) > 0) return p.fail(kSpecMultiple, field);
    int limit = p.limits[field];
    if (static_cast<int>(word.size()) > limit) {
        std::string cut = word.substr(0, static_cast<std::size_t>(limit));
        truncationLines("R02PFS", tooLong, word, cut);
        word = cut;
        p.warn();
    }
    if (!putField(p.fields[static_cast<std::size_t>(field)], word)) return p.fail(kSpecNarrow, field);
    p.order = std::max(p.order, field + 1);
    return true;
}

// One directory step of FAT or UNIX.  "." and ".." (and "~" on UNIX) stand
// as they are; any other step is brought within the limits of a name.
bool directoryStep(Parse& p, const std::string& step, char separator) {
    if (p.order >= 4) return p.fail(kSpecOrder, kSpecDirectory);
    p.order = 3;
    if (step.empty()) return true;
    std::string text = step;
    if (step == "~" && p.steps > 0) return p.fail(kSpecOrder, kSpecDirectory);
    if (step != "." && step != ".." && step != "~") {
        std::string name(kMaxSpecLength, ' '), ext(kMaxSpecLength, ' '), both(kMaxSpecLength, ' ');
        int e = 0;
        R02PFN(step, name, ext, p.fileSystem, e);
        if (e < 0) return p.fail(e, kSpecDirectory);
        if (e > 0) p.warn();
        R02CFN(both, name, ext, p.fileSystem, e);
        if (e < 0) return p.fail(e, kSpecDirectory);
        if (e > 0) p.warn();
        text = trimmed(both);
    }
    std::string& dir = p.fields[kSpecDirectory];
    std::string joined = R02LEN(dir) > 0 ? trimmed(dir) + separator + text : text;
    if (!putField(dir, joined)) return p.fail(kSpecNarrow, kSpecDirectory);
    ++p.steps;
    return true;
}

// The last word: name and extension.
bool nameAndExtension(Parse& p, const std::string& word) {
    if (word.empty()) return true;
    if (p.order > 4) return p.fail(kSpecOrder, kSpecName);
    int e = 0;
    R02PFN(word, p.fields[kSpecName], p.fields[kSpecExtension], p.fileSystem, e);
    if (e < 0) {
        // A name that fits its field leaves the extension as the narrow one.
        bool nameFits = std::min(word.find('.'), word.size()) <= p.fields[kSpecName].size();
        return p.fail(e, e == kSpecNarrow && nameFits ? kSpecExtension : kSpecName);
    }
    if (e > 0) p.warn();
    p.order = R02LEN(p.fields[kSpecExtension]) > 0 ? 5 : 4;
    return true;
}

// FAT and UNIX: words between the separators, cut with R02GEL0.
void parseSeparated(Parse& p, Kind kind) {
    const bool fat = kind == Kind::Fat;
    const char separator = fat ? '\\' : '/';
    if (!fat && p.spec == "/") {
        putField(p.fields[kSpecDirectory], "/");
        return;
    }
    std::string word(kMaxSpecLength, ' ');
    int wordLen = 0, status = 0;
    char ch = ' ', lastDelim = ' ';
    int save[6] = {0, 0, 0, 0, 0, 0};
    const std::string delimiters = fat ? ":\\" : "/";
    for (;;) {
        R02GEL0(p.spec, -1, delimiters, word, wordLen, ch, lastDelim, save, status);
        if (status == -1) return;
        if (status < 0) {
            p.fail(kSpecSplitter, p.order - 1);
            return;
        }
        std::string w = word.substr(0, static_cast<std::size_t>(wordLen));
        bool ok;
        if (fat && ch == ':') {
            ok = setField(p, kSpecDevice, w, "DEVICE name too long:");
        } else if (ch == separator || w == ".." || (!fat && (w == "." || w == "~"))) {
            ok = directoryStep(p, w, separator);
        } else {
            ok = nameAndExtension(p, w);
        }
        if (!ok || status == 1 || status == 3) return;
    }
}

// The field of one VMS word, from what stands around it.
int vmsField(const std::string& w, char ch, char lastDelim, bool node) {
    if (node) return kSpecNode;
    if (ch == ':') return kSpecDevice;
    if (w.size() >= 2) {
        char open = w.front(), close = w.back();
        if ((open == '[' && close == ']') || (open == '<' && close == '>')) return kSpecDirectory;
    }
    if (lastDelim == '.') return kSpecExtension;
    if (lastDelim == ';') return kSpecOther;
    return kSpecName;
}

// VMS: [node::][device:][[directory]][name][.extension][;version].
void parseVms(Parse& p) {
    std::string word(kMaxSpecLength, ' '), openStack;
    int wordLen = 0, count = 0, start = 0, pos = 0, state = 0, depth = 0, status = 0;
    char ch = ' ', lastDelim = ' ';
    for (;;) {
        R02GEL(p.spec, -1, ":.; ", "[]<>", "", 0, word, wordLen, count, start, pos, ch, lastDelim,
               state, depth, openStack, status);
        if (status == -1) return;
        if (status < 0) {
            // Unbalanced brackets belong to the directory.
            if (status == -3) {
                p.fail(kSpecWrongField, kSpecDirectory);
            } else {
                p.fail(kSpecSplitter, p.order - 1);
            }
            return;
        }
        std::string w = word.substr(0, static_cast<std::size_t>(wordLen));
        bool node = ch == ':' && pos < static_cast<int>(p.spec.size()) && p.spec[static_cast<std::size_t>(pos)] == ':';
        if (node) ++pos;  // the second colon of "::"
        if (!w.empty()) {
            int field = vmsField(w, ch, lastDelim, node);
            if (field == kSpecDirectory) w = w.substr(1, w.size() - 2);
            if (!setField(p, field, w, "Field string too long:")) return;
        }
        if (status == 1 || status == 3) return;
    }
}

// The message of a failure: the text by err, the field word, the file name.
void failureLines(const Parse& p) {
    std::string f(messageWord(p.failedField));
    std::string text;
    switch (p.err) {
        case kSpecMultiple: text = "Multiple " + f + " definition"; break;
        case kSpecOrder: text = f + " field not in order"; break;
        case kSpecWrongField: text = "Wrong " + f + " field"; break;
        case kSpecSplitter: text = "Something wrong"; break;
        default: text = "Dimensioned " + f + " field length exceeded"; break;
    }
    I05MES(head("R02PFS", 'E') + text + " in");
    quotedLine(p.spec);
}

}  // namespace

SpecFields makeSpecFields(int width) {
    SpecFields f;
    for (std::string& s : f) s.assign(static_cast<std::size_t>(std::max(width, 0)), ' ');
    return f;
}

void R02PFS(std::string_view spec, SpecFields& fields, std::string_view fileSystem, int& err) {
    for (std::string& f : fields) R02BLANK(f);
    err = 0;
    const int length = R02LEN(spec);
    if (length > kMaxSpecLength) {
        I05MES(head("R02PFS", 'E') + "Too long file specification, exceeds " +
               std::to_string(kMaxSpecLength) + " in");
        quotedLine(spec.substr(0, static_cast<std::size_t>(length)));
        err = kSpecTooLong;
        return;
    }
    std::string work(kMaxSpecLength, ' ');
    work.replace(0, static_cast<std::size_t>(length), spec.substr(0, static_cast<std::size_t>(length)));
    int newLen = 0;
    R02CMP(work, -1, -1, 0, 0, newLen);
    if (newLen <= 0) {
        err = kSpecBlank;
        return;
    }
    Kind kind = kindOf(fileSystem);
    if (kind == Kind::Unknown) {
        unknownFileSystemLines("R02PFS", fileSystem);
        err = kSpecUnknownFS;
        return;
    }
    Parse p{work.substr(0, static_cast<std::size_t>(newLen)), fields, fileSystem};
    for (int k = 0; k < kSpecFieldCount; ++k) {
        int e = 0;
        p.limits[k] = Z03FSLEN(fileSystem, selectorWord(k), e);
    }
    if (kind == Kind::Vms) {
        parseVms(p);
    } else {
        parseSeparated(p, kind);
    }
    err = p.err;
    if (err < 0 && err > kSpecUnknownFS) failureLines(p);
}
