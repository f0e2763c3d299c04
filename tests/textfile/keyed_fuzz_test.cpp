// Random keyed files and random value words through the keyed readers and
// the array loaders: every call ends with one of its status values, keeps
// the sizes of its fields and writes nothing outside its array.
#include "support/temp_folder.h"
#include "support/terminal_test.h"
#include "textfile/array_io.h"
#include "textfile/keyed_reading.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

namespace {

constexpr int kChannel = 12;
const char* kKeys[] = {"ScreenWidth", "HelpFile", "xStart", "nVar", "BL", "run1", "=", ":"};
const char* kPieces[] = {" ",  "=",   ":",   ",",  "!",     "#",   "~",   "\t",  "1",     "-7",  "3.5",
                         "1E5", "abc", "(2:", ":)", "1*2.5", "'q'", "/",   "\r",  "\xC5", "\x01", "99999999999"};

class KeyedFuzz : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        path_ = freshFolder("fuzz") + "/keyed.txt";
    }
    void TearDown() override {
        TerminalTest::TearDown();
        std::error_code ec;
        std::filesystem::remove(path_, ec);
    }
    std::string randomLine() {
        std::string line;
        int parts = pick(12);
        for (int k = 0; k < parts; ++k) {
            if (pick(3) == 0) line += kKeys[pick(std::size(kKeys))];
            else line += kPieces[pick(std::size(kPieces))];
        }
        if (pick(20) == 0) line += std::string(static_cast<std::size_t>(pick(400)), 'x');
        return line;
    }
    void openRandomFile() {
        unit::close(kChannel);
        std::ofstream out(path_);
        int lines = pick(15);
        for (int k = 0; k < lines; ++k) out << randomLine() << '\n';
        out.close();
        unit::OpenSpec spec;
        spec.status = unit::Status::Old;
        ASSERT_EQ(unit::open(kChannel, path_, spec), 0);
        for (int k = pick(3); k > 0; --k) {  // start somewhere inside the file
            std::string r;
            unit::readRecord(kChannel, r);
        }
    }
    int pick(std::size_t n) { return static_cast<int>(rng_() % n); }
    std::string path_;
    std::mt19937 rng_{20240611u};
};

TEST_F(KeyedFuzz, ValueReadersAnswerWithTheirStatusValues) {
    for (int round = 0; round < 500; ++round) {
        openRandomFile();
        const std::string token = kKeys[pick(std::size(kKeys))];
        int value = 4711;
        int status = 0;
        I05RIN2(kChannel, token, value, "!#~", status);
        const std::vector<int> allowed = {0, -1, -2, -3, -4, -5, -11};
        EXPECT_NE(std::find(allowed.begin(), allowed.end(), status), allowed.end()) << status;
        if (status == -11) {
            EXPECT_EQ(value, 4711);
        } else if (status < 0) {
            EXPECT_EQ(value, 0);
        }

        std::string text(static_cast<std::size_t>(pick(20)), '*');
        const std::size_t width = text.size();
        I05RS2(kChannel, token, text, pick(2) ? "!#~" : " ", status);
        EXPECT_TRUE(status == 0 || status == 1 || status == -1) << status;
        if (width > 0) {
            EXPECT_EQ(text.size(), width);
        }

        std::string line(static_cast<std::size_t>(pick(100)), ' ');
        I05FTSF(kChannel, token, kKeys[pick(std::size(kKeys))], pick(2) ? "SEQ" : "R", line, status);
        EXPECT_TRUE(status == 0 || status == -1) << status;
    }
    output();
}

TEST_F(KeyedFuzz, ArrayReadersStayWithinTheirArray) {
    for (int round = 0; round < 500; ++round) {
        openRandomFile();
        const int m = 1 + pick(5);
        const int n = 1 + pick(3);
        const int MD = m + pick(3);
        std::vector<double> a(static_cast<std::size_t>(MD * n + 4), -123.0);
        int changed = 0;
        int status = 0;
        const char* label = kKeys[pick(std::size(kKeys))];
        I5LRA1("", label, pick(2) ? "" : "run1", pick(2) ? "SEQ" : "R", "f", kChannel, a.data(), MD, m, n,
               changed, status);
        EXPECT_TRUE(status >= -1 && status <= 2) << status;
        for (std::size_t k = static_cast<std::size_t>(MD * n); k < a.size(); ++k) EXPECT_EQ(a[k], -123.0);
        for (int j = 0; j < n; ++j)
            for (int i = m; i < MD; ++i) EXPECT_EQ(a[static_cast<std::size_t>(j * MD + i)], -123.0);
    }
    output();
}

TEST_F(KeyedFuzz, LoadersTakeAnyWordsInAutoMode) {
    const char* wordPieces[] = {"ALL", "(", ")", ":", "E", "-", "0", "1", "2", "7", "999", "1.5", "x", ""};
    for (int round = 0; round < 3000; ++round) {
        unit::restartTerminalInput();
        std::vector<std::string> words(6);
        for (std::string& w : words) {
            std::string text;
            for (int k = pick(4); k > 0; --k) text += wordPieces[pick(std::size(wordPieces))];
            w = field(text, 32);
        }
        const int m = 1 + pick(6);
        const int n = pick(4) == 0 ? 1 + pick(3) : 1;
        const int MD = m + pick(2);
        std::vector<double> a(static_cast<std::size_t>(MD * n + 2), -1.0);
        int changed = 0;
        int status = 9;
        I5LRA2(a.data(), MD, m, n, "v", " ", "c", words.data(), 6, 1 + pick(5), " ,;", pick(2), 5, "", "SEQ",
               1, changed, status);
        EXPECT_TRUE(status == 0 || status == 1) << status;
        EXPECT_EQ(a[a.size() - 1], -1.0);
        EXPECT_EQ(a[a.size() - 2], -1.0);
        for (const std::string& w : words) EXPECT_EQ(w.size(), 32u);
    }
    output();
}

}  // namespace
