// Tests of the keyed readers I05FTSF, I05RS2 and I05RIN2 on small keyed
// files such as an initialization file.
#include "support/temp_folder.h"
#include "support/terminal_test.h"
#include "textfile/keyed_reading.h"

#include <filesystem>
#include <fstream>

namespace {

constexpr int kChannel = 10;

class KeyedReading : public TerminalTest {
protected:
    // Writes `text` to a file and opens it on kChannel.
    void openText(const std::string& text) {
        path_ = freshFolder("keyed") + "/keyed.ini";
        std::ofstream(path_) << text;
        unit::OpenSpec spec;
        spec.status = unit::Status::Old;
        ASSERT_EQ(unit::open(kChannel, path_, spec), 0);
    }
    void TearDown() override {
        TerminalTest::TearDown();
        std::error_code ec;
        std::filesystem::remove(path_, ec);
    }
    int readInt(const std::string& token, int start, int& status) {
        int value = start;
        I05RIN2(kChannel, token, value, "!#~", status);
        return value;
    }
    std::string nextRecord() {
        std::string r;
        unit::readRecord(kChannel, r);
        return r;
    }
    std::string path_;
};

TEST_F(KeyedReading, IntegerAfterColonEqualsOrBlank) {
    // "MyCursorPosition" holds the key too, but the value stands behind the
    // word that is the key itself, letters folded.
    openText("CPUtype = x86\nScreenWidth : 100\nScreenHight=100\nMyCursorPosition 5 cursorposition 100\n");
    for (const char* key : {"ScreenWidth", "ScreenHight", "CursorPosition"}) {
        int status = 99;
        EXPECT_EQ(readInt(key, 7, status), 100) << key;
        EXPECT_EQ(status, 0) << key;
    }
    EXPECT_EQ(output(), "");
}

TEST_F(KeyedReading, IntegerFailuresSetTheFieldToZero) {
    struct Case {
        const char* text;
        int status;
    };
    const Case cases[] = {
        {"# ScreenWidth 90\n", -3},        // the line is a comment
        {"ScreenWidth=1\n", -2},           // shorter than the key plus three
        {"  ScreenWidth =\n", -4},         // no word behind the key
        {"ScreenWidth = wide\n", -5},      // not an integer
        {"ScreenWidthX = 100\n", -1},      // the key is not a word of the line
        {"ScreenWidth ! 90 wide\n", -2},   // the comment leaves the key alone
    };
    for (const Case& c : cases) {
        openText(c.text);
        int status = 0;
        EXPECT_EQ(readInt("ScreenWidth", 7, status), 0) << c.text;
        EXPECT_EQ(status, c.status) << c.text;
        unit::close(kChannel);
    }
    EXPECT_EQ(output(), "");
}

TEST_F(KeyedReading, MissingIntegerKeyKeepsTheField) {
    openText("ScreenWidth 100\n");
    int status = 0;
    EXPECT_EQ(readInt("ScreenHight", 33, status), 33);
    EXPECT_EQ(status, -11);
    EXPECT_EQ(output(), " I05FTSF --E- NOT FOUND \"ScreenHight\"\n"
                        " I05RIN2 --E- No data lines with \"ScreenHight\" found.\n");
    EXPECT_EQ(readInt(" ", 33, status), 33);
    EXPECT_EQ(status, -10);
    EXPECT_EQ(output(), " I05RIN2 --E- No token string specified.\n");
}

TEST_F(KeyedReading, TextValueIsWordTwoCutToTheField) {
    openText("OStype=UNIX\nHelpFile = my.hlp\nFileSystemType   FAT32 ! comment\n");
    std::string value(16, '*');
    int status = 9;
    I05RS2(kChannel, "HelpFile", value, "!#~", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(value, field("my.hlp", 16));
    I05RS2(kChannel, "OStype", value, "!#~", status);
    EXPECT_EQ(value, field("UNIX", 16));
    std::string narrow(4, ' ');
    I05RS2(kChannel, "FileSystemType", narrow, "!#~", status);
    EXPECT_EQ(narrow, "FAT3");
    EXPECT_EQ(output(), "");
}

TEST_F(KeyedReading, SequentialSearchGoesRoundOnce) {
    openText("alpha 1\nbeta 2\ngamma 3\n");
    nextRecord();
    nextRecord();  // the file stands before "gamma"
    std::string line(20, ' ');
    int status = 5;
    I05FTSF(kChannel, "ALPHA", "", "SEQ", line, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(line, field("alpha 1", 20));
    EXPECT_EQ(nextRecord(), "beta 2");  // the file stands behind the line found
    I05FTSF(kChannel, "gamma", "", "SEQUENTIAL", line, status);
    EXPECT_EQ(line, field("gamma 3", 20));
    I05FTSF(kChannel, "delta", "", "SEQ", line, status);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(output(), " I05FTSF --E- NOT FOUND \"delta\"\n");
}

}  // namespace
