// The SECTION command and the direct form of its dialogue E4SCT1: the words
// of the command say along what the section runs, its width, the number of
// points and the frame; missing values are asked for.
#include "monitor/section.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/channel_commands.h"
#include "monitor/command_words.h"
#include "monitor/help_sections.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/command_stack.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"

#include <optional>

namespace {

constexpr std::size_t kSectionGuard = 1;  // value 2: CHECK has been pushed
constexpr int kDefaultPoints = 101;
constexpr int kDefaultFrame = 17;

std::string trimmed(std::string_view text) { return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text)))); }

// A value the command did not give: asked with its default at the
// terminal, or the next line of the command file; a blank answer (and the
// end of either) keeps the default.
std::string askOrReadLine(std::string_view question, std::string_view def) {
    if (commandsFromTerminal()) return askReply(question, def, sysinf.CursorPosition);
    std::string line(kLineWidth, ' ');
    int status = 0;
    I5ROL2(line, "E4SCT1", sysinf.crUnit, sysinf.dwUnit, sysinf.MODEE4, status);
    return status == 0 ? trimmed(line) : std::string();
}

// A whole number of at least 1 from the word, or asked until one comes.
int countFromWordOrAsk(std::string_view word, std::string_view question, int def, bool& bad) {
    if (R02LEN(word) != 0) {
        std::optional<int> v = sectionInteger(word);
        if (!v) bad = true;
        if (!v || *v >= 1) return v.value_or(def);
    }
    while (true) {
        const std::string reply = askOrReadLine(question, sectionIntegerText(def));
        if (reply.empty()) return def;
        std::optional<int> v = sectionInteger(reply);
        if (v && *v >= 1) return *v;
    }
}

// The sections along the variables first..last, one after the other.
void alongVariables(double& f, double* x, int n, int first, int last, double W, bool widthGiven, int points,
                    std::string_view given) {
    Vec1<double, kMaxVar> dirv;
    for (int i = first; i <= last; ++i) {
        if (E4DataSet.iFixer(i) == 0) {
            I05MES("E4SCT1 -E- Attempt to vary fixed variable No. " + sectionIntegerText(i));
            continue;
        }
        write(sysinf.outUnit, "(1X,A,'-th variable value = ',A)", sectionIntegerText(i),
              sectionNumberText(x[i - 1]));
        if (!widthGiven) {
            if (W == 0.0) W = 1.0;
            const std::string reply = askOrReadLine("Load the section width, 0 to skip", sectionNumberText(W));
            if (std::optional<double> v = sectionReal(reply)) W = *v;
        }
        if (W == 0.0) continue;
        dirv.fill(0.0);
        dirv(i) = 1.0;
        const std::string index = sectionIntegerText(i);
        int err = 0;
        double h = 0.0;
        int p = points;
        E4SCT2(sectionTarget, f, x, dirv.data(), n, W, p, h, sectionStem(given, "var", index),
               "Coordinate section for " + index + " variable.", err);
        if (first < last && i < last && askYesNo("Continue?", "Y", sysinf.CursorPosition) == 'N') return;
    }
}

// What the words 2 to 5 of the direct form say, missing counts asked for.
struct DirectWords {
    std::optional<int> variable;
    bool widthGiven = false;
    double W = 0.0;
    int points = 0;
    int frame = 0;
};

// False, with its message, for a variable out of range, a word that is no
// number or a frame outside 3 to 50 lines.
bool readDirectWords(const std::string* w, int n, DirectWords& dw) {
    dw.variable = sectionInteger(w[1]);
    if (dw.variable && (*dw.variable < 1 || *dw.variable > n)) {
        I05MES("E4SCT1 -E- There is no variable No. " + sectionIntegerText(*dw.variable) + ": the problem has " +
               sectionIntegerText(n) + ".");
        return false;
    }
    dw.widthGiven = !w[2].empty();
    const std::optional<double> width = sectionReal(w[2]);
    dw.W = width.value_or(0.0);
    bool bad = dw.widthGiven && !width;
    if (!bad) dw.points = countFromWordOrAsk(w[3], "What is the number of picture-points?", kDefaultPoints, bad);
    if (!bad) dw.frame = countFromWordOrAsk(w[4], "Load size of vertical frame in lines", kDefaultFrame, bad);
    if (bad) {
        I05MES("E4SCT1 -E- Width, number of points and frame must be numbers.");
        return false;
    }
    if (dw.frame < 3 || dw.frame > 50) {
        I05MES("E4SCT1 -E- The frame must have from 3 to 50 lines: " + sectionIntegerText(dw.frame));
        return false;
    }
    return true;
}

}  // namespace

std::optional<double> sectionReal(std::string_view text) {
    if (R02LEN(text) == 0) return std::nullopt;
    int err = 0;
    const double v = R02C2R1(trimmed(text), err);
    if (err < 0) return std::nullopt;
    return v;
}

std::optional<int> sectionInteger(std::string_view text) {
    if (R02LEN(text) == 0) return std::nullopt;
    int err = 0;
    const int v = R02C2I1(trimmed(text), err);
    if (err < 0) return std::nullopt;
    return v;
}

std::string sectionStem(std::string_view given, std::string_view standard, std::string_view suffix) {
    return std::string(given.empty() ? standard : given) + std::string(suffix);
}

std::string sectionNumberText(double v) {
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02R2C1(v, text, 6, 6, len, 2, -1, err);
    return trimmed(text);
}

std::string sectionIntegerText(int i) {
    std::string text(12, ' ');
    int len = 0, err = 0;
    R02I2C1(i, text, len, err);
    return trimmed(text);
}

void giveUpCommandFile() {
    std::array<std::string, kWordCount> words;
    for (std::string& w : words) w.assign(kWordWidth, ' ');
    words[0] = padded("CLOSE", kWordWidth);
    words[1] = padded("COMMAND", kWordWidth);
    words[2] = padded("READ", kWordWidth);
    E4DataSetRecord& d = E4DataSet;
    int status = 0;
    Z1ACS1(words.data(), 0, d.iStat(row::commandFileOpen), d.iStat(row::dataFileOpen), d.iStat(row::outputFileOpen),
           status);
}

double sectionTarget(double* x) { return E4FUN1(x); }

void E4SCT1(double& f, double* x, int& n, std::string* words, int maxWords, int& err) {
    err = 0;
    std::string w[5];
    for (int k = 0; k < 5; ++k) w[k] = k < maxWords ? trimmed(words[k]) : std::string();
    std::string given;
    if (R02PFX(w[1], "FIL", 1)) {
        std::string key(kWordWidth, ' '), name(kLineWidth, ' ');
        int count = 0, status = 0;
        R02CLS2(w[1], key, name, count, status);
        if (count == 2) given = trimmed(name);
        w[1].clear();
    }
    if (n < 1 || n > kMaxVar) {
        I05MES("E4SCT1 -E- The problem has no variables to examine.");
        err = 1;
        return;
    }
    if (R02PFX(w[1], "EXP", 1)) {
        sectionMenu(f, x, n, given, err);
        return;
    }
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) f = E4FUN1(x);
    DirectWords dw;
    if (!readDirectWords(w, n, dw)) {
        err = 1;
        return;
    }
    if (!dw.variable && d.iStat(row::directSet) != 0) {
        if (dw.W == 0.0) {
            if (std::optional<double> v = sectionReal(askReply("Enter full width of the section", "", sysinf.CursorPosition)))
                dw.W = *v;
        }
        int p = dw.points, e = 0;
        double h = 0.0;
        E4SCT2(sectionTarget, f, x, d.direct.data(), n, dw.W, p, h, sectionStem(given, "_section", ""),
               "along the specified direction", e);
        return;
    }
    alongVariables(f, x, n, dw.variable.value_or(1), dw.variable.value_or(n), dw.W, dw.widthGiven, dw.points, given);
}

Outcome E4CmdSection(MonitorState& m) {
    if (!interactive()) return Outcome::Done;
    if (firstLetter(m, 2) == 'H') {
        helpSection("SECTION");
        return Outcome::Done;
    }
    if (m.guards[kSectionGuard] != 2) {
        m.guards[kSectionGuard] = 2;
        setLine(m, "CHECK ALL");
        return Outcome::Prerequisite;
    }
    m.guards[kSectionGuard] = 0;
    E4DataSetRecord& d = E4DataSet;
    const double f0 = d.fEnd;
    int err = 0;
    E4SCT1(d.fEnd, d.xEnd.data(), d.nVar(), m.words.data(), kWordCount, err);
    if (d.fEnd != f0) E4RST1(" ");
    return err == 0 ? Outcome::Done : failedCommand(m);
}
