// Transcript tests of the start and the end of a session: the keys and the
// title pages, the dialogue-mode question and the passive start with the
// command file it writes, the initialization file in its three places and
// with faulty lines, and the end-of-job block in each way a session ends.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";
// The question ends in column 57 and the reply begins in column 61.
const std::string kModeQuestion = " Dialogue mode [ Interactive / PASSive ] ...... < Inter. >: ";
const std::string kPause = " ===> Enter \"E\" to quit or press CR for more information: ";
// The banner as gfortran writes its FORMAT (T63 puts "Version" in column 63;
// the revision text keeps its trailing blank; the closing "/" adds a line).
const std::string kBanner =
    "      DIALOGUE SERVICE PROGRAM FOR MINIMIZATION OF NONLINEAR MULTIVARIATE\n"
    "                                   FUNCTIONS.\n\n" +
    std::string(62, ' ') + "Version 5.6\n"
    "      Latest revision: 09 May 02 03:30 \n\n"
    "                 You can get it wrong and still you think that's alright\n\n"
    "                                   ---<*>---\n\n";

std::string shippedIni() { return fileText(std::string(ZEMOK_SOURCE_DIR) + "/data/zemok.ini"); }

// The shipped initialization file with the line of each key replaced.
std::string iniWith(const std::vector<std::pair<std::string, std::string>>& lines) {
    std::string ini = shippedIni();
    for (const auto& [key, line] : lines) {
        std::size_t at = ini.find("\n" + key) + 1;
        ini.replace(at, ini.find('\n', at) - at, line);
    }
    return ini;
}

TEST(SessionStart, KeysDecideOnTitleAndDialogueModeQuestion) {
    // A screen of 5 lines pauses the title pages before their 3rd line.
    std::string dir = freshFolder("keys");
    writeFile(dir + "/zemok.ini", iniWith({{"ScreenHight", "ScreenHight = 5"}}));
    writeFile(dir + "/zemok.hlp", "==> TITLES\nTitle 1\nTitle 2\nTitle 3\n==> USER-COMMAND: HELP\nhelp\n");
    writeFile(dir + "/s.cmd", "EXIT\n");
    const std::string titles = " Title 1\n Title 2\n" + kPause;
    struct Row {
        std::vector<std::string> args;
        std::string input, out;
    } rows[] = {
        {{}, "\n\nEXIT\n", titles + "+Title 3\n" + kBanner + kModeQuestion + "\n" + kPrompt + kClosing},
        // "E" at the pause ends the title pages and skips the question.
        {{}, "E\nEXIT\n", titles + kBanner + kPrompt + kClosing},
        // Any other key suppresses only the title pages.
        {{"/U"}, "\nEXIT\n", kModeQuestion + "\n Key # 1: [/U]\n" + kPrompt + kClosing},
        {{"-c"}, "EXIT\n", " Key # 1: [-c]\n" + kPrompt + kClosing},
        {{"arg", "/C=s.cmd"}, "", " Key # 1: [/C=s.cmd]\n Arg # 1: [arg]\n ==> EXIT\n" + kClosing},
    };
    for (const Row& row : rows) {
        ZemokRun run = runZemokAsStarted(row.input, row.args, dir, "");
        EXPECT_EQ(run.out, row.out) << row.input;
        EXPECT_EQ(run.exitCode, 0);
    }
    fs::remove_all(dir);
}

TEST(SessionStart, OnlyARepliedPassSelectsThePassiveStart) {
    // Problem T, every other answer the default at the end of the input.
    const std::string file = " MODE,INTERACTIVE\n METHOD,B-F-G-S\n PROBLEM,TEST,1,5\n MESSAGE,1\n RUN\n"
                             " REPORT,,DATA\n CLOSE,COMMAND,READ\n";
    for (std::string reply : {"pass", "PASSIVE", "Passive", "PAS", ""}) {
        std::string dir = freshFolder("passive");
        writeFile(dir + "/zemok.ini", shippedIni());
        ZemokRun run = runZemokAsStarted(reply + "\nT\n", {"/U"}, dir, "");
        const bool passive = reply.size() >= 4;
        EXPECT_EQ(fileText(dir + "/zemok.cmd"), passive ? file : "") << reply;
        // Interactive: the second line is a command, and no command is one.
        EXPECT_EQ(run.out.find(" ILLEGAL COMMAND: \"T\"") != std::string::npos, !passive) << run.out;
        EXPECT_EQ(run.out.find(" ==>  MODE,INTERACTIVE\n ==>  METHOD,B-F-G-S\n") != std::string::npos, passive);
        EXPECT_TRUE(run.out.ends_with(kClosing)) << run.out;
        fs::remove_all(dir);
    }
}

TEST(SessionStart, PassiveQuestionnaireWritesTheCommandFile) {
    std::string dir = freshFolder("questionnaire");
    writeFile(dir + "/zemok.ini", iniWith({{"CursorPosition", "CursorPosition = 50"}}));
    ZemokRun run = runZemokAsStarted("Passive\nt\nY\nN\ny\nrosenbrock_long.inp\nY\nF\n", {"/U"}, dir, "");
    // The data file name is cut to 11 characters in the OPEN line.
    EXPECT_EQ(fileText(dir + "/zemok.cmd"),
              " MODE,INTERACTIVE\n METHOD,B-F-G-S\n PROBLEM,TEST,1,5\n SET,GRADIENT,3\n"
              " OPEN,DATA,READ,rosenbrock_\n LOAD,FILE,NVAR\n LOAD,FILE,XSTART\n MESSAGE,4\n"
              " OPEN,DATA,WRITE\n RUN\n REPORT,,DATA\n CLOSE,COMMAND,READ\n");
    // Each question is one blank, the text, dots and default up to column
    // cursor - 3, and ": ": its length is the cursor column.  Derivatives,
    // start point and data file ask at 60, the others at CursorPosition;
    // the two long questions do not fit in 50 and stand at full length.
    const std::string questions = run.out.substr(0, run.out.find(" Key # 1"));
    EXPECT_NE(questions.find(" Have you already specified number of variables and\n"
                             " coordinates of starting point in the user-written\n function \"USERF\"?"),
              std::string::npos);
    const std::pair<std::string, std::size_t> expected[] = {
        {" Dialogue mode [", 53},      {" Problem to solve?", 50},
        {" Is first derivative", 60},  {" function \"USERF\"?", 60},
        {" Have you put the data", 60}, {" Please enter the data file name", 60},
        {" Is the detailed", 59},      {" ZEMOK message output device", 60},
    };
    std::size_t from = 0;
    for (const auto& [start, length] : expected) {
        std::size_t at = questions.find(start, from);
        ASSERT_NE(at, std::string::npos) << start << "\n" << questions;
        std::size_t end = questions.find(": ", at) + 2;
        EXPECT_EQ(end - at, length) << start;
        from = end;
    }
    // The file then runs until the data file cannot be opened, which ends it.
    EXPECT_NE(run.out.find(" COMMAND \"OPEN,DATA,READ,rosenbrock_\" WAS FAILED TO EXECUTE\n" + kPrompt),
              std::string::npos) << run.out;
    EXPECT_TRUE(run.out.ends_with(kClosing));
    fs::remove_all(dir);
}

TEST(SessionStart, InitializationFileInEachPlaceAndNowhere) {
    // HOME is cut to 32 characters with "/Zemok/zemok.ini" behind it, so it
    // must be short for the file there to be found.
    char homeTemplate[] = "/tmp/zhXXXXXX";  // unique: mkdtemp; removed below
    const std::string home = mkdtemp(homeTemplate);
    const std::string ini = iniWith({{"HelpFile", "HelpFile = found.hlp"}});
    const std::string found = " Key # 1: [-C]\n" + kPrompt + " from found.hlp\n" + kPrompt + kClosing;
    struct Row {
        std::string path;  // relative to the work folder, or "~" for HOME
        std::string out;
    } rows[] = {{"zemok.ini", found},
                {"c:\\zemok\\zemok.ini", found},
                {"~/Zemok/zemok.ini", found},
                {"", " E4MAIN -W- Initialization file zemok.ini not found!\n Key # 1: [-C]\n" + kPrompt +
                         " from zemok.hlp\n" + kPrompt + kClosing}};
    for (const Row& row : rows) {
        std::string dir = freshFolder("ini");
        writeFile(dir + "/found.hlp", "==> USER-COMMAND: HELP\nfrom found.hlp\n");
        writeFile(dir + "/zemok.hlp", "==> USER-COMMAND: HELP\nfrom zemok.hlp\n");
        fs::create_directories(home + "/Zemok");
        if (row.path.starts_with("~")) writeFile(home + row.path.substr(1), ini);
        else if (!row.path.empty()) writeFile(dir + "/" + row.path, ini);
        ZemokRun run = runZemokAsStarted("HELP\nEXIT\n", {"-C"}, dir, home);
        EXPECT_EQ(run.out, row.out) << row.path;
        fs::remove_all(dir);
        fs::remove_all(home + "/Zemok");
    }
    fs::remove_all(home);
}

TEST(SessionStart, FaultyInitializationLinesAreReportedAndTheRestApplies) {
    std::string dir = freshFolder("faulty");
    writeFile(dir + "/zemok.ini", iniWith({{"HelpFile", "HelpFile = other.hlp"},
                                           {"ScreenWidth", "ScreenWidth ="},
                                           {"ScreenHight", "ScreenHeight = 30\nScreenHight: 6"},
                                           {"CursorPosition", "CursorPosition = abc"},
                                           {"SaveFileUnit", "SaveFileUnit = 40"},
                                           {"OStype", "OStype = UNIX"}}));
    writeFile(dir + "/other.hlp", "==> USER-COMMAND: HELP\n1\n2\n3\n4\n5\n6\n");
    ZemokRun run = runZemokAsStarted("HELP\n\nREPORT,,ENVIRONMENT\nEXIT\n", {"-C"}, dir, "");
    const std::string head = " E4MAIN -W- zemok.ini: ";
    // A screen of 6 lines pauses before every 4th line of the help.
    EXPECT_EQ(run.out.substr(0, run.out.find("\n CPU type")),
              head + "\"ScreenWidth\" has no integer value in the form  ScreenWidth = number; 80 is kept.\n" +
                  head + "\"CursorPosition\" has no integer value in the form  CursorPosition = number; "
                         "60 is kept.\n" +
                  head + "\"SaveFileUnit\" = 40 is no free channel (1 to 99, not 5, 6, 10, 40); 2 is kept.\n" +
                  head + "unknown key \"ScreenHeight\" is ignored.\n Key # 1: [-C]\n" + kPrompt + " 1\n 2\n 3\n" +
                  kPause + "+4\n 5\n 6\n" + kPrompt)
        << run.out;
    // The other keys apply; a new operating-system word leaves the screen
    // size as the file sets it.
    for (const char* line : {" Operational system - UNIX ", " Screen width -------  80 characters\n",
                             " Screen hight -------   6 characters\n", " Help-file name ----- other.hlp "}) {
        EXPECT_NE(run.out.find(line), std::string::npos) << line;
    }
    EXPECT_TRUE(run.out.ends_with(kPrompt + kClosing));
    fs::remove_all(dir);
}

TEST(SessionEnd, EndOfJobBlockAfterExitEndOfInputAndInAutoMode) {
    // Problem 7 at its start (0, 0), no RUN: f = -0.9322, one evaluation.  G15.7
    // writes it as F11.7 and four blanks; 1P,G14.6 writes 0 as "0.00000".
    const std::string block = "\n ----------------------------- END OF JOB -----------------------------\n\n"
                              " No search was made. Function value is  -0.9322000    \n at the point:\n\n"
                              "   0.00000       0.00000    \n\n\n"
                              " after          1 function evaluations,\n"
                              "                0 gradient evaluations,\n"
                              "                0 iterations\n";
    const std::regex tail(" CPU time used:[ 0-9]{8} min [ 0-9]{2}\\.[0-9]{2} sec\n E4MAIN --- Normal termination\n");
    struct Row {
        std::string input, commandFile;
        int exitCode;
    } rows[] = {{"PROBLEM,TEST,7\n\nEXIT\nY\n", "", 0},
                {"PROBLEM,TEST,7\n\n", "", 0},
                // The first failure in auto mode ends the session.
                {"MODE,AUTO\n", "PROBLEM,TEST,7\nFOO\n", 1}};
    for (const Row& row : rows) {
        std::string dir = freshFolder("end");
        writeFile(dir + "/zemok.cmd", row.commandFile);
        writeFile(dir + "/zemok.inp", "");
        ZemokRun run = runZemok(row.input, {}, dir);
        std::size_t at = run.out.rfind(block);
        ASSERT_NE(at, std::string::npos) << run.out;
        EXPECT_TRUE(std::regex_match(run.out.substr(at + block.size()), tail)) << run.out;
        EXPECT_EQ(run.exitCode, row.exitCode);
        fs::remove_all(dir);
    }
}

}  // namespace
