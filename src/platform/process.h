// Shell and process calls: S_SYSTEM (shell command, waits) and S_RUNQQ
// (starts a program with a command line and waits for its end).
#pragma once

#include <string_view>

// Runs `command` through the shell and waits.  Returns the shell's exit
// status, or -1 when the text is longer than 256 characters or the shell
// cannot be started.
int S_SYSTEM(std::string_view command);

// Starts `program` with the argument text `commandLine` and waits.
// Returns the program's exit status, -1 when it could not be started, and
// -2 when program and command line together exceed 256 characters.
int S_RUNQQ(std::string_view program, std::string_view commandLine);
