// Tests of free-form reading: item splitting, number conversion and reads
// that run over several records.
#include "platform/list_directed_read.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

TEST(ListConvert, Integers) {
    int v = 99;
    EXPECT_EQ(listReadInt("42", v), 0);
    EXPECT_EQ(v, 42);
    EXPECT_EQ(listReadInt("-7", v), 0);
    EXPECT_EQ(v, -7);
    EXPECT_EQ(listReadInt("+3", v), 0);
    EXPECT_EQ(v, 3);
    EXPECT_EQ(listReadInt("-2147483648", v), 0);
    EXPECT_EQ(v, -2147483647 - 1);
    EXPECT_EQ(listReadInt("", v), 0);
    EXPECT_EQ(v, -2147483647 - 1);
    for (const char* bad : {"2147483648", "1.0", "1e3", "-", "12a", "abc", "99999999999999999999"})
        EXPECT_EQ(listReadInt(bad, v), LIST_BAD_ITEM) << bad;
    EXPECT_EQ(v, -2147483647 - 1);
}

TEST(ListConvert, RealForms) {
    struct Case {
        const char* text;
        double value;
    };
    for (Case c : {Case{"1.5E3", 1500.0}, Case{"1.5D3", 1500.0}, Case{"1e-3", 0.001}, Case{".5", 0.5},
                   Case{"5.", 5.0}, Case{"-2", -2.0}, Case{"1.5+3", 1500.0}, Case{"2.5d-1", 0.25},
                   Case{"+0.1", 0.1}, Case{"5.e1", 50.0}, Case{"7q0", 7.0}}) {
        double v = -1.0;
        EXPECT_EQ(listReadReal(c.text, v), 0) << c.text;
        EXPECT_EQ(v, c.value) << c.text;
    }
    double v = 0.0;
    EXPECT_EQ(listReadReal("-Infinity", v), 0);
    EXPECT_EQ(v, -INFINITY);
    EXPECT_EQ(listReadReal("nan", v), 0);
    EXPECT_TRUE(std::isnan(v));
    v = 3.0;
    EXPECT_EQ(listReadReal("", v), 0);
    EXPECT_EQ(v, 3.0);
    for (const char* bad : {"1.5.3", "e3", ".", "1e", "abc", "1,5", "1e400", "--1", "1.5e+"})
        EXPECT_EQ(listReadReal(bad, v), LIST_BAD_ITEM) << bad;
    EXPECT_EQ(v, 3.0);
}

// A record source over a list of lines; -1 after the last.
struct Lines {
    std::vector<std::string> lines;
    size_t next = 0;
    int status = -1;
    ListReader reader() {
        return ListReader([this](std::string& rec) {
            if (next >= lines.size()) return status;
            rec = lines[next++];
            return 0;
        });
    }
};

TEST(ListReaderTest, EndOfInputAndFailures) {
    Lines src{{"1 2"}};
    int v[3] = {0, 0, 77};
    EXPECT_EQ(src.reader().readInts(v, 3), -1);
    EXPECT_EQ(v[1], 2);
    EXPECT_EQ(v[2], 77);
    Lines failing{{}, 0, 1005};
    EXPECT_EQ(failing.reader().readInts(v, 1), 1005);
    Lines bad{{"1 x 3"}};
    v[0] = v[1] = 0;
    EXPECT_EQ(bad.reader().readInts(v, 3), LIST_BAD_ITEM);
    EXPECT_EQ(v[0], 1);
}

TEST(ListReaderTest, SlashAndNullsKeepValues) {
    Lines src{{"1 / 9", "5", "1,,3"}};
    ListReader r = src.reader();
    int v[3] = {0, 8, 8};
    EXPECT_EQ(r.readInts(v, 3), 0);
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], 8);
    EXPECT_EQ(r.readInts(v, 1), 0);
    EXPECT_EQ(v[0], 5);
    v[1] = 9;
    EXPECT_EQ(r.readInts(v, 3), 0);
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], 9);
    EXPECT_EQ(v[2], 3);
}

TEST(ListReaderTest, RealsAndTexts) {
    Lines src{{"1 2.5e0", "SPHERE 'long text here' CYLINDER"}};
    ListReader r = src.reader();
    double x[2] = {0, 0};
    EXPECT_EQ(r.readReals(x, 2), 0);
    EXPECT_EQ(x[0], 1.0);
    EXPECT_EQ(x[1], 2.5);
    std::string t[3] = {std::string(8, ' '), std::string(), std::string(3, ' ')};
    EXPECT_EQ(r.readTexts(t, 3), 0);
    EXPECT_EQ(t[0], "SPHERE  ");
    EXPECT_EQ(t[1], "long text here");
    EXPECT_EQ(t[2], "CYL");
}

}  // namespace
