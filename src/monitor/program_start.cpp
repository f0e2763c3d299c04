// The program's start and end: E4MAIN, the split of the program's command
// line into keys and arguments, and resetProgramState.
#include "monitor/monitor.h"

#include "methods/simplex_search.h"
#include "monitor/e4dataset.h"
#include "monitor/monitor_state.h"
#include "monitor/sysinf.h"
#include "numlib/cpu_timers.h"
#include "numlib/machine_constants.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "platform/clock.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "textfile/word_splitter.h"

namespace {

constexpr int kCommandLineWidth = 256;
constexpr int kEntryWidth = 128;

CommandLineLists& lists() {
    static CommandLineLists l;
    return l;
}

std::string cutEntry(const std::string& word, int length) {
    return word.substr(0, static_cast<std::size_t>(std::min(length, kEntryWidth)));
}

}  // namespace

const CommandLineLists& commandLineLists() { return lists(); }

void splitCommandLine(const std::string& commandLine) {
    lists() = CommandLineLists{};
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
            (isKey ? lists().keys : lists().args).push_back(entry);
        }
        if (status == 1 || status == 3 || status < 0) break;
    }
}

void resetProgramState() {
    resetWordSplitter();
    resetNumberText();
    resetCpuTimers();
    resetTargetFunction();
    resetComputationalNoise();
    resetSimplexSearch();
    resetSysinf();
    resetE4DataSet();
    resetMonitorState();
    lists() = CommandLineLists{};
    unit::resetUnits();
}

int E4MAIN() {
    int status = 0;
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int nDigits = 0;
    X02MDC1(eps, rMin, rMax, rBig, nDigits);
    resetProgramState();
    splitCommandLine(programCommandLine());
    E4MON1(status);
    if (status == 10) {
        write(6, "(A)", " E4MAIN -E- FAILURE TERMINATION");
        return 1;
    }
    write(6, "(A)", " E4MAIN --- Normal termination");
    return status == 1 ? 1 : 0;
}
