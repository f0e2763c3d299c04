// Shell and process calls: S_SYSTEM runs a shell command, S_RUNQQ starts a
// program with a command line; both wait for the end.
#include "platform/process.h"

#include "platform/units.h"

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace {

constexpr std::size_t kMaxCommand = 256;

int exitStatus(int raw) {
    if (raw == -1) return -1;
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

}  // namespace

int S_SYSTEM(std::string_view command) {
    if (command.size() > kMaxCommand) return -1;
    std::string text(command);
    std::fflush(nullptr);
    return exitStatus(std::system(text.c_str()));
}

int S_RUNQQ(std::string_view program, std::string_view commandLine) {
    std::string text = std::string(program) + std::string(commandLine);
    if (text.size() > kMaxCommand) {
        write(-1, "(A)", " S_RUNQQ --E- Command line is longer than 256 characters!");
        return -2;
    }
    std::fflush(nullptr);
    return exitStatus(std::system(text.c_str()));
}
