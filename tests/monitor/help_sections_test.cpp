// Tests of I05FCBD1 on a small help file: the search of sections, repeated
// sections, the prefix test, output on a file, page control and failures.
#include "support/terminal_test.h"
#include "support/temp_folder.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

const char* kHelpText =
    "==> TITLES\n"
    "Title line\n"
    "==> USER-COMMAND: ALPHA\n"
    "alpha one\n"
    "\n"
    "alpha two\n"
    "==>user-command:beta\n"
    "beta one\n"
    "==> USER-COMMAND: SET\n"
    "set one\n"
    "==> USER-COMMAND: SET*\n"
    "step one\n"
    "==> USER-COMMAND: ALPHA\n"
    "alpha three\n"
    "==> USER-COMMAND: LONG\n"
    "l1\nl2\nl3\nl4\nl5\n";

const std::string kPause = " ===> Enter \"E\" to quit or press CR for more information: ";

class HelpSections : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        dir_ = freshFolder("help");
        helpFile_ = dir_ + "/test.hlp";
        std::ofstream(helpFile_) << kHelpText;
    }
    void TearDown() override {
        unit::resetUnits();
        std::filesystem::remove_all(dir_);
    }
    // Shows a section on the terminal; returns the status.
    int show(const std::string& section, const std::string& prefix = std::string(kCommandHelpPrefix),
             int out = 6) {
        int status = 99;
        I05FCBD1(kHelpFileChannel, out, helpFile_, prefix, section, status);
        return status;
    }
    std::string dir_;
    std::string helpFile_;
};

TEST_F(HelpSections, AllSectionsOfTheNameInFileOrder) {
    EXPECT_EQ(show("ALPHA"), 0);
    // An empty line is one blank; the later ALPHA section follows.
    EXPECT_EQ(output(), " alpha one\n \n alpha two\n alpha three\n");
    EXPECT_FALSE(unit::isOpen(kHelpFileChannel));
}

TEST_F(HelpSections, SectionKeyIsAPrefixOfTheHeader) {
    EXPECT_EQ(show("SET"), 0);  // SET* belongs to SET too
    EXPECT_EQ(output(), " set one\n step one\n");
    EXPECT_EQ(show(" set * "), 0);  // blanks and case do not count
    EXPECT_EQ(output(), " step one\n");
    EXPECT_EQ(show("beta"), 0);
    EXPECT_EQ(output(), " beta one\n");
}

TEST_F(HelpSections, TitlePagesEndAtTheFirstCommandSection) {
    EXPECT_EQ(show("TITLES", std::string(kTitlePrefix)), 0);
    EXPECT_EQ(output(), " Title line\n");
}

}  // namespace
