// Edit-notation formatter: formatRecords (runs a parsed FORMAT over the
// items, record by record) and listDirected (free-form output record).
#include "platform/edit_format.h"

#include "platform/format_parser.h"
#include "platform/real_editing.h"

#include <stdexcept>

namespace editing {
namespace {

const char* kindName(FmtItem::Kind k) {
    switch (k) {
        case FmtItem::Kind::Int: return "an integer";
        case FmtItem::Kind::Real: return "a real";
        case FmtItem::Kind::Text: return "a text";
    }
    return "?";
}

// Writes the records of one formatted WRITE.  The current record is a
// character buffer with a position: X and T only move the position, so
// blanks appear only when something is written further right, and a
// position left of the end makes later characters overwrite.
class RecordWriter {
public:
    explicit RecordWriter(const FmtItems& items) : items_(items) {}

    FormattedText run(const FormatNode& root) {
        bool going = runItems(root.children, 0);
        if (going && next_ < items_.size()) {
            size_t from = reversionPoint(root);
            bool hasData = false;
            for (size_t i = from; i < root.children.size(); ++i) hasData = hasData || holdsDataEdit(root.children[i]);
            if (!hasData) throw std::logic_error("format has no data descriptor for the remaining items");
            // Reversion: a new record, then on from the last top-level
            // group with its repeat count; the scale factor stays.
            while (going && next_ < items_.size()) {
                endRecord();
                going = runItems(root.children, from);
            }
        }
        endRecord();
        FormattedText out;
        for (size_t i = 0; i < records_.size(); ++i) {
            if (i > 0) out.text += '\n';
            out.text += records_[i];
        }
        out.advance = !dollar_;
        return out;
    }

private:
    const FmtItems& items_;
    size_t next_ = 0;
    std::vector<std::string> records_;
    std::string record_;
    size_t pos_ = 0;
    int scale_ = 0;
    bool dollar_ = false;

    static size_t reversionPoint(const FormatNode& root) {
        for (size_t i = root.children.size(); i > 0; --i)
            if (root.children[i - 1].op == Op::Group) return i - 1;
        return 0;
    }

    // Runs the nodes in order; false once a data descriptor (or ':') finds
    // the items used up, which ends the WRITE.
    bool runItems(const std::vector<FormatNode>& nodes, size_t from) {
        for (size_t i = from; i < nodes.size(); ++i)
            if (!runNode(nodes[i])) return false;
        return true;
    }

    bool runNode(const FormatNode& n) {
        if (takesItem(n.op)) return editItems(n);
        switch (n.op) {
            case Op::Group:
                for (int r = 0; r < n.repeat; ++r)
                    if (!runItems(n.children, 0)) return false;
                return true;
            case Op::Literal: put(n.text); return true;
            case Op::Skip: pos_ += static_cast<size_t>(n.w); return true;
            case Op::Tab: pos_ = static_cast<size_t>(n.w - 1); return true;
            case Op::TabLeft: {
                size_t back = static_cast<size_t>(n.w);
                pos_ = pos_ > back ? pos_ - back : 0;
                return true;
            }
            case Op::Slash:
                for (int r = 0; r < n.repeat; ++r) endRecord();
                return true;
            case Op::Dollar: dollar_ = true; return true;
            case Op::Colon: return next_ < items_.size();
            case Op::Scale: scale_ = n.w; return true;
            default: return true;
        }
    }

    bool editItems(const FormatNode& n) {
        for (int r = 0; r < n.repeat; ++r) {
            if (next_ >= items_.size()) return false;
            put(editOne(n, items_[next_++]));
        }
        return true;
    }

    std::string editOne(const FormatNode& n, const FmtItem& it) const {
        FmtItem::Kind want = n.op == Op::Integer ? FmtItem::Kind::Int
                             : n.op == Op::Text  ? FmtItem::Kind::Text
                                                 : FmtItem::Kind::Real;
        if (it.kind != want)
            throw std::logic_error(std::string("format item ") + std::to_string(next_) + " is " + kindName(it.kind) +
                                   ", its descriptor wants " + kindName(want));
        switch (n.op) {
            case Op::Integer: return editInteger(it.i, n.w);
            case Op::Fixed: return editFixed(it.r, n.w, n.d, scale_);
            case Op::Exponent: return editExponent(it.r, n.w, n.d, scale_, 'E');
            case Op::DoubleExp: return editExponent(it.r, n.w, n.d, scale_, 'D');
            case Op::General: return editGeneral(it.r, n.w, n.d, scale_);
            default: return editText(it.s, n.w);
        }
    }

    void put(std::string_view s) {
        if (record_.size() < pos_ + s.size()) record_.resize(pos_ + s.size(), ' ');
        record_.replace(pos_, s.size(), s);
        pos_ += s.size();
    }

    void endRecord() {
        records_.push_back(std::move(record_));
        record_.clear();
        pos_ = 0;
    }
};

}  // namespace
}  // namespace editing

FormattedText formatRecords(std::string_view format, const FmtItems& items) {
    editing::FormatNode root = editing::parseFormat(format);
    return editing::RecordWriter(items).run(root);
}

std::string listDirected(const FmtItems& items) {
    if (items.empty()) return std::string();
    // The record's leading blank is the separator of the first item; a
    // number gets a blank before it, a text only right after a number.
    std::string out = " ";
    bool afterNumber = false;
    for (size_t k = 0; k < items.size(); ++k) {
        const FmtItem& it = items[k];
        if (it.kind == FmtItem::Kind::Text) {
            if (afterNumber) out += ' ';
            out += it.s;
            afterNumber = false;
            continue;
        }
        if (k > 0) out += ' ';
        out += it.kind == FmtItem::Kind::Int ? editing::listInteger(it.i) : editing::listReal(it.r);
        afterNumber = true;
    }
    return out;
}
