// Tests of the edit-notation formatter: every case of the gfortran golden
// table, then layout, reversion, scale-factor and error cases worked by hand.
#include "platform/edit_format.h"
#include "platform/real_editing.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct GoldenCase {
    std::string id, group, format, output;
    FmtItems items;
};

// Undoes the table's escapes: \n, \\ and \xHH.
std::string unescape(const std::string& s) {
    std::string out;
    for (size_t k = 0; k < s.size(); ++k) {
        if (s[k] != '\\') {
            out += s[k];
        } else if (s[k + 1] == 'n') {
            out += '\n';
            ++k;
        } else if (s[k + 1] == '\\') {
            out += '\\';
            ++k;
        } else {
            out += static_cast<char>(std::stoi(s.substr(k + 2, 2), nullptr, 16));
            k += 3;
        }
    }
    return out;
}

FmtItem parseItem(const std::string& t) {
    if (t.rfind("r8:", 0) == 0) return FmtItem(std::bit_cast<double>(std::stoull(t.substr(3, 16), nullptr, 16)));
    if (t.rfind("i4:", 0) == 0) return FmtItem(std::stoi(t.substr(3)));
    if (t.rfind("ch:[", 0) == 0) return FmtItem(unescape(t.substr(4, t.size() - 5)));
    throw std::runtime_error("bad item " + t);
}

std::vector<GoldenCase> loadGolden() {
    std::ifstream in(std::string(ZEMOK_TEST_DATA) + "/format_golden.tsv");
    std::vector<GoldenCase> cases;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> col;
        std::stringstream ss(line);
        for (std::string f; std::getline(ss, f, '\t');) col.push_back(f);
        GoldenCase c{col.at(0), col.at(1), col.at(2), unescape(col.at(3).substr(1, col.at(3).size() - 2)), {}};
        for (size_t i = 4; i < col.size(); ++i) c.items.push_back(parseItem(col[i]));
        cases.push_back(c);
    }
    return cases;
}

const std::vector<GoldenCase>& golden() {
    static const std::vector<GoldenCase> cases = loadGolden();
    return cases;
}

// Items one pass of a simple format takes: its A, I, F, E, D, G letters
// outside literals (enough for the continued WRITEs of the table).
size_t dataDescriptorCount(const std::string& format) {
    size_t n = 0;
    char quote = 0;
    for (char c : format) {
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (std::string("AIFEDG").find(c) != std::string::npos) {
            ++n;
        }
    }
    return n;
}

// The bytes a case writes: each WRITE in turn, a record end after every
// WRITE that advances.
std::string runCase(const GoldenCase& c) {
    std::vector<std::string> writes;
    std::string f = c.format;
    for (size_t p; (p = f.find(" ++ ")) != std::string::npos; f = f.substr(p + 4)) writes.push_back(f.substr(0, p));
    writes.push_back(f);
    std::string out;
    size_t used = 0;
    for (size_t w = 0; w < writes.size(); ++w) {
        size_t n = w + 1 < writes.size() ? dataDescriptorCount(writes[w]) : c.items.size() - used;
        FmtItems part(c.items.begin() + static_cast<long>(used), c.items.begin() + static_cast<long>(used + n));
        used += n;
        if (writes[w] == "*") {
            out += listDirected(part) + "\n";
        } else {
            FormattedText t = formatRecords(writes[w], part);
            out += t.text;
            if (t.advance) out += "\n";
        }
    }
    return out;
}

// Runs every case of the named groups; returns how many were run.
size_t checkGroups(const std::vector<std::string>& groups) {
    size_t run = 0;
    for (const GoldenCase& c : golden()) {
        bool wanted = false;
        for (const std::string& g : groups) wanted = wanted || g == c.group;
        if (!wanted) continue;
        ++run;
        EXPECT_EQ(runCase(c), c.output) << "case " << c.id << " " << c.format;
    }
    return run;
}

TEST(FormatGolden, TableIsComplete) {
    ASSERT_EQ(golden().size(), 2666u);
    std::map<std::string, size_t> perGroup;
    for (const GoldenCase& c : golden()) ++perGroup[c.group];
    EXPECT_EQ(perGroup.size(), 10u);
}

TEST(FormatGolden, GeneralEditing) { EXPECT_EQ(checkGroups({"G", "G-bound"}), 938u + 354u); }
TEST(FormatGolden, FixedEditing) { EXPECT_EQ(checkGroups({"F", "F-label"}), 469u + 174u); }
TEST(FormatGolden, ExponentEditing) { EXPECT_EQ(checkGroups({"E", "D"}), 268u); }
TEST(FormatGolden, IntegerAndTextEditing) { EXPECT_EQ(checkGroups({"I", "A"}), 331u); }
TEST(FormatGolden, Layout) { EXPECT_EQ(checkGroups({"layout"}), 82u); }
TEST(FormatGolden, ListDirected) { EXPECT_EQ(checkGroups({"list"}), 50u); }

std::string fmt(std::string_view f, const FmtItems& items) {
    FormattedText t = formatRecords(f, items);
    EXPECT_TRUE(t.advance);
    return t.text;
}

TEST(FormatLayout, TabsMoveBothWaysAndOverwrite) {
    EXPECT_EQ(fmt("(A,T2,'Z',T8,'q')", {"abcd"}), "aZcd   q");
    EXPECT_EQ(fmt("(A,TL2,'xy')", {"abcd"}), "abxy");
    EXPECT_EQ(fmt("(A,TL9,'x')", {"abcd"}), "xbcd");
    EXPECT_EQ(fmt("(A,TR2,'z',5X)", {"ab"}), "ab  z");
}

TEST(FormatLayout, RepeatedSlashAndColon) {
    EXPECT_EQ(fmt("(I1,2/,I1)", {1, 2}), "1\n\n2");
    EXPECT_EQ(fmt("(I3,:,' end')", {1}), "  1");
    EXPECT_EQ(fmt("(I3,' end')", {1}), "  1 end");
    EXPECT_EQ(fmt("()", {}), "");
}

TEST(FormatLayout, DollarKeepsTheRecordOpen) {
    FormattedText t = formatRecords("(' Name: ',A,$)", {"x"});
    EXPECT_EQ(t.text, " Name: x");
    EXPECT_FALSE(t.advance);
}

TEST(FormatLayout, BlanksCaseAndOmittedCommas) {
    EXPECT_EQ(fmt("( 1x , i 3 , f 6 . 2 )", {7, 2.5}), "   7  2.50");
    EXPECT_EQ(fmt("(I3'x'I4/I2)", {1, 2, 3}), "  1x   2\n 3");
    EXPECT_EQ(fmt("(1PE10.3)", {2.5}), " 2.500E+00");
    EXPECT_EQ(fmt("('it''s',\"say \"\"hi\"\"\")", {}), "it'ssay \"hi\"");
}

TEST(FormatReversion, ResumesAtLastGroupWithItsRepeatCount) {
    FmtItems seven{1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(fmt("(I2,2(I3,'|'))", seven), " 1  2|  3|\n  4|  5|\n  6|  7|");
    FmtItems six{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(fmt("(I2,2(I3,'|'))", six), " 1  2|  3|\n  4|  5|\n  6|");
    // Without a group the whole format is used again.
    EXPECT_EQ(fmt("('<',I1)", {1, 2, 3}), "<1\n<2\n<3");
}

TEST(FormatReversion, ScaleFactorHoldsUntilChanged) {
    EXPECT_EQ(fmt("(1P,E10.3,0P,E10.3,F6.2)", {1.5, 1.5, 1.5}), " 1.500E+00 0.150E+01  1.50");
    // The scale set in the first pass still holds after reversion.
    EXPECT_EQ(fmt("(F6.2,1P,F6.2)", {1.5, 1.5, 1.5}), "  1.50 15.00\n 15.00");
    EXPECT_EQ(fmt("(-1P,F8.3)", {123.4567}), "  12.346");
    EXPECT_EQ(fmt("(2P,F8.1)", {1.25}), "   125.0");
    EXPECT_EQ(fmt("(3P,E12.4)", {1.5}), "  150.00E-02");
}

TEST(FormatText, LongTextIsCutShortTextRightJustified) {
    EXPECT_EQ(fmt("(A3,'|',A5,'|')", {"abcdef", "xy"}), "abc|   xy|");
    EXPECT_EQ(fmt("(A,'|')", {std::string("ab  ")}), "ab  |");
}

TEST(FormatNumbers, FieldsTooNarrowAndLoneZero) {
    EXPECT_EQ(fmt("(F1.0)", {0.0}), "*");
    EXPECT_EQ(fmt("(F2.0)", {-0.4}), "**");
    EXPECT_EQ(fmt("(F2.1)", {0.04}), ".0");
    EXPECT_EQ(fmt("(E6.1)", {0.5}), ".5E+00");
    EXPECT_EQ(fmt("(E5.1)", {-0.5}), "*****");
    EXPECT_EQ(fmt("(I4)", {12345}), "****");
    EXPECT_EQ(fmt("(I12)", {-9876543210LL}), " -9876543210");
}

TEST(ExactDigits, RoundingTiesToEvenAndCarries) {
    using editing::Decimal;
    EXPECT_EQ(editing::roundDigits(Decimal{"125", 0}, 2).digits, "12");
    EXPECT_EQ(editing::roundDigits(Decimal{"375", 0}, 2).digits, "38");
    EXPECT_EQ(editing::roundDigits(Decimal{"1251", 0}, 2).digits, "13");
    Decimal carried = editing::roundDigits(Decimal{"9995", 1}, 3);
    EXPECT_EQ(carried.digits, "1");
    EXPECT_EQ(carried.exp, 2);
    EXPECT_TRUE(editing::roundDigits(Decimal{"5", 0}, 0).digits.empty());
    Decimal up = editing::roundDigits(Decimal{"51", 0}, 0);
    EXPECT_EQ(up.digits, "1");
    EXPECT_EQ(up.exp, 1);
    EXPECT_TRUE(editing::roundDigits(Decimal{"9", 0}, -1).digits.empty());
}

}  // namespace
