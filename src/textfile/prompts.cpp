// Dialogue prompts: I05ASKD (question with a default), I05YESNO, I05ASKR,
// I05ASKI and E4NUS1, built on the console layer's I05ASK and I05RSL.
#include "textfile/prompts.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

#include <algorithm>

namespace {

constexpr int kLineWidth = 80;   // a prompt line
constexpr int kReplyWidth = 80;  // a typed reply

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

// Shows the question, reads one reply from the terminal into a field of
// kReplyWidth.  Returns false when nothing could be read (end of input or a
// failure); reply and length then hold an empty reply.
bool askAndRead(std::string_view text, std::string_view defaultText, int cursor,
                std::string_view commentChars, std::string& reply, int& length) {
    I05ASKD(text, defaultText, cursor);
    reply.assign(kReplyWidth, ' ');
    int status = 0;
    I05RSL(sysinf.inUnit, reply, length, commentChars, status);
    return status == 0;
}

// The first word of a reply, delimiters " ,;".
std::string firstWord(const std::string& reply) {
    std::string word(kReplyWidth, ' ');
    int wordLen = 0, status = 0;
    int save[6] = {0, 0, 0, 0, 0, 0};
    R02TNW(reply, 1, " ,;", word, wordLen, save, status);
    if (status < 0) return std::string();
    return word.substr(0, static_cast<std::size_t>(std::max(wordLen, 0)));
}

// The present real value as the text of a default: digits significant
// digits, at most one fewer than the machine holds, trailing zeros dropped.
std::string realDefault(double value, int digits) {
    int nd = std::clamp(digits, 1, X02IMDC(4) - 1);
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02R2C1(value, text, 1, nd - 1, len, 2, -1, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

std::string integerDefault(int value) {
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02I2C1(value, text, len, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

}  // namespace

std::string composeDefaultQuestion(std::string_view text, std::string_view defaultText,
                                   int cursor) {
    int L = R02LEN(text);
    int D = R02LEN(defaultText);
    int F = 0;  // width of "< default >"
    if (D > 0) {
        F = std::min(D + 4, kLineWidth);
        if (F - 4 <= D) D = F - 4;  // the default is cut at the right
    }
    int room = F > 0 ? kLineWidth - 1 : kLineWidth;
    if (L + 1 + F > room) L = std::max(0, room - 1 - F);  // the text gives way first
    int P = std::min(std::max(cursor - 3, F + 1 + L), kLineWidth);

    std::string line(static_cast<std::size_t>(kLineWidth), ' ');
    line.replace(0, static_cast<std::size_t>(L), text.substr(0, static_cast<std::size_t>(L)));
    if (F > 0) {
        std::string field = "< " + std::string(defaultText.substr(0, static_cast<std::size_t>(D))) + " >";
        line.replace(static_cast<std::size_t>(P - F), static_cast<std::size_t>(F), field);
    }
    // Dots between one blank behind the text and one before the field.
    for (int col = L + 2; col <= P - F - 1; ++col) line[static_cast<std::size_t>(col - 1)] = '.';
    return trimmed(line);
}

void I05ASKD(std::string_view text, std::string_view defaultText, int cursor) {
    I05ASK(composeDefaultQuestion(text, defaultText, cursor), cursor);
}

void I05YESNO(char& result, std::string_view text, std::string_view defaultAnswer,
              std::string_view commentChars, int cursor) {
    char first = defaultAnswer.empty() ? ' ' : caseChar(defaultAnswer[0], 1);
    std::string defaultWord = first == 'Y' ? "Yes" : first == 'N' ? "No" : " ";
    std::string question = R02LEN(text) > 0 ? trimmed(text) + " [ Y / N ]" : "[ Y / N ]";
    for (;;) {
        I05ASKD(question, defaultWord, cursor);
        std::string reply(static_cast<std::size_t>(kReplyWidth), ' ');
        reply[0] = defaultWord[0];
        int length = 0, status = 0;
        I05RSLD(sysinf.inUnit, reply, length, commentChars, status);
        if (status != 0 && length == 0) {
            // Nothing more can be read: the default, or No without one.
            result = (first == 'Y' || first == 'N') ? first : 'N';
            return;
        }
        int newLen = 0;
        R02CMP(reply, -1, -1, 0, 1, newLen);
        if (newLen > 0 && (reply[0] == 'Y' || reply[0] == 'N')) {
            result = reply[0];
            return;
        }
        I05MES("Please answer by Yes, No, or CR for default.");
    }
}

void I05ASKR(std::string_view text, double& value, int digits, std::string_view commentChars,
             int cursor) {
    std::string defaultText = realDefault(value, digits);
    std::string reply;
    int length = 0;
    while (askAndRead(text, defaultText, cursor, commentChars, reply, length) && length > 0) {
        std::string word = firstWord(reply);
        int err = -10;  // messages on: the user is told what was wrong
        double v = R02C2R1(word, err);
        if (err == 0) {
            value = v;
            return;
        }
    }
}

void I05ASKI(std::string_view text, int& value, std::string_view commentChars, int cursor) {
    std::string defaultText = integerDefault(value);
    std::string reply;
    int length = 0;
    while (askAndRead(text, defaultText, cursor, commentChars, reply, length) && length > 0) {
        std::string word = firstWord(reply);
        int err = -10;
        int v = R02C2I1(word, err);
        if (err == 0 || err == 1) {
            value = v;
            return;
        }
    }
}

void E4NUS1(std::string_view name) {
    E04MES("\"" + trimmed(name) + "\" is not used in this context (min. method, etc.)");
}
