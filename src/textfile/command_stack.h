// Command lines: the command stack operator R02CSO and the line reader
// I5ROL2, which serves the terminal and a command file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Stack operation on `stack` (entries are fields of equal width; entry 1,
// stack[0], is the bottom) with `size` entries, `sp` of them in use.
// action, matched by its first letters (PU, PO, RE, CL), letters folded:
//   PUSH the trimmed command; POP the top entry into command and remove it;
//   READ it without removing it; CLEAR the whole stack.
// status 0 done; 1 PUSH filled the last entry; 2 POP/READ on an empty stack;
// -1 PUSH on a full stack (nothing stored), or sp above size on POP/READ;
// -2 unknown action; -3 size below 1; -4 command longer than an entry (cut);
// -5 entry longer than the command field (cut); -10 a field of zero width.
// Every status other than 0 and 1 writes its message through I05MES.
void R02CSO(std::string& command, std::string_view action, std::vector<std::string>& stack,
            int size, int& sp, int& status);

// Delivers one command line into `line` (a field, 80 characters in the
// monitor).  From the terminal (crUnit below 1, 5 or 6) it prompts with
// I05ASK and reads sysinf.inUnit; otherwise it reads channel crUnit.
// Comments start at "!", "#" or "~".  status 0 a good line; 1 a line
// substituted at the end of the source, on a read failure, or when auto mode
// (MODEE4 1) has no command file: "CLOSE COMMAND READ" in interactive mode,
// "EXIT" in auto mode.  A line from a file is echoed on the terminal in
// interactive mode, and every line is copied to dwUnit when that is a file.
void I5ROL2(std::string& line, std::string_view prompt, int& crUnit, int dwUnit, int MODEE4,
            int& status);
