// Sessions that once looped for ever, crashed or failed in silence: each row
// is a session with its files, the lines it must show and its exit status.
#include "support/bounded_run.h"
#include "support/run_zemok.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace {

struct Row {
    const char* what;
    std::string input;
    // name, contents; "source:path" copies a file of the source tree,
    // "->target" makes a symbolic link
    std::vector<std::pair<std::string, std::string>> files;
    std::vector<std::string> shown;                           // lines that must appear
    int exitCode;
    std::vector<std::string> args = {};
    std::string once = "";  // a text that must appear exactly once
};

// Interactive start of Rosenbrock's problem: the questions of its first
// evaluation take their defaults.
const std::string kRosenbrock = "PROBLEM,TEST,1\n\n\n\n\n";

std::vector<Row> rows() {
    return {
        {"test problem out of range", "PROBLEM,TEST,99,200\nEXIT\n", {},
         {" There is no test problem 99: the test problems are 1 to 14.\n"}, 0},
        {"number of variables out of range in auto mode", "MODE,AUTO\n",
         {{"zemok.cmd", "PROBLEM,TEST,3,200\nEXIT\n"}, {"zemok.inp", ""}},
         {" The number of variables must lie in 1 to 128: \"200\" is not taken.\n",
          " ILLEGAL COMMAND: \"PROBLEM,TEST,3,200\"\n"},
         1},
        {"status element nVar beyond the vectors", kRosenbrock + "SET,S,35,200\nREPORT,T,X\n", {},
         {" The number of variables must lie in 0 to 128.\n", " ILLEGAL COMMAND: \"SET,S,35,200\"\n"}, 0},
        {"MODE asked at the end of the input takes its default", "MODE\n", {}, {" I5ROL2 -W- END OF TERMINAL INPUT!\n"}, 0},
        {"REPORT,X at the end of the input", "REPORT,X\n", {}, {" I5ROL2 -W- END OF TERMINAL INPUT!\n"}, 0},
        {"an answer that is no device", "REPORT,X\nT\nTER\n", {},
         {" Answer TERMINAL or FILE (TER or FIL at least): \"T\" is neither.\n", " CPU time used:"}, 0},
        {"a question asked again after the end of the input", kRosenbrock + "METHOD,M-C,abc\n", {},
         {" E4MON1 -E- End of input: \"METHOD,M-C,abc\" was abandoned.\n", " E4MAIN --- Normal termination\n"},
         1},
        {"a point loaded and no search made: no minimum is claimed", kRosenbrock + "LOAD,,XSTART,ALL,0.5\nEXIT\nY\n", {},
         {" No search was made, and the function value is not known\n at the point:\n"}, 0},
        {"CR takes the default shown and loads it", kRosenbrock + "METHOD,SA-NM\nCHECK\n0.9\n5\n\n", {},
         {" Data set is complete\n"}, 0},
        {"a prerequisite that stores nothing", kRosenbrock + "METHOD,N-M\nSET,DA\n", {},
         {" Nothing was stored by \"LOAD,,hCond\": the command cannot go on.\n",
          " COMMAND \"SET,DA\" WAS FAILED TO EXECUTE\n"},
         0},
        {"a keyed file with nVar out of range", "LOAD,FILE=bad.inp,NVAR\n",
         {{"bad.inp", "nVar\n 129\n"}},
         {" NUMBER OF VARIABLES = ( 129 ) IS OUTSIDE OF PERMITTED RANGE!\n"}, 0},
        {"the help file as output file", "OPEN,DATA,WRITE,zemok.hlp\nHELP\n", {{"zemok.hlp", "@HELP\nhelp text\n"}},
         {" Z1ACS1 ---E- \"zemok.hlp\" is the help file: it cannot be opened for writing.\n"}, 0},
        {"a command file that opens itself", "OPEN,COMMAND,READ,self.cmd\n", {{"self.cmd", "TIME\nOPEN,COMMAND,READ,self.cmd\n"}},
         {" Z1ACS1 ---E- 16 command files opened in a row: does one open itself?\n"}, 0},
        {"a read-only output file fails at OPEN and the next line is a command", "OPEN,DATA,WRITE,ro.txt\nTIME\n",
         {{"ro.txt", "read only\n"}},
         {"file cannot be opened: Permission denied\n", " Z1OPN1 ----- Current file name: \"ro.txt\"\n",
          " COMMAND \"OPEN,DATA,WRITE,ro.txt\" WAS FAILED TO EXECUTE\n", " time "},
         0},
        {"an output file that is no regular file", kRosenbrock + "OPEN,DATA,WRITE,/dev/null\nREPORT,,DATA\nTIME\n", {},
         {" E4MAIN --- Normal termination\n"}, 0},
        {"a number that is no finite number", kRosenbrock + "LOAD,,RFTOL,1e999\nLOAD,,RFTOL,NaN\n", {},
         {" I5LRA2 -E- \"1e999\" IS NOT A FINITE NUMBER THAT CAN BE STORED!\n",
          " I5LRA2 -E- \"NaN\" IS NOT A FINITE NUMBER THAT CAN BE STORED!\n"},
         0},
        {"a command where a number is asked", kRosenbrock + "SET,S,34,0\nLOAD,TERMINAL,MAXITR\nRUN\n", {},
         {"a value is not a number of the kind asked for\n"}, 0},
        {"the end of the input where a number is asked", kRosenbrock + "SET,S,34,0\nLOAD,TERMINAL,MAXITR\n", {},
         {" I5LIA1 -E- END OF THE INPUT: NO VALUE WAS GIVEN!\n"}, 0},
        {"a missing help file is named", "HELP\n", {}, {" Z1OPN1 ----- Current file name: \"zemok.hlp\"\n"}, 0},
        {"automatic mode without its data file", "MODE,AUTO\n", {{"zemok.cmd", "TIME\n"}},
         {" MODE -E- Automatic mode needs the data file \"zemok.inp\".\n"}, 1},
        {"a result file that cannot be written", "PROBLEM,USER\nMESSAGE,10\nEVALUATE\n",
         {{"synsphere.dat", "source:examples/synthetic/synsphere.dat"},
          {"vardene.ans", "source:examples/synthetic/vardene.ans"},
          {"synsphere.fit", "->/dev/full"}},
         {" VARDENE --E- Writing the result file \"synsphere.fit\" failed: write error\n"}, 0, {"/UC=vardene.ans"}},
        {"a picture that cannot be written is told once", "PROBLEM,USER\nMESSAGE,11\nEVALUATE\n\n",
         {{"synsphere.dat", "source:examples/synthetic/synsphere.dat"},
          {"vardene.ans", "source:examples/synthetic/vardene.ans"},
          {"synsphere.svg/x", ""}},
         {" Graphics Window not written to "}, 0, {"/UC=vardene.ans"}, "Graphics Window not written to"},
        {"EVALUATE,F,E asks for the message level", kRosenbrock + "MESSAGE,5\nEVALUATE,F,E\nN\n", {},
         {" Message level is equal to  5\n"}, 0},
    };
}

TEST(Robustness, SessionsEndWithAMessageThatNamesTheCause) {
    for (const Row& row : rows()) {
        TempFolder folder;
        for (const auto& [name, text] : row.files) {
            if (text.rfind("->", 0) == 0) {
                std::filesystem::create_symlink(text.substr(2), folder / name);
            } else {
                std::filesystem::create_directories(std::filesystem::path(folder / name).parent_path());
                writeFile(folder / name, text.rfind("source:", 0) == 0
                                             ? fileText(std::string(ZEMOK_SOURCE_DIR) + "/" + text.substr(7))
                                             : text);
            }
        }
        chmod((folder / "ro.txt").c_str(), 0444);
        const BoundedRun run = runBounded(folder.path(), row.input, row.args, 20.0, 1u << 20, true);
        ASSERT_FALSE(run.timedOut || run.tooMuch) << row.what << "\n" << run.out.substr(0, 3000);
        for (const std::string& line : row.shown)
            EXPECT_NE(run.out.find(line), std::string::npos) << row.what << ": " << line << "\n" << run.out;
        EXPECT_EQ(run.exitCode, row.exitCode) << row.what << "\n" << run.out;
        if (!row.once.empty()) {
            const std::size_t first = run.out.find(row.once);
            EXPECT_NE(first, std::string::npos) << row.what;
            EXPECT_EQ(run.out.find(row.once, first + 1), std::string::npos) << row.what << "\n" << run.out;
        }
        chmod((folder / "ro.txt").c_str(), 0644);
    }
}

}  // namespace
