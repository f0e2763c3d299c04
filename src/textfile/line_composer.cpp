// R02LINE: composes a report line "label ---- : value   more" from three
// fields, a separator column and a filler.
#include "core/string_tools.h"

#include <algorithm>
#include <cstdlib>

namespace {

struct LineLayout {
    int leftLen = 0;
    int middleLen = 0;
    int rightLen = 0;
    int width = 0;

    // Columns needed for "left : middle right" with one blank between.
    int needed() const { return leftLen + 3 + middleLen + (rightLen > 0 ? rightLen + 1 : 0); }

    // Cuts left first, then right, then middle until the line fits.
    void fit() {
        for (int* len : {&leftLen, &rightLen, &middleLen}) {
            int excess = needed() - width;
            if (excess <= 0) return;
            *len -= std::min(excess, *len);
        }
    }
};

// Writes the first n characters of text from column col (1-based); columns
// outside the field are dropped.
void put(std::string& out, int col, std::string_view text, int n) {
    for (int k = 0; k < n; ++k) {
        int c = col + k;
        if (c < 1 || c > static_cast<int>(out.size())) continue;
        out[static_cast<std::size_t>(c - 1)] = text[static_cast<std::size_t>(k)];
    }
}

}  // namespace

void R02LINE(std::string_view left, std::string_view middle, std::string_view right, int pos,
             int pos2, char filler, std::string& out, int& outLen) {
    R02BLANK(out);
    outLen = 0;
    LineLayout lay{R02LEN(left), R02LEN(middle), R02LEN(right), static_cast<int>(out.size())};
    if (lay.width == 0) return;
    lay.fit();

    int sep = std::abs(pos) - 2;
    sep = std::max(sep, lay.leftLen + 2);
    sep = std::min(sep, lay.width - 1 - lay.middleLen);

    int leftCol = pos < 0 ? sep - 1 - lay.leftLen : 1;
    put(out, leftCol, left, lay.leftLen);
    if (filler != ' ' && pos > 3) {
        int fillEnd = sep - (filler == ':' ? 2 : 3);
        std::string fill(static_cast<std::size_t>(std::max(fillEnd - lay.leftLen - 1, 0)), filler);
        put(out, lay.leftLen + 2, fill, static_cast<int>(fill.size()));
    }
    put(out, sep, ":", 1);
    put(out, sep + 2, middle, lay.middleLen);

    int rightCol = std::max(pos2, sep + 2 + lay.middleLen + (lay.middleLen > 0 ? 1 : 0));
    int rightLen = std::min(lay.rightLen, lay.width - rightCol + 1);
    if (rightLen > 0) put(out, rightCol, right, rightLen);
    outLen = R02LEN(out);
}
