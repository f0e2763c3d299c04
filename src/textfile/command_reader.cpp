// I5ROL2: reads one command line from the terminal or the command file,
// echoes it, and substitutes a closing command at the end of the source.
#include "textfile/command_stack.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "core/string_tools.h"

#include <algorithm>

namespace {

bool isTerminalChannel(int channel) { return channel < 1 || channel == 5 || channel == 6; }

// Reads the line; returns the text of a failure, or an empty text.
std::string readCommand(std::string& line, int& length, std::string_view prompt, bool terminal,
                        int crUnit) {
    if (terminal) I05ASK(prompt, 0);
    int status = 0;
    I05RSL(terminal ? sysinf.inUnit : crUnit, line, length, "!#~", status);
    if (status == 1 && terminal) {
        unit::endOpenRecord(sysinf.outUnit);  // the prompt got no reply
        return "I5ROL2 -W- END OF TERMINAL INPUT!";
    }
    if (status == 1) return "I5ROL2 -W- END OF COMMAND FILE!";
    if (status != 0) {
        I05ERR("I5ROL2", status);
        return "I5ROL2 -E- READ-FROM-FILE ERROR";
    }
    length = std::max(R02LEN(line), 1);  // an empty line is one blank
    return {};
}

void substitute(std::string& line, std::string_view text) {
    R02BLANK(line);
    line.replace(0, std::min(text.size(), line.size()), text.substr(0, std::min(text.size(), line.size())));
}

}  // namespace

void I5ROL2(std::string& line, std::string_view prompt, int& crUnit, int dwUnit, int MODEE4,
            int& status) {
    R02BLANK(line);
    status = 0;
    const bool terminal = isTerminalChannel(crUnit);
    int length = 0;
    std::string failure;
    if (terminal && MODEE4 != 0) {
        failure = "I5ROL2 -E- COMMAND SOURCE IS NOT A DISC-FILE!";
    } else {
        failure = readCommand(line, length, prompt, terminal, crUnit);
    }
    if (failure.empty()) {
        if (!terminal && MODEE4 == 0) {
            write(sysinf.outUnit, "(2A)", " ==> ", line.substr(0, static_cast<std::size_t>(length)));
        }
    } else {
        I05MES(failure);
        substitute(line, MODEE4 == 0 ? "CLOSE COMMAND READ" : "EXIT");
        length = R02LEN(line);
        status = 1;
    }
    if (!isTerminalChannel(dwUnit)) {
        write(dwUnit, "(2A)", " ==> USER-COMMAND: ", line.substr(0, static_cast<std::size_t>(length)));
    }
}
