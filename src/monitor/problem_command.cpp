// The PROBLEM command: the test catalogue list, the choice of a test or a
// user problem, the user's dialogue again, and the problem change.
#include "monitor/command_words.h"

#include "monitor/help_sections.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "numlib/cpu_timers.h"
#include "objective/target_function.h"
#include "objective/test_problems.h"
#include "textfile/prompts.h"
#include "platform/units.h"

namespace {

constexpr int kUserProblem = 20;

// Steps 7 to 9 of the problem change: the end point, the bounds, the scaling.
void settleStartPoint() {
    E4DataSetRecord& d = E4DataSet;
    int n = d.nVar();
    for (int i = 1; i <= kMaxVar; ++i) d.xEnd(i) = d.xStart(i);
    d.fEnd = d.fStart;
    int nFree = 0;
    double big = bigBound();
    for (int i = 1; i <= n; ++i) {
        if (d.iFixer(i) == 0) {
            d.bL(i) = d.bU(i) = d.xStart(i);
            continue;
        }
        ++nFree;
        if (d.iStat(row::bLSet) == 0) d.bL(i) = -big;
        if (d.iStat(row::bUSet) == 0) d.bU(i) = big;
    }
    d.iStat(row::nFree) = nFree;
    d.iStat(row::bLSet) = d.iStat(row::bUSet) = 1;
    if (d.iStat(row::xScaleSet) == 0) {
        for (int i = 1; i <= n; ++i) d.xScale(i) = 1.0;
    }
}

void askMessageLevel() {
    E4DataSetRecord& d = E4DataSet;
    if (!interactive() || d.iStat(row::messageLevel) <= 1) return;
    write(sysinf.outUnit, "(\" Message level is equal to \",I2,/)", d.iStat(row::messageLevel));
    if (askYesNo("Reset this value?", "Y", sysinf.CursorPosition) != 'N') {
        d.iStat(row::messageLevel) = 1;
        d.iStat(row::terminalStopping) = 0;
    }
}

Outcome problemChange(MonitorState& m, int code) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(row::problemCode) = code;
    E4RST1("ALL");
    d.iStat(row::functionEvaluations) = d.iStat(row::iterations) = d.iStat(row::gradientEvaluations) = 0;
    int minutes = 0;
    double seconds = 0;
    Z02CPUT(0, minutes, seconds, sysinf.dwUnit);
    d.nVar() = 0;
    if (!wordBlank(m, 4)) {
        // The number of variables asked for must fit the data set's vectors;
        // outside 1 to 128 it counts as not given.
        std::optional<int> n = wordInt(m, 4);
        const bool fits = n && *n >= 1 && *n <= kMaxVar;
        if (!fits) E04MES("The number of variables must lie in 1 to 128: \"" + wordText(m, 4) + "\" is not taken.");
        if (!fits && !interactive()) return illegalCommand(m);
        d.nVar() = fits ? *n : 0;
    }
    askMessageLevel();
    d.iStat(row::xScaleSet) = d.iStat(row::xScaled) = 0;
    d.fStart = E4FUN1(d.xStart.data());
    m.searchMade = false;
    m.startValueKnown = true;
    d.iStat(row::userDialogue) = d.iStat(row::userTypeChange) = 0;
    if (code == kUserProblem && d.nVar() == 0) {
        // The user's function set up no variables (it said why): nothing
        // can be minimized, so the problem is not selected.
        d.iStat(row::problemCode) = 0;
        return failedCommand(m);
    }
    settleStartPoint();
    return Outcome::Done;
}

// PROBLEM,USER,DIALOGUE or NEW on a user problem that is set up: the user's
// dialogue runs again at the end point.
Outcome userDialogueAgain(MonitorState& m, int flagRow) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(flagRow) = 1;
    const int nVar = d.nVar();
    const auto xEnd = d.xEnd;
    const auto iFixer = d.iFixer;
    const double fEnd = d.fEnd;
    double f = E4FUN1(d.xEnd.data());
    d.iStat(flagRow) = 0;
    d.xStart = d.xEnd;
    d.fStart = f;
    m.searchMade = false;
    m.startValueKnown = true;
    if (nVar != d.nVar() || xEnd.a != d.xEnd.a || iFixer.a != d.iFixer.a || f != fEnd) {
        m.changedFlag = 1;
        d.fEnd = f;
        E4RST1(" ");
    }
    settleStartPoint();
    return Outcome::Done;
}

Outcome userOutput(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(row::userOutputLevel) = -1;
    char c = wordBlank(m, 4) ? ' ' : wordText(m, 4)[0];
    if (c >= '0' && c <= '9') d.iStat(row::userOutputLevel) = c - '0';
    while (d.iStat(row::userOutputLevel) < 0) {
        if (!interactive()) return incompleteCommand(m);
        int flag = 1;
        I05ASKI("Output mode flag? (positive or press CR)", flag, replyComments(),
                sysinf.CursorPosition);
        d.iStat(row::userOutputLevel) = flag;
    }
    d.fEnd = E4FUN1(d.xEnd.data());
    d.iStat(row::userOutputLevel) = 0;
    return Outcome::Done;
}

Outcome userProblem(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    char b = firstLetter(m, 3);
    if (b == 'D' || b == 'N') {
        if (d.nVar() != 0 && d.iStat(row::problemCode) == kUserProblem) return userDialogueAgain(m, b == 'D' ? row::userDialogue : row::userTypeChange);
        return problemChange(m, kUserProblem);
    }
    if (b == 'O') return userOutput(m);
    if (!wordBlank(m, 3)) {
        char c = wordText(m, 3)[0];
        if (c > '0' && c <= '9') d.iStat(row::userType) = c - '0';
    }
    return problemChange(m, kUserProblem);
}

void listTestProblems() {
    int out = sysinf.outUnit;
    write(out, "(A)", " Test functions are as follows:");
    write(out, "(A)", "");
    for (int n = 1; n <= 19; ++n) write(out, "(1X,I2,\" ... \",A)", n, problemTitle(n));
}

// PROBLEM,TEST...; returns true with `out` set when the command ends.
bool testProblem(MonitorState& m, Outcome& out) {
    char b = firstLetter(m, 3);
    if (b == 'L') {
        listTestProblems();
        if (!interactive() || askYesNo("More information?", "N", sysinf.CursorPosition) == 'Y')
            helpSection("TEST-LIST");
        out = Outcome::Done;
        return true;
    }
    if (b == ' ') {
        if (!interactive()) return out = incompleteCommand(m), true;
        askWord(m, "Test number?", "", 3);
        return false;
    }
    if (b == 'E') return out = Outcome::Clear, true;
    int n = wordInt(m, 3).value_or(0);
    if (n >= 1 && n <= kTestProblems) return out = problemChange(m, n), true;
    if (n != 0) E04MES("There is no test problem " + std::to_string(n) + ": the test problems are 1 to 14.");
    if (!interactive()) return out = illegalCommand(m), true;
    askWord(m, "What do you want? [ List / test no. ]", "", 3);
    if (firstLetter(m, 3) == 'H') m.word(2) = m.word(3);
    return false;
}

// PROBLEM with no known second word: ask, or complete it from the problem held.
bool chooseProblem(MonitorState& m, Outcome& out) {
    if (E4DataSet.iStat(row::problemCode) != 0) {
        for (int n = kWordCount; n > 2; --n) m.word(n) = m.word(n - 1);
        setWord(m, 2, E4DataSet.iStat(row::problemCode) < kUserProblem ? "TEST" : "USER");
        setLine(m, joinedWords(m));
        return out = Outcome::Rewrite, true;
    }
    if (!interactive()) return out = incompleteCommand(m), true;
    std::string reply = askReply("Specify the problem to be solved [ User / Test ]", "USER",
                                 sysinf.CursorPosition);
    if (reply.empty()) reply = "USER";
    if (reply[0] == 'E' || reply[0] == 'e') return out = Outcome::Clear, true;
    setLine(m, "PROBLEM," + reply);
    splitMonitorLine(m);
    return false;
}

}  // namespace

Outcome E4CmdProblem(MonitorState& m) {
    Outcome out = Outcome::Done;
    while (true) {
        char a = firstLetter(m, 2);
        if (a == 'H') {
            helpSection("PROBLEM");
            return Outcome::Done;
        }
        if (a == 'U') return userProblem(m);
        bool ended = a == 'T' ? testProblem(m, out) : chooseProblem(m, out);
        if (ended) return out;
    }
}
