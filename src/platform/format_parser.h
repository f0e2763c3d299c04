// FORMAT text parser of the edit-notation formatter: FormatNode (the parsed
// tree of edit descriptors) and parseFormat.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace editing {

enum class Op {
    Group,     // n(...)
    Literal,   // 'text' or "text"
    Integer,   // Iw
    Fixed,     // Fw.d
    Exponent,  // Ew.d
    DoubleExp, // Dw.d
    General,   // Gw.d
    Text,      // A or Aw (w == 0 for plain A)
    Skip,      // nX, also TRn
    Tab,       // Tn
    TabLeft,   // TLn
    Slash,     // n/
    Dollar,    // $
    Colon,     // :
    Scale,     // kP
};

struct FormatNode {
    Op op = Op::Group;
    int repeat = 1;  // repeat count of a group, a data descriptor or '/'
    int w = 0;       // width; n of nX, Tn, TLn; k of kP
    int d = 0;       // digits after the point
    std::string text;                  // the literal, quotes undone
    std::vector<FormatNode> children;  // the items of a group
};

// True for the descriptors that take an item: I, F, E, D, G, A.
bool takesItem(Op op);

// True when the node or anything inside it takes an item.
bool holdsDataEdit(const FormatNode& node);

// Parses a FORMAT text written with its parentheses, e.g. "(1X,I5,2(F8.2))".
// Blanks outside literals are ignored and letters may be of either case;
// commas between items may be left out.  The result is a Group with
// repeat 1.  A malformed text throws std::logic_error.
FormatNode parseFormat(std::string_view format);

}  // namespace editing
