// The questions of the curve input at the terminal: terminalAskInt,
// terminalAskReal, terminalAskInt2, terminalAskName, terminalRefuse, setCurveQuestions.
#include "scatter/measured_curve.h"
#include "scatter/measured_curve_steps.h"

#include "core/console_layer.h"
#include "platform/edit_format.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <vector>

namespace {

constexpr int kCursor = 60;

void terminalAskInt(std::string_view prompt, int& value) {
    I05ASKI(prompt, value, "!", kCursor);
}

void terminalAskReal(std::string_view prompt, double& value) {
    I05ASKR(prompt, value, 7, "!", kCursor);
}

// One reply line from the terminal; false when the input has ended.
bool replyLine(std::string& reply, int& length) {
    reply.assign(256, ' ');
    int status = 0;
    I05RSL(5, reply, length, "!", status);
    return status == 0;
}


void terminalAskInt2(std::string_view prompt, int& first, int& last) {
    for (;;) {
        const std::string shown = formatRecords("(I12,',',I12)", FmtItems{first, last}).text;
        I05ASKD(prompt, shown, kCursor);
        std::string reply;
        int length = 0;
        if (!replyLine(reply, length)) return;
        const std::vector<std::string> words = separatedWords(reply.substr(0, length));
        int a = first;
        int b = last;
        bool good = true;
        if (!words.empty()) good = listReadInt(words[0], a) == 0;
        if (good && words.size() > 1) good = listReadInt(words[1], b) == 0;
        if (good) {
            first = a;
            last = b;
            return;
        }
        writeList(-1, " ASKINUM2 -E- Please repeat the load");
    }
}

// The file part of a name (behind its directory).
size_t filePartStart(std::string_view name) {
    const size_t slash = name.find_last_of("/\\:");
    return slash == std::string_view::npos ? 0 : slash + 1;
}

void terminalAskName(std::string_view prompt, std::string_view ext, std::string& name) {
    const size_t width = name.empty() ? 80 : name.size();
    for (;;) {
        I05ASKD(prompt, ext.empty() ? std::string() : "." + std::string(ext), kCursor);
        std::string reply;
        int length = 0;
        if (!replyLine(reply, length) || length < 1) {
            name.assign(width, ' ');
            return;
        }
        std::string answer = reply.substr(0, length);
        const size_t start = answer.find_first_not_of(' ');
        answer = answer.substr(start);
        if (!ext.empty() && answer.find('.', filePartStart(answer)) == std::string::npos)
            answer += "." + std::string(ext);
        if (answer.size() > width) {
            writeList(-1, " ASKNAM -E- File name too long.");
            continue;
        }
        answer.resize(width, ' ');
        name = answer;
        return;
    }
}

void terminalRefuse(std::string_view) {}

CurveQuestions terminalQuestions() {
    CurveQuestions q;
    q.askInt = terminalAskInt;
    q.askReal = terminalAskReal;
    q.askInt2 = terminalAskInt2;
    q.askName = terminalAskName;
    q.refuse = terminalRefuse;
    return q;
}

CurveQuestions questions = terminalQuestions();

}  // namespace

void setCurveQuestions(const CurveQuestions& q) {
    const CurveQuestions terminal = terminalQuestions();
    questions.askInt = q.askInt ? q.askInt : terminal.askInt;
    questions.askReal = q.askReal ? q.askReal : terminal.askReal;
    questions.askInt2 = q.askInt2 ? q.askInt2 : terminal.askInt2;
    questions.askName = q.askName ? q.askName : terminal.askName;
    questions.refuse = q.refuse ? q.refuse : terminal.refuse;
}

const CurveQuestions& curveQuestions() { return questions; }
