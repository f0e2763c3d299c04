// Asking for file names: I05EFND completes a reply from its default, Z1OPN1
// opens a file and offers another name when that fails.
#include "support/temp_folder.h"
#include "textfile/file_spec.h"

#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "support/terminal_test.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FileDialogue : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        TerminalTest::SetUp();
        dir = freshFolder("dialogue");
    }
    void TearDown() override {
        TerminalTest::TearDown();
        fs::remove_all(dir);
    }
    static std::string trim(const std::string& f) { return f.substr(0, f.find_last_not_of(' ') + 1); }
    static int count(const std::string& text, const std::string& part) {
        int n = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
        return n;
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }
    // Asks with the default "C:\DATA\OLD.DAT" and returns the answer.
    std::string ask(const std::string& replies, int& err) {
        std::string deflt = field("C:\\DATA\\OLD.DAT", 64);
        feed(replies);
        I05EFND("Data file", deflt, "!", 60, err);
        EXPECT_EQ(deflt.size(), 64u);
        return trim(deflt);
    }

    fs::path dir;
};

const std::string kQuestion = " Data file " + std::string(27, '.') + " < C:\\DATA\\OLD.DAT >: ";
const std::string kGiveNew = " Give new file name or press \"CR\" to quit " + std::string(16, '.') + ": ";

TEST_F(FileDialogue, TheReplyIsCompletedFromTheDefault) {
    int err = 99;
    EXPECT_EQ(ask("NEW\n", err), "NEW.DAT");  // the extension of the default, nothing else
    EXPECT_EQ(err, 0);
    EXPECT_EQ(output(), kQuestion);
    EXPECT_EQ(ask("*.TXT\n", err), "C:\\DATA\\OLD.TXT");
    EXPECT_EQ(ask("NEW.*\n", err), "NEW.DAT");
    EXPECT_EQ(ask("D:\\X\\NEW.ABC ! a comment\n", err), "D:\\X\\NEW.ABC");
    EXPECT_EQ(ask("\n", err), "C:\\DATA\\OLD.DAT");
    EXPECT_EQ(ask("  .  \n", err), "C:\\DATA\\OLD.DAT");
    EXPECT_EQ(ask("", err), "C:\\DATA\\OLD.DAT");  // end of input
    EXPECT_EQ(err, 0);
}

TEST_F(FileDialogue, OpensAFileThatExistsAndCreatesOneOnWriting) {
    std::ofstream(path("have.dat")) << "line one\n";
    std::string name = field(path("have.dat"), 128);
    int result = 99;
    Z1OPN1(12, name, "read", "", result);
    EXPECT_EQ(result, 0);
    std::string record;
    EXPECT_EQ(unit::readRecord(12, record), 0);
    EXPECT_EQ(record, "line one");
    name = field(path("new.out"), 128);
    Z1OPN1(7, name, "WRITE", "UNKNOWN", result);
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(fs::exists(path("new.out")));
    EXPECT_EQ(output(), "");
}

TEST_F(FileDialogue, AMissingFileForReadingIsReportedWithoutDialogue) {
    std::string name = field(path("none.dat"), 128);
    int result = 99;
    feed(path("other.dat") + "\n");
    Z1OPN1(12, name, "READ", "OLD", result);
    EXPECT_EQ(result, unit::IOERR_MISSING);
    std::string shown = output();
    EXPECT_EQ(shown.rfind(" Z1OPN1 ---E- Error code: {1004}.", 0), 0u);
    // No dialogue: the file is named once.
    EXPECT_EQ(count(shown, "Current file name: \"" + path("none.dat") + "\""), 1);
    EXPECT_EQ(shown.find("Give new file name"), std::string::npos);
    EXPECT_FALSE(unit::isOpen(12));
}

TEST_F(FileDialogue, WritingToAMissingOldFileOffersAnotherName) {
    std::ofstream(path("good.sav")) << "saved\n";
    const std::string missing = path("gone.sav");
    std::string name = field(missing, 128);
    int result = 99;
    sysinf.FileSystemType = field("UNIX", 16);
    feed("data/~/x\n" + path("good.sav") + "\n");  // the first reply does not parse
    Z1OPN1(2, name, "WRITE", "OLD", result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(trim(name), path("good.sav"));
    std::string shown = output();
    EXPECT_EQ(shown.rfind(" Z1OPN1 ---E- Error code: {1004}.", 0), 0u);
    EXPECT_NE(shown.find("\n Z1OPN1 ----- Current file name: \"" + missing + "\"\n" + kGiveNew), std::string::npos);
    EXPECT_EQ(count(shown, kGiveNew), 2);
    EXPECT_NE(shown.find("R02PFS ---E- DIRECTORY field not in order in"), std::string::npos);
    std::string record;
    EXPECT_EQ(unit::readRecord(2, record), 0);
    EXPECT_EQ(record, "saved");
}

TEST_F(FileDialogue, GivingUpAndNoDialogueInAutoModeOrFromACommandFile) {
    const std::string missing = path("gone.sav");
    std::string name = field(missing, 128);
    int result = 99;
    feed("\n");
    Z1OPN1(2, name, "WRITE", "OLD", result);
    EXPECT_EQ(result, unit::IOERR_MISSING);
    EXPECT_EQ(trim(name), missing);
    EXPECT_EQ(count(output(), kGiveNew), 1);
    EXPECT_FALSE(unit::isOpen(2));

    feed(path("x") + "\n");
    sysinf.MODEE4 = 1;
    Z1OPN1(2, name, "WRITE", "OLD", result);
    EXPECT_EQ(result, unit::IOERR_MISSING);
    sysinf.MODEE4 = 0;
    sysinf.crUnit = 3;
    Z1OPN1(2, name, "WRITE", "OLD", result);
    EXPECT_EQ(result, unit::IOERR_MISSING);
    // Without a dialogue the file is named, and no other name is asked.
    const std::string shown = output();
    EXPECT_EQ(count(shown, "Current file name: \"" + missing + "\""), 2);
    EXPECT_EQ(shown.find("Give new file name"), std::string::npos);
}

}  // namespace
