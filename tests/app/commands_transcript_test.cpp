// Transcript tests of the problem, method and option commands: the built
// zemok program run with piped input or a command file.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";


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

}  // namespace
