// Transcript tests of LOAD and CHECK: the built zemok program reads data
// files, reports bad data, and in auto mode ends on what is missing.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

namespace {

const std::string kPrompt = " ZEMOK: ";
const std::string kClosing = " E4MAIN --- Normal termination\n";
// The Rosenbrock test problem in its classical form: the four questions of
// its dialogue answered by their defaults.
const std::string kRosenbrock = "PROBLEM,TEST,1\n\n\n\n\n";
// Leaving after an evaluation: both questions of the parting dialogue.
const std::string kLeave = "EXIT\nY\nY\n";

std::string exampleFile() {
    return fileText(std::string(ZEMOK_SOURCE_DIR) + "/examples/rosenbrock.inp");
}

bool has(const ZemokRun& run, const std::string& text) { return run.out.find(text) != std::string::npos; }

// The point read from the file shows in the bound check of method 12:
// xStart(1) = -1.2 lies below the loaded bound -0.5.
TEST(LoadTranscript, StartPointFromTheExampleFile) {
    std::string dir = freshFolder("load-file");
    writeFile(dir + "/rosenbrock.inp", exampleFile());
    ZemokRun run = runZemok(kRosenbrock + "METHOD,S-B\nLOAD,FILE=rosenbrock.inp,XSTART\n"
                                          "LOAD,TERMINAL,BL,ALL,-0.5\nCHECK\n-2\n" + kLeave,
                            {}, dir);
    EXPECT_TRUE(has(run, " E4MON1 -E- Wrong LOWER bound for 1-th variable:\n"
                         "            -0.5000,  maximum = -1.200.\n"
                         " Parameter \"bL,1\" not specified!\n"))
        << run.out;
    EXPECT_TRUE(has(run, " Data set is complete\n"));
    EXPECT_TRUE(run.out.ends_with(kClosing));
}

// LOAD,FILE=...,ALL walks the whole chain through the example file; the
// parameters B-F-G-S has no use for are named, and nothing is asked.
TEST(LoadTranscript, WholeDataSetFromTheExampleFile) {
    std::string dir = freshFolder("load-all");
    writeFile(dir + "/rosenbrock.inp", exampleFile());
    ZemokRun run = runZemok(kRosenbrock + "METHOD,B-F-G-S\nLOAD,FILE=rosenbrock.inp,ALL\nCHECK\n" + kLeave,
                            {}, dir);
    EXPECT_TRUE(has(run, kPrompt + kPrompt +
                             " \"deviat\" is not used in this context (min. method, etc.)\n"
                             " \"ARGUMENT BOUND\" is not used in this context (min. method, etc.)\n"
                             " \"temper\" is not used in this context (min. method, etc.)\n"
                             " \"NtriesT\" is not used in this context (min. method, etc.)\n"
                             " \"Tsced\" is not used in this context (min. method, etc.)\n" +
                             kPrompt + " Data set is complete\n"))
        << run.out;
}

TEST(LoadTranscript, ShortOrUnreadableFileStoresNothingAndTheSessionGoesOn) {
    std::string dir = freshFolder("load-bad");
    writeFile(dir + "/short.inp", "xStart\n 1.0\n");
    writeFile(dir + "/text.inp", "xStart\n 1.0 two\n");
    ZemokRun run = runZemok(kRosenbrock + "METHOD,S-B\nLOAD,FILE=short.inp,XSTART\nCLOSE,DATA,READ\n"
                                          "LOAD,FILE=text.inp,XSTART\nCLOSE,DATA,READ\n"
                                          "LOAD,TERMINAL,BL,ALL,-0.5\nCHECK\n-2\n" + kLeave,
                            {}, dir);
    EXPECT_TRUE(has(run, " I5LRA1 -E- PREMATURE END OF THE FILE \"short.inp\" !\n"
                         " COMMAND \"LOAD,FILE=short.inp,XSTART\" WAS FAILED TO EXECUTE\n"))
        << run.out;
    EXPECT_TRUE(has(run, " I5LRA1 -E- ERROR AT THE READING FROM THE FILE \"text.inp\"!\n"));
    EXPECT_TRUE(has(run, " COMMAND \"LOAD,FILE=text.inp,XSTART\" WAS FAILED TO EXECUTE\n"));
    // The point is still that of the problem, (-1.0, 0.8): the 1.0 read
    // before each failure was not stored in xStart(1), and xStart still
    // counts as given.
    EXPECT_TRUE(has(run, "            -0.5000,  maximum = -1.000.\n"));
    EXPECT_FALSE(has(run, "\"xStart\" not specified"));
    EXPECT_TRUE(run.out.ends_with(kClosing));
}

TEST(CheckTranscript, CompleteOnlyWhenTheReportGoesToTheTerminal) {
    std::string dir = freshFolder("check-dw");
    ZemokRun run = runZemok(kRosenbrock + "METHOD,B-F-G-S\nCHECK\nOPEN,DATA,WRITE,report.txt\n"
                                          "SET,DW,FILE\nCHECK\n" + kLeave,
                            {}, dir);
    std::string::size_type first = run.out.find(" Data set is complete\n");
    ASSERT_NE(first, std::string::npos) << run.out;
    EXPECT_EQ(run.out.find(" Data set is complete", first + 1), std::string::npos);
    EXPECT_EQ(fileText(dir + "/report.txt").find("Data set is complete"), std::string::npos);
}

// Auto mode: commands from zemok.cmd, data from zemok.inp.
TEST(AutoTranscript, MissingParameterEndsTheSessionWithStatusOne) {
    std::string dir = freshFolder("auto-missing");
    writeFile(dir + "/zemok.cmd", "PROBLEM,TEST,7\nMETHOD,M-C\nMAXN,5000\nCHECK ALL\nEXIT\n");
    writeFile(dir + "/zemok.inp", "\n");
    ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(has(run, " Parameter \"deviat\" not specified!\n"
                         " COMMAND \"CHECK ALL\" WAS FAILED TO EXECUTE\n"))
        << run.out;
    EXPECT_TRUE(run.out.ends_with(kClosing));
}

TEST(AutoTranscript, LoadsFromTheDataFileAndFailsCleanlyOnBadData) {
    std::string dir = freshFolder("auto-data");
    // Method 16 with its deviates and the limits: CHECK passes, then the
    // bad xStart ends the session.
    writeFile(dir + "/zemok.cmd",
              "PROBLEM,TEST,7\nMETHOD,M-C\nLOAD,,DEVIAT\nLOAD,,MAXI,5\nCHECK ALL\nLOAD,,NVAR,200\nEXIT\n");
    writeFile(dir + "/zemok.inp", "deviat\n 0.25 0.25\n");
    ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_FALSE(has(run, "not specified"));
    EXPECT_TRUE(has(run, " NUMBER OF VARIABLES = ( 200 ) IS OUTSIDE OF PERMITTED RANGE!\n"
                         " COMMAND \"LOAD,,NVAR,200\" WAS FAILED TO EXECUTE\n"))
        << run.out;
    EXPECT_TRUE(run.out.ends_with(kClosing));
}

TEST(AutoTranscript, UnknownNameIsIllegal) {
    std::string dir = freshFolder("auto-name");
    writeFile(dir + "/zemok.cmd", "LOAD,,SPEED,3\nEXIT\n");
    writeFile(dir + "/zemok.inp", "\n");
    ZemokRun run = runZemok("MODE,AUTO\n", {}, dir);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(has(run, " ILLEGAL COMMAND: \"LOAD,,SPEED,3\"\n")) << run.out;
}

}  // namespace
