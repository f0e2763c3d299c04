// Tests of Z1ACS1 and the OPEN, CLOSE handlers: channels, flags and file
// names, the banner of a data-writing file, the questions and the failure
// texts, and the first command taken from the key "/C=name".
#include "support/terminal_test.h"
#include "support/temp_folder.h"
#include "monitor/channel_commands.h"
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class ChannelCommands : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        home_ = std::filesystem::current_path();
        dir_ = freshFolder("channels");
        std::filesystem::current_path(dir_);
    }
    void TearDown() override {
        unit::resetUnits();
        std::filesystem::current_path(home_);
        std::filesystem::remove_all(dir_);
    }
    // Runs Z1ACS1 on the words of `line`; returns the status.
    int run(const std::string& line) {
        int status = 0;
        splitMonitorCommand(line, words_.data(), status);
        E4DataSetRecord& d = E4DataSet;
        Z1ACS1(words_.data(), 0, d.iStat(row::commandFileOpen), d.iStat(row::dataFileOpen), d.iStat(row::outputFileOpen), status);
        return status;
    }
    static std::string text(const std::string& path) {
        std::ifstream in(path);
        return std::string((std::istreambuf_iterator<char>(in)), {});
    }
    std::array<std::string, 6> words_;
    std::filesystem::path home_;
    std::string dir_;
};

TEST_F(ChannelCommands, DataReadingOnTheDefaultFileAndChannel) {
    std::ofstream("zemok.inp") << "nVar\n 3\n";
    EXPECT_EQ(run("open,data,read"), 0);
    EXPECT_EQ(sysinf.drUnit, 4);
    EXPECT_EQ(E4DataSet.iStat(row::dataFileOpen), 4);
    std::string record;
    unit::readRecord(4, record);
    EXPECT_EQ(record, "nVar");
    // A second OPEN reuses the channel that is already connected.
    std::ofstream("other.inp") << "other\n";
    EXPECT_EQ(run("OPEN,DATA,READ,other.inp"), 0);
    unit::readRecord(4, record);
    EXPECT_EQ(record, "other");
    EXPECT_EQ(E4DataSet.drName, padded("other.inp", 32));
}

TEST_F(ChannelCommands, NoQuestionsInAutoModeOrFromACommandFile) {
    sysinf.MODEE4 = 1;
    EXPECT_EQ(run("OPEN"), 2);
    EXPECT_EQ(run("OPEN,DATA"), 3);
    E4DataSet.dwName = padded("", 32);
    EXPECT_EQ(run("OPEN,D,W"), 4);
    EXPECT_EQ(sysinf.dwUnit, 6);
    sysinf.MODEE4 = 0;
    sysinf.crUnit = 3;
    EXPECT_EQ(run("CLOSE,X"), 2);
    EXPECT_EQ(run("FOO,DATA"), 1);  // neither OPEN nor CLOSE: no text
    EXPECT_EQ(output(), " Z1ACS1 ---E- Execution of the command \"OPEN\"\n"
                        "              causes an error diagnostic: DATA TYPE MISSED.\n"
                        " Z1ACS1 ---E- Execution of the command \"OPEN,DATA\"\n"
                        "              causes an error diagnostic: ACCESS MISSED.\n"
                        " Z1ACS1 ---E- Execution of the command \"OPEN,DATA,WRITE\"\n"
                        "              causes an error diagnostic: FILE NAME MISSED.\n"
                        " Z1ACS1 ---E- Execution of the command \"CLOSE,X\"\n"
                        "              causes an error diagnostic: DATA TYPE MISSED.\n");
}

TEST_F(ChannelCommands, CloseReturnsEachChannelToTheTerminal) {
    std::ofstream("c.cmd") << "x\n";
    ASSERT_EQ(run("OPEN,DATA,WRITE,w.out"), 0);
    ASSERT_EQ(run("OPEN,COMMAND,READ,c.cmd"), 0);
    EXPECT_EQ(run("CLOSE,D,W"), 0);
    EXPECT_EQ(joinedWords(words_.data()), "CLOSE,DATA,WRITE");
    EXPECT_EQ(sysinf.dwUnit, 6);
    EXPECT_EQ(E4DataSet.iStat(row::outputFileOpen), 0);
    EXPECT_FALSE(unit::isOpen(7));
    EXPECT_EQ(run("CLOSE,DATA,READ"), 0);  // nothing open: no error
    EXPECT_EQ(sysinf.drUnit, 5);
    // The handler of CLOSE,COMMAND also ends automatic mode.
    MonitorState& m = monitorState();
    int status = 0;
    setLine(m, "CLOSE,COMMAND");
    splitMonitorCommand(m.line, m.words.data(), status);
    sysinf.MODEE4 = 1;
    EXPECT_EQ(E4CmdClose(m), Outcome::Done);
    EXPECT_EQ(sysinf.MODEE4, 0);
    EXPECT_EQ(joinedWords(m.words.data()), "CLOSE,COMMAND,READ");
    EXPECT_EQ(sysinf.crUnit, 5);
    EXPECT_EQ(E4DataSet.iStat(row::commandFileOpen), 0);
    EXPECT_FALSE(unit::isOpen(3));
    EXPECT_EQ(output(), "");
}

}  // namespace
