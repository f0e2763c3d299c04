// The console layer: the prompt without a screen width, reading a reply with comments
// and defaults, the message writers and the channel convention.
#include "support/terminal_test.h"
#include "support/temp_folder.h"
#include "core/console_layer.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class Console : public TerminalTest {};

TEST_F(Console, PromptWithAnUnfilledScreenWidthWarnsAndUsesSixty) {
    sysinf.screenW = 0;
    I05ASK("Q", 70);
    std::string expected =
        " I05ASK ---E- \"screenW\" from  @sysinf.fi  not defined!\n"
        "              Don't forget to include  @sysinf.fd  in the main program!\n"
        " Q " + std::string(54, '.') + ": ";
    EXPECT_EQ(out_.str(), expected);
}

TEST_F(Console, ReplyIsCutAtItsFirstCommentCharacter) {
    feed("abc ! comment\n! all comment\n  x#y\n");
    std::string line(80, '?');
    int len = -1, status = -1;
    I05RSL(5, line, len, "!#~ ", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(len, 3);
    EXPECT_EQ(line, "abc" + std::string(77, ' '));
    I05RSL(5, line, len, "!#~ ", status);
    EXPECT_EQ(len, 0);
    EXPECT_EQ(line, std::string(80, ' '));
    I05RSL(5, line, len, "", status);  // no comment set: kept whole
    EXPECT_EQ(len, 5);
    I05RSL(5, line, len, "", status);
    EXPECT_EQ(status, 1);
}

TEST_F(Console, EmptyReplyKeepsTheDefault) {
    feed("\nnew\n");
    std::string line = "old" + std::string(29, ' ');
    int len = 0, status = 0;
    I05RSLD(5, line, len, "!", status);
    EXPECT_EQ(len, 3);
    EXPECT_EQ(line.substr(0, 3), "old");
    I05RSLD(5, line, len, "!", status);
    EXPECT_EQ(line.substr(0, 4), "new ");
}

TEST(ConsoleDeath, ZeroInputChannelStopsTheProgram) {
    std::string line(10, ' ');
    int len = 0, status = 0;
    EXPECT_EXIT(I05RSL(0, line, len, "", status), ::testing::ExitedWithCode(1),
                "");
}

TEST_F(Console, MonitorMessagesGoToTheDataChannelAndTheTerminal) {
    E04MES("   ");
    EXPECT_EQ(out_.str(), "");
    E04MES(std::string(100, 'm'));
    EXPECT_EQ(out_.str(), " " + std::string(79, 'm') + "\n");
    out_.str("");
    std::string file = freshFolder("e04mes") + "/messages.txt";
    unit::open(7, file, {unit::Status::Replace});
    sysinf.dwUnit = 7;
    E04MES("to file");
    EXPECT_EQ(out_.str(), " to file\n");  // interactive: also on the terminal
    sysinf.MODEE4 = 1;
    E04MES("auto");
    EXPECT_EQ(out_.str(), " to file\n");
    unit::close(7);
    std::ifstream back(file);
    std::stringstream s;
    s << back.rdbuf();
    EXPECT_EQ(s.str(), " to file\n auto\n");
    std::filesystem::remove(file);
}

TEST_F(Console, ErrorLineAndPlainLines) {
    I05ERR("I05RSL", unit::IOERR_READ);
    I05ERR("I05FCBD1", unit::IOERR_READ);
    EXPECT_EQ(out_.str(),
              " I05RSL ---E- Error code: {1005}. read error\n"
              " I05FCBD1 -E- Error code: {1005}. read error\n");
    out_.str("");
    int status = -1;
    I05LINE(0, "", status);
    EXPECT_EQ(status, 0);
    I05LINE(6, "text  ", status);
    I05MES("");
    I05MES("mes");
    EXPECT_EQ(out_.str(), " text\n\n mes\n");
    EXPECT_EQ(writerChannel(-3), 6);
    EXPECT_EQ(writerChannel(5), 6);
    EXPECT_EQ(writerChannel(7), 7);
}

}  // namespace
