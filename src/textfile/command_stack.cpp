// R02CSO: the command stack operator (PUSH, POP, READ, CLEAR) with its
// status values and messages.
#include "textfile/command_stack.h"

#include "core/console_layer.h"
#include "textfile/message_head.h"
#include "core/string_tools.h"

#include <algorithm>

namespace {

enum class StackAction { Push, Pop, Read, Clear, Unknown };

StackAction actionOf(std::string_view action) {
    if (R02PFX(action, "PU", 1)) return StackAction::Push;
    if (R02PFX(action, "PO", 1)) return StackAction::Pop;
    if (R02PFX(action, "RE", 1)) return StackAction::Read;
    if (R02PFX(action, "CL", 1)) return StackAction::Clear;
    return StackAction::Unknown;
}

// Blanks `to` and copies the trimmed `from` into it; false when it was cut.
bool copyTrimmed(std::string_view from, std::string& to) {
    std::size_t n = static_cast<std::size_t>(R02LEN(from));
    std::size_t fits = std::min(n, to.size());
    R02BLANK(to);
    to.replace(0, fits, from.substr(0, fits));
    return fits == n;
}

int push(const std::string& command, std::vector<std::string>& stack, int size, int& sp) {
    if (sp < 0) sp = 0;
    if (sp >= size) return -1;
    ++sp;
    if (!copyTrimmed(command, stack[static_cast<std::size_t>(sp - 1)])) return -4;
    return sp == size ? 1 : 0;
}

int popOrRead(std::string& command, std::vector<std::string>& stack, int size, int& sp, bool pop) {
    R02BLANK(command);
    if (sp > size) return -1;
    if (sp < 1) return 2;
    std::string& top = stack[static_cast<std::size_t>(sp - 1)];
    int status = copyTrimmed(top, command) ? 0 : -5;
    if (pop) {
        R02BLANK(top);
        --sp;
    }
    return status;
}

std::string messageFor(int status, StackAction act, std::string_view action, bool stackField) {
    const std::string e = messageHead("R02CSO", 'E');
    const std::string w = messageHead("R02CSO", 'W');
    switch (status) {
    case 2: return w + "Command stack is empty.";
    case -1: return act == StackAction::Push ? e + "Command stack overflow." : w + "Exceeded # of stack elements.";
    case -2: return e + "Wrong stack action: \"" + std::string(action.substr(0, static_cast<std::size_t>(R02LEN(action)))) + "\".";
    case -3: return e + "Zero stack length dimensioned.";
    case -4: return e + "Unsufficient LENGTH( stack ), input string truncated.";
    case -5: return e + "Unsufficient LENGTH( command ), stack value truncated.";
    case -10: return e + (stackField ? "Zero size of \"stack\" variable." : "Zero size of \"command\" variable.");
    default: return {};
    }
}

}  // namespace

void R02CSO(std::string& command, std::string_view action, std::vector<std::string>& stack,
            int size, int& sp, int& status) {
    status = 0;
    StackAction act = actionOf(action);
    size = std::min(size, static_cast<int>(stack.size()));
    bool stackField = stack.empty() || stack[0].empty();
    if (size < 1) {
        status = -3;
    } else if (stackField || command.empty()) {
        status = -10;
    } else if (act == StackAction::Push) {
        status = push(command, stack, size, sp);
    } else if (act == StackAction::Pop || act == StackAction::Read) {
        status = popOrRead(command, stack, size, sp, act == StackAction::Pop);
    } else if (act == StackAction::Clear) {
        sp = 0;
        for (int k = 0; k < size; ++k) R02BLANK(stack[static_cast<std::size_t>(k)]);
    } else {
        status = -2;
    }
    std::string text = messageFor(status, act, action, stackField);
    if (!text.empty()) I05MES(text);
}
