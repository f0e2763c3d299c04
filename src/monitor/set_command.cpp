// The SET command: gradient scheme, termination rules, channels, status
// elements, the direction vector, the condition limit and the scaling.
#include "monitor/command_words.h"

#include "monitor/help_sections.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"

namespace {

// A code read into word n from a listed table, 0 to `last`.
enum class Step { Again, End };

Step askCode(MonitorState& m, int n, int last, std::string (*row)(int), Outcome& out) {
    if (!interactive()) {
        out = incompleteCommand(m);
        return Step::End;
    }
    for (int v = 0; v <= last; ++v) write(sysinf.outUnit, "(9X,I1,\" --- \",A)", v, row(v));
    askWord(m, last == 3 ? "What is the code? (0-3)" : "What is the code? (0-5)", "", n);
    return Step::Again;
}

Step setCode(MonitorState& m, int n, int last, int allowed, int statRow, std::string (*rows)(int),
             Outcome& out) {
    if (wordBlank(m, n)) return askCode(m, n, last, rows, out);
    std::optional<int> v = wordInt(m, n);
    if (!v || *v < 0 || *v > allowed) {
        out = illegalCommand(m);
    } else {
        E4DataSet.iStat(statRow) = *v;
        out = Outcome::Done;
    }
    return Step::End;
}

struct LogicalChannel {
    int* channel;
    int flagRow;
    int fileUnit;
    int terminal;
    const char* notOpened;
};

LogicalChannel logicalChannel(char which) {
    if (which == 'C')
        return {&sysinf.crUnit, row::commandFileOpen, channelTable.CommandFileUnit, sysinf.inUnit, "Command file NOT OPENED!"};
    if (which == 'R')
        return {&sysinf.drUnit, row::dataFileOpen, channelTable.ZEMOKdataUnit, sysinf.inUnit, "Data source file NOT OPENED!"};
    return {&sysinf.dwUnit, row::outputFileOpen, channelTable.ZEMOKoutputUnit, sysinf.outUnit, "Output data file NOT OPENED!"};
}

Step setChannel(MonitorState& m, Outcome& out) {
    char which = wordBegins(m, 2, "CR") ? 'C' : (wordBegins(m, 2, "DR") ? 'R' : 'W');
    LogicalChannel lc = logicalChannel(which);
    char b = firstLetter(m, 3);
    out = Outcome::Done;
    if (b == 'F') {
        if (E4DataSet.iStat(lc.flagRow) == 0) {
            E04MES(lc.notOpened);
            out = failedCommand(m);
        } else {
            *lc.channel = lc.fileUnit;
        }
        return Step::End;
    }
    if (b == 'T') {
        *lc.channel = lc.terminal;
        return Step::End;
    }
    if (!interactive()) {
        out = failedCommand(m);
        return Step::End;
    }
    askWord(m, "Set the channel [ Terminal / File ]", "Terminal", 3);
    if (wordBlank(m, 3)) setWord(m, 3, "Terminal");
    return Step::Again;
}

Step setStatusElement(MonitorState& m, Outcome& out) {
    int n = wordBlank(m, 3) ? 0 : wordInt(m, 3).value_or(-1);
    if (n < 0 || n > kStatRows) {
        out = illegalCommand(m);
        return Step::End;
    }
    std::optional<int> value = wordInt(m, 4);
    bool valueBad = !value || *value < 0;
    if (n == 0 || valueBad) {
        if (!interactive()) {
            out = illegalCommand(m);
            return Step::End;
        }
        if (n == 0) {
            askWord(m, "Number of the status-vector element?", "", 3);
        } else {
            askWord(m, "Its value?", "", 4);
        }
        return Step::Again;
    }
    if ((n == row::nVar || n == row::nFree) && *value > kMaxVar) {
        // The vectors of the data set hold 128 variables.
        E04MES("The number of variables must lie in 0 to 128.");
        out = illegalCommand(m);
        return Step::End;
    }
    E4DataSet.iStat(n) = *value;
    out = Outcome::Done;
    return Step::End;
}

Step setDirection(MonitorState& m, Outcome& out) {
    E4DataSetRecord& d = E4DataSet;
    out = Outcome::Done;
    if (!wordBegins(m, 3, "HES")) return Step::End;
    if (d.iStat(row::V_eigenSet) == 0) {
        setLine(m, "EVALUATE,HESSE");
        out = Outcome::Prerequisite;
        return Step::End;
    }
    std::optional<int> k = wordInt(m, 4);
    if (k && (*k < 1 || *k > d.nVar())) {
        E04MES("Wrong eigenvector index, please reload");
        setWord(m, 4, "");
        return Step::Again;
    }
    if (!k) {
        if (!interactive()) {
            out = illegalCommand(m);
            return Step::End;
        }
        askWord(m, "Index of the eigenvector?", "", 4);
        return Step::Again;
    }
    for (int i = 1; i <= d.nVar(); ++i) d.direct(i) = d.V_eigen(i, *k);
    d.iStat(row::directSet) = 1;
    return Step::End;
}

Outcome setConditionLimit(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (wordBegins(m, 3, "OF")) {
        d.iStat(row::hCondSwitch) = 0;
        return Outcome::Done;
    }
    if (d.iStat(row::hCondSet) == 0) {
        if (interactive()) {
            setLine(m, "LOAD,,hCond");
            return Outcome::Prerequisite;
        }
        d.hCond = 1000.0;
    }
    d.iStat(row::hCondSwitch) = 1;
    return Outcome::Done;
}

void scaleArguments(bool on) {
    E4DataSetRecord& d = E4DataSet;
    for (int i = 1; i <= kMaxVar; ++i) {
        if (on) {
            d.xStart(i) *= d.xScale(i);
            d.xEnd(i) *= d.xScale(i);
        } else {
            d.xStart(i) /= d.xScale(i);
            d.xEnd(i) /= d.xScale(i);
        }
    }
}

Outcome setScaling(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (wordBegins(m, 3, "OF")) {
        if (d.iStat(row::xScaled) != 0) {
            if (d.iStat(row::xScaleSet) != 0) scaleArguments(false);
            d.iStat(row::xScaled) = 0;
        }
        return Outcome::Done;
    }
    if (d.iStat(row::xScaled) != 0) {
        write(sysinf.outUnit, "(A)", " Argument values already scaled!");
    } else if (d.iStat(row::xScaleSet) == 0) {
        setLine(m, "LOAD,,XSCALE");
        return Outcome::Prerequisite;
    } else {
        scaleArguments(true);
        d.iStat(row::xScaled) = 1;
    }
    return Outcome::Done;
}

Step termination(MonitorState& m, Outcome& out) {
    char b = firstLetter(m, 3);
    out = Outcome::Done;
    if (b == 'L') return setCode(m, 4, 5, 5, row::localTermination, localTerminationRow, out);
    if (b == 'O') {
        E4DataSet.iStat(row::overallTermination) = firstLetter(m, 4) == 'W' ? 1 : 0;
    } else if (b == 'M') {
        E4DataSet.iStat(row::tolMultiplierSwitch) = wordBegins(m, 4, "OF") ? 0 : 1;
    } else {
        if (!commandsFromTerminal()) {
            out = illegalCommand(m);
            return Step::End;
        }
        setWord(m, 2, "HELP");
        return Step::Again;
    }
    return Step::End;
}

// One pass over the words of SET; Again means the words changed.
Step setPass(MonitorState& m, Outcome& out) {
    char a = firstLetter(m, 2);
    out = Outcome::Done;
    if (a == 'E' || firstLetter(m, 3) == 'E' || firstLetter(m, 4) == 'E') {
        out = Outcome::Clear;
        return Step::End;
    }
    if (a == 'H') {
        helpSection("SET");
        return Step::End;
    }
    if (a == 'G') return setCode(m, 3, 3, 4, row::gradientScheme, gradientSchemeRow, out);
    if (a == 'T') return termination(m, out);
    if (wordBegins(m, 2, "CR") || wordBegins(m, 2, "DR") || wordBegins(m, 2, "DW"))
        return setChannel(m, out);
    if (a == 'S') return setStatusElement(m, out);
    if (wordBegins(m, 2, "DIR")) return setDirection(m, out);
    if (wordBegins(m, 2, "DA")) {
        out = setConditionLimit(m);
        return Step::End;
    }
    if (a == 'X') {
        out = setScaling(m);
        return Step::End;
    }
    if (a == ' ' && !interactive()) {
        out = incompleteCommand(m);
        return Step::End;
    }
    if (a == ' ') write(sysinf.outUnit, "(A)", " Please express your desire more exactly!");
    if (a != ' ' && !commandsFromTerminal()) {
        out = illegalCommand(m);
        return Step::End;
    }
    setWord(m, 2, "HELP");
    return Step::Again;
}

}  // namespace

Outcome E4CmdSet(MonitorState& m) {
    Outcome out = Outcome::Done;
    while (setPass(m, out) == Step::Again) {
    }
    return out;
}
