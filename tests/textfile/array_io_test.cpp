// Tests of the array readers I5LRA1, I5LIA1, R02RDR, R02RDI, the writers
// R02WRA1, R2WIA1 and the word joiner R02AWL.
#include "support/temp_folder.h"
#include "support/terminal_test.h"
#include "textfile/array_io.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <vector>

namespace {

constexpr int kChannel = 4;

class ArrayIO : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        path_ = freshFolder("array") + "/array.inp";
    }
    void TearDown() override {
        TerminalTest::TearDown();
        std::error_code ec;
        std::filesystem::remove(path_, ec);
    }
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
    std::string path_;
};

TEST_F(ArrayIO, VectorReadFromFileRunsOverLines) {
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

TEST_F(ArrayIO, MatrixIsReadRowAfterRow) {
    openFile("Hesse\n1 2 3\n4 5 6\n");
    // Leading dimension 4: entry (i,j) is element (j-1)*4 + i-1.
    std::vector<int> h(12, 0);
    int changed = 0, status = 0;
    I5LIA1("", "HESSE", "", "R", "h.inp", kChannel, h.data(), 4, 2, 3, changed, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h, (std::vector<int>{1, 4, 0, 0, 2, 5, 0, 0, 3, 6, 0, 0}));
}

TEST_F(ArrayIO, ReadFailureNamesTheFileAndKeepsWhatWasRead) {
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

TEST_F(ArrayIO, PrematureEndOfFile) {
    openFile("iFixer\n 1 0\n");
    std::vector<int> fix(4, 7);
    int changed = 0, status = 0;
    I5LIA1("", "iFixer", "", "R", "fix.inp", kChannel, fix.data(), 4, 4, 1, changed, status);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(fix, (std::vector<int>{1, 0, 7, 7}));
    EXPECT_EQ(output(), " I5LIA1 -E- PREMATURE END OF THE FILE \"fix.inp\" !\n");
}

TEST_F(ArrayIO, RealWriterFiveToALineAndAnEmptyLineAfterEachRow) {
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
