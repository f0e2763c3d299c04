// The METHOD command: the method by its word, and the extra words of the
// bounded, coordinate-descent and Monte-Carlo methods.
#include "monitor/command_words.h"

#include "monitor/help_sections.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "methods/method_table.h"

namespace {

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
    const MethodRow& r = methodTableRow(method);
    if (r.simpleBounds && !wordBlank(m, 3)) {
        if (std::optional<int> v = wordInt(m, 3)) d.iStat(row::boundsMode) = *v;
    }
    if (r.minimizer == Minimizer::CoordinateDescent && !wordBlank(m, 3)) {
        std::optional<int> v = wordInt(m, 3);
        d.iStat(row::cdVariable) = v.value_or(0);
        if (d.iStat(row::cdVariable) == 0 && !interactive()) return failedCommand(m);
    }
    if (r.deviates) return monteCarloWords(m);
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
