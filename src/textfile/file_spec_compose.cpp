// R02CFS: a full file specification put together from its six fields, and
// R02FSE: one element of a specification.
#include "core/console_layer.h"
#include "textfile/file_spec_internal.h"
#include "core/string_tools.h"

#include <algorithm>

using namespace filespec;

namespace {

// How one field enters the file name: the characters the file system
// adds itself (dropped at both ends of the field), the characters it must
// not hold, and what is written before and behind it.
struct Rule {
    bool used = false;
    std::string_view drop;
    std::string_view forbidden;
    std::string_view before;
    std::string_view after;
};

Rule ruleFor(Kind kind, int field) {
    static constexpr std::string_view vmsBad = ":[]<>{}.;";
    switch (kind) {
        case Kind::Fat: {
            static const Rule fat[] = {{},
                                       {true, ":\\", ":\\.", "", ":\\"},
                                       {true, "\\", ":", "", "\\"},
                                       {true, ".", ":\\.", "", "."},
                                       {true, ".", ":\\.", "", ""},
                                       {}};
            return fat[field];
        }
        case Kind::Vms: {
            static const Rule vms[] = {{true, ":", vmsBad, "", "::"},
                                       {true, ":", vmsBad, "", ":"},
                                       {true, "[]<>{}", ":[]<>{};", "[", "]"},
                                       {true, ".", vmsBad, "", "."},
                                       {true, ".", vmsBad, "", ""},
                                       {true, ";", vmsBad, ";", ""}};
            return vms[field];
        }
        case Kind::Unix: {
            static const Rule unixRules[] = {{},
                                             {},
                                             {true, "/", "", "", "/"},
                                             {true, ".", "/", "", "."},
                                             {true, ".", "/", "", ""},
                                             {}};
            return unixRules[field];
        }
        default: return {};
    }
}

std::string removeAll(std::string text, std::string_view chars) {
    text.erase(std::remove_if(text.begin(), text.end(),
                              [&](char c) { return chars.find(c) != std::string_view::npos; }),
               text.end());
    return text;
}

std::string dropAtEnds(const std::string& text, std::string_view chars, bool front) {
    std::size_t first = front ? text.find_first_not_of(chars) : 0;
    std::size_t last = text.find_last_not_of(chars);
    if (first == std::string::npos || last == std::string::npos) return std::string();
    return text.substr(first, last - first + 1);
}

// A UNIX directory that begins with a dot keeps its front; a second "."
// step inside it is not allowed.
bool dottedUnixDirectory(const std::string& text, std::string& kept, bool& bad) {
    if (text.empty() || text[0] != '.') return false;
    kept = dropAtEnds(text, "/", false);
    bad = false;
    std::size_t from = kept.find('/');
    while (from != std::string::npos) {
        std::size_t to = kept.find('/', from + 1);
        std::string step = kept.substr(from + 1, to == std::string::npos ? std::string::npos : to - from - 1);
        if (step == ".") bad = true;
        from = to;
    }
    return true;
}

std::string fieldWord(Kind kind, int field) {
    if (kind == Kind::Vms && field == kSpecOther) return "VERSION";
    return std::string(messageWord(field));
}

// The field's text without blanks, cut to its limit with a warning.
std::string limitedText(Kind kind, int field, std::string_view value, int limit, int& err) {
    std::string work(1024, ' ');
    std::string_view v = value.substr(0, std::min<std::size_t>(value.size(), 1024));
    work.replace(0, v.size(), v);
    int len = 0;
    R02CMP(work, -1, -1, 2, 0, len);
    std::string text = work.substr(0, static_cast<std::size_t>(std::max(len, 0)));
    if (static_cast<int>(text.size()) > limit) {
        if (field == kSpecDevice && kind != Kind::Unix) text = removeAll(text, ":\\");
        if (static_cast<int>(text.size()) > limit) {
            std::string cut = text.substr(0, static_cast<std::size_t>(limit));
            I05MES(head("R02CFS", 'W') + "Exceeded " + fieldWord(kind, field) + " field length: " + quoted(text));
            I05MES(std::string(12, ' ') + " truncated to: " + quoted(cut));
            text = cut;
            err = kSpecTruncated;
        }
    }
    return text;
}

// Appends one field to out; false for a forbidden character.
bool appendField(Kind kind, int field, std::string text, std::string& out) {
    Rule rule = ruleFor(kind, field);
    bool bad = false;
    std::string kept;
    if (kind == Kind::Unix && field == kSpecDirectory && dottedUnixDirectory(text, kept, bad)) {
        text = kept;
    } else {
        text = dropAtEnds(text, rule.drop, true);
        bad = text.find_first_of(rule.forbidden) != std::string::npos;
    }
    if (bad) {
        I05MES(head("R02CFS", 'E') + "Wrong " + fieldWord(kind, field) + " specification: " + quoted(text) + ".");
        return false;
    }
    // The extension stands behind the dot that the name put there; an
    // extension that came to nothing takes that dot away.
    if (field == kSpecExtension && text.empty() && !out.empty() && out.back() == '.') out.pop_back();
    if (field == kSpecExtension && !text.empty() && (out.empty() || out.back() != '.')) out += '.';
    out += std::string(rule.before) + text + std::string(rule.after);
    return true;
}

}  // namespace

void R02CFS(std::string& spec, const SpecFields& fields, std::string_view fileSystem, int& err) {
    R02BLANK(spec);
    err = 0;
    Kind kind = kindOf(fileSystem);
    if (kind == Kind::Unknown) {
        I05MES(head("R02CFS", 'E') + "Unknown file system: " + quoted(trimmed(fileSystem)) + ".");
        err = kSpecUnknownFS;
        return;
    }
    std::string out;
    for (int field = 0; field < kSpecFieldCount; ++field) {
        int e = 0;
        const int limit = Z03FSLEN(fileSystem, selectorWord(field), e);
        const std::string& value = fields[static_cast<std::size_t>(field)];
        bool used = ruleFor(kind, field).used && limit > 0 && R02LEN(value) > 0;
        if (!used) {
            // A dot behind the name with no extension to follow stays out.
            if (field == kSpecExtension && !out.empty() && out.back() == '.') out.pop_back();
            continue;
        }
        std::string text = limitedText(kind, field, value, limit, err);
        if (!appendField(kind, field, text, out)) {
            err = kSpecMultiple;
            R02BLANK(spec);
            return;
        }
    }
    if (!putField(spec, out)) {
        I05MES(head("R02CFS", 'E') + "Too long file specification, exceeds " + std::to_string(spec.size()) + " in");
        quotedLine(out);
        err = kSpecTooLong;
        R02BLANK(spec);
    }
}

void R02FSE(std::string& result, std::string_view spec, std::string_view element,
            std::string_view fileSystem, int& len, int& err) {
    R02BLANK(result);
    len = 0;
    err = 0;
    int field = -1;
    for (int k = 0; k < kSpecFieldCount && field < 0; ++k) {
        if (R02EQ(element, selectorWord(k), 1)) field = k;
    }
    if (field < 0) {
        I05MES(head("R02FSE", 'E') + "Wrong element identifier: " + quoted(trimmed(element)) + ".");
        err = kSpecUnknownElement;
        return;
    }
    SpecFields fields = makeSpecFields(128);
    R02PFS(spec, fields, fileSystem, err);
    putField(result, trimmed(fields[static_cast<std::size_t>(field)]));
    len = R02LEN(result);
}
