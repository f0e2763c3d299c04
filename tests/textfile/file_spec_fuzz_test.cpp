// Random file specifications: garbage never crashes the parser and gives a
// defined status; well-formed specifications come back unchanged when the
// parsed fields are composed again.
#include "textfile/file_spec.h"

#include "monitor/monitor.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <sstream>
#include <string>

namespace {

class FileSpecFuzz : public ::testing::Test {
protected:
    void SetUp() override {
        resetProgramState();
        unit::setTerminal(&in, &out);
    }
    void TearDown() override { unit::resetUnits(); }
    std::string pick(std::string_view chars, int n) {
        std::string s;
        for (int k = 0; k < n; ++k) s += chars[rnd() % chars.size()];
        return s;
    }
    int upTo(int n) { return static_cast<int>(rnd() % static_cast<unsigned>(n + 1)); }
    std::string word(int maxLen) { return pick("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_", 1 + upTo(maxLen - 1)); }

    std::mt19937 rnd{20240611u};
    std::istringstream in;
    std::ostringstream out;
};

const char* const kFileSystems[] = {"FAT", "FAT32", "UNIX", "VMS"};

TEST_F(FileSpecFuzz, GarbageGivesADefinedStatusAndKeepsTheFieldWidths) {
    const std::set<int> defined = {2, 1, 0, -1, -2, -3, -4, -5, -6};
    const std::string alphabet = ":\\/.;[]<>{}~*\" \tabXY019.:\\/";
    std::set<int> seen;
    for (int round = 0; round < 4000; ++round) {
        const char* fs = kFileSystems[round % 4];
        int width = round % 3 == 0 ? 16 : 256;
        int length = upTo(round % 50 == 0 ? 300 : 40);
        std::string spec = pick(alphabet, length);
        SpecFields fields = makeSpecFields(width);
        int err = 99;
        R02PFS(spec, fields, fs, err);
        ASSERT_TRUE(defined.count(err)) << fs << " \"" << spec << "\" gave " << err;
        seen.insert(err);
        for (const std::string& f : fields) ASSERT_EQ(f.size(), static_cast<std::size_t>(width));
        std::size_t trimmed = spec.find_last_not_of(" \t");
        if (trimmed == std::string::npos) {
            ASSERT_EQ(err, 2) << spec;
        } else if (trimmed + 1 > 256) {
            ASSERT_EQ(err, -6) << spec;
        }
        std::string composed(300, ' ');
        int cerr = 99;
        R02CFS(composed, fields, fs, cerr);
        ASSERT_TRUE(cerr == 0 || cerr == 1 || cerr == -1 || cerr == -6) << fs << " \"" << spec << "\" gave " << cerr;
        ASSERT_EQ(composed.size(), 300u);
        out.str("");
    }
    // The random texts reach every kind of outcome but the narrow field.
    for (int e : {2, 1, 0, -1, -2, -3, -6}) EXPECT_TRUE(seen.count(e)) << e;
}

TEST_F(FileSpecFuzz, WellFormedFatSpecificationsComeBackUnchanged) {
    for (int round = 0; round < 500; ++round) {
        std::string spec;
        if (upTo(1)) spec += pick("CDEZ", 1) + ":\\";
        for (int k = upTo(3); k > 0; --k) spec += word(8) + "\\";
        spec += word(8);
        if (upTo(1)) spec += "." + word(3);
        for (const char* fs : {"FAT", "FAT32"}) {
            SpecFields fields = makeSpecFields(64);
            int err = 99;
            R02PFS(spec, fields, fs, err);
            ASSERT_EQ(err, 0) << spec;
            std::string composed(80, ' ');
            R02CFS(composed, fields, fs, err);
            ASSERT_EQ(err, 0) << spec;
            ASSERT_EQ(composed.substr(0, composed.find_last_not_of(' ') + 1), spec);
        }
    }
    EXPECT_EQ(out.str(), "");
}

TEST_F(FileSpecFuzz, WellFormedUnixAndVmsSpecificationsComeBackUnchanged) {
    for (int round = 0; round < 500; ++round) {
        std::string unixSpec;
        for (int k = upTo(3); k > 0; --k) unixSpec += word(12) + "/";
        unixSpec += word(12);
        for (int k = upTo(2); k > 0; --k) unixSpec += "." + word(4);

        std::string vmsSpec;
        if (upTo(1)) vmsSpec += word(6) + "::";
        if (upTo(1)) vmsSpec += word(6) + ":";
        if (upTo(1)) {
            vmsSpec += "[" + word(8);
            for (int k = upTo(2); k > 0; --k) vmsSpec += "." + word(8);
            vmsSpec += "]";
        }
        vmsSpec += word(9);
        if (upTo(1)) vmsSpec += "." + word(3);
        if (upTo(1)) vmsSpec += ";" + pick("0123456789", 1 + upTo(2));

        for (auto [spec, fs] : {std::pair{unixSpec, "UNIX"}, std::pair{vmsSpec, "VMS"}}) {
            SpecFields fields = makeSpecFields(64);
            int err = 99;
            R02PFS(spec, fields, fs, err);
            ASSERT_EQ(err, 0) << spec;
            std::string composed(120, ' ');
            R02CFS(composed, fields, fs, err);
            ASSERT_EQ(err, 0) << spec;
            ASSERT_EQ(composed.substr(0, composed.find_last_not_of(' ') + 1), spec);
        }
    }
    EXPECT_EQ(out.str(), "");
}

}  // namespace
