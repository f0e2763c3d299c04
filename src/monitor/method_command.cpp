// The METHOD command: the word table of the methods and the extra words of
// the bounded, coordinate-descent and Monte-Carlo methods.
#include "monitor/command_words.h"

#include "monitor/help_sections.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/string_tools.h"

namespace {

struct MethodWord {
    std::string_view first;   // the first part begins with this
    std::string_view second;  // and the second with this ("" = any)
    int method;
};

// Tested in this order; the first pair that fits wins.
constexpr MethodWord kMethodWords[] = {
    {"F", "R", 1},   {"P", "R", 2},   {"B", "P", 3},    {"P", "S", 4},    {"D", "F", 6},
    {"B", "F", 7},   {"BR", "", 8},   {"FL", "", 9},    {"O", "L", 10},   {"O", "S", 11},
    {"SB", "", 12},  {"S", "B", 12},  {"C", "D", 14},   {"N", "M", 15},   {"M", "C", 16},
    {"SA", "MC", 17}, {"SA", "NM", 18},
};

int methodOfWord(const std::string& word) {
    std::string w = word.substr(0, static_cast<std::size_t>(R02LEN(word)));
    R02CASE(w, 1);
    std::size_t dash = w.find('-');
    std::string first = w.substr(0, dash);
    std::string second = dash == std::string::npos ? "" : w.substr(dash + 1);
    for (const MethodWord& mw : kMethodWords) {
        if (!first.starts_with(mw.first)) continue;
        if (!mw.second.empty() && !second.starts_with(mw.second)) continue;
        return mw.method;
    }
    return 0;
}

// Monte-Carlo: the number of tries and the deviate of the arguments.
Outcome monteCarloWords(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    while (!wordBlank(m, 3)) {
        if (std::optional<int> tries = wordInt(m, 3)) {
            d.iStat(row::maxNFE) = *tries;
            break;
        }
        if (!interactive()) return failedCommand(m);
        askWord(m, "What is the number of tries?", "", 3);
        if (wordBlank(m, 3)) return failedCommand(m);
    }
    if (wordBlank(m, 3)) {
        if (d.iStat(row::maxNFE) == 0) d.iStat(row::maxNFE) = d.iStat(row::nFree) * 1000;
        if (interactive()) {
            std::string def = std::to_string(d.iStat(row::maxNFE));
            std::string reply = askReply("What is the number of tries?", def, sysinf.CursorPosition);
            if (!reply.empty() && (reply[0] == 'E' || reply[0] == 'e')) return Outcome::Clear;
            setWord(m, 3, reply);
            if (std::optional<int> tries = wordInt(m, 3)) d.iStat(row::maxNFE) = *tries;
        }
    }
    if (!wordBlank(m, 4)) {
        std::optional<double> dev = wordReal(m, 4);
        if (!dev) return failedCommand(m);
        d.deviat.fill(*dev);
        d.iStat(row::deviatSet) = 1;
    }
    return Outcome::Done;
}

Outcome extraWords(MonitorState& m, int method) {
    E4DataSetRecord& d = E4DataSet;
    if (method == 12 && !wordBlank(m, 3)) {
        if (std::optional<int> v = wordInt(m, 3)) d.iStat(row::boundsMode) = *v;
    }
    if (method == 14 && !wordBlank(m, 3)) {
        std::optional<int> v = wordInt(m, 3);
        d.iStat(row::cdVariable) = v.value_or(0);
        if (d.iStat(row::cdVariable) == 0 && !interactive()) return failedCommand(m);
    }
    if (method == 16 || method == 17) return monteCarloWords(m);
    return Outcome::Done;
}

}  // namespace

Outcome E4CmdMethod(MonitorState& m) {
    while (true) {
        if (wordBegins(m, 2, "HE")) {
            helpSection("METHOD");
            return Outcome::Done;
        }
        if (wordBlank(m, 2)) {
            if (!interactive()) return incompleteCommand(m);
            std::string reply =
                askReply("What is the method of minimization?", "B-F-G-S", sysinf.CursorPosition);
            setWord(m, 2, reply.empty() ? "B-F-G-S" : reply);
            continue;
        }
        if (wordBegins(m, 2, "EX")) return Outcome::Clear;
        int method = methodOfWord(m.word(2));
        if (method == 0) {
            if (!interactive()) return illegalCommand(m);
            setWord(m, 2, "");
            continue;
        }
        E4DataSet.iStat(row::methodRunning) = method;
        return extraWords(m, method);
    }
}
