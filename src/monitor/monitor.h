// The program's start and the monitor: E4MAIN, E4MON1, the command-line
// lists, and the reset of the monitor's state used by tests.
#pragma once

#include "core/command_line.h"
#include "core/module_resets.h"

#include <string>

struct MonitorState;

// Splits the program's command line into keys and arguments.
void splitCommandLine(const std::string& commandLine);

// The command monitor.  status 1: a command failed in auto mode.
void E4MON1(int& status);
// Start, monitor and closing; returns the process exit code after the
// closing line was written (the program entry stops with it).
int E4MAIN();

MonitorState& monitorState();
void resetMonitorState();
