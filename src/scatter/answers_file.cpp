// Replies of the fit dialogue: openAnswersFile, leaveAnswersFile, readReply,
// refuseAnswer, readAnswer*, composeAskLine, ASKSTR, ASKINUM, ASKRNUM, ASKINUM2, ASKNAM.
#include "scatter/answers_file.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "textfile/file_spec.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

#include <algorithm>

namespace {

constexpr int kReplyWidth = 256;

// True while channel 11 holds the answers file and replies come from it.
bool fromAnswers = false;
// The last answer taken and where it came from: what refuseAnswer refuses.
ReplyOrigin lastOrigin = ReplyOrigin::Terminal;
std::string lastAnswer;

ReplyOrigin takeAnswer(ReplyOrigin origin, const std::string& text) {
    lastAnswer = text;
    return lastOrigin = origin;
}

std::string trimmedText(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

// One line of the channel, comment cut; the I05RSL status.
int readLine(int channel, std::string& line) {
    std::string field(kReplyWidth, ' ');
    int length = 0, status = 0;
    I05RSL(channel, field, length, "!", status);
    line = status == 0 ? field.substr(0, static_cast<std::size_t>(length)) : std::string();
    return status;
}

// The answers file has ended or could not be read: say so once and go on
// at the terminal.
void answersEnded(int status) {
    if (status > 0) {
        I05MES("USERF ----W- The answers file ends here: the dialogue goes on at the terminal.");
    } else {
        I05MES("USERF ----E- The answers file cannot be read: the dialogue goes on at the terminal.");
    }
    leaveAnswersFile();
}

// One record for a free-form read: the answers file while it lasts, then
// the terminal.  `origin` tells where the record came from.
int nextRecord(std::string& record, ReplyOrigin& origin) {
    if (fromAnswers) {
        const int status = readLine(kAnswersChannel, record);
        if (status == 0) {
            origin = ReplyOrigin::AnswersFile;
            return 0;
        }
        answersEnded(status);
        origin = ReplyOrigin::Ended;
        return unit::IOSTAT_END;  // the read starts again at the terminal
    }
    origin = ReplyOrigin::Terminal;
    const int status = readLine(sysinf.inUnit, record);
    if (status == 0) return 0;
    origin = ReplyOrigin::Ended;
    return status > 0 ? unit::IOSTAT_END : status;
}

// Runs one free-form read through `read` until it delivers its items.
// Returns false when the terminal input ends first.
template <class Read>
bool freeFormRead(std::string_view what, Read read) {
    for (;;) {
        const bool wasFile = fromAnswers;
        ListReader reader([&](std::string& record) {
            ReplyOrigin origin = ReplyOrigin::Terminal;
            const int status = nextRecord(record, origin);
            takeAnswer(origin, status == 0 ? record : std::string());
            return status;
        });
        const int status = read(reader);
        if (status == 0) return true;
        if (status == LIST_BAD_ITEM) {
            refuseAnswer(what);
            continue;
        }
        // The answers file ended inside the read: read it all at the terminal.
        if (wasFile && !fromAnswers) continue;
        return false;
    }
}

}  // namespace

bool openAnswersFile(std::string_view name) {
    leaveAnswersFile();
    const std::string file = trimmedText(name);
    if (file.empty()) return false;
    fromAnswers = unit::open(kAnswersChannel, file, unit::OpenSpec{unit::Status::Old}) == 0;
    return fromAnswers;
}

bool answersActive() { return fromAnswers; }

void leaveAnswersFile() {
    if (fromAnswers) unit::close(kAnswersChannel);
    fromAnswers = false;
}

void resetAnswersFile() {
    leaveAnswersFile();
    takeAnswer(ReplyOrigin::Terminal, "");
}

ReplyOrigin readReply(std::string_view promptLine, std::string& line) {
    if (fromAnswers) {
        const int status = readLine(kAnswersChannel, line);
        if (status == 0) return takeAnswer(ReplyOrigin::AnswersFile, line);
        answersEnded(status);
    }
    if (!promptLine.empty()) write(sysinf.outUnit, "(1X,A,': ',$)", std::string(promptLine));
    const int status = readLine(sysinf.inUnit, line);
    return takeAnswer(status == 0 ? ReplyOrigin::Terminal : ReplyOrigin::Ended, line);
}

ReplyOrigin lastReplyOrigin() { return lastOrigin; }

const std::string& lastAnswerText() { return lastAnswer; }

void refuseAnswer(std::string_view why) {
    const std::string answer = "Answer \"" + trimmedText(lastAnswer) + "\"";
    if (lastOrigin == ReplyOrigin::AnswersFile && fromAnswers) {
        I05MES("USERF ----E- " + answer + " of the answers file refused: " + std::string(why));
        I05MES("             The dialogue goes on at the terminal.");
        leaveAnswersFile();
    } else if (lastOrigin != ReplyOrigin::Ended) {
        I05MES("USERF ----E- " + answer + " refused: " + std::string(why));
    }
}

bool readAnswerReals(double* v, int n, std::string_view what) {
    return freeFormRead(what, [&](ListReader& r) { return r.readReals(v, n); });
}

bool readAnswerInt(int& v, std::string_view what) {
    return freeFormRead(what, [&](ListReader& r) { return r.readInts(&v, 1); });
}

bool readAnswerWord(std::string& word, std::string_view what) {
    return freeFormRead(what, [&](ListReader& r) { return r.readTexts(&word, 1); });
}

namespace {

constexpr int kLineWidth = 80;
constexpr int kFieldEnd = 57;     // last column of the default field
constexpr int kMinDefault = 12;   // the field "< " default " >" is at least 16 wide

std::string rightJustified(std::string_view text, int width) {
    const int n = static_cast<int>(text.size());
    return n >= width ? std::string(text) : std::string(static_cast<std::size_t>(width - n), ' ') + std::string(text);
}

// Asks with `prompt` and the default text until `accept` takes the reply.
// An empty reply, or one equal to the default text, is left to the caller
// (accept gets it too).  Stops silently when the terminal input has ended.
template <class Accept>
void askUntilAccepted(std::string_view prompt, std::string_view defaultText, Accept accept) {
    const std::string line = composeAskLine(prompt, defaultText);
    for (;;) {
        std::string reply;
        const ReplyOrigin origin = readReply(line, reply);
        if (origin == ReplyOrigin::Ended) return;
        if (accept(reply)) return;
    }
}

std::string intText(int value) {
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02I2C1(value, text, len, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

}  // namespace

std::string composeAskLine(std::string_view prompt, std::string_view defaultText) {
    const std::string def = trimmedText(defaultText);
    std::string field = "< " + rightJustified(def, kMinDefault) + " >";
    if (static_cast<int>(field.size()) > kLineWidth - 4) field.resize(kLineWidth - 4);
    const int F = static_cast<int>(field.size());
    int L = R02LEN(prompt);
    if (L + 1 + F > kLineWidth - 1) L = std::max(0, kLineWidth - 2 - F);
    const int P = std::min(std::max(kFieldEnd, F + 1 + L), kLineWidth);
    std::string line(static_cast<std::size_t>(P), ' ');
    line.replace(0, static_cast<std::size_t>(L), prompt.substr(0, static_cast<std::size_t>(L)));
    line.replace(static_cast<std::size_t>(P - F), static_cast<std::size_t>(F), field);
    for (int col = L + 2; col <= P - F - 1; ++col) line[static_cast<std::size_t>(col - 1)] = '.';
    return line;
}

std::string realAnswerText(double value) {
    if (value == 0.0) return "0.0";
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02R2C1(value, text, 6, 6, len, 2, -1, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

void ASKSTR(std::string_view prompt, std::string_view defaultText, std::string& answer) {
    const std::size_t width = answer.size();
    std::string result = trimmedText(defaultText);
    askUntilAccepted(prompt, defaultText, [&](const std::string& reply) {
        if (!reply.empty()) result = reply;
        return true;
    });
    if (width > 0) result.resize(width, ' ');
    answer = result;
}

void ASKINUM(std::string_view prompt, int& value) {
    const std::string def = intText(value);
    askUntilAccepted(prompt, def, [&](const std::string& reply) {
        if (reply.empty() || reply == def) return true;
        int err = 0;
        const int v = R02C2I1(reply, err);
        if (err < 0) {
            refuseAnswer("an integer is asked for.");
            return false;
        }
        value = v;
        return true;
    });
}

void ASKRNUM(std::string_view prompt, double& value) {
    const std::string def = realAnswerText(value);
    askUntilAccepted(prompt, def, [&](const std::string& reply) {
        if (reply.empty() || reply == def) return true;
        int err = 0;
        const double v = R02C2R1(reply, err);
        if (err < 0) {
            refuseAnswer("a number is asked for.");
            return false;
        }
        value = v;
        return true;
    });
}

void ASKINUM2(std::string_view prompt, int& first, int& last) {
    const std::string def = rightJustified(intText(first), 12) + "," + rightJustified(intText(last), 12);
    askUntilAccepted(prompt, def, [&](const std::string& reply) {
        int values[2] = {first, last};
        int save[6] = {0, 0, 0, 0, 0, 0};
        for (int k = 0; k < 2; ++k) {
            std::string word(32, ' ');
            int wordLen = 0, status = 0;
            R02TNW(reply, -1, " ,;", word, wordLen, save, status);
            if (status == -1 || wordLen <= 0) break;  // a missing word keeps its value
            int err = 0;
            const int v = R02C2I1(word.substr(0, static_cast<std::size_t>(wordLen)), err);
            if (err < 0 || status == -2) {
                I05MES("ASKINUM2 -E- Please repeat the load");
                refuseAnswer("two integers are asked for.");
                return false;
            }
            values[k] = v;
            if (status == 1) break;
        }
        first = values[0];
        last = values[1];
        return true;
    });
}

void ASKNAM(std::string_view prompt, std::string_view ext, std::string& name) {
    const std::string extension = trimmedText(ext).substr(0, 11);
    const std::string def = extension.empty() ? std::string() : "." + extension;
    const std::size_t width = name.size();
    std::string result;
    const std::string line =
        extension.empty() ? composeDefaultQuestion(prompt, "", kFieldEnd + 3) : composeAskLine(prompt, def);
    for (;;) {
        std::string reply;
        const ReplyOrigin origin = readReply(line, reply);
        if (origin == ReplyOrigin::Ended || reply.empty()) break;
        std::string found(kReplyWidth, ' ');
        int len = 0, err = 0;
        R02FSE(found, reply, "EXTENSION", sysinf.FileSystemType, len, err);
        if (err < 0) {
            I05MES("ASKNAM --W-: Error parsing file name: \"" + reply + "\"");
            refuseAnswer("a file name is asked for.");
            continue;
        }
        std::string candidate = reply;
        if (len == 0 && !extension.empty()) {
            if (candidate.back() != '.') candidate += '.';
            candidate += extension;
        }
        if (width > 0 && candidate.size() > width) {
            I05MES("ASKNAM -E- File name too long.");
            refuseAnswer("the name is too long.");
            continue;
        }
        result = candidate;
        break;
    }
    if (width > 0) result.resize(width, ' ');
    name = result;
}
