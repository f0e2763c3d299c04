// REPORT: the status table, the environment block, the heading and numbers
// of the data report, the closing lines, and reports appended to a file.
#include "support/temp_folder.h"
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include "monitor_session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class Report : public MonitorSession {
protected:
    static std::size_t count(const std::string& text, const std::string& what) {
        std::size_t n = 0;
        for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
        return n;
    }
};

const std::string kClosing =
    " //////////////////////////////////////////////////////////////////////\n\n"
    " CPU time used:";

TEST_F(Report, StatusTableOnTheTerminalOnly) {
    std::string out = session("REPORT,TERMINAL,STATUS\nREPORT,FILE,STATUS\nEXIT\n");
    EXPECT_NE(out.find(" Current content of the status-vector\n No., Value, Comment:\n"
                       "   1      0   problem code: 1:19=TEST, 20=USER's\n"),
              std::string::npos);
    EXPECT_NE(out.find("   7      1   message level: 0=NO MESSAGES\n"), std::string::npos);
    EXPECT_NE(out.find("  97    123   first seed for random generators\n"), std::string::npos);
    EXPECT_NE(out.find(" 105      0   reserved for use in USERF\n"), std::string::npos);
    EXPECT_EQ(count(out, "--- Reserved ---"), 47u);  // REPORT,FILE added nothing
    EXPECT_EQ(count(out, " problem code:"), 1u);
}

TEST_F(Report, DataReportHeadingAndNumbers) {
    std::string out = session("PROBLEM,TEST,3\n\nMETHOD,N-M\nREPORT\n\nEXIT\nY\nY\n");
    EXPECT_NE(out.find(" Objective function -  : Wood problem (4-dimensional)\n"
                       " Chosen algorithm ---  : downhill simplex (Nelder and Mead)\n"
                       " Overall termination   : hard checking mode\n\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find(" number of performed function evaluations ----  : 1\n"), std::string::npos);
    EXPECT_NE(out.find(" maximum allowed number of variables ---------  : 128\n"), std::string::npos);
    EXPECT_NE(out.find(" rel/abs function tolerance to be attained ---  : 0.0\n"), std::string::npos);
    EXPECT_NE(out.find(" message level -------------------------------  : 1\n"), std::string::npos);
    EXPECT_NE(out.find(" fixative-vector\n      1      1      1      1\n"), std::string::npos);
    EXPECT_NE(out.find(" argument values\n  -3.00000      -1.00000      -3.00000      -1.00000    \n"),
              std::string::npos);
}

TEST_F(Report, ReportOnAFileGoesBehindItsContents) {
    std::string dir = freshFolder("report");
    std::string file = dir + "/out.txt";
    std::ofstream(file) << "old line\n";
    session("OPEN,DATA,WRITE," + file + "\nREPORT,,U\nEXIT\n");
    unit::resetUnits();
    std::ifstream in(file);
    std::stringstream s;
    s << in.rdbuf();
    EXPECT_EQ(s.str().rfind("old line\n", 0), 0u);
    EXPECT_NE(s.str().find(kClosing), std::string::npos);
    std::filesystem::remove_all(dir);
}

}  // namespace
