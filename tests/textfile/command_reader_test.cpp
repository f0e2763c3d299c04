// Tests of I5ROL2: prompt and read at the terminal, lines from a command
// file with their echo, the end of the source, and the copy on dwUnit.
#include "support/temp_folder.h"
#include "support/terminal_test.h"

#include "textfile/command_stack.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

class CommandReaderTest : public TerminalTest {
protected:
    fs::path dir = freshFolder("reader");

    void SetUp() override {
        TerminalTest::SetUp();
        fs::create_directories(dir);
    }
    void TearDown() override {
        TerminalTest::TearDown();
        fs::remove_all(dir);
    }
    void openFile(int channel, const std::string& name, const std::string& content, unit::Status st) {
        if (st == unit::Status::Old) std::ofstream(dir / name) << content;
        unit::OpenSpec how;
        how.status = st;
        ASSERT_EQ(unit::open(channel, (dir / name).string(), how), 0);
    }
    // Reads one line; returns it trimmed with the status.
    std::string read(int crUnit, int mode, int dwUnit = 6) {
        std::string line(80, '?');
        int status = 99;
        I5ROL2(line, "ZEMOK", crUnit, dwUnit, mode, status);
        EXPECT_EQ(line.size(), 80u);
        return line.substr(0, line.find_last_not_of(' ') + 1) + "|" + std::to_string(status);
    }
};

TEST_F(CommandReaderTest, Terminal) {
    feed("help ! show the help\n");
    EXPECT_EQ(read(5, 0), "help|0");
    EXPECT_EQ(output(), " ZEMOK: ");
    EXPECT_EQ(read(5, 0), "CLOSE COMMAND READ|1");  // end of the terminal's input
    EXPECT_EQ(output(), " ZEMOK: \n I5ROL2 -W- END OF TERMINAL INPUT!\n");
    feed("RUN\n");
    EXPECT_EQ(read(5, 1), "EXIT|1");
    EXPECT_EQ(output(), " I5ROL2 -E- COMMAND SOURCE IS NOT A DISC-FILE!\n");
}

TEST_F(CommandReaderTest, FileLinesAreEchoedUntilTheEnd) {
    openFile(3, "cmd.txt", "OPEN DATA READ\n\n!comment only\n" + std::string(100, 'B') + "\n", unit::Status::Old);
    EXPECT_EQ(read(3, 0), "OPEN DATA READ|0");
    EXPECT_EQ(read(3, 0), "|0");
    EXPECT_EQ(read(3, 0), "|0");
    EXPECT_EQ(read(3, 0), std::string(80, 'B') + "|0");  // cut at 80 by the read
    EXPECT_EQ(output(), " ==> OPEN DATA READ\n ==>  \n ==>  \n ==> " + std::string(80, 'B') + "\n");
    EXPECT_EQ(read(3, 0), "CLOSE COMMAND READ|1");
    EXPECT_EQ(output(), " I5ROL2 -W- END OF COMMAND FILE!\n");
}

TEST_F(CommandReaderTest, AutoModeReadsSilentlyAndEndsWithExit) {
    openFile(3, "auto.txt", "RUN\n", unit::Status::Old);
    EXPECT_EQ(read(3, 1), "RUN|0");
    EXPECT_EQ(output(), "");
    EXPECT_EQ(read(3, 1), "EXIT|1");
    EXPECT_EQ(output(), " I5ROL2 -W- END OF COMMAND FILE!\n");
}

}  // namespace
