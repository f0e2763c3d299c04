// The start of a session after the initialization file: the title pages
// and the banner, the dialogue-mode question, and the passive questionnaire
// whose answers become a command file.
#include "monitor/passive_start.h"

#include "core/command_line.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/help_sections.h"
#include "numlib/cpu_timers.h"
#include "platform/units.h"
#include "textfile/file_spec.h"
#include "textfile/prompts.h"

#include <string>
#include <string_view>

namespace {

constexpr int kModeReplyWidth = 32;
constexpr int kReplyWidth = 80;
// Column of the questions about derivatives and the start point.
constexpr int kFixedCursor = 60;
// The OPEN line of the generated file keeps this much of the data file name.
constexpr int kDataNameKept = 11;

void writeBanner() {
    write(sysinf.outUnit,
          "(6X,'DIALOGUE SERVICE PROGRAM FOR MINIMIZATION OF NONLINEAR ','MULTIVARIATE',/,35X,"
          "'FUNCTIONS.',/,/,T63,'Version 5.6',/,6X,'Latest revision: ',A,/,/,17X,"
          "\"You can get it wrong and still you think that's alright\",/,/,35X,'---<*>---',/)",
          std::string("09 May 02 03:30 "));
}

// True when a key of the letter C asks for an interactive session.
bool interactiveKey() {
    for (const std::string& key : commandLineLists().keys) {
        if (key.size() > 1 && caseChar(key[1], 1) == 'C') return true;
    }
    return false;
}

// A reply read from the terminal, left-justified, empty at end of input.
std::string readReply(int width) {
    std::string reply(static_cast<std::size_t>(width), ' ');
    int length = 0, status = 0;
    I05RSL(sysinf.inUnit, reply, length, E4DataSet.commentChars, status);
    if (status != 0) return std::string();
    int newLen = 0;
    R02CMP(reply, -1, -1, 0, 0, newLen);
    return reply.substr(0, static_cast<std::size_t>(std::max(newLen, 0)));
}

bool passiveReply() {
    I05ASKD("Dialogue mode [ Interactive / PASSive ]", "Inter.", sysinf.CursorPosition);
    std::string reply = readReply(kModeReplyWidth);
    R02CASE(reply, 1);
    write(sysinf.outUnit, "(A)", "");
    return reply.compare(0, 4, "PASS") == 0;
}

char firstLetterOf(std::string_view question, std::string_view def) {
    I05ASKD(question, def, sysinf.CursorPosition);
    std::string reply = readReply(kReplyWidth);
    return reply.empty() ? ' ' : caseChar(reply[0], 1);
}

char yesNo(std::string_view question, std::string_view def, int cursor) {
    char answer = 'N';
    I05YESNO(answer, question, def, E4DataSet.commentChars, cursor);
    return answer;
}

// Writes the lines of the command file; the first failure is kept.
struct CommandFileWriter {
    int channel;
    std::string name;
    int failure = 0;
    void line(std::string_view text) {
        if (failure != 0) return;
        failure = write(channel, "(A)", std::string(text));
        if (failure != 0) I05MES("E4MAIN -E- The command file \"" + name + "\" cannot be written.");
    }
};

void askQuestions(CommandFileWriter& out) {
    out.line(" MODE,INTERACTIVE");
    out.line(" METHOD,B-F-G-S");
    bool test = firstLetterOf("Problem to solve? [ Test / User ]", "User") == 'T';
    out.line(test ? " PROBLEM,TEST,1,5" : " PROBLEM,USER");
    if (yesNo("Is first derivative available?", "N", kFixedCursor) == 'Y') out.line(" SET,GRADIENT,3");
    write(sysinf.outUnit, "(A)", " Have you already specified number of variables and");
    write(sysinf.outUnit, "(A)", " coordinates of starting point in the user-written");
    if (yesNo("function \"USERF\"?", "Y", kFixedCursor) == 'N') {
        if (yesNo("Have you put the data on the file?", "N", kFixedCursor) == 'Y') {
            std::string spec = padded("zemok.inp", kMaxSpecLength);
            int err = 0;
            I05EFND("Please enter the data file name", spec, E4DataSet.commentChars, kFixedCursor, err);
            out.line(" OPEN,DATA,READ," + spec.substr(0, kDataNameKept));
            out.line(" LOAD,FILE,NVAR");
            out.line(" LOAD,FILE,XSTART");
        } else {
            out.line(" LOAD,TERMINAL,NVAR");
            out.line(" LOAD,TERMINAL,XSTART");
        }
    }
    bool detailed = yesNo("Is the detailed message mode essential?", "N", sysinf.CursorPosition) == 'Y';
    out.line(detailed ? " MESSAGE,4" : " MESSAGE,1");
    if (firstLetterOf("ZEMOK message output device [ Terminal / File ]", "Term.") == 'F') {
        out.line(" OPEN,DATA,WRITE");
    }
    out.line(" RUN");
    out.line(" REPORT,,DATA");
    out.line(" CLOSE,COMMAND,READ");
}

// The passive questionnaire.  The file is opened as a new file, so that an
// existing command file is never overwritten: the user is offered to name
// another one.
bool generateCommandFile() {
    E4DataSetRecord& d = E4DataSet;
    const int channel = channelTable.SaveFileUnit;
    std::string name = d.crName;
    int result = 0;
    Z1OPN1(channel, name, "WRITE", "NEW", result);
    if (result != 0) return false;
    name.resize(static_cast<std::size_t>(R02LEN(name)));
    d.crName = padded(name, kFileNameWidth);
    sysinf.crUnit = channel;
    CommandFileWriter out{channel, name};
    askQuestions(out);
    if (out.failure != 0) {
        I05ERR("E4MAIN", out.failure);
        unit::close(channel);
        sysinf.crUnit = sysinf.inUnit;
        return false;
    }
    unit::rewind(channel);
    return true;
}

}  // namespace

bool startDialogue() {
    int minutes = 0;
    double seconds = 0;
    Z02CPUT(0, minutes, seconds, sysinf.outUnit);
    int titleStatus = 0;
    if (commandLineLists().keys.empty()) {
        I05FCBD1(kHelpFileChannel, sysinf.outUnit, E4DataSet.hpName, kTitlePrefix, "TITLES", titleStatus);
        writeBanner();
    }
    if (interactiveKey() || titleStatus == 1) return true;
    if (!passiveReply()) return true;
    return generateCommandFile();
}
