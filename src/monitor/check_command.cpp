// The CHECK command (E4CmdCheck): the walk over what is missing, the
// iteration limits by rule and the bound checks of the bounded method.
#include "monitor/load_check.h"

#include "monitor/command_words.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "methods/method_table.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"

#include <algorithm>
#include <array>

namespace {

// The command that pushed CHECK (or CHECK itself when typed), split.
struct Caller {
    std::array<std::string, kWordCount> words;
    bool evaluateOrSection = false;
    bool evaluateFunction = false;  // EVALUATE,F[,V...]: the message level stays
};

Caller findCaller(const MonitorState& m) {
    Caller c;
    for (std::string& w : c.words) w.assign(kWordWidth, ' ');
    std::string line = m.sp < 2 ? m.line : m.stack[static_cast<std::size_t>(m.sp - 2)];
    int status = 0;
    splitMonitorCommand(line, c.words.data(), status);
    bool evaluate = R02PFX(c.words[0], "EV", 1);
    c.evaluateOrSection = evaluate || R02PFX(c.words[0], "SEC", 1);
    // EVALUATE,FUNCTION with VALUE or no third word keeps the level; the
    // noise and tolerance forms ask for it like every other command.
    const bool valueForm = R02LEN(c.words[2]) == 0 || R02PFX(c.words[2], "V", 1);
    c.evaluateFunction = evaluate && R02PFX(c.words[1], "F", 1) && valueForm;
    return c;
}

int countFree() {
    E4DataSetRecord& d = E4DataSet;
    int free = 0;
    for (int i = 1; i <= d.nVar() && i <= kMaxVar; ++i) {
        if (d.iFixer(i) != 0) ++free;
    }
    d.iStat(row::nFree) = free;
    return free;
}

void offerMessageLevelReset(const Caller& c) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::messageLevel) <= 1 || !interactive() || c.evaluateFunction) return;
    write(sysinf.outUnit, "(\" Message level is equal to \",I2,/)", d.iStat(row::messageLevel));
    if (askYesNo("Reset this value to 1?", "Y", 0) != 'N') {
        d.iStat(row::messageLevel) = 1;
        d.iStat(row::terminalStopping) = 0;
    }
}

// maxITR and maxNFE by the method's rule when one of them is not above 0.
void applyLimits() {
    E4DataSetRecord& d = E4DataSet;
    defaultLimits(methodTableRow(d.iStat(row::methodRunning)).limits, d.nVar(), d.iStat(row::nFree),
                  d.iStat(row::maxITR), d.iStat(row::maxNFE));
}

std::string boundText(double v) {
    std::string text(32, ' ');
    int len = 0;
    int err = 0;
    R02R2C1(v, text, 1, 3, len, 2, 1, err);
    return text.substr(0, static_cast<std::size_t>(R02LEN(text)));
}

// A free start value outside its bound: both lines, the bound moved to
// the point, and the name of the bound.
std::string moveBound(int i, bool lower) {
    E4DataSetRecord& d = E4DataSet;
    double& bound = lower ? d.bL(i) : d.bU(i);
    std::string number = std::to_string(i);
    write(writerChannel(sysinf.dwUnit), "(1X,A)",
          std::string("E4MON1 -E- Wrong ") + (lower ? "LOWER" : "UPPER") + " bound for " + number +
              "-th variable:");
    write(writerChannel(sysinf.dwUnit), "(12X,A)",
          boundText(bound) + (lower ? ",  maximum = " : ",  minimum = ") + boundText(d.xStart(i)) + ".");
    bound = d.xStart(i);
    return (lower ? "bL," : "bU,") + number;
}

// The bounds of method 12; returns the name of what is missing or wrong.
std::string checkBounds(std::string name) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::boundsMode) != 0 && d.iStat(row::boundsMode) != 3) return name;
    if (d.iStat(row::bLSet) == 0) name = "bL";
    if (d.iStat(row::bUSet) == 0) name = "bU";
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) == 0) {
            d.bL(i) = d.xStart(i);
            d.bU(i) = d.xStart(i);
            continue;
        }
        if (d.xStart(i) < d.bL(i)) return moveBound(i, true);
        if (d.xStart(i) > d.bU(i)) return moveBound(i, false);
    }
    return name;
}

// The parameters of the method; each test overwrites the name.
std::string checkMethodParameters(std::string name) {
    E4DataSetRecord& d = E4DataSet;
    const MethodRow& method = methodTableRow(d.iStat(row::methodRunning));
    if (method.deviates) {
        if (d.iStat(row::deviatSet) == 0) name = "deviat";
    }
    if (method.temperature) {
        if (d.iStat(row::temperSet) == 0) name = "temper";
        if (d.iStat(row::NtriesT) == 0) name = "NtriesT";
        if (d.iStat(row::TscedSet) == 0) name = "Tsced";
    }
    if (method.conditionLimit && d.iStat(row::hCondSwitch) != 0) {
        if (d.iStat(row::hCondSet) == 0 || d.hCond < 1.0) name = "hCond";
    }
    if (method.simpleBounds) name = checkBounds(name);
    return name;
}

// The name of the last missing parameter, blank when nothing is missing.
std::string missingName(const Caller& c) {
    E4DataSetRecord& d = E4DataSet;
    std::string name;
    if (d.nVar() == 0) name = "nVar";
    if (d.iStat(row::nFree) == 0) name = "iFixer";
    if (d.iStat(row::xStartSet) == 0) name = "xStart";
    const MethodRow& method = methodTableRow(d.iStat(row::methodRunning));
    if (method.gradientScheme && d.iStat(row::tolMultiplierSwitch) != 0 && d.iStat(row::tolSclSet) == 0) name = "tolScl";
    if (c.evaluateOrSection) return name;
    applyLimits();
    return checkMethodParameters(name);
}

}  // namespace

Outcome E4CmdCheck(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (firstLetter(m, 2) == 'H') {
        helpSection("CHECK");
        return Outcome::Done;
    }
    m.sourceChannel = sysinf.dwUnit;
    Caller caller = findCaller(m);
    if (d.iStat(row::problemCode) < 1) {
        E04MES("Problem to be solved is not defined!");
        setLine(m, interactive() ? "PROBLEM" : "PROBLEM USER");
        return Outcome::Prerequisite;
    }
    if (!caller.evaluateOrSection && d.iStat(row::methodRunning) == 0) {
        E04MES("Method for minimization is not defined!");
        setLine(m, interactive() ? "METHOD" : "METHOD B-F-G-S");
        return Outcome::Prerequisite;
    }
    countFree();
    offerMessageLevelReset(caller);
    std::string name = missingName(caller);
    if (!name.empty()) {
        E04MES("Parameter \"" + name + "\" not specified!");
        if (!interactive()) return failedCommand(m);
        setLine(m, "LOAD,," + name);
        return Outcome::Prerequisite;
    }
    if (m.sp == 1 && (sysinf.dwUnit < 1 || unit::isTerminal(sysinf.dwUnit))) {
        write(writerChannel(sysinf.dwUnit), "(A)", " Data set is complete");
    }
    return Outcome::Done;
}
