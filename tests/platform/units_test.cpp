// The unit table: OPEN with its status and position words, sequential
// records, BACKSPACE, REWIND, direct access, the '$' open record, terminal
// redirection.
#include "support/temp_folder.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

class Units : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        dir = freshFolder("units");
    }
    void TearDown() override {
        unit::resetUnits();
        fs::remove_all(dir);
    }
    std::string path(const char* name) const { return (dir / name).string(); }
    static std::string contents(const std::string& p) {
        std::ifstream in(p, std::ios::binary);
        std::ostringstream s;
        s << in.rdbuf();
        return s.str();
    }
    fs::path dir;
};

TEST_F(Units, StatusWordsDecideWhetherAFileMayExist) {
    unit::OpenSpec oldFile{unit::Status::Old};
    unit::OpenSpec newFile{unit::Status::New};
    EXPECT_EQ(unit::open(3, path("a.txt"), oldFile), unit::IOERR_MISSING);
    EXPECT_FALSE(unit::isOpen(3));
    EXPECT_EQ(unit::open(3, path("a.txt"), newFile), 0);
    EXPECT_TRUE(unit::isOpen(3));
    EXPECT_EQ(unit::fileNameOf(3), path("a.txt"));
    unit::close(3);
    EXPECT_EQ(unit::open(3, path("a.txt"), newFile), unit::IOERR_EXISTS);
    EXPECT_EQ(unit::open(3, path("a.txt"), oldFile), 0);
    EXPECT_EQ(unit::open(5, path("a.txt"), oldFile), unit::IOERR_BAD_UNIT);
    EXPECT_EQ(unit::close(44), 0);  // closing an unconnected channel is no error
}

TEST_F(Units, RecordsAreReadBackWithEndOfFileToldApart) {
    ASSERT_EQ(unit::open(4, path("r.txt"), {}), 0);
    write(4, "(I3,1X,A)", 7, "seven");
    write(4, "(A)", "");
    write(4, "(F5.2)", 2.5);
    ASSERT_EQ(unit::rewind(4), 0);
    std::string rec;
    EXPECT_EQ(unit::readRecord(4, rec), 0);
    EXPECT_EQ(rec, "  7 seven");
    EXPECT_EQ(unit::readRecord(4, rec), 0);
    EXPECT_EQ(rec, "");
    EXPECT_EQ(unit::readRecord(4, rec), 0);
    EXPECT_EQ(rec, " 2.50");
    EXPECT_EQ(unit::readRecord(4, rec), unit::IOSTAT_END);
    EXPECT_EQ(unit::readRecord(9, rec), unit::IOERR_NOT_OPEN);
}

TEST_F(Units, DirectAccessRecordsOfFourByteReals) {
    unit::OpenSpec spec{unit::Status::New, unit::Access::Direct, unit::Position::AsIs, 12};
    ASSERT_EQ(unit::open(11, path("f.bin"), spec), 0);
    const float r2[3] = {1.5f, -2.0f, 3.25f};
    const float r1[2] = {0.5f, 8.0f};
    EXPECT_EQ(unit::writeDirect(11, 2, r2, 3), 0);
    EXPECT_EQ(unit::writeDirect(11, 1, r1, 2), 0);
    EXPECT_EQ(unit::writeDirect(11, 1, r1, 4), unit::IOERR_BAD_RECORD);  // longer than RECL
    float back[3] = {};
    EXPECT_EQ(unit::readDirect(11, 2, back, 3), 0);
    EXPECT_EQ(back[0], 1.5f);
    EXPECT_EQ(back[2], 3.25f);
    EXPECT_EQ(unit::readDirect(11, 1, back, 3), 0);
    EXPECT_EQ(back[1], 8.0f);
    EXPECT_EQ(back[2], 0.0f);  // a short record is padded
    EXPECT_EQ(unit::readDirect(11, 3, back, 3), unit::IOERR_BAD_RECORD);
    std::string rec;
    EXPECT_EQ(unit::readRecord(11, rec), unit::IOERR_BAD_ACCESS);
    unit::close(11);
    EXPECT_EQ(fs::file_size(path("f.bin")), 24u);
}

TEST_F(Units, TerminalChannelsShareOneRedirectableStream) {
    std::istringstream in("typed line\r\nsecond\n");
    std::ostringstream out;
    unit::setTerminal(&in, &out);
    write(6, "(1X,A,$)", "Q?");
    write(-1, "(A)", " more");
    std::string rec;
    EXPECT_EQ(unit::readRecord(5, rec), 0);
    EXPECT_EQ(rec, "typed line");
    EXPECT_FALSE(unit::terminalInputEnded());
    unit::readRecord(5, rec);
    EXPECT_EQ(unit::readRecord(5, rec), unit::IOSTAT_END);
    EXPECT_TRUE(unit::terminalInputEnded());
    EXPECT_EQ(out.str(), " Q? more\n");
    writeList(6, 5, "ab");
    EXPECT_EQ(out.str(), " Q? more\n           5 ab\n");
}

}  // namespace
