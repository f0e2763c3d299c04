// The REPORT command: the destination, the status table, the environment
// block and the report proper with its heading, numbers and vector blocks.
#include "monitor/command_words.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "methods/method_table.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "numlib/cpu_timers.h"
#include "objective/target_function.h"
#include "platform/clock.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

namespace {

std::string trimmed(const std::string& s) { return s.substr(0, static_cast<std::size_t>(R02LEN(s))); }

std::string realText(double v) {
    if (v == 0.0) return "0.0";
    std::string text(32, ' ');
    int len = 0, err = 0;
    R02R2C1(v, text, 1, 3, len, 2, -1, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

// One labelled line of the report.
void labelled(int ch, std::string_view left, std::string_view middle, std::string_view right,
              int pos, int pos2) {
    std::string line(80, ' ');
    int len = 0;
    R02LINE(left, middle, right, pos, pos2, '-', line, len);
    write(ch, "(1X,A)", line.substr(0, static_cast<std::size_t>(std::max(len, 0))));
}

void numberLine(int ch, int row, std::string_view value, std::string_view right = "") {
    labelled(ch, iStatComment(row), value, right, 50, right.empty() ? 0 : 64);
}

bool onTerminal(int ch) { return writerChannel(ch) == sysinf.outUnit; }

void pressReturn(int ch) {
    if (!commandsFromTerminal() || !onTerminal(ch) || !interactive()) return;
    askReply("===> Press CR to continue", "", 0);
}

void heading(int ch) {
    const E4DataSetRecord& d = E4DataSet;
    write(ch, "(A,/,1X,A11,\" time \",A8,/)", "", dateText(), timeText());
    int problem = d.iStat(row::problemCode) == 0 ? 21 : d.iStat(row::problemCode);
    std::string title = trimmed(problemTitle(problem)) + " (" + std::to_string(d.nVar()) + "-dimensional)";
    labelled(ch, "Objective function", title, problem == 20 ? std::to_string(d.iStat(row::userType)) : "", 25, 0);
    const MethodRow& method = methodTableRow(d.iStat(row::methodRunning));
    labelled(ch, "Chosen algorithm", std::string(method.text), "", 25, 55);
    if (method.gradientScheme) labelled(ch, "Gradient scheme", trimmed(gradientSchemeRow(d.iStat(row::gradientScheme))), "", 25, 0);
    if (method.localTermination)
        labelled(ch, "Local termination", trimmed(localTerminationRow(d.iStat(row::localTermination))), "", 25, 0);
    if (!method.simpleBounds) labelled(ch, "Overall termination", trimmed(overallTerminationRow(d.iStat(row::overallTermination))), "", 25, 0);
    write(ch, "(A)", "");
}

void numbers(int ch, const MonitorState& m) {
    const E4DataSetRecord& d = E4DataSet;
    for (int r = row::functionEvaluations; r <= row::nFree; ++r) numberLine(ch, r, std::to_string(d.iStat(r)));
    labelled(ch, "maximum allowed number of variables", std::to_string(kMaxVar), "", 50, 0);
    numberLine(ch, row::fSet, realText(d.fEnd));
    numberLine(ch, row::rFTolSet, realText(d.rFTol));
    numberLine(ch, row::tolSclSet, realText(d.tolScl), d.iStat(row::tolMultiplierSwitch) != 0 ? "(ON)  " : "(OFF) ");
    numberLine(ch, row::hCondSet, realText(d.hCond), d.iStat(row::hCondSwitch) != 0 ? "(ON)  " : "(OFF) ");
    labelled(ch, "temperature and scedule factor", realText(d.temper) + ", " + realText(d.Tsced), "", 50, 0);
    numberLine(ch, row::FrlErrSet, realText(d.FrlErr));
    labelled(ch, "relative machine precision", realText(m.eps), "", 50, 0);
    labelled(ch, "message level", std::to_string(d.iStat(row::messageLevel)), "", 50, 0);
    pressReturn(ch);
}

void realBlock(int ch, std::string_view title, const double* v, int md, int rows, int cols) {
    int status = 0;
    write(ch, "(1X,70(\"-\"))");
    I5WRA1(ch, v, md, rows, cols, title, status);
}

void argumentBlocks(int ch) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    int status = 0;
    write(ch, "(1X,70(\"-\"))");
    I5WIA1(ch, d.iFixer.data(), 1, 1, n, "fixative-vector", status);
    if (d.iStat(row::xStartSet)) realBlock(ch, iStatComment(row::xStartSet), d.xEnd.data(), 1, 1, n);
    if (d.iStat(row::xScaleSet) && d.iStat(row::xScaled)) realBlock(ch, iStatComment(row::xScaleSet), d.xScale.data(), 1, 1, n);
    const bool bounded = methodTableRow(d.iStat(row::methodRunning)).simpleBounds;
    if (bounded && d.iStat(row::bLSet)) realBlock(ch, iStatComment(row::bLSet), d.bL.data(), 1, 1, n);
    if (bounded && d.iStat(row::bUSet)) realBlock(ch, iStatComment(row::bUSet), d.bU.data(), 1, 1, n);
    if (d.iStat(row::stpMaxSet)) {
        realBlock(ch, iStatComment(row::stpMaxSet), d.stpMax.data(), 1, 1, n);
        pressReturn(ch);
    }
}

void hessianBlocks(int ch, char c) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    if (c == 'D' && d.iStat(row::HdiagSet)) realBlock(ch, iStatComment(row::HdiagSet), d.Hdiag.data(), 1, 1, n);
    if (c == 'M' && d.iStat(row::HesseSet)) realBlock(ch, iStatComment(row::HesseSet), d.Hesse.data(), kMaxVar, n, n);
    if (c == 'E' && d.iStat(row::HesseSet)) {
        if (d.iStat(row::R_eigenSet)) realBlock(ch, iStatComment(row::R_eigenSet), d.R_eigen.data(), 1, 1, n);
        if (d.iStat(row::V_eigenSet)) realBlock(ch, iStatComment(row::V_eigenSet), d.V_eigen.data(), kMaxVar, n, n);
    }
}

void searchBlocks(int ch) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    const MethodRow& method = methodTableRow(d.iStat(row::methodRunning));
    const bool monteCarlo = method.minimizer == Minimizer::MonteCarlo;
    if (d.iStat(row::xStepSet) && !monteCarlo) realBlock(ch, iStatComment(row::xStepSet), d.xStep.data(), 1, 1, n);
    if (d.iStat(row::finDifSet) && method.finiteDifferences) realBlock(ch, iStatComment(row::finDifSet), d.finDif.data(), 1, 1, n);
    if (d.iStat(row::rXTolSet) && !monteCarlo) realBlock(ch, iStatComment(row::rXTolSet), d.rXTol.data(), 1, 1, n);
    // The annealed Monte-Carlo search always shows its deviates.
    if (monteCarlo && (method.temperature || d.iStat(row::deviatSet))) realBlock(ch, iStatComment(row::deviatSet), d.deviat.data(), 1, 1, n);
    if (d.iStat(row::directSet)) realBlock(ch, iStatComment(row::directSet), d.direct.data(), 1, 1, n);
}

void vectorBlocks(int ch, const MonitorState& m, char b) {
    E4DataSetRecord& d = E4DataSet;
    if (d.nVar() == 0) return;
    if (b == 'D' || b == 'X') argumentBlocks(ch);
    if ((b == 'D' || b == 'G') && d.iStat(row::gEndSet) && d.iStat(row::gradientEvaluations) &&
        methodTableRow(d.iStat(row::methodRunning)).finiteDifferences)
        realBlock(ch, iStatComment(row::gEndSet), d.gEnd.data(), 1, 1, d.nVar());
    if (wordBegins(m, 3, "HES")) hessianBlocks(ch, firstLetter(m, 4));
    if (b == 'D') searchBlocks(ch);
}

// A report on a file goes behind what the file holds.
bool toEndOfFile(int ch) {
    if (unit::isTerminal(writerChannel(ch))) return true;
    std::string record;
    int io = 0;
    while ((io = unit::readRecord(ch, record)) == 0) {
    }
    return io == unit::IOSTAT_END;
}

Outcome reportProper(MonitorState& m, int ch, char b) {
    if (!toEndOfFile(ch)) return failedCommand(m);
    if (b == 'D' || b == 'M') heading(ch);
    if (b == 'D') numbers(ch, m);
    vectorBlocks(ch, m, b);
    write(ch, "(1X,70(\"/\"),/)");
    int minutes = 0;
    double seconds = 0;
    Z02CPUT(1, minutes, seconds, ch);
    write(ch, "(A)", "");
    return Outcome::Done;
}

void statusTable(int ch) {
    write(ch, "(A,/,A)", " Current content of the status-vector", " No., Value, Comment:");
    for (int i = 1; i <= kStatRows; ++i)
        write(ch, "(I4,I7,3X,A)", i, E4DataSet.iStat(i), std::string(iStatComment(i)));
}

void environmentBlock(int ch) {
    const E4DataSetRecord& d = E4DataSet;
    write(ch,
          "(1X,/,\" CPU type ----------- \",A,/,\" Operational system - \",A,/,"
          "\" File system type --- \",A,/,\" Screen width ------- \",I3,\" characters\",/,"
          "\" Screen hight ------- \",I3,\" characters\",/,\" Help-file name ----- \",A,/,"
          "\" Command file ------- \",A,\", channel = \",I2,/,"
          "\" ZEMOK data file ---- \",A,\", channel = \",I2,/,"
          "\" ZEMOK output file -- \",A,\", channel = \",I2,/,"
          "\" ZEMOK storage file - \",A,\", channel = \",I2,/)",
          sysinf.CPUtype, sysinf.OStype, sysinf.FileSystemType, sysinf.screenW, sysinf.screenH,
          d.hpName, d.crName, sysinf.crUnit, d.drName, sysinf.drUnit, d.dwName, sysinf.dwUnit,
          d.svName, d.iStat(row::saveChannel));
}

// Step 2: the channel of the report; false when the command was rewritten.
bool destination(MonitorState& m, int& ch, Outcome& out) {
    if (wordBlank(m, 2)) {
        ch = sysinf.dwUnit;
        return true;
    }
    if (wordBegins(m, 2, "FIL")) {
        std::string word1(kWordWidth, ' '), name(kWordWidth, ' ');
        int count = 0, status = 0;
        R02CLS2(m.word(2), word1, name, count, status);
        ch = sysinf.dwUnit;
        if (count < 2) return true;
        setWord(m, 2, "FILE");
        m.stack[static_cast<std::size_t>(m.sp - 1)] = padded(joinedWords(m), kLineWidth);
        setLine(m, "OPEN DATA WRITE " + trimmed(name));
        out = Outcome::Prerequisite;
        return false;
    }
    if (wordBegins(m, 2, "TER")) {
        ch = interactive() ? sysinf.outUnit : sysinf.dwUnit;
        return true;
    }
    for (int n = kWordCount; n > 2; --n) m.word(n) = m.word(n - 1);
    std::string device = "FILE";
    while (interactive() && onTerminal(sysinf.dwUnit)) {
        device = askReply("Output device? [ Terminal / File ]", "Terminal", sysinf.CursorPosition);
        if (device.empty()) device = "TERMINAL";
        if (R02PFX(device, "TER", 1) || R02PFX(device, "FIL", 1)) break;
        if (R02PFX(device, "E", 1)) {
            out = Outcome::Clear;  // EXIT, or the end of the input
            return false;
        }
        E04MES("Answer TERMINAL or FILE (TER or FIL at least): \"" + device + "\" is neither.");
    }
    setWord(m, 2, device);
    setLine(m, joinedWords(m));
    out = Outcome::Rewrite;
    return false;
}

}  // namespace

Outcome E4CmdReport(MonitorState& m) {
    while (true) {
        if (wordBegins(m, 2, "HEL")) {
            helpSection("REPORT");
            return Outcome::Done;
        }
        int ch = sysinf.dwUnit;
        Outcome out = Outcome::Done;
        if (!destination(m, ch, out)) return out;
        ch = writerChannel(ch);
        char b = firstLetter(m, 3);
        if (b == 'S' || b == 'E') {
            // Shown only where the user looks: a report sent to FILE gets none.
            bool toFile = wordBegins(m, 2, "FIL");
            if (onTerminal(ch) && !toFile) (b == 'S' ? statusTable : environmentBlock)(ch);
            return Outcome::Done;
        }
        if (b == ' ') {
            setWord(m, 3, "DATA");
            setLine(m, joinedWords(m));
            return Outcome::Rewrite;
        }
        if (std::string("GDHMUX").find(b) != std::string::npos) return reportProper(m, ch, b);
        E04MES("NO SUCH DATA TYPE: " + wordText(m, 3));
        if (!interactive()) return illegalCommand(m);
        setWord(m, 2, "HELP");
    }
}
