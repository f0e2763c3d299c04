// Word services of the command handlers: first letters, blank words,
// conversions, questions that read a word, and the handlers
// of the problem, method and option commands.
#pragma once

#include "monitor/monitor_state.h"

#include <optional>
#include <string>
#include <string_view>

// First letter of word n, upper case; a blank for an empty word.
char firstLetter(const MonitorState& m, int n);
// True if word n begins with `key` (letters folded).
bool wordBegins(const MonitorState& m, int n, std::string_view key);
bool wordBlank(const MonitorState& m, int n);
// Word n without trailing blanks.
std::string wordText(const MonitorState& m, int n);
void setWord(MonitorState& m, int n, std::string_view text);
// Words 1 to 6 joined by "," up to the last non-blank one.
std::string joinedWords(const MonitorState& m);

// Converts word n; empty when it is blank or not a number.
std::optional<int> wordInt(const MonitorState& m, int n);
std::optional<double> wordReal(const MonitorState& m, int n);

bool interactive();
// The comment characters of replies.
std::string replyComments();

// Asks `question` (with `def` shown as default when not empty) at the
// cursor column and reads the reply from the terminal.  The reply comes back
// trimmed; an empty reply is returned as "".  End of input gives "" where
// a default is shown (it takes the default, as CR does), else "EXIT".
std::string askReply(std::string_view question, std::string_view def, int cursor);
// Asks and puts the reply into word n.
void askWord(MonitorState& m, std::string_view question, std::string_view def, int n);
// Yes/no question; returns 'Y' or 'N'.
char askYesNo(std::string_view question, std::string_view def, int cursor);

// The square root of rBig: the bound of a free variable without a loaded bound.
double bigBound();

Outcome E4CmdProblem(MonitorState& m);
Outcome E4CmdMethod(MonitorState& m);
Outcome E4CmdMessage(MonitorState& m);
Outcome E4CmdTMode(MonitorState& m);
Outcome E4CmdMode(MonitorState& m);
Outcome E4CmdSet(MonitorState& m);
Outcome E4CmdReset(MonitorState& m);
Outcome E4CmdStep(MonitorState& m);
Outcome E4CmdTime(MonitorState& m);
Outcome E4CmdSystem(MonitorState& m);
Outcome E4CmdReport(MonitorState& m);
Outcome E4CmdRun(MonitorState& m);
Outcome E4CmdContinue(MonitorState& m);
Outcome E4CmdEvaluate(MonitorState& m);
// SAVE and RECOVER of the data set on the storage file.
Outcome E4CmdSave(MonitorState& m);
Outcome E4CmdRecover(MonitorState& m);
