// Names of files and their parts: Z03FSLEN (field limits), R02PFN and R02CFN
// (a name with its extension), and the helpers of the file-spec family.
#include "core/console_layer.h"
#include "textfile/file_spec_internal.h"
#include "core/string_tools.h"

#include <algorithm>

namespace filespec {

Kind kindOf(std::string_view fileSystem) {
    if (R02PFX(fileSystem, "FAT", 1)) return Kind::Fat;
    if (R02PFX(fileSystem, "UNIX", 1)) return Kind::Unix;
    if (R02PFX(fileSystem, "VMS", 1)) return Kind::Vms;
    return Kind::Unknown;
}

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

std::string_view selectorWord(int field) {
    static constexpr std::string_view words[] = {"NODE", "DEVICE", "DIRECTORY", "NAME", "EXTENSION", "OTHER"};
    return words[field];
}

std::string_view messageWord(int field) {
    static constexpr std::string_view words[] = {"NODE", "DEVICE", "DIRECTORY", "FILE NAME", "EXTENSION", "OTHER"};
    return words[field];
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string head(std::string_view tag, char mark) {
    std::string h(tag);
    h += ' ';
    while (h.size() < 10) h += '-';
    h += mark;
    h += "- ";
    return h;
}

void quotedLine(std::string_view text) { I05MES(std::string(12, ' ') + quoted(text)); }

void truncationLines(std::string_view tag, std::string_view text, std::string_view word,
                     std::string_view cut) {
    I05MES(head(tag, 'W') + std::string(text) + " " + quoted(word));
    I05MES(std::string(12, ' ') + " truncated to: " + quoted(cut));
}

void unknownFileSystemLines(std::string_view tag, std::string_view fileSystem) {
    std::string word = trimmed(fileSystem);
    if (word.empty()) word = " ";
    I05MES(head(tag, 'E') + "Unknown file system identifier: " + quoted(word));
    I05MES(std::string(12, ' ') + " Must be FAT, FAT32, UNIX, VMS, ...");
    I05MES(std::string(12, ' ') + " Check whether \"@sysinf.fd\" is included in the main program.");
}

bool putField(std::string& field, std::string_view text) {
    R02BLANK(field);
    std::size_t n = std::min(field.size(), text.size());
    field.replace(0, n, text.substr(0, n));
    return text.size() <= field.size();
}

}  // namespace filespec

using namespace filespec;

namespace {

// Characters that a name must not hold, and the two halves of the text that
// R02PFN writes about them.
struct Forbidden {
    std::string_view chars;
    std::string_view first;
    std::string_view second;
};

Forbidden forbiddenInName(Kind kind) {
    switch (kind) {
        case Kind::Fat: return {"\\:", " ---E- Device and directory fields", " are not permitted in"};
        case Kind::Vms: return {"[]:", " ---E- Directory field is not", " permitted in"};
        default: return {"/", " ---E- Directory field is not", " permitted in"};
    }
}

// Cuts part to its limit with the warning lines of R02PFN.
void limitPart(std::string& part, int limit, std::string_view text, int& err) {
    if (static_cast<int>(part.size()) <= limit) return;
    std::string cut = part.substr(0, static_cast<std::size_t>(limit));
    truncationLines("R02PFN", text, part, cut);
    part = cut;
    err = kSpecTruncated;
}

// Splits w at its dots by the rules of the file system; false on a second
// dot where only one is allowed.
bool splitAtDot(Kind kind, const std::string& w, std::string& name, std::string& ext) {
    std::size_t dot = w.find('.');
    if (dot == std::string::npos) {
        name = w;
        ext.clear();
        return true;
    }
    name = w.substr(0, dot);
    ext = w.substr(dot + 1);
    return kind == Kind::Unix || ext.find('.') == std::string::npos;
}

}  // namespace

int Z03FSLEN(std::string_view fileSystem, std::string_view field, int& err) {
    err = 0;
    static constexpr int fat[] = {0, 1, 256, 8, 3, 0};
    static constexpr int fat32[] = {0, 1, 256, 256, 256, 0};
    static constexpr std::string_view keys[] = {"NO", "DEV", "DIR", "NA", "EX", "OT"};
    int index = -1;
    for (int k = 0; k < kSpecFieldCount && index < 0; ++k) {
        if (R02PFX(field, keys[k], 1)) index = k;
    }
    const int* table = nullptr;
    if (R02PFX(fileSystem, "FAT32", 1)) {
        table = fat32;
    } else if (R02PFX(fileSystem, "FAT", 1)) {
        table = fat;
    } else if (!R02PFX(fileSystem, "UNIX", 1) && !R02PFX(fileSystem, "VMS", 1)) {
        std::string word = trimmed(fileSystem);
        I05MES(head("Z03FSLEN", 'W') + "Unknown file system identifier: " + quoted(word.empty() ? " " : word));
        err = kSpecUnknownFS;
    }
    if (index < 0) {
        I05MES(head("Z03FSLEN", 'W') + "Unknown field identifier: " + quoted(trimmed(field)));
        err = kSpecWrongField;
        return 0;
    }
    return table ? table[index] : kMaxSpecLength;
}

void R02PFN(std::string_view word, std::string& name, std::string& extension,
            std::string_view fileSystem, int& err) {
    R02BLANK(name);
    R02BLANK(extension);
    err = 0;
    Kind kind = kindOf(fileSystem);
    if (kind == Kind::Unknown) {
        unknownFileSystemLines("R02PFN", fileSystem);
        err = kSpecUnknownFS;
        return;
    }
    int e = 0;
    const int nameLimit = Z03FSLEN(fileSystem, "NAME", e);
    const int extLimit = Z03FSLEN(fileSystem, "EXTENSION", e);
    std::string w = trimmed(word);
    Forbidden bad = forbiddenInName(kind);
    if (w.find_first_of(bad.chars) != std::string::npos) {
        I05MES("R02PFN" + std::string(bad.first) + std::string(bad.second));
        quotedLine(w);
        err = kSpecMultiple;
        return;
    }
    std::string n, x;
    if (!splitAtDot(kind, w, n, x)) {
        I05MES(kind == Kind::Vms ? "R02PFN ---E- Too many dor characters in"
                                 : "R02PFN ---E- Too many dot characters in");
        quotedLine(w);
        err = kSpecMultiple;
        return;
    }
    if (kind != Kind::Vms) {
        limitPart(n, nameLimit, "File name string too long:", err);
        limitPart(x, extLimit, "Extension string too long:", err);
    }
    for (int field : {kSpecName, kSpecExtension}) {
        std::string& out = field == kSpecName ? name : extension;
        if (!putField(out, field == kSpecName ? n : x)) {
            I05MES(head("R02PFN", 'E') + "Dimensioned " + std::string(messageWord(field)) +
                   " field length exceeded in");
            quotedLine(w);
            err = kSpecNarrow;
            return;
        }
    }
}

void R02CFN(std::string& word, std::string_view name, std::string_view extension,
            std::string_view fileSystem, int& err) {
    R02BLANK(word);
    err = 0;
    Kind kind = kindOf(fileSystem);
    if (kind == Kind::Unknown) {
        I05MES(head("R02CFN", 'E') + "Unknown file system specified: " + quoted(trimmed(fileSystem)));
        err = kSpecUnknownFS;
        return;
    }
    std::string n = trimmed(name);
    std::string x = trimmed(extension);
    if (n.find_first_of(forbiddenInName(kind).chars) != std::string::npos) {
        I05MES(kind == Kind::Fat ? "R02CFN ---E- Device and directory fields are not  permitted in"
                                 : "R02CFN ---E- Directory fields are not  permitted in");
        quotedLine(n);
        err = kSpecMultiple;
        return;
    }
    int e = 0;
    const int nameLimit = Z03FSLEN(fileSystem, "NAME", e);
    const int extLimit = Z03FSLEN(fileSystem, "EXTENSION", e);
    if (static_cast<int>(n.size()) > nameLimit) {
        n.resize(static_cast<std::size_t>(nameLimit));
        I05MES(head("R02CFN", 'W') + "File name too long, truncated to " + quoted(n));
        err = kSpecTruncated;
    }
    if (static_cast<int>(x.size()) > extLimit) {
        x.resize(static_cast<std::size_t>(extLimit));
        I05MES(head("R02CFN", 'W') + "Extension too long, truncated to " + quoted(x));
        err = kSpecTruncated;
    }
    std::string result = x.empty() ? n : n + "." + x;
    if (!putField(word, result)) {
        I05MES(head("R02CFN", 'E') + "Dimensioned FILE NAME field length exceeded in");
        quotedLine(result);
        err = kSpecNarrow;
    }
}
