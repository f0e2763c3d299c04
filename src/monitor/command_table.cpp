// The dispatch table of the monitor, the three standard error texts, and
// the EXIT command.
#include "monitor/console_layer.h"
#include "monitor/e4dataset.h"
#include "monitor/monitor_state.h"
#include "monitor/sysinf.h"
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

// Leaves the monitor; a command file that holds EXIT is closed first.
Outcome E4CmdExit(MonitorState&) {
    if (!commandsFromTerminal()) unit::close(sysinf.crUnit);
    return Outcome::Return;
}

const std::vector<CommandEntry>& commandTable() {
    static const std::vector<CommandEntry> table = {
        {"EX", E4CmdExit},
    };
    return table;
}
