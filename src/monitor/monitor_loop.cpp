// The command monitor E4MON1: its start, the loop that reads, stacks,
// splits and dispatches command lines, and the error exit.
#include "monitor/monitor.h"

#include "monitor/channel_commands.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "monitor/monitor_state.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "platform/units.h"
#include "textfile/command_stack.h"
#include "textfile/line_splitters.h"
#include "core/string_tools.h"

#include <cstdlib>

namespace {

enum class Step { ReadNext, Push, ProcessTop, Split, Return };

void fallbackName(std::string& field, std::string_view name) {
    if (R02LEN(field) == 0) field = padded(name, kFileNameWidth);
}

void startSession(MonitorState& m) {
    sysinf.MODEE4 = 0;
    m.dataMarker.assign(kLineWidth, ' ');
    E4DataSetRecord& d = E4DataSet;
    fallbackName(d.crName, "zemcom.txt");
    fallbackName(d.drName, "zeminp.txt");
    fallbackName(d.dwName, "zemout.txt");
    fallbackName(d.svName, "zemsav.txt");
    fallbackName(d.hpName, "C:\\Zemok\\zemok.hlp");
    for (int r = 1; r <= kStatRows; ++r) d.iStat(r) = 0;
    d.iStat(row::firstSeed) = 123;
    d.iStat(row::secondSeed) = 0;
    d.iStat(row::messageLevel) = 1;
    m.status = 0;
    m.eps = X02RMDC(2);
    m.rBig = X02RMDC(5);
}

void echoCommandLine() {
    const CommandLineLists& cl = commandLineLists();
    for (int i = 0; i < static_cast<int>(cl.keys.size()); ++i) {
        write(-1, "(\" Key #\",I2,\": [\",A,\"]\")", i + 1, cl.keys[static_cast<std::size_t>(i)]);
    }
    for (int i = 0; i < static_cast<int>(cl.args.size()); ++i) {
        write(-1, "(\" Arg #\",I2,\": [\",A,\"]\")", i + 1, cl.args[static_cast<std::size_t>(i)]);
    }
}

void stackOperation(MonitorState& m, std::string& text, std::string_view action, int& status) {
    R02CSO(text, action, m.stack, kStackSize, m.sp, status);
}

void clearStack(MonitorState& m) {
    std::string scratch(kLineWidth, ' ');
    int status = 0;
    stackOperation(m, scratch, "CLEAR", status);
}

[[noreturn]] void stackError() {
    write(6, "(A)", " COMMAND STACK ERROR");
    std::exit(1);
}

CommandHandler findHandler(const MonitorState& m) {
    for (const CommandEntry& entry : commandTable()) {
        if (R02PFX(m.words[0], entry.key, 1)) return entry.handler;
    }
    return nullptr;
}

// MAXI and MAXN are LOAD commands: the words move one place to the right.
bool shorthandToLoad(MonitorState& m) {
    if (!R02PFX(m.words[0], "MAXI", 1) && !R02PFX(m.words[0], "MAXN", 1)) return false;
    for (int i = kWordCount - 1; i > 0; --i) m.words[static_cast<std::size_t>(i)] = m.words[static_cast<std::size_t>(i - 1)];
    m.words[0] = padded("LOAD", kWordWidth);
    return true;
}

Outcome dispatch(MonitorState& m) {
    if (R02LEN(m.words[0]) == 0) return Outcome::Done;
    for (int pass = 0; pass < 2; ++pass) {
        if (CommandHandler h = findHandler(m)) return h(m);
        if (pass == 0 && !shorthandToLoad(m)) break;
    }
    return illegalCommand(m);
}

// Returns the step to go on with.
Step errorExit(MonitorState& m) {
    E04MES(m.errorText);
    if (sysinf.MODEE4 != 0) {
        m.status = 1;
        return Step::Return;
    }
    std::string scratch(kLineWidth, ' ');
    int status = 0;
    stackOperation(m, scratch, "POP", status);
    if (commandsFromTerminal()) {
        clearStack(m);
        return Step::ReadNext;
    }
    setLine(m, "CLOSE COMMAND READ");
    return Step::Split;
}

Step readNext(MonitorState& m) {
    int status = 0;
    if (commandsFromTerminal()) m.commandFileOpens = 0;
    std::string line(kLineWidth, ' ');
    I5ROL2(line, "ZEMOK", sysinf.crUnit, sysinf.dwUnit, sysinf.MODEE4, status);
    if (status != 0) {
        if (sysinf.MODEE4 != 0) {
            m.errorText = "Command read error";
            return errorExit(m);
        }
        if (commandsFromTerminal()) {
            // End of input at the terminal ends the session as EXIT does.
            return unit::terminalInputEnded() ? Step::Return : Step::ReadNext;
        }
        line = padded("CLOSE COMMAND READ", kLineWidth);
    }
    setLine(m, line);
    if (m.lineLength == 0) return Step::ReadNext;
    m.guards.fill(0);
    m.lastPrerequisite.clear();
    return Step::Push;
}

Step push(MonitorState& m) {
    int status = 0;
    std::string text = m.line;
    stackOperation(m, text, "PUSH", status);
    if (status == -1) return Step::Split;  // overflow: processed directly
    if (status < 0) stackError();
    return Step::ProcessTop;
}

Step processTop(MonitorState& m) {
    int status = 0;
    std::string text(kLineWidth, ' ');
    stackOperation(m, text, "READ", status);
    setLine(m, text);
    return Step::Split;
}

// A command that asks again for the prerequisite it asked for last, when
// that one stored nothing, would ask for ever: it fails instead.
Step prerequisite(MonitorState& m) {
    const std::string wanted(m.text());
    if (wanted == m.lastPrerequisite && m.sp == m.lastPrerequisiteDepth && m.changedFlag == 0) {
        E04MES("Nothing was stored by \"" + wanted + "\": the command cannot go on.");
        int status = 0;
        std::string parent(kLineWidth, ' ');
        stackOperation(m, parent, "READ", status);
        setLine(m, parent);
        failedCommand(m);
        return errorExit(m);
    }
    m.lastPrerequisite = wanted;
    m.lastPrerequisiteDepth = m.sp;
    m.changedFlag = 0;
    return Step::Push;
}

Step afterCommand(MonitorState& m, Outcome outcome) {
    int status = 0;
    std::string scratch(kLineWidth, ' ');
    switch (outcome) {
        case Outcome::Prerequisite: return prerequisite(m);
        case Outcome::Rewrite:
            scratch = m.line;
            stackOperation(m, scratch, "POP", status);
            return Step::Push;
        case Outcome::ErrorExit: return errorExit(m);
        case Outcome::Clear: clearStack(m); return Step::ReadNext;
        case Outcome::Return: return Step::Return;
        case Outcome::Done: break;
    }
    if (m.sp > 0) stackOperation(m, scratch, "POP", status);
    return m.sp > 0 ? Step::ProcessTop : Step::ReadNext;
}

}  // namespace

MonitorState& monitorState() {
    static MonitorState state;
    return state;
}

void resetMonitorState() { monitorState() = MonitorState{}; }

void setLine(MonitorState& m, std::string_view text) {
    m.line = padded(text, kLineWidth);
    m.lineLength = R02LEN(m.line);
}

void splitMonitorLine(MonitorState& m) {
    for (std::string& w : m.words) w.assign(kWordWidth, ' ');
    int status = 0;
    R02CLS(m.line, m.words.data(), kWordCount, 1, " ,;     ", "!!", status);
    m.lineLength = R02LEN(m.line);
}

bool commandsFromTerminal() { return unit::isTerminal(sysinf.crUnit) || sysinf.crUnit < 1; }

void E4MON1(int& status) {
    MonitorState& m = monitorState();
    startSession(m);
    echoCommandLine();
    clearStack(m);
    Step step = firstCommandFromKeys(m) ? Step::Push : Step::ReadNext;
    try {
        while (step != Step::Return) {
            switch (step) {
                case Step::ReadNext: step = readNext(m); break;
                case Step::Push: step = push(m); break;
                case Step::ProcessTop: step = processTop(m); break;
                case Step::Split:
                    splitMonitorLine(m);
                    step = afterCommand(m, dispatch(m));
                    break;
                case Step::Return: break;
            }
        }
    } catch (const unit::TerminalInputEnded&) {
        // A question was asked again and again after the end of the input:
        // the command cannot be finished, and the session ends.
        unit::endOpenRecord(sysinf.outUnit);
        E04MES("E4MON1 -E- End of input: \"" + std::string(m.text()) + "\" was abandoned.");
        m.status = 1;
    }
    status = m.status;
}
