// The option commands MESSAGE, T-MODE, MODE, RESET, STEP, TIME (and DATE)
// and the system command "@".
#include "monitor/command_words.h"

#include "monitor/help_sections.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "numlib/cpu_timers.h"
#include "platform/clock.h"
#include "platform/process.h"
#include "platform/units.h"
#include "textfile/prompts.h"

namespace {

void applyLevelRule() {
    E4DataSet.iStat(row::terminalStopping) = E4DataSet.iStat(row::messageLevel) < 3 ? 0 : 1;
}

// Opens `name` for reading on `channel`; false when it cannot be opened.
bool openForReading(int channel, const std::string& name) {
    unit::OpenSpec spec{unit::Status::Old};
    spec.action = unit::Action::Read;
    return unit::open(channel, name, spec) == 0;
}

Outcome autoMode(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    sysinf.MODEE4 = 1;
    sysinf.dwUnit = sysinf.outUnit;
    if (commandsFromTerminal()) {
        sysinf.crUnit = channelTable.CommandFileUnit;
        if (!openForReading(sysinf.crUnit, d.crName)) {
            sysinf.crUnit = sysinf.inUnit;
            E04MES("MODE -E- Automatic mode needs the command file \"" + d.crName.substr(0, static_cast<std::size_t>(R02LEN(d.crName))) + "\".");
            return failedCommand(m);
        }
        d.iStat(row::commandFileOpen) = 1;
    }
    if (unit::isTerminal(sysinf.drUnit)) {
        sysinf.drUnit = channelTable.ZEMOKdataUnit;
        if (!openForReading(sysinf.drUnit, d.drName)) {
            sysinf.drUnit = sysinf.inUnit;
            E04MES("MODE -E- Automatic mode needs the data file \"" + d.drName.substr(0, static_cast<std::size_t>(R02LEN(d.drName))) + "\".");
            return failedCommand(m);
        }
        d.iStat(row::dataFileOpen) = 1;
    }
    return Outcome::Done;
}

}  // namespace

Outcome E4CmdMessage(MonitorState& m) {
    while (true) {
        char a = firstLetter(m, 2);
        if (a == 'H') {
            helpSection("MESSAGE");
            applyLevelRule();
            return Outcome::Done;
        }
        if (a == ' ') {
            if (!interactive()) return incompleteCommand(m);
            askWord(m, "What is the value? (0 - 9)", "", 2);
            continue;
        }
        if (a == 'E') return Outcome::Clear;
        std::optional<int> level = wordInt(m, 2);
        if (!level) return illegalCommand(m);
        E4DataSet.iStat(row::messageLevel) = *level;
        applyLevelRule();
        return Outcome::Done;
    }
}

Outcome E4CmdTMode(MonitorState& m) {
    char a = firstLetter(m, 2);
    if (a == 'H') {
        helpSection("T-M");
    } else {
        E4DataSet.iStat(row::terminalStopping) = a == 'N' ? 0 : 1;
    }
    return Outcome::Done;
}

Outcome E4CmdMode(MonitorState& m) {
    while (true) {
        char a = firstLetter(m, 2);
        if (a == 'H') {
            helpSection("MODE");
            return Outcome::Done;
        }
        if (a == 'I') {
            sysinf.MODEE4 = 0;
            return Outcome::Done;
        }
        if (a == 'A') return autoMode(m);
        if (!interactive()) return incompleteCommand(m);
        std::string reply =
            askReply("What is the mode? [ Interactive / Auto ]", "Interact.", sysinf.CursorPosition);
        setWord(m, 2, reply.empty() ? "INTERACTIVE" : reply);
    }
}

Outcome E4CmdReset(MonitorState& m) {
    if (firstLetter(m, 2) == 'H') {
        helpSection("RESET");
    } else {
        E4RST1(m.word(2));
    }
    return Outcome::Done;
}

Outcome E4CmdStep(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    double t = 1.0;
    while (true) {
        if (firstLetter(m, 2) == 'H') {
            helpSection("SET*");
            return Outcome::Done;
        }
        if (wordBlank(m, 2)) {
            if (!interactive()) return incompleteCommand(m);
            I05ASKR("Step size in parts of the direction vector", t, 6, replyComments(),
                    sysinf.CursorPosition);
            break;
        }
        std::optional<double> v = wordReal(m, 2);
        if (v) {
            t = *v;
            break;
        }
        E04MES("Wrong step size, not a number");
        setWord(m, 2, "");
    }
    if (d.iStat(row::directSet) == 0) {
        E04MES("ERROR: Direction vector not specified.");
        return illegalCommand(m);
    }
    for (int i = 1; i <= d.nVar(); ++i) {
        d.xStart(i) += t * d.direct(i);
        d.xEnd(i) = d.xStart(i);
    }
    return Outcome::Done;
}

Outcome E4CmdTime(MonitorState& m) {
    char a = firstLetter(m, 2);
    if (a == 'H') {
        helpSection("TIME");
    } else if (a == 'C') {
        int minutes = 0;
        double seconds = 0;
        Z02CPUT(1, minutes, seconds, sysinf.dwUnit);
    } else {
        write(writerChannel(sysinf.dwUnit), "(1X,A11,\" time \",A8)", dateText(), timeText());
    }
    return Outcome::Done;
}

Outcome E4CmdSystem(MonitorState& m) {
    while (true) {
        if (firstLetter(m, 2) == 'H') {
            helpSection("@");
            return Outcome::Done;
        }
        std::string command = wordText(m, 1).substr(1);
        if (!command.empty()) {
            S_SYSTEM(command);
            return Outcome::Done;
        }
        if (!interactive()) return incompleteCommand(m);
        std::string reply = askReply("Enter the system command (\"EXit\" to quit)", "", 0);
        if (reply.size() >= 2 && (reply[0] == 'E' || reply[0] == 'e') && (reply[1] == 'X' || reply[1] == 'x'))
            return Outcome::Clear;
        setWord(m, 1, ("@" + reply).substr(0, kWordWidth));
    }
}
