// The program's start and end: E4MAIN with its steps in order, the split of
// the program's command line into keys and arguments, the end-of-job block.
#include "monitor/monitor.h"

#include "core/command_line.h"
#include "core/module_resets.h"

#include "core/e4dataset.h"
#include "monitor/initialization_file.h"
#include "monitor/monitor_state.h"
#include "monitor/passive_start.h"
#include "core/sysinf.h"
#include "numlib/cpu_timers.h"
#include "core/machine_constants.h"
#include "platform/clock.h"
#include "platform/units.h"
#include "textfile/prompts.h"
#include "textfile/number_text.h"
#include "textfile/word_splitter.h"

namespace {

constexpr int kCommandLineWidth = 256;
constexpr int kEntryWidth = 128;

std::string cutEntry(const std::string& word, int length) {
    return word.substr(0, static_cast<std::size_t>(std::min(length, kEntryWidth)));
}

}  // namespace

void splitCommandLine(const std::string& commandLine) {
    resetCommandLineLists();
    std::string line = padded(commandLine, kCommandLineWidth);
    std::array<int, 8> saveTTW{};
    std::string word(kEntryWidth, ' ');
    int wordLen = 0, status = 0;
    char lastDelim = ' ', ch = ' ';
    while (true) {
        R02TNW3(line, -1, " ,", "''\"\"", "=", word, wordLen, lastDelim, ch, saveTTW.data(), status);
        if (status < 0 && status != -2) break;
        if (wordLen > 0) {
            std::string entry = cutEntry(word, wordLen);
            bool isKey = entry[0] == '/' || entry[0] == '-';
            (isKey ? mutableCommandLineLists().keys : mutableCommandLineLists().args).push_back(entry);
        }
        if (status == 1 || status == 3 || status < 0) break;
    }
}

// The end-of-job block: the minimum, the point, the counters, the CPU time.
void endOfJob() {
    const E4DataSetRecord& d = E4DataSet;
    const int out = sysinf.outUnit;
    const MonitorState& m = monitorState();
    if (!m.searchMade && !m.startValueKnown) {
        write(out, "(1X,/,1X,29('-'),' END OF JOB ',29('-'),/,/,1X,'No search was made, and the function value is not known',/,1X,'at the point:',/)");
    } else if (!m.searchMade) {
        // No RUN, or a refused one, since the point was set: no minimum.
        write(out, "(1X,/,1X,29('-'),' END OF JOB ',29('-'),/,/,1X,'No search was made. Function value is ',G15.7,/,1X,'at the point:',/)",
              d.fStart);
    } else {
        write(out, "(1X,/,1X,29('-'),' END OF JOB ',29('-'),/,/,1X,'Produced function minimum is equal to',G15.7,/,1X,'at the point:',/)",
              d.fStart);
    }
    int status = 0;
    I5WRA1(out, d.xStart.data(), 1, 1, d.nVar(), "", status);
    write(out, "(1X,/,1X,'after ',I10,' function evaluations,',/,7X,I10,' gradient evaluations,',/,7X,I10,' iterations')",
          d.iStat(row::functionEvaluations), d.iStat(row::gradientEvaluations), d.iStat(row::iterations));
    int minutes = 0;
    double seconds = 0;
    Z02CPUT(1, minutes, seconds, out);
}

int E4MAIN() {
    int status = 0;
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int nDigits = 0;
    X02MDC1(eps, rMin, rMax, rBig, nDigits);
    resetProgramState();
    readInitializationFile();
    for (int r = 1; r <= kStatRows; ++r) E4DataSet.iStat(r) = 0;
    splitCommandLine(programCommandLine());
    if (!startDialogue()) {
        write(6, "(A)", " E4MAIN -E- FAILURE TERMINATION");
        return 1;
    }
    E4MON1(status);
    if (status == 10) {
        write(6, "(A)", " E4MAIN -E- FAILURE TERMINATION");
        return 1;
    }
    if (E4DataSet.nVar() != 0) endOfJob();
    write(6, "(A)", " E4MAIN --- Normal termination");
    return status == 1 ? 1 : 0;
}
