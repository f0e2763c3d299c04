// Transcript tests of the command monitor: the built zemok program is run
// with piped input and its output compared with the expected lines.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

namespace {

// The terminal prompt of the monitor: one blank, the word, ": ", and the
// cursor stays on the line, so whatever is written next continues it.
const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";

TEST(MonitorSession, ExitEndsWithTheNormalClosingLine) {
    ZemokRun run = runZemok("EXIT\n");
    EXPECT_EQ(run.out, kPrompt + kClosing);
    EXPECT_EQ(run.exitCode, 0);
}

TEST(MonitorSession, AnyWordBeginningWithExIsExit) {
    for (const char* word : {"exit", "Ex", "EXITING", "eXiT,now"}) {
        ZemokRun run = runZemok(std::string(word) + "\nFOO\n");
        EXPECT_EQ(run.out, kPrompt + kClosing) << word;
    }
}

TEST(MonitorSession, BlankAndCommentLinesChangeNothing) {
    ZemokRun run = runZemok("\n   \n! a comment\n# another\n~ and one more\nEXIT\n");
    std::string expected;
    for (int i = 0; i < 6; ++i) expected += kPrompt;
    EXPECT_EQ(run.out, expected + kClosing);
}

TEST(MonitorSession, UnknownWordIsIllegalAndTheSessionGoesOn) {
    ZemokRun run = runZemok("FOO,BAR\nEXIT\n");
    EXPECT_EQ(run.out, kPrompt + " ILLEGAL COMMAND: \"FOO,BAR\"\n" + kPrompt + kClosing);
    EXPECT_EQ(run.exitCode, 0);
}

TEST(MonitorSession, TwoLettersOfAThreeLetterKeyAreNoCommand) {
    // "RE" could be REPORT, RECOVER or RESET: the table wants three letters.
    ZemokRun run = runZemok("RE\nEXIT\n");
    EXPECT_EQ(run.out, kPrompt + " ILLEGAL COMMAND: \"RE\"\n" + kPrompt + kClosing);
}

TEST(MonitorSession, ALongWordIsCutWithTheSplittersWarning) {
    std::string word(40, 'Q');
    ZemokRun run = runZemok(word + "\nEXIT\n");
    // The warning comes from the splitter on the console, then the monitor
    // reports the whole line as it was typed.
    EXPECT_NE(run.out.find("R02GEL ---W- Exceeded maximum word length (32)."), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find(" ILLEGAL COMMAND: \"" + word + "\"\n"), std::string::npos) << run.out;
    EXPECT_TRUE(run.out.ends_with(kPrompt + kClosing)) << run.out;
}

TEST(MonitorSession, ASeventhWordIsDroppedSilently) {
    ZemokRun run = runZemok("EXIT,2,3,4,5,6,7,8\n");
    EXPECT_EQ(run.out, kPrompt + kClosing);
}

TEST(MonitorSession, MaxShorthandIsALoadCommand) {
    // MAXITR,100 is LOAD with the words moved right; "MAX,10" is no command.
    ZemokRun run = runZemok("MAXITR,100\nmaxnfe 5\nMAX,10\nEXIT\n");
    EXPECT_EQ(run.out, kPrompt + kPrompt + kPrompt + " ILLEGAL COMMAND: \"MAX,10\"\n" + kPrompt +
                           kClosing);
}

TEST(MonitorSession, InputWithoutExitStillEnds) {
    // At the end of input no reply was typed: the prompt line is ended first.
    const std::string ended = "\n I5ROL2 -W- END OF TERMINAL INPUT!\n";
    ZemokRun run = runZemok("FOO\n");
    EXPECT_EQ(run.out, kPrompt + " ILLEGAL COMMAND: \"FOO\"\n" + kPrompt + ended + kClosing);
    EXPECT_EQ(run.exitCode, 0);
    ZemokRun empty = runZemok("");
    EXPECT_EQ(empty.out, kPrompt + ended + kClosing);
}

TEST(MonitorSession, LinesLongerThanEightyAreCutToWhatTheUserSees) {
    std::string line = "FOO " + std::string(100, 'x');
    ZemokRun run = runZemok(line + "\nEXIT\n");
    // The 100-character word also draws the splitter's warning first.  The
    // monitor's message is cut at 80 characters with its leading blank.
    std::string message = (" ILLEGAL COMMAND: \"" + line.substr(0, 80) + "\"").substr(0, 80);
    EXPECT_EQ(message.size(), 80u);
    EXPECT_NE(run.out.find("(32).\n" + message + "\n" + kPrompt), std::string::npos) << run.out;
}

}  // namespace
