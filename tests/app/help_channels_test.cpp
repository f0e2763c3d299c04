// Transcript tests of HELP, OPEN and CLOSE and of the key "/C=name" in the
// built zemok program.  Each run carries a "C" key, which keeps the title
// pages and the dialogue-mode question out of the transcript.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";
const std::string kKeyC = " Key # 1: [-C]\n";
const std::string kPause = " ===> Enter \"E\" to quit or press CR for more information: ";

// A help file whose HELP section has `lines` lines "line 1", "line 2" ...
std::string helpFileWith(int lines) {
    std::string text = "==> TITLES\nTitle page\n==> USER-COMMAND: HELP\n";
    for (int k = 1; k <= lines; ++k) text += "line " + std::to_string(k) + "\n";
    return text + "==> USER-COMMAND: MODE\nmode line\n";
}

// The lines "line first" to "line last" as written, `lead` in front.
std::string helpLines(int first, int last, const std::string& lead) {
    std::string out;
    for (int k = first; k <= last; ++k) out += lead + "line " + std::to_string(k) + "\n";
    return out;
}

std::string folderWithHelp(int lines) {
    std::string dir = freshFolder("help");
    writeFile(dir + "/zemok.hlp", helpFileWith(lines));
    return dir;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) out.push_back(line);
    return out;
}

TEST(HelpCommand, PrintsItsSectionForAnyWordBeginningWithH) {
    std::string dir = folderWithHelp(2);
    ZemokRun run = runZemok("HELP\nhurry\nhElP,LOAD\nEXIT\n", {"-C"}, dir);
    const std::string section = " line 1\n line 2\n";
    EXPECT_EQ(run.out, kKeyC + kPrompt + section + kPrompt + section + kPrompt + section + kPrompt + kClosing);
    EXPECT_EQ(run.exitCode, 0);
}

TEST(HelpCommand, LongSectionPausesOnTheTerminalAndEEndsIt) {
    // The screen has 25 lines: a pause comes before the 23rd line.  After a
    // CR the line shown begins with "+"; "E" ends the help.
    std::string dir = folderWithHelp(30);
    ZemokRun run = runZemok("HELP\n\nHELP\nE\nEXIT\n", {"-C"}, dir);
    const std::string firstPage = helpLines(1, 22, " ");
    EXPECT_EQ(run.out, kKeyC + kPrompt + firstPage + kPause + "+line 23\n" + helpLines(24, 30, " ") +
                           kPrompt + firstPage + kPause + kPrompt + kClosing);
}

TEST(HelpCommand, HelpWrittenToAFileNeverPauses) {
    std::string dir = folderWithHelp(30);
    ZemokRun run = runZemok("OPEN,DATA,WRITE,help.out\nHELP\nEXIT\n", {"-C"}, dir);
    EXPECT_EQ(run.out, kKeyC + kPrompt + kPrompt + kPrompt + kClosing);
    std::string file = fileText(dir + "/help.out");
    // The file holds the banner, then the commands and the whole section,
    // each line as it stands in the help file.
    const std::string tail = " ==> USER-COMMAND: HELP\n" + helpLines(1, 30, "") + " ==> USER-COMMAND: EXIT\n";
    ASSERT_GE(file.size(), tail.size());
    EXPECT_EQ(file.substr(file.size() - tail.size()), tail);
    EXPECT_EQ(file.find("===>"), std::string::npos);
    EXPECT_EQ(file.find('+'), std::string::npos);
}

TEST(HelpCommand, TheProgramsOwnHelpFile) {
    std::string dir = freshFolder("manual");
    writeFile(dir + "/zemok.hlp", fileText(std::string(ZEMOK_SOURCE_DIR) + "/data/zemok.hlp"));
    // Enough empty replies for the pauses; blank commands are skipped.
    ZemokRun run = runZemok("HELP\n\n\n\n\n\nEXIT\n", {"-C"}, dir);
    EXPECT_EQ(run.out.rfind(kKeyC + kPrompt + " \n  ZEMOK is steered by commands, one command a line.", 0), 0u)
        << run.out;
    EXPECT_NE(run.out.find(kPause + "+"), std::string::npos);
    EXPECT_NE(run.out.find(" /C=name runs the command file \"name\" first.\n"), std::string::npos);
    EXPECT_EQ(run.out.find("MODE,INTERACTIVE"), std::string::npos);  // the next section
    EXPECT_TRUE(run.out.ends_with(kPrompt + kClosing));
}

TEST(HelpCommand, MissingHelpFileIsReportedAndTheSessionGoesOn) {
    ZemokRun run = runZemok("HELP\nEXIT\n", {"-C"});
    EXPECT_EQ(run.out, kKeyC + kPrompt + " Z1OPN1 ---E- Error code: {1004}. file does not exist\n" +
                           " Z1OPN1 ----- Current file name: \"zemok.hlp\"\n" + kPrompt + kClosing);
}

TEST(OpenCommand, DataWritingAddsBehindTheOldContentsAfterTheBanner) {
    std::string dir = freshFolder("open");
    writeFile(dir + "/out.txt", "old report\n");
    ZemokRun run = runZemok("OPEN,DATA,WRITE,out.txt\nEXIT\n", {"-C"}, dir);
    EXPECT_EQ(run.out, kKeyC + kPrompt + kPrompt + kClosing);
    std::vector<std::string> lines = linesOf(fileText(dir + "/out.txt"));
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines[0], "old report");
    EXPECT_EQ(lines[1], "");
    // The banner: block letters of "H", indented by 15 to 20 columns.
    std::size_t indent = std::string::npos;
    for (std::size_t k = 2; k <= 10; ++k) {
        EXPECT_NE(lines[k].find('H'), std::string::npos);
        EXPECT_EQ(lines[k].find_first_not_of(" H"), std::string::npos);
        indent = std::min(indent, lines[k].find('H'));
    }
    EXPECT_GE(indent, 15u);
    EXPECT_LE(indent, 20u);
    EXPECT_EQ(lines[11], "");
    EXPECT_EQ(lines[12], " ==> USER-COMMAND: EXIT");
}

TEST(OpenCommand, MissingCommandFileFailsAndTheTerminalStays) {
    // The words are written in full form in the messages.
    ZemokRun run = runZemok("op c r missing.cmd\nEXIT\n", {"-C"});
    EXPECT_EQ(run.out, kKeyC + kPrompt +
                           " Z1OPN1 ---E- Error code: {1004}. file does not exist\n"
                           " Z1OPN1 ----- Current file name: \"missing.cmd\"\n"
                           " Z1ACS1 ---E- Execution of the command \"OPEN,COMMAND,READ,missing.cmd\"\n"
                           "              causes an error diagnostic.\n"
                           " COMMAND \"OPEN,COMMAND,READ,missing.cmd\" WAS FAILED TO EXECUTE\n" +
                           kPrompt + kClosing);
}

TEST(OpenCommand, HelpWordsDrawTheSchemesAndOptionsIsOpen) {
    ZemokRun run = runZemok("OPTIONS,HELP\nCL H\nEXIT\n", {"-C"});
    EXPECT_EQ(run.out, kKeyC + kPrompt +
                           "\n Command branch is of the form:\n\n        DATA ----- WRITE\n"
                           "      /      \\          \\\n OPEN          \\          FILENAME\n"
                           "      \\          \\      /\n        COMMAND -- READ\n\n" +
                           kPrompt +
                           "\n Command branch is of the form:\n\n         DATA ----- WRITE\n"
                           "       /      \\\n CLOSE          \\\n       \\          \\\n"
                           "         COMMAND -- READ\n\n" +
                           kPrompt + kClosing);
}

TEST(CloseCommand, ClosingDataReadingWithNothingOpenIsNoError) {
    ZemokRun run = runZemok("CLOSE,DATA,READ\nEXIT\n", {"-C"});
    EXPECT_EQ(run.out, kKeyC + kPrompt + kPrompt + kClosing);
}

TEST(CommandFileKey, RunsTheFileAndAnIllegalCommandReturnsToTheTerminal) {
    std::string dir = freshFolder("keyc");
    writeFile(dir + "/session.cmd", "CLOSE,DATA,READ\nFOO\nEXIT\n");
    ZemokRun run = runZemok("EXIT\n", {"/C=session.cmd"}, dir);
    // The EXIT of the file is never read: the error closed the file.
    EXPECT_EQ(run.out, " Key # 1: [/C=session.cmd]\n ==> CLOSE,DATA,READ\n ==> FOO\n"
                       " ILLEGAL COMMAND: \"FOO\"\n" +
                           kPrompt + kClosing);
}

TEST(CommandFileKey, EndOfTheFileAndANewCommandFile) {
    std::string dir = freshFolder("keyc");
    writeFile(dir + "/zemok.hlp", helpFileWith(1));
    writeFile(dir + "/a.cmd", "HELP\nOPEN,COMMAND,READ,b.cmd\nFOO\n");
    writeFile(dir + "/b.cmd", "CLOSE,DATA,READ\n");
    ZemokRun run = runZemok("EXIT\n", {"-C=a.cmd"}, dir);
    // a.cmd is left for b.cmd, whose end hands over to the terminal.
    EXPECT_EQ(run.out, " Key # 1: [-C=a.cmd]\n ==> HELP\n line 1\n ==> OPEN,COMMAND,READ,b.cmd\n"
                       " ==> CLOSE,DATA,READ\n I5ROL2 -W- END OF COMMAND FILE!\n" +
                           kPrompt + kClosing);
}

}  // namespace
