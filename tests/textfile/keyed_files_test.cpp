// Keyed files and arrays on files: the keyed readers I05FTSF, I05RS2 and
// I05RIN2 on small keyed files such as an initialization file, the array
// readers I5LRA1, I5LIA1, R02RDR, R02RDI and the writer R02WRA1.
#include "support/temp_folder.h"
#include "support/terminal_test.h"
#include "textfile/array_io.h"
#include "textfile/keyed_reading.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <vector>

namespace {

constexpr int kChannel = 10;

class KeyedFiles : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        path_ = freshFolder("keyed") + "/data.inp";
    }
    // Writes `text` to the file (unless it is to be made) and opens it on kChannel.
    void openFile(const std::string& text, unit::Status status = unit::Status::Old) {
        if (status == unit::Status::Old) std::ofstream(path_) << text;
        unit::OpenSpec spec;
        spec.status = status;
        ASSERT_EQ(unit::open(kChannel, path_, spec), 0);
    }
    std::string fileContents() {
        unit::close(kChannel);
        std::ifstream in(path_);
        return std::string(std::istreambuf_iterator<char>(in), {});
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

TEST_F(KeyedFiles, IntegerAfterColonEqualsOrBlank) {
    // "MyCursorPosition" holds the key too, but the value stands behind the
    // word that is the key itself, letters folded.
    openFile("CPUtype = x86\nScreenWidth : 100\nScreenHight=100\nMyCursorPosition 5 cursorposition 100\n");
    for (const char* key : {"ScreenWidth", "ScreenHight", "CursorPosition"}) {
        int status = 99;
        EXPECT_EQ(readInt(key, 7, status), 100) << key;
        EXPECT_EQ(status, 0) << key;
    }
    EXPECT_EQ(output(), "");
}

TEST_F(KeyedFiles, IntegerFailuresSetTheFieldToZero) {
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
        openFile(c.text);
        int status = 0;
        EXPECT_EQ(readInt("ScreenWidth", 7, status), 0) << c.text;
        EXPECT_EQ(status, c.status) << c.text;
        unit::close(kChannel);
    }
    EXPECT_EQ(output(), "");
}

TEST_F(KeyedFiles, MissingIntegerKeyKeepsTheField) {
    openFile("ScreenWidth 100\n");
    int status = 0;
    EXPECT_EQ(readInt("ScreenHight", 33, status), 33);
    EXPECT_EQ(status, -11);
    EXPECT_EQ(output(), " I05FTSF --E- NOT FOUND \"ScreenHight\"\n"
                        " I05RIN2 --E- No data lines with \"ScreenHight\" found.\n");
    EXPECT_EQ(readInt(" ", 33, status), 33);
    EXPECT_EQ(status, -10);
    EXPECT_EQ(output(), " I05RIN2 --E- No token string specified.\n");
}

TEST_F(KeyedFiles, TextValueIsWordTwoCutToTheField) {
    openFile("OStype=UNIX\nHelpFile = my.hlp\nFileSystemType   FAT32 ! comment\n");
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

TEST_F(KeyedFiles, SequentialSearchGoesRoundOnce) {
    openFile("alpha 1\nbeta 2\ngamma 3\n");
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

TEST_F(KeyedFiles, VectorReadFromFileRunsOverLines) {
    openFile("nVar 3\n xStart ~~~~~ argument values\n 1.5, -2\n\n 3E2 4\n");
    std::vector<double> x(5, 9.0);
    int changed = 0, status = 7;
    I5LRA1("Enter xStart:", "xStart", " ", "SEQUENTIAL", "data.inp", kChannel, x.data(), 5, 3, 1,
           changed, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(x, (std::vector<double>{1.5, -2.0, 300.0, 9.0, 9.0}));
    EXPECT_EQ(output(), "");  // no prompt when reading a file
}

TEST_F(KeyedFiles, MatrixIsReadRowAfterRow) {
    openFile("Hesse\n1 2 3\n4 5 6\n");
    // Leading dimension 4: entry (i,j) is element (j-1)*4 + i-1.
    std::vector<int> h(12, 0);
    int changed = 0, status = 0;
    I5LIA1("", "HESSE", "", "R", "h.inp", kChannel, h.data(), 4, 2, 3, changed, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h, (std::vector<int>{1, 4, 0, 0, 2, 5, 0, 0, 3, 6, 0, 0}));
}

TEST_F(KeyedFiles, ReadFailureNamesTheFileAndKeepsWhatWasRead) {
    openFile("xStart\n 1.0 abc 3.0\n");
    std::vector<double> x(3, 9.0);
    int changed = 0, status = 0;
    I5LRA1("", "xStart", "", "R", "data.inp   ", kChannel, x.data(), 3, 3, 1, changed, status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(x, (std::vector<double>{1.0, 9.0, 9.0}));
    EXPECT_EQ(output(), " I5LRA1 -E- ERROR AT THE READING FROM THE FILE \"data.inp\"!\n"
                        " I5LRA1 ---E- Error code: {1010}. a value is not a number of the kind asked for\n");
}

TEST_F(KeyedFiles, PrematureEndOfFile) {
    openFile("iFixer\n 1 0\n");
    std::vector<int> fix(4, 7);
    int changed = 0, status = 0;
    I5LIA1("", "iFixer", "", "R", "fix.inp", kChannel, fix.data(), 4, 4, 1, changed, status);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(fix, (std::vector<int>{1, 0, 7, 7}));
    EXPECT_EQ(output(), " I5LIA1 -E- PREMATURE END OF THE FILE \"fix.inp\" !\n");
}

TEST_F(KeyedFiles, RealWriterFiveToALineAndAnEmptyLineAfterEachRow) {
    // A 2 by 6 matrix with leading dimension 3, row 1 holding 1.5 ... and
    // row 2 the negatives.
    std::vector<double> a(18, 0.0);
    const double row[6] = {1.5, 2.25, 3.0, 4.75, 5.5, 6.125};
    for (int j = 0; j < 6; ++j) {
        a[static_cast<std::size_t>(j * 3)] = row[j];
        a[static_cast<std::size_t>(j * 3 + 1)] = -row[j];
    }
    int status = 9;
    R02WRA1(6, a.data(), 3, 2, 6, " run ~~~~~ Hesse:", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(output(),
              "  run ~~~~~ Hesse:\n"
              " 1.500000,      2.250000,      3.000000,      4.750000,      5.500000\n"
              " 6.125000\n"
              "\n"
              " -1.500000,     -2.250000,     -3.000000,     -4.750000,     -5.500000\n"
              " -6.125000\n"
              "\n");
}

}  // namespace
