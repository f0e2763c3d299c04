// The dispatch table of the monitor, the three standard error texts, and
// the EXIT command with its parting dialogue.
#include "monitor/channel_commands.h"
#include "monitor/command_words.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "monitor/load_check.h"
#include "monitor/monitor_state.h"
#include "monitor/section.h"
#include "core/sysinf.h"
#include "platform/units.h"

namespace {

Outcome errorWith(MonitorState& m, std::string_view head, std::string_view tail) {
    m.errorText = std::string(head) + std::string(m.text()) + std::string(tail);
    return Outcome::ErrorExit;
}

}  // namespace

Outcome illegalCommand(MonitorState& m) { return errorWith(m, "ILLEGAL COMMAND: \"", "\""); }
Outcome incompleteCommand(MonitorState& m) { return errorWith(m, "INCOMPLETE COMMAND: \"", "\""); }
Outcome failedCommand(MonitorState& m) {
    return errorWith(m, "COMMAND \"", "\" WAS FAILED TO EXECUTE");
}

namespace {

// The parting dialogue of EXIT after a search at the terminal.
Outcome partingDialogue(MonitorState& m) {
    int out = sysinf.outUnit;
    write(out, "(A,/,A,/)", " \"Lest men suspect your tale untrue,", "   Keep probability in view\"");
    if (askYesNo("Are you sure of the solution?", "N", 50) == 'N') {
        setLine(m, "METHOD MONTE-CARLO");
        write(out, "(A)", " Try to use Monte-Carlo or Nelder-Mead scheme.");
        m.sp = 0;
        return Outcome::Prerequisite;
    }
    write(out, "(A,/,A,/)", "", " Remember to save your results before you leave \"ZEMOK\"!");
    if (askYesNo("Exit now?", "N", 50) == 'N') return Outcome::Clear;
    write(out, "(A,/,A)", "", "            Well, absolute accuracy requires infinite time...");
    return Outcome::Return;
}

}  // namespace

// Leaves the monitor; a command file that holds EXIT is closed first.
Outcome E4CmdExit(MonitorState& m) {
    if (!commandsFromTerminal()) {
        unit::close(sysinf.crUnit);
        return Outcome::Return;
    }
    if (sysinf.MODEE4 != 0 || E4DataSet.iStat(row::functionEvaluations) == 0) return Outcome::Return;
    return partingDialogue(m);
}

const std::vector<CommandEntry>& commandTable() {
    static const std::vector<CommandEntry> table = {
        {"H", E4CmdHelp},       {"MO", E4CmdMode},     {"OP", E4CmdOpen},
        {"CL", E4CmdClose},     {"PR", E4CmdProblem},  {"MET", E4CmdMethod},
        {"LO", E4CmdLoad},      {"REP", E4CmdReport},  {"SA", E4CmdSave},
        {"REC", E4CmdRecover},  {"T-M", E4CmdTMode},
        {"@", E4CmdSystem},     {"TI", E4CmdTime},     {"DA", E4CmdTime},
        {"MES", E4CmdMessage},  {"SET", E4CmdSet},     {"STE", E4CmdStep},
        {"EV", E4CmdEvaluate},  {"SEC", E4CmdSection}, {"RES", E4CmdReset},
        {"RU", E4CmdRun},
        {"CO", E4CmdContinue},  {"CH", E4CmdCheck},    {"EX", E4CmdExit},
    };
    return table;
}
