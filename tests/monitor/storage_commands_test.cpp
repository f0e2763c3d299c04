// SAVE and RECOVER on a data set set up in memory: two data sets in one
// file, the X form, the marker rules, and the safety of both commands: a
// RECOVER that fails leaves the data set exactly as it was, a SAVE never
// shortens the file.
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "monitor/command_words.h"
#include "monitor/monitor.h"
#include "monitor/monitor_state.h"
#include "monitor/storage_file.h"
#include "platform/units.h"
#include "support/run_zemok.h"

#include "monitor_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <linux/fs.h>
#include <regex>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Every stored field of two data sets, over the full extents, is equal.
bool sameStoredFields(E4DataSetRecord& a, E4DataSetRecord& b) {
    StoredChannels ca, cb;
    std::vector<StorageField> fa = storageFields(a, ca, kMaxVar), fb = storageFields(b, cb, kMaxVar);
    for (std::size_t k = 0; k < fa.size(); ++k) {
        const int size = fa[k].MD * (fa[k].n - 1) + fa[k].m;
        const bool same = fa[k].ints ? std::equal(fa[k].ints, fa[k].ints + size, fb[k].ints)
                                     : std::equal(fa[k].reals, fa[k].reals + size, fb[k].reals);
        if (!same) return false;
    }
    return a.crName == b.crName && a.drName == b.drName && a.dwName == b.dwName && a.svName == b.svName;
}

class StorageCommands : public MonitorSession {
protected:
    void SetUp() override {
        MonitorSession::SetUp();
        home_ = fs::current_path();
        dir_ = freshFolder("storage");
        fs::current_path(dir_);
        sysinf.MODEE4 = 1;  // no questions
        E4DataSetRecord& d = E4DataSet;
        d.nVar() = 2;
        d.iFixer(1) = 1;
        d.iFixer(2) = 0;
        d.xStart(1) = 1.5, d.xStart(2) = -2.0;
        d.xEnd(1) = 1.25, d.xEnd(2) = -2.0;
        d.bL(1) = -10.0, d.bL(2) = -2.0;
        d.bU(1) = 10.0, d.bU(2) = -2.0;
        d.Hesse(1, 2) = 0.75;
        d.fStart = 3.0, d.fEnd = 2.5;
        d.iStat(row::functionEvaluations) = 17;
    }
    void TearDown() override {
        fs::current_path(home_);
        fs::remove_all(dir_);
        MonitorSession::TearDown();
    }
    // Runs SAVE or RECOVER on `line` as the monitor would; the terminal
    // output goes to `out`.
    Outcome command(const std::string& line) {
        MonitorState& m = monitorState();
        m.errorText.clear();
        setLine(m, line);
        splitMonitorLine(m);
        std::istringstream in;
        std::ostringstream os;
        unit::setTerminal(&in, &os);
        Outcome o = line.starts_with("SA") ? E4CmdSave(m) : E4CmdRecover(m);
        unit::resetTerminal();
        out = os.str() + m.errorText;
        return o;
    }
    std::string file() const { return fileText(dir_ + "/zemok.sav"); }
    fs::path home_;
    std::string dir_;
    std::string out;
};

// The whole data set of the fixture, line by line: the header, the comment
// as the marker, each field's label, values and empty line (a matrix has
// an empty line behind each row), the name blocks.
TEST_F(StorageCommands, FileLayoutOfASmallDataSet) {
    ASSERT_EQ(command("SAVE,,keep"), Outcome::Done);
    const std::string z = " 0,      0,      0,      0,      0,      0,      0,      0,      0,      0\n";
    const std::string r0 = " 0.0,           0.0\n";
    const std::string r5 = " 0.0,           0.0,           0.0,           0.0,           0.0\n";
    const std::pair<const char*, std::string> fields[] = {
        {"NVAR", " 2\n"}, {"crUnit", " 5\n"}, {"drUnit", " 5\n"}, {"dwUnit", " 6\n"}, {"MODEE4", " 1\n"},
        {"iStat", z + z + " 0,      0,      0,      0,      0,      0,      0,      0,      0,      17\n" +
                      " 0,      0,      0,      0,      2,      0,      0,      0,      0,      0\n" + z + z + z + z +
                      z + z + " 0,      0,      0,      0,      0\n"},
        {"iSaved", z}, {"iFlag", " 0\n"}, {"xStart", " 1.500000,      -2.000000\n"},
        {"xScale", " 1.000000,      1.000000\n"}, {"iFixer", " 1,      0\n"}, {"BL", " -10.00000,     -2.000000\n"},
        {"BU", " 10.00000,      -2.000000\n"}, {"xEnd", " 1.250000,      -2.000000\n"}, {"direct", r0},
        {"gStart", r0}, {"gEnd", r0}, {"deltaX", r0}, {"deltaG", r0}, {"deltaXn", " 0.0\n"}, {"xStep", r0},
        {"stpMax", r0}, {"finDif", r0}, {"rXTol", r0}, {"deviat", r0}, {"iAux1", " 0,      0\n"}, {"aux1", r0},
        {"aux2", r0}, {"aux3", r0}, {"aux4", r0}, {"rSaved", r5 + r5}, {"Hdiag", r5},
        {"Hesse", " 0.0,           0.7500000\n\n" + r0}, {"V_eigen", r0 + "\n" + r0}, {"R_eigen", r0},
        {"fStart", " 3.000000\n"}, {"fEnd", " 2.500000\n"}, {"deltaF", " 0.0\n"}, {"rFTol", " 0.0\n"},
        {"tolScl", " 0.0\n"}, {"hCond", " 0.0\n"}, {"temper", " 0.0\n"}, {"Tsced", " 0.0\n"}, {"FrlErr", " 0.0\n"},
    };
    std::string expected = " *** NEW DATA SET ***" + std::string(59, ' ') + "\n";
    std::string text = file();
    const std::size_t dateEnd = text.find('\n', expected.size()) + 1;
    EXPECT_TRUE(std::regex_match(text.substr(expected.size(), dateEnd - expected.size()),
                                 std::regex(R"( \d\d-[A-Z][a-z][a-z]-\d{4} time \d\d:\d\d:\d\d\n)")));
    text.erase(expected.size(), dateEnd - expected.size());
    expected += "keep" + std::string(28, ' ') + "\n";
    for (const auto& [name, values] : fields) expected += std::string(" keep ~~~~~ ") + name + ":\n" + values + "\n";
    const std::pair<const char*, const char*> names[] = {
        {"crName", "zemok.cmd"}, {"drName", "zemok.inp"}, {"dwName", "zemok.out"}};
    for (const auto& [tag, name] : names) expected += std::string(" keep ~~~~~ ") + tag + ":\n" + padded(name, 32) + "\n";
    EXPECT_EQ(text, expected + "\n");
}

// A file that cannot be written: read only for a plain user, immutable for
// the superuser.  Empty when neither can be arranged.
std::string lockFile(const std::string& path) {
    if (geteuid() != 0) {
        fs::permissions(path, fs::perms::owner_read);
    } else {
        int fd = open(path.c_str(), O_RDONLY);
        int flags = 0;
        if (fd < 0 || ioctl(fd, FS_IOC_GETFLAGS, &flags) != 0) return "";
        flags |= FS_IMMUTABLE_FL;
        [[maybe_unused]] int rc = ioctl(fd, FS_IOC_SETFLAGS, &flags);
        close(fd);
    }
    if (std::FILE* f = std::fopen(path.c_str(), "r+")) {
        std::fclose(f);
        return "";
    }
    return path;
}

void unlockFile(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY);
    int flags = 0;
    if (fd >= 0 && ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0) {
        flags &= ~FS_IMMUTABLE_FL;
        [[maybe_unused]] int rc = ioctl(fd, FS_IOC_SETFLAGS, &flags);
    }
    if (fd >= 0) close(fd);
    fs::permissions(path, fs::perms::owner_all);
}

TEST_F(StorageCommands, SaveOnAFileThatCannotBeWrittenFailsAndKeepsIt) {
    const std::string path = dir_ + "/zemok.sav";
    writeFile(path, "precious\n");
    if (lockFile(path).empty()) {
        unlockFile(path);
        GTEST_SKIP() << "no way to make a file unwritable here";
    }
    const Outcome o = command("SAVE,,run1");
    unlockFile(path);
    EXPECT_EQ(o, Outcome::ErrorExit);
    EXPECT_EQ(file(), "precious\n");
    EXPECT_NE(out.find(" ERROR: SAVE FAILURE\n"), std::string::npos) << out;
    EXPECT_TRUE(out.ends_with("COMMAND \"SAVE,,run1\" WAS FAILED TO EXECUTE"));
}

// Each row damages a good storage file (or asks for a marker it does not
// hold); RECOVER must fail and change nothing in memory.
struct Damage {
    const char* what;
    const char* line;
    std::function<void(std::string&)> edit;
    const char* tail;  // the end of the failure text
    int nVar = 2;      // the number of variables in memory
};

void replaceLineAfter(std::string& text, const std::string& label, const std::string& with) {
    std::size_t at = text.find(label);
    ASSERT_NE(at, std::string::npos) << label;
    at = text.find('\n', at) + 1;
    text.replace(at, text.find('\n', at) - at, with);
}

TEST_F(StorageCommands, FailedRecoverChangesNothing) {
    ASSERT_EQ(command("SAVE,,keep"), Outcome::Done);
    const std::string good = file();
    const Damage rows[] = {
        {"marker absent", "RECOVER,absent", [](std::string&) {}, " WAS FAILED TO EXECUTE"},
        {"cut inside Hesse", "RECOVER,keep",
         [](std::string& t) { t.resize(t.find('\n', t.find("~~~~~ Hesse:") + 14) + 1); }, " WAS FAILED TO EXECUTE"},
        {"xEnd one value short", "RECOVER,keep", [](std::string& t) { replaceLineAfter(t, "~~~~~ xEnd:", " 1.250000"); },
         " WAS FAILED TO EXECUTE"},
        {"xStep not a number", "RECOVER,keep", [](std::string& t) { replaceLineAfter(t, "~~~~~ xStep:", " 0.1, abc"); },
         " WAS FAILED TO EXECUTE"},
        {"another nVar", "RECOVER,keep", [](std::string& t) { replaceLineAfter(t, "~~~~~ NVAR:", " 3"); },
         "ERROR: WRONG NUMBER OF VARIABLES: 3!"},
        {"nVar beyond the arrays", "RECOVER,keep", [](std::string& t) { replaceLineAfter(t, "~~~~~ NVAR:", " 500"); },
         "ERROR: WRONG NUMBER OF VARIABLES: 500!", 0},
    };
    E4DataSetRecord& d = E4DataSet;
    for (int i = 1; i <= 2; ++i) d.xStart(i) = d.xEnd(i) = d.xStep(i) = d.Hesse(i, i) = 7.0 * i;
    d.iStat(row::functionEvaluations) = 99;
    static E4DataSetRecord before;
    before = d;
    for (const Damage& row : rows) {
        std::string text = good;
        row.edit(text);
        writeFile(dir_ + "/zemok.sav", text);
        d.nVar() = before.nVar() = row.nVar;
        EXPECT_EQ(command(row.line), Outcome::ErrorExit) << row.what;
        EXPECT_TRUE(out.ends_with(row.tail)) << row.what << "\n" << out;
        EXPECT_TRUE(sameStoredFields(d, before)) << row.what;
        EXPECT_EQ(fileText(dir_ + "/zemok.sav"), text) << row.what;
        d = before;
    }
}

}  // namespace
