// Z1ACS1 (OPEN and CLOSE of the logical channels), the handlers E4CmdHelp,
// E4CmdOpen, E4CmdClose, and firstCommandFromKeys for the key "/C=name".
#include "monitor/channel_commands.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "monitor/help_sections.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/array_io.h"
#include "textfile/file_spec.h"
#include "textfile/line_splitters.h"
#include "core/string_tools.h"

#include <array>
#include <cctype>

namespace {

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

void setWord(std::string& word, std::string_view text) {
    std::size_t width = word.empty() ? static_cast<std::size_t>(kWordWidth) : word.size();
    word = padded(text, static_cast<int>(width));
}

char letterOf(std::string_view word) {
    for (char c : word) {
        if (!isWhiteChar(c)) return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return ' ';
}

bool isTerminalChannel(int channel) { return channel < 1 || unit::isTerminal(channel); }

// One logical channel: its field in sysinf, its file name, its open flag,
// the channel a file is opened on, and the terminal channel it falls back to.
struct Logical {
    int& unit;
    std::string& name;
    int& flag;
    int fileChannel;
    int terminal;
};

// The block letters of the banner written on a data-writing file.
void writeBanner(int channel) {
    static const std::array<const char*, 9> rows = {
        "HHHHHHH   HHHHHHH   H     H    HHHHH    H     H",
        "      H   H         HH   HH   H     H   H    H",
        "     H    H         H H H H   H     H   H   H",
        "    H     H         H  H  H   H     H   H  H",
        "   H      HHHHH     H     H   H     H   HHH",
        "  H       H         H     H   H     H   H  H",
        " H        H         H     H   H     H   H   H",
        "H         H         H     H   H     H   H    H",
        "HHHHHHH   HHHHHHH   H     H    HHHHH    H     H",
    };
    write(channel, "(A)", "");
    for (const char* row : rows) write(channel, "(17X,A)", row);
    write(channel, "(A)", "");
}

// The file stands behind its last line, so that writing adds to it.
void moveToEnd(int channel) {
    std::string record;
    while (unit::readRecord(channel, record) == 0) {
    }
}

// A question at the terminal; the reply, its blanks cut on the left, goes
// into `word`.  False when nothing could be read.
bool askInto(std::string_view question, std::string& word) {
    I05ASK(question, sysinf.CursorPosition);
    std::string reply(static_cast<std::size_t>(kWordWidth), ' ');
    int length = 0;
    int status = 0;
    I05RSL(sysinf.inUnit, reply, length, "", status);
    if (status != 0) {
        unit::endOpenRecord(sysinf.outUnit);
        return false;
    }
    R02CMP(reply, -1, -1, 0, 0, length);
    setWord(word, trimmed(reply));
    return true;
}

void writeOpenScheme() {
    write(sysinf.outUnit,
          "(1X,/,' Command branch is of the form:',/,/,8X,'DATA ----- WRITE',/,6X,'/',6X,'\\',10X,'\\',/,"
          "' OPEN',10X,'\\',10X,'FILENAME',/,6X,'\\',10X,'\\',6X,'/',/,8X,'COMMAND -- READ',/)");
}

void writeCloseScheme() {
    write(sysinf.outUnit,
          "(1X,/,' Command branch is of the form:',/,/,9X,'DATA ----- WRITE',/,7X,'/',6X,'\\',/,"
          "' CLOSE',10X,'\\',/,7X,'\\',10X,'\\',/,9X,'COMMAND -- READ',/)");
}

// The state of one call of Z1ACS1.
struct ChannelCommand {
    std::string* words;
    int& iStat21;
    int& iStat22;
    int& iStat23;
    bool canAsk = sysinf.MODEE4 == 0 && isTerminalChannel(sysinf.crUnit);

    std::string& w(int n) { return words[n - 1]; }
    Logical commands() { return {sysinf.crUnit, E4DataSet.crName, iStat21, channelTable.CommandFileUnit, sysinf.inUnit}; }
    Logical reading() { return {sysinf.drUnit, E4DataSet.drName, iStat22, channelTable.ZEMOKdataUnit, sysinf.inUnit}; }
    Logical writing() { return {sysinf.dwUnit, E4DataSet.dwName, iStat23, channelTable.ZEMOKoutputUnit, sysinf.outUnit}; }

    // Asks for a missing word; returns 0, or `missing` when it cannot.
    int ask(std::string_view question, int n, int missing) {
        if (!canAsk || !askInto(question, w(n))) return missing;
        return 0;
    }

    int open();
    int openOn(Logical target, std::string_view statusWord, bool dataWriting);
    int close();
};

int ChannelCommand::open() {
    setWord(w(1), "OPEN");
    while (true) {
        const char a = letterOf(w(2));
        const char b = letterOf(w(3));
        if (a == 'H') {
            writeOpenScheme();
            return 0;
        }
        if (a == 'D') {
            setWord(w(2), "DATA");
            if (b == 'R') {
                setWord(w(3), "READ");
                return openOn(reading(), "OLD", false);
            }
            if (b == 'W') {
                setWord(w(3), "WRITE");
                return openOn(writing(), "UNKNOWN", true);
            }
            if (int st = ask("Access type? [ READ / WRITE ]", 3, 3)) return st;
        } else if (a == 'C') {
            setWord(w(2), "COMMAND");
            setWord(w(3), "READ");
            return openOn(commands(), "OLD", false);
        } else if (int st = ask("Data type? [ DATA / COMMAND ]", 2, 2)) {
            return st;
        }
    }
}

// The file that a name leads to when it is being read: the help file, the
// command file or the data file; empty when it is none of them.
std::string fileBeingRead(const std::string& name) {
    if (unit::sameFile(name, trimmed(E4DataSet.hpName))) return "the help file";
    if (!isTerminalChannel(sysinf.crUnit) && unit::sameFile(name, unit::fileNameOf(sysinf.crUnit)))
        return "the command file";
    if (!isTerminalChannel(sysinf.drUnit) && unit::sameFile(name, unit::fileNameOf(sysinf.drUnit)))
        return "the data file";
    return "";
}

int ChannelCommand::openOn(Logical target, std::string_view statusWord, bool dataWriting) {
    const int channel = isTerminalChannel(target.unit) ? target.fileChannel : target.unit;
    target.unit = target.terminal;  // until the file is open
    std::string name = trimmed(target.name);
    if (R02LEN(w(4)) > 0) name = trimmed(w(4));
    if (name.empty()) {
        if (ask("File name? ", 4, 4) != 0 || R02LEN(w(4)) == 0) return 4;
        name = trimmed(w(4));
    }
    if (dataWriting) {
        // Writing behind a file that is being read would feed it its own lines.
        const std::string read = fileBeingRead(name);
        if (!read.empty()) {
            I05MES("Z1ACS1 ---E- \"" + name + "\" is " + read + ": it cannot be opened for writing.");
            return 5;
        }
    }
    unit::close(channel);
    target.flag = 0;
    std::string field = padded(name, kFileNameWidth);
    int result = 0;
    Z1OPN1(channel, field, trimmed(w(3)), statusWord, result);
    if (result != 0) return 5;
    target.unit = channel;
    target.name = padded(trimmed(field), kFileNameWidth);
    target.flag = channel;
    if (dataWriting) {
        moveToEnd(channel);
        writeBanner(channel);
    }
    return 0;
}

// Back to the terminal; a file that is open on the channel is closed.
int release(Logical target) {
    if (!isTerminalChannel(target.unit)) unit::close(target.unit);
    target.unit = target.terminal;
    target.flag = 0;
    return 0;
}

int ChannelCommand::close() {
    setWord(w(1), "CLOSE");
    while (true) {
        const char a = letterOf(w(2));
        const char b = letterOf(w(3));
        if (a == 'H') {
            writeCloseScheme();
            return 0;
        }
        if (a == 'D') {
            setWord(w(2), "DATA");
            if (b == 'R' || b == 'W') {
                setWord(w(3), b == 'R' ? "READ" : "WRITE");
                return release(b == 'R' ? reading() : writing());
            }
            if (int st = ask("Access type? [ READ / WRITE ]", 3, 3)) return st;
        } else if (a == 'C') {
            setWord(w(2), "COMMAND");
            setWord(w(3), "READ");
            return release(commands());
        } else if (int st = ask("Data type? [ DATA / COMMAND ]", 2, 2)) {
            return st;
        }
    }
}

std::string_view failureEnding(int status) {
    switch (status) {
        case 2: return ": DATA TYPE MISSED.";
        case 3: return ": ACCESS MISSED.";
        case 4: return ": FILE NAME MISSED.";
        default: return ".";
    }
}

Outcome channelHandler(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    int status = 0;
    Z1ACS1(m.words.data(), 0, d.iStat(row::commandFileOpen), d.iStat(row::dataFileOpen), d.iStat(row::outputFileOpen), status);
    if (status == 1) return illegalCommand(m);
    if (status != 0) {
        setLine(m, joinedWords(m.words.data()));
        return failedCommand(m);
    }
    return Outcome::Done;
}

}  // namespace

std::string joinedWords(const std::string* words) {
    std::string line(static_cast<std::size_t>(kWordCount * (kWordWidth + 1)), ' ');
    int length = 0;
    int status = 0;
    R02AWL(words, kWordCount, ',', 1, line, length, status);
    return trimmed(line);
}

void Z1ACS1(std::string* words, [[maybe_unused]] int dummy, int& iStat21, int& iStat22, int& iStat23,
            int& status) {
    ChannelCommand command{words, iStat21, iStat22, iStat23};
    const char first = letterOf(words[0]);
    status = first == 'O' ? command.open() : first == 'C' ? command.close() : 1;
    if (status < 2) return;
    I05MES("Z1ACS1 ---E- Execution of the command \"" + joinedWords(words) + "\"");
    I05MES("            " + std::string(" causes an error diagnostic") + std::string(failureEnding(status)));
}

Outcome E4CmdHelp(MonitorState&) {
    helpSection("HELP");
    return Outcome::Done;
}

// Command files opened one from another, with no line from the terminal in
// between, are bounded: a file that opens itself would run for ever.
constexpr int kCommandFileChain = 16;

Outcome E4CmdOpen(MonitorState& m) {
    if (letterOf(m.word(2)) == 'C' && ++m.commandFileOpens > kCommandFileChain) {
        E04MES("Z1ACS1 ---E- 16 command files opened in a row: does one open itself?");
        return failedCommand(m);
    }
    return channelHandler(m);
}

Outcome E4CmdClose(MonitorState& m) {
    Outcome outcome = channelHandler(m);
    if (outcome == Outcome::Done && letterOf(m.word(2)) == 'C') sysinf.MODEE4 = 0;
    return outcome;
}

bool firstCommandFromKeys(MonitorState& m) {
    for (const std::string& key : commandLineLists().keys) {
        if (key.size() < 2) continue;
        std::string_view rest = std::string_view(key).substr(1);
        if (letterOf(rest) != 'C') continue;
        std::string word1(static_cast<std::size_t>(kWordWidth), ' ');
        std::string name(128, ' ');
        int count = 0;
        int status = 0;
        R02CLS2(rest, word1, name, count, status);
        if (count < 2) continue;
        setLine(m, "OPEN COMMAND READ " + trimmed(name));
        return true;
    }
    return false;
}
