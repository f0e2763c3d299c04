// The monitor's private state (MonitorState), the outcome of a command
// handler, the dispatch table entries and the three standard error texts.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

constexpr int kLineWidth = 80;
constexpr int kWordWidth = 32;
constexpr int kWordCount = 6;
constexpr int kStackSize = 20;

struct MonitorState {
    std::string line = std::string(kLineWidth, ' ');  // current command line
    int lineLength = 0;                                // its trimmed length
    std::array<std::string, kWordCount> words;         // words(0) is word 1
    std::vector<std::string> stack = std::vector<std::string>(kStackSize, std::string(kLineWidth, ' '));
    int sp = 0;
    std::string dataMarker = std::string(kLineWidth, ' ');
    int sourceChannel = 0;
    int changedFlag = 0;
    std::string lastPrerequisite;  // the prerequisite pushed last, and the depth it was pushed at
    int lastPrerequisiteDepth = -1;
    int commandFileOpens = 0;      // command files opened since the last line from the terminal
    std::array<int, 10> guards{};  // EVALUATE 1, SECTION 2, RUN 3, CONTINUE 4
    double eps = 0.0;              // machine precision, printed by REPORT
    double rBig = 0.0;             // limit of the big bound
    int status = 0;                // status of E4MON1
    // The end of job names a minimum only where a search produced it: not
    // before the first RUN, after a refused one, or at a point loaded since.
    bool searchMade = false;
    bool startValueKnown = false;  // fStart is the function at xStart
    std::string errorText;         // text of an error exit

    // Word n (1-based), blank-padded to 32 characters.
    std::string& word(int n) { return words[static_cast<std::size_t>(n - 1)]; }
    // The current line without trailing blanks.
    std::string_view text() const { return std::string_view(line).substr(0, static_cast<std::size_t>(lineLength)); }
};

// How a command handler ends.
enum class Outcome {
    Done,          // pop the stack and go on
    Prerequisite,  // `line` holds a command to run first: push it
    Rewrite,       // `line` holds the completed command: replace the top
    ErrorExit,     // `errorText` is written; the stack is cleared or the file closed
    Clear,         // clear the stack and read the next line
    Return,        // leave the monitor
};

using CommandHandler = Outcome (*)(MonitorState&);

struct CommandEntry {
    std::string_view key;
    CommandHandler handler;
};

// The dispatch table, in the order of its tests; only commands that are built.
const std::vector<CommandEntry>& commandTable();

// Sets the text of an error exit and returns ErrorExit.
Outcome illegalCommand(MonitorState& m);
Outcome incompleteCommand(MonitorState& m);
Outcome failedCommand(MonitorState& m);

// Sets the line to `text` (cut or padded to 80) with its length.
void setLine(MonitorState& m, std::string_view text);

// Splits the line into the six words of 32 characters.
void splitMonitorLine(MonitorState& m);

// True while commands come from the terminal.
bool commandsFromTerminal();

// Handlers of the monitor's own commands.
Outcome E4CmdExit(MonitorState& m);
