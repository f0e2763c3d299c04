// Transcript tests of the problem, method and option commands: the built
// zemok program run with piped input or a command file.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";

std::string titleRow(int n, const std::string& title) {
    std::string row = (n < 10 ? "  " : " ") + std::to_string(n) + " ... " + title;
    row.resize(8 + 50, ' ');  // the title is a 50-character field
    return row + "\n";
}

TEST(CommandsTranscript, TestListShowsTheNineteenRows) {
    ZemokRun run = runZemok("PROBLEM,TEST,LIST\n\nEXIT\n");
    const char* titles[] = {"Rosenbrock", "Powell-Wood", "Wood problem",
                            "Trigonometric multimodal problem", "Spiral chute",
                            "A cunning problem", "2-dimensional squared function",
                            "User-defined squared problem", "Sinusoidal chute",
                            "One-dimensional problem", "Least Squares exponential approximation",
                            "Least Squares polynomial approximation",
                            "Polynomial approximation (nonsmooth case)", "Constant function"};
    std::string expected = kPrompt + " Test functions are as follows:\n\n";
    for (int n = 1; n <= 19; ++n) expected += titleRow(n, n <= 14 ? titles[n - 1] : "... UNDEFINED ...");
    // "More information? [ Y / N ]" is 27 long, the default field "< No >"
    // ends in column 57 and the gap is dotted.
    expected += " More information? [ Y / N ] ...................... < No >: ";
    EXPECT_EQ(run.out, expected + kPrompt + kClosing);
}

TEST(CommandsTranscript, WoodProblemAnnouncesItselfAndAsksForAConstant) {
    ZemokRun run = runZemok("PROBLEM,TEST,3\n\nEXIT\n");
    EXPECT_EQ(run.out.substr(0, kPrompt.size() + 29), kPrompt + " 4-dimensional Wood function\n");
    EXPECT_NE(run.out.find(" Add a constant to the function .................. < 0.0 >: "),
              std::string::npos);
    // One evaluation was made: EXIT now holds the parting dialogue; the
    // input ends during it, which takes the default answers and stays.
    EXPECT_NE(run.out.find("\"Lest men suspect your tale untrue,\n   Keep probability in view\"\n\n"),
              std::string::npos);
}

TEST(CommandsTranscript, PartingDialogueNoSelectsMonteCarloAndYesLeaves) {
    // Problem 7 asks only for the added constant.
    std::string input = "PROBLEM,TEST,7\n\nEXIT\nN\n\nEXIT\nY\nY\n";
    ZemokRun run = runZemok(input);
    const std::string parting =
        " \"Lest men suspect your tale untrue,\n   Keep probability in view\"\n\n"
        " Are you sure of the solution? [ Y / N ]  < No >: ";
    std::size_t first = run.out.find(parting);
    ASSERT_NE(first, std::string::npos) << run.out;
    EXPECT_NE(run.out.find(" Try to use Monte-Carlo or Nelder-Mead scheme.\n What is the number of tries?",
                           first),
              std::string::npos)
        << run.out;
    std::size_t second = run.out.find(parting, first + 1);
    ASSERT_NE(second, std::string::npos) << run.out;
    const std::string leaving =
        "\n Remember to save your results before you leave \"ZEMOK\"!\n\n"
        " Exit now? [ Y / N ] .................... < No >: \n"
        "            Well, absolute accuracy requires infinite time...\n\n";
    std::size_t left = run.out.find(leaving, second);
    ASSERT_NE(left, std::string::npos) << run.out;
    // The problem has variables, so the end-of-job block comes before the
    // closing line: the value and the point of problem 7 at its start (0, 0),
    // where no search was made.
    std::string rest = run.out.substr(left + leaving.size());
    const std::string block =
        " ----------------------------- END OF JOB -----------------------------\n\n"
        " No search was made. Function value is  -0.9322000    \n"
        " at the point:\n\n";
    EXPECT_EQ(rest.substr(0, block.size()), block);
    EXPECT_NE(rest.find("   0.00000       0.00000    \n\n\n"
                        " after          1 function evaluations,\n"
                        "                0 gradient evaluations,\n"
                        "                0 iterations\n"
                        " CPU time used:"),
              std::string::npos)
        << rest;
    EXPECT_TRUE(rest.ends_with(kClosing));
}

TEST(CommandsTranscript, SystemCommandRunsTheShell) {
    std::string dir = freshFolder("shell");
    // Behind the prompt of the system command the whole reply is the command.
    ZemokRun run = runZemok("@\ntouch made-by-shell.txt\nEXIT\n", {}, dir);
    EXPECT_TRUE(std::filesystem::exists(dir + "/made-by-shell.txt"));
    EXPECT_NE(run.out.find(" Enter the system command (\"EXit\" to quit): "), std::string::npos);
    // Typed directly, the blank ends word 1: "@echo hi" has "hi" as its
    // second word, and a second word beginning with H asks for help.
    ZemokRun help = runZemok("@echo hi\nEXIT\n", {}, dir);
    EXPECT_EQ(help.out.find("hi\n"), std::string::npos);
}

TEST(CommandsTranscript, TimeWritesTheDateLine) {
    ZemokRun run = runZemok("TIME\nEXIT\n");
    ASSERT_GE(run.out.size(), kPrompt.size() + 27);
    std::string line = run.out.substr(kPrompt.size(), 27);
    EXPECT_EQ(line.substr(0, 1), " ");
    EXPECT_EQ(line.substr(12, 6), " time ");
    EXPECT_EQ(line[26], '\n') << line;
}

TEST(CommandsTranscript, AutoModeRefusesQuestionsAndEndsWithStatusOne) {
    struct Case { const char* command; const char* message; };
    for (Case c : {Case{"METHOD", " INCOMPLETE COMMAND: \"METHOD\"\n"},
                   Case{"METHOD,XYZ", " ILLEGAL COMMAND: \"METHOD,XYZ\"\n"},
                   Case{"PROBLEM", " INCOMPLETE COMMAND: \"PROBLEM\"\n"},
                   Case{"PROBLEM,TEST", " INCOMPLETE COMMAND: \"PROBLEM,TEST\"\n"},
                   Case{"PROBLEM,TEST,0", " ILLEGAL COMMAND: \"PROBLEM,TEST,0\"\n"},
                   Case{"MESSAGE", " INCOMPLETE COMMAND: \"MESSAGE\"\n"},
                   Case{"SET,GRADIENT", " INCOMPLETE COMMAND: \"SET,GRADIENT\"\n"},
                   Case{"SET,S,0,1", " ILLEGAL COMMAND: \"SET,S,0,1\"\n"},
                   Case{"SET", " INCOMPLETE COMMAND: \"SET\"\n"},
                   Case{"MODE", " INCOMPLETE COMMAND: \"MODE\"\n"}}) {
        std::string dir = freshFolder("auto");
        writeFile(dir + "/zemok.cmd", std::string(c.command) + "\nEXIT\n");
        writeFile(dir + "/zemok.inp", "");
        ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
        EXPECT_EQ(run.out, kPrompt + c.message + kClosing) << c.command;
        EXPECT_EQ(run.exitCode, 1) << c.command;
    }
}

TEST(CommandsTranscript, AutoModeCommandFileWithoutExitEndsWithTheReadError) {
    std::string dir = freshFolder("auto-end");
    writeFile(dir + "/zemok.cmd", "METHOD,N-M\n");
    writeFile(dir + "/zemok.inp", "");
    ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
    EXPECT_EQ(run.out, kPrompt + " I5ROL2 -W- END OF COMMAND FILE!\n Command read error\n" + kClosing);
    EXPECT_EQ(run.exitCode, 1);
}

}  // namespace
