// Word services of the command handlers: firstLetter, wordBegins, wordInt,
// wordReal, joinedWords, askReply, askWord, askYesNo, bigBound.
#include "monitor/command_words.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <cmath>

char firstLetter(const MonitorState& m, int n) {
    const std::string& w = m.words[static_cast<std::size_t>(n - 1)];
    std::size_t at = w.find_first_not_of(' ');
    if (at == std::string::npos) return ' ';
    char c = w[at];
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

bool wordBegins(const MonitorState& m, int n, std::string_view key) {
    return R02PFX(m.words[static_cast<std::size_t>(n - 1)], key, 1);
}

bool wordBlank(const MonitorState& m, int n) {
    return R02LEN(m.words[static_cast<std::size_t>(n - 1)]) == 0;
}

std::string wordText(const MonitorState& m, int n) {
    const std::string& w = m.words[static_cast<std::size_t>(n - 1)];
    return w.substr(0, static_cast<std::size_t>(R02LEN(w)));
}

void setWord(MonitorState& m, int n, std::string_view text) {
    m.words[static_cast<std::size_t>(n - 1)] = padded(text, kWordWidth);
}

std::string joinedWords(const MonitorState& m) {
    int last = 0;
    for (int n = 1; n <= kWordCount; ++n) {
        if (!wordBlank(m, n)) last = n;
    }
    std::string line;
    for (int n = 1; n <= last; ++n) {
        if (n > 1) line += ',';
        line += wordText(m, n);
    }
    return line;
}

std::optional<int> wordInt(const MonitorState& m, int n) {
    if (wordBlank(m, n)) return std::nullopt;
    int err = 0;
    int v = R02C2I1(wordText(m, n), err);
    if (err < 0 || err == 2) return std::nullopt;
    return v;
}

std::optional<double> wordReal(const MonitorState& m, int n) {
    if (wordBlank(m, n)) return std::nullopt;
    int err = 0;
    double v = R02C2R1(wordText(m, n), err);
    if (err < 0 || err == 2) return std::nullopt;
    return v;
}

bool interactive() { return sysinf.MODEE4 == 0; }

std::string replyComments() { return E4DataSet.commentChars; }

std::string askReply(std::string_view question, std::string_view def, int cursor) {
    if (def.empty()) {
        I05ASK(question, cursor);
    } else {
        I05ASKD(question, def, cursor);
    }
    std::string reply(kLineWidth, ' ');
    int len = 0, status = 0;
    I05RSL(sysinf.inUnit, reply, len, replyComments(), status);
    // The end of the input answers as CR does where a default is shown.
    if (status == 1) return def.empty() ? "EXIT" : "";
    if (status != 0) return "";
    std::size_t first = reply.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return reply.substr(first, static_cast<std::size_t>(len) - first);
}

void askWord(MonitorState& m, std::string_view question, std::string_view def, int n) {
    setWord(m, n, askReply(question, def, sysinf.CursorPosition));
}

char askYesNo(std::string_view question, std::string_view def, int cursor) {
    char answer = 'N';
    I05YESNO(answer, question, def, replyComments(), cursor);
    return answer;
}

double bigBound() { return std::sqrt(X02RMDC(5)); }
