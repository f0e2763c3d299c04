// Clock and process services: date and time texts, CPU time of the process,
// the environment variable HOME, the program's command line as one text.
#pragma once

#include <string>

// Date as "12-Mar-2009" (11 characters).
std::string dateText();
// Time of day as "10:27:11" (8 characters).
std::string timeText();
// CPU time used by the process, in seconds.
double cpuSeconds();
// Value of an environment variable, empty when it is not set.
std::string environmentValue(const std::string& name);
// Keeps argv for programCommandLine.
void setProgramArguments(int argc, const char* const* argv);
// The program's arguments joined by one blank; an argument holding a blank
// or a comma is put in double quotes.
std::string programCommandLine();
