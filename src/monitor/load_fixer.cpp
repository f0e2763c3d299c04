// The iFixer step of LOAD (loadFixer): the fixing dialogue at the terminal,
// the loaders, and the new start point and bounds of a changed vector.
#include "monitor/load_steps.h"

#include "monitor/command_words.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/array_io.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"

#include <array>
#include <cctype>

namespace {

constexpr std::string_view kFixerComment = "problem variables fixative vector (0 to fix)";

using FixerVector = Vec1<int, kMaxVar>;

// The number of a variable typed at the terminal; 0 when the reply is
// empty, unreadable or out of range.
int askVariableNumber() {
    std::string reply = askReply("Number of the variable? [ \"CR\" to quit ]", "", sysinf.CursorPosition);
    if (reply.empty()) return 0;
    int err = 0;
    int i = R02C2I1(reply, err);
    if (err < 0 || err == 2) return 0;
    return (i >= 1 && i <= E4DataSet.nVar()) ? i : 0;
}

// The dialogue: variable after variable, fix it or free it.  Only an entry
// that really differs sets the changed flag.  False when the user chose Exit.
bool fixingDialogue(FixerVector& fixer, int& changed) {
    while (int i = askVariableNumber()) {
        std::string reply = askReply("Fix this variable? [ Y / N / Exit ]", "Y", sysinf.CursorPosition);
        char letter = reply.empty() ? 'Y' : static_cast<char>(std::toupper(static_cast<unsigned char>(reply[0])));
        if (letter == 'E') return false;
        int value = letter == 'N' ? 1 : 0;
        if (fixer(i) != value) {
            fixer(i) = value;
            changed = 1;
        }
    }
    return true;
}

bool sourceIsTerminal(const MonitorState& m) { return m.sourceChannel < 1 || unit::isTerminal(m.sourceChannel); }

// A changed vector: back to the point reached, fixed variables pinned by
// their bounds, free ones whose flag changed (or that have no bound) get
// the big bound.
void applyFixer(const FixerVector& old) {
    E4DataSetRecord& d = E4DataSet;
    I05MES("iFixer CHANGED");
    d.xStart = d.xEnd;
    d.fStart = d.fEnd;
    int free = 0;
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) == 0) {
            d.bL(i) = d.xStart(i);
            d.bU(i) = d.xStart(i);
            continue;
        }
        ++free;
        bool flagChanged = old(i) != d.iFixer(i);
        if (flagChanged || d.iStat(row::bLSet) == 0) d.bL(i) = -bigBound();
        if (flagChanged || d.iStat(row::bUSet) == 0) d.bU(i) = bigBound();
    }
    d.iStat(row::nFree) = free;
    d.iStat(row::bLSet) = 1;
    d.iStat(row::bUSet) = 1;
    E4RST1(" ");
    d.iStat(row::xStartSet) = 1;
    d.iStat(row::fSet) = 0;
}

}  // namespace

std::optional<Outcome> loadFixer(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (std::optional<Outcome> pre = needVariables(m)) return pre;
    FixerVector fixer = d.iFixer;
    int changed = 0;
    int status = 0;
    if (wordBlank(m, 4) && interactive()) {
        if (d.iStat(row::nFree) != 0) return std::nullopt;  // the free variables are known
        if (sourceIsTerminal(m)) {
            if (!fixingDialogue(fixer, changed)) return Outcome::Clear;
        } else {
            I5LIA1(std::string(kFixerComment) + ":", "iFixer", kLoadMarker, kLoadAccess, sourceFileName(m),
                   m.sourceChannel, fixer.data(), kMaxVar, d.nVar(), 1, changed, status);
        }
    } else {
        if (wordBlank(m, 4)) setWord(m, 4, "ALL");
        std::array<std::string, kWordCount> words = m.words;
        I5LIA2(fixer.data(), kMaxVar, d.nVar(), 1, "iFixer", kLoadMarker, kFixerComment, words.data(),
               kWordCount, 4, kCommandDelimiters, d.iStat(row::nFree), m.sourceChannel, sourceFileName(m),
               kLoadAccess, sysinf.MODEE4, changed, status);
    }
    m.changedFlag = changed;
    if (status != 0) return failedCommand(m);
    if (changed == 0) return std::nullopt;
    FixerVector old = d.iFixer;
    d.iFixer = fixer;
    applyFixer(old);
    return std::nullopt;
}
