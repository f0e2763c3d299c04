// Channels and help of the monitor: Z1ACS1 (OPEN and CLOSE of the command,
// data-reading and data-writing channels), the handlers of HELP, OPEN and
// CLOSE, and the first command taken from the key "/C=name".
#pragma once

#include "monitor/monitor_state.h"

#include <string>

// Carries out OPEN or CLOSE on the six command words (fields of 32
// characters, words[0] is word 1), which are rewritten in full form
// ("OPEN,DATA,WRITE").  iStat21, iStat22 and iStat23 are the open flags of
// the command, data-reading and data-writing channels: the channel number
// while a file is open, 0 when closed.  Missing words are asked for only in
// interactive mode with commands from the terminal.  `dummy` is not used.
// status 0 done; 1 the first word was neither OPEN nor CLOSE; 2 the data
// type is missing; 3 the access word is missing; 4 the file name is
// missing; 5 the file could not be opened.  For 2 to 5 the failure text is
// written on the console.
void Z1ACS1(std::string* words, int dummy, int& iStat21, int& iStat22, int& iStat23, int& status);

// The command words joined with "," as the failure texts show them.
std::string joinedWords(const std::string* words);

// HELP: the section "HELP" of the help file.
Outcome E4CmdHelp(MonitorState& m);
// OPEN and CLOSE through Z1ACS1; a failure is COMMAND ... WAS FAILED TO
// EXECUTE with the command in full form.  CLOSE,COMMAND puts the monitor
// into interactive mode.
Outcome E4CmdOpen(MonitorState& m);
Outcome E4CmdClose(MonitorState& m);

// The first command of the session from the program's keys: the first key
// whose letter behind "/" or "-" is C and that names a file ("/C=name")
// makes the line "OPEN COMMAND READ name".  True when the line was set.
bool firstCommandFromKeys(MonitorState& m);
