// Clock and process services: the date and time texts, the CPU clock, the
// program's command line as one text, the shell call and the process start.
#include "support/temp_folder.h"
#include "platform/clock.h"
#include "platform/process.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <sstream>

namespace {

bool digits(const std::string& s, std::size_t at, std::size_t n) {
    for (std::size_t i = at; i < at + n; ++i) {
        if (!std::isdigit(static_cast<unsigned char>(s[i]))) return false;
    }
    return true;
}

TEST(Clock, DateAndTimeTextsHaveTheirFixedForms) {
    std::string date = dateText();  // "12-Mar-2009"
    ASSERT_EQ(date.size(), 11u);
    EXPECT_TRUE(digits(date, 0, 2));
    EXPECT_EQ(date[2], '-');
    const std::string months = "JanFebMarAprMayJunJulAugSepOctNovDec";
    std::size_t month = months.find(date.substr(3, 3));
    ASSERT_NE(month, std::string::npos) << date;
    EXPECT_EQ(month % 3, 0u) << date;
    EXPECT_EQ(date[6], '-');
    EXPECT_TRUE(digits(date, 7, 4));
    std::string time = timeText();  // "10:27:11"
    ASSERT_EQ(time.size(), 8u);
    EXPECT_TRUE(digits(time, 0, 2) && digits(time, 3, 2) && digits(time, 6, 2));
    EXPECT_EQ(time[2], ':');
    EXPECT_EQ(time[5], ':');
}

TEST(Clock, CommandLineJoinsArgumentsAndQuotesThoseWithBlanksOrCommas) {
    const char* argv[] = {"zemok", "/C=run.cmd", "two words", "a,b", "-UC=x.ans"};
    setProgramArguments(5, argv);
    EXPECT_EQ(programCommandLine(), "/C=run.cmd \"two words\" \"a,b\" -UC=x.ans");
    const char* none[] = {"zemok"};
    setProgramArguments(1, none);
    EXPECT_EQ(programCommandLine(), "");
}

TEST(Process, ShellCallWaitsAndGivesTheExitStatus) {
    std::string marker = freshFolder("shell") + "/marker";
    EXPECT_EQ(S_SYSTEM("touch " + marker), 0);
    EXPECT_TRUE(std::filesystem::exists(marker));  // it waited for the end
    std::filesystem::remove(marker);
    EXPECT_EQ(S_SYSTEM("exit 3"), 3);
    EXPECT_EQ(S_SYSTEM(std::string(257, ' ')), -1);
}

TEST(Process, ProgramStartRefusesCommandLinesOver256Characters) {
    std::ostringstream out;
    unit::setTerminal(nullptr, &out);
    EXPECT_EQ(S_RUNQQ("true", " /A \"x\""), 0);
    EXPECT_EQ(S_RUNQQ("false", ""), 1);
    EXPECT_EQ(S_RUNQQ("true", " " + std::string(251, 'x')), 0);  // 256 characters: started
    EXPECT_EQ(S_RUNQQ("true", " " + std::string(252, 'x')), -2);   // 257: refused
    unit::resetTerminal();
    EXPECT_EQ(out.str(), " S_RUNQQ --E- Command line is longer than 256 characters!\n");
}

}  // namespace
