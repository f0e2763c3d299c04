// FORMAT text parser: takesItem, holdsDataEdit, parseFormat and its
// helpers (blank removal, items, descriptors, literals).
#include "platform/format_parser.h"

#include <cctype>
#include <stdexcept>

namespace editing {
namespace {

constexpr long kMaxCount = 100000;  // largest repeat count or width accepted

[[noreturn]] void badFormat(std::string_view format, const std::string& why) {
    throw std::logic_error("bad format " + std::string(format) + ": " + why);
}

// Drops blanks outside literals and folds letters outside literals to upper
// case; literals are copied as they stand, quotes included.
std::string normalize(std::string_view format) {
    std::string out;
    char quote = 0;
    for (char c : format) {
        if (quote != 0) {
            out += c;
            if (c == quote) quote = 0;  // a doubled quote reopens at once
        } else if (c == '\'' || c == '"') {
            quote = c;
            out += c;
        } else if (c != ' ' && c != '\t') {
            out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }
    if (quote != 0) badFormat(format, "literal not closed");
    return out;
}

class Parser {
public:
    explicit Parser(std::string_view format) : original_(format), s_(normalize(format)) {}

    FormatNode parse() {
        expect('(');
        FormatNode root = groupBody();
        if (p_ != s_.size()) fail("text after the closing parenthesis");
        return root;
    }

private:
    std::string_view original_;
    std::string s_;
    size_t p_ = 0;

    [[noreturn]] void fail(const std::string& why) const { badFormat(original_, why); }
    char peek() const { return p_ < s_.size() ? s_[p_] : '\0'; }
    void expect(char c) {
        if (peek() != c) fail(std::string("expected '") + c + "'");
        ++p_;
    }

    int number() {
        if (!std::isdigit(static_cast<unsigned char>(peek()))) fail("number expected");
        long n = 0;
        while (std::isdigit(static_cast<unsigned char>(peek()))) {
            n = n * 10 + (s_[p_++] - '0');
            if (n > kMaxCount) fail("number too large");
        }
        return static_cast<int>(n);
    }

    // Items up to and including the ')' that closes the group.
    FormatNode groupBody() {
        FormatNode group;
        if (peek() == ')') {
            ++p_;
            return group;
        }
        for (;;) {
            group.children.push_back(item());
            if (peek() == ',') {
                ++p_;
                if (peek() == ')') fail("comma before ')'");
                continue;
            }
            if (peek() == ')') {
                ++p_;
                return group;
            }
            if (peek() == '\0') fail("missing ')'");
        }
    }

    FormatNode item() {
        char c = peek();
        if (c == '\'' || c == '"') return literal();
        if (c == '/' || c == ':' || c == '$') {
            ++p_;
            FormatNode n;
            n.op = c == '/' ? Op::Slash : c == ':' ? Op::Colon : Op::Dollar;
            return n;
        }
        if (c == '(') {
            ++p_;
            return groupBody();
        }
        if (c == '+' || c == '-') {
            ++p_;
            int k = number();
            if (peek() != 'P') fail("sign without P");
            ++p_;
            return scale(c == '-' ? -k : k);
        }
        if (std::isdigit(static_cast<unsigned char>(c))) return counted(number());
        if (c == 'X') {
            ++p_;
            return positioning(Op::Skip, 1);
        }
        if (c == 'T') return tab();
        return descriptor(1);
    }

    // What follows a leading number: kP, nX, n(...), n/ or a repeated descriptor.
    FormatNode counted(int n) {
        char c = peek();
        if (c == 'P') {
            ++p_;
            return scale(n);
        }
        if (n == 0) fail("zero repeat count");
        if (c == 'X') {
            ++p_;
            return positioning(Op::Skip, n);
        }
        if (c == '(') {
            ++p_;
            FormatNode g = groupBody();
            g.repeat = n;
            return g;
        }
        if (c == '/') {
            ++p_;
            FormatNode s;
            s.op = Op::Slash;
            s.repeat = n;
            return s;
        }
        return descriptor(n);
    }

    static FormatNode scale(int k) {
        FormatNode n;
        n.op = Op::Scale;
        n.w = k;
        return n;
    }

    static FormatNode positioning(Op op, int n) {
        FormatNode node;
        node.op = op;
        node.w = n;
        return node;
    }

    FormatNode tab() {
        ++p_;
        Op op = Op::Tab;
        if (peek() == 'L' || peek() == 'R') op = s_[p_++] == 'L' ? Op::TabLeft : Op::Skip;
        int n = number();
        if (op == Op::Tab && n < 1) fail("T0");
        return positioning(op, n);
    }

    FormatNode descriptor(int repeat) {
        FormatNode n;
        n.repeat = repeat;
        char c = peek();
        ++p_;
        switch (c) {
            case 'I': n.op = Op::Integer; break;
            case 'F': n.op = Op::Fixed; break;
            case 'E': n.op = Op::Exponent; break;
            case 'D': n.op = Op::DoubleExp; break;
            case 'G': n.op = Op::General; break;
            case 'A': n.op = Op::Text; break;
            default: fail(c == '\0' ? std::string("unexpected end") : std::string("unknown descriptor ") + c);
        }
        if (n.op == Op::Text) {
            if (std::isdigit(static_cast<unsigned char>(peek()))) {
                n.w = number();
                if (n.w == 0) fail("A0");
            }
            if (peek() == '.') fail("A with digits");
        } else {
            n.w = number();
            if (n.op != Op::Integer) {
                expect('.');
                n.d = number();
            } else if (peek() == '.') {
                fail("Iw.m is not supported");
            }
        }
        if (n.w == 0 && n.op != Op::Text) fail("zero width");
        return n;
    }

    FormatNode literal() {
        char q = s_[p_++];
        FormatNode n;
        n.op = Op::Literal;
        for (;;) {
            if (p_ >= s_.size()) fail("literal not closed");
            char c = s_[p_++];
            if (c != q) {
                n.text += c;
            } else if (peek() == q) {
                n.text += q;
                ++p_;
            } else {
                return n;
            }
        }
    }
};

}  // namespace

bool takesItem(Op op) {
    switch (op) {
        case Op::Integer:
        case Op::Fixed:
        case Op::Exponent:
        case Op::DoubleExp:
        case Op::General:
        case Op::Text: return true;
        default: return false;
    }
}

bool holdsDataEdit(const FormatNode& node) {
    if (takesItem(node.op)) return true;
    for (const FormatNode& c : node.children)
        if (holdsDataEdit(c)) return true;
    return false;
}

FormatNode parseFormat(std::string_view format) { return Parser(format).parse(); }

}  // namespace editing
