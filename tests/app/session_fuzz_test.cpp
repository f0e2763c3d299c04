// Hostile and careless sessions against the built zemok: commands with bad
// arguments, replies that are no answers, input that ends in the middle of
// a question, truncated command, data, answers and curve files, and files
// that cannot be written.  Every session must end by itself, within its time
// and output limits, with status 0 or 1, without a sanitizer report, and
// must leave every input file as it was.
#include "support/bounded_run.h"
#include "support/run_zemok.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

// Sessions per run: the whole test takes a few seconds, and under the
// sanitizers well under 30 s.
constexpr int kSessions = 160;
constexpr double kSecondsPerSession = 20.0;
constexpr std::size_t kOutputLimit = 4u << 20;

using Rng = std::mt19937;

template <class T, std::size_t N>
const T& pick(Rng& rng, const T (&items)[N]) {
    return items[std::uniform_int_distribution<std::size_t>(0, N - 1)(rng)];
}

bool chance(Rng& rng, int percent) { return std::uniform_int_distribution<int>(1, 100)(rng) <= percent; }

const char* const kNumbers[] = {"0", "1", "2", "-1", "-3", "5", "14", "15", "99", "128", "129", "200",
                                "1e999", "NaN", "inf", "-1e-300", "0.5", "abc", "1,2", "(2:5)", "(5:2)",
                                "(:999)", "ALL", "E", "", "1.0E+8", "2147483648"};
// Files read, and files a session may name for writing (the help file and a
// read-only file among them, which must be refused).
const char* const kNames[] = {"zemok.hlp", "zemok.cmd", "zemok.inp", "curve.dat", "vardene.ans",
                              "missing.txt", "readonly.txt", "folder", "out.txt", "test.dat", "x.sav"};
const char* const kWriteNames[] = {"zemok.hlp", "readonly.txt", "folder", "out.txt", "test.dat", "x.sav"};
const char* const kParameters[] = {"MAXNFE", "MAXITR", "NVAR", "IFIXER", "XSTART", "XSTEP", "RXTOL",
                                   "RFTOL", "TOLSCL", "DEVIAT", "HCOND", "FRLERR", "FINDIF", "BL", "BU",
                                   "STPMAX", "XSCALE", "DIRECT", "TEMPER", "NTRIEST", "TSCED", "ALL", "UN", "Q"};
const char* const kMethods[] = {"F-R", "P-R", "B-P", "P-S", "D-F-P", "B-F-G-S", "BR", "FL", "O-L", "O-S",
                                "SB", "C-D", "N-M", "M-C", "SA-MC", "SA-NM", "XYZ", ""};
const char* const kReplies[] = {"", "", "", "Y", "N", "T", "F", "E", "EXIT", "1", "0", "-5", "abc", "ALL",
                                "TERMINAL", "FILE", "RUN", "1e999", "PASSIVE", "SPHERE", "sphere", "11"};

std::string numberWord(Rng& rng) { return pick(rng, kNumbers); }

// One command line of a known command with arguments good or bad.
std::string command(Rng& rng) {
    switch (std::uniform_int_distribution<int>(0, 21)(rng)) {
        case 0: return "PROBLEM,TEST," + numberWord(rng) + (chance(rng, 50) ? "," + numberWord(rng) : "");
        case 1: return chance(rng, 70) ? "PROBLEM,USER" : "PROBLEM," + std::string(pick(rng, kReplies));
        case 2: return "METHOD," + std::string(pick(rng, kMethods)) + (chance(rng, 40) ? "," + numberWord(rng) : "");
        case 3:
        case 4:
            return "LOAD," + std::string(chance(rng, 30) ? "FILE=" + std::string(pick(rng, kNames)) : pick(rng, kReplies)) +
                   "," + pick(rng, kParameters) + "," + numberWord(rng) + (chance(rng, 50) ? "," + numberWord(rng) : "");
        case 5: return std::string(chance(rng, 50) ? "MAXITR," : "MAXNFE,") + numberWord(rng);
        case 6: return "REPORT," + std::string(chance(rng, 20) ? "FILE=" + std::string(pick(rng, kWriteNames)) : pick(rng, kReplies)) +
                       "," + pick(rng, kReplies);
        case 7: return "SET,S," + numberWord(rng) + "," + numberWord(rng);
        case 8: {
            const char* const words[] = {"G", "T,L", "T,O,W", "T,M", "CR,F", "DR,F", "DW,T", "DIR,HES", "DA", "DA,OF", "X", "X,OF", "Q"};
            return std::string("SET,") + pick(rng, words) + "," + numberWord(rng);
        }
        case 9: {
            const char* const forms[] = {"F", "F,V", "F,E", "F,T", "G", "G,F", "G,3", "G,9", "A,T", "A,S", "HES", "X"};
            return std::string("EVALUATE,") + pick(rng, forms);
        }
        case 10: return chance(rng, 50) ? "RUN" : "CONTINUE";
        case 11: return chance(rng, 50) ? "CHECK" : "CHECK,ALL";
        case 12:
            if (chance(rng, 50)) return "OPEN,DATA,WRITE," + std::string(pick(rng, kWriteNames));
            return "OPEN," + std::string(chance(rng, 50) ? "DATA," : "COMMAND,") + "READ," + pick(rng, kNames);
        case 13: return "CLOSE," + std::string(chance(rng, 50) ? "DATA," : "COMMAND,") + (chance(rng, 50) ? "WRITE" : "READ");
        case 14: return "MESSAGE," + numberWord(rng);
        case 15: return "STEP," + numberWord(rng);
        case 16: return chance(rng, 50) ? "RESET" : "RESET,ALL";
        case 17: return "MODE," + std::string(pick(rng, kReplies));
        case 18: {
            const char* const others[] = {"HELP", "H,X", "TIME", "DATE,C", "T-MODE,N", "SAVE", "RECOVER,x", "SECTION"};
            return pick(rng, others);
        }
        case 19: return std::string(pick(rng, kReplies)) + "," + pick(rng, kReplies);
        case 20: return "EXIT";
        default: return std::string(std::uniform_int_distribution<int>(1, 120)(rng), "XQ,;!=("[rng() % 7]);
    }
}

std::string session(Rng& rng) {
    std::string text;
    const int lines = std::uniform_int_distribution<int>(2, 14)(rng);
    for (int i = 0; i < lines; ++i) {
        text += command(rng) + "\n";
        const int replies = std::uniform_int_distribution<int>(0, 4)(rng);
        for (int r = 0; r < replies; ++r) text += std::string(pick(rng, kReplies)) + "\n";
    }
    // The input may end anywhere, also in the middle of a line.
    if (chance(rng, 50)) text.resize(std::uniform_int_distribution<std::size_t>(0, text.size())(rng));
    return text;
}

std::string cut(Rng& rng, const std::string& text) {
    if (chance(rng, 50)) return text;
    return text.substr(0, std::uniform_int_distribution<std::size_t>(0, text.size())(rng));
}

// The working folder of a session: help file, curve, answers file, data and
// command files (some cut short), a folder and a read-only file in the way.
void prepare(const std::string& dir, Rng& rng) {
    const std::string src = ZEMOK_SOURCE_DIR;
    writeFile(dir + "/zemok.hlp", fileText(src + "/data/zemok.hlp"));
    writeFile(dir + "/curve.dat", cut(rng, fileText(src + "/examples/synthetic/synsphere.dat")));
    std::string answers = fileText(src + "/examples/synthetic/vardene.ans");
    const std::size_t at = answers.find("synsphere.dat");
    if (at != std::string::npos) answers.replace(at, 13, "curve.dat");
    writeFile(dir + "/vardene.ans", cut(rng, answers));
    const char* const nVars[] = {"2", "-3", "0", "129", "x"};
    writeFile(dir + "/zemok.inp", cut(rng, "nVar\n " + std::string(pick(rng, nVars)) +
                                               "\nxStart\n 1.0 2.0\nmaxITR\n 10\nrFTol\n 1e-5\n"));
    writeFile(dir + "/zemok.cmd", session(rng));
    fs::create_directories(dir + "/folder");
    writeFile(dir + "/readonly.txt", "read only\n");
    chmod((dir + "/readonly.txt").c_str(), 0444);
}

std::map<std::string, std::string> inputs(const std::string& dir) {
    std::map<std::string, std::string> texts;
    for (const char* name : {"zemok.hlp", "curve.dat", "vardene.ans", "zemok.inp", "zemok.cmd", "readonly.txt"})
        texts[name] = fileText(dir + "/" + name);
    return texts;
}

TEST(SessionFuzz, HostileSessionsEndCleanlyAndLeaveTheInputFilesAlone) {
    Rng rng(20261123);
    for (int k = 0; k < kSessions; ++k) {
        TempFolder folder;
        prepare(folder.path(), rng);
        const auto before = inputs(folder.path());
        const std::string input = chance(rng, 15) ? "MODE,AUTO\n" : session(rng);
        const std::vector<std::string> args = chance(rng, 30) ? std::vector<std::string>{"/UC=vardene.ans"}
                                                               : std::vector<std::string>{};
        const BoundedRun run = runBounded(folder.path(), input, args, kSecondsPerSession, kOutputLimit, true);
        const std::string shown = "session " + std::to_string(k) + ":\n" + input + "\n--- output tail:\n" +
                                  run.out.substr(run.out.size() > 2000 ? run.out.size() - 2000 : 0);
        ASSERT_FALSE(run.timedOut) << shown;
        ASSERT_FALSE(run.tooMuch) << shown;
        ASSERT_EQ(run.signal, 0) << shown;
        ASSERT_TRUE(run.exitCode == 0 || run.exitCode == 1) << run.exitCode << " " << shown;
        ASSERT_EQ(run.out.find("Sanitizer"), std::string::npos) << shown;
        ASSERT_EQ(run.out.find("runtime error"), std::string::npos) << shown;
        ASSERT_TRUE(inputs(folder.path()) == before) << "an input file was changed\n" << shown;
        chmod((folder / "readonly.txt").c_str(), 0644);
    }
}

}  // namespace
