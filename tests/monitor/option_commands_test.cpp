// The problem, method and option commands run inside the monitor with a
// scripted terminal; their effect on the data set is checked directly.
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include "monitor_session.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Commands = MonitorSession;

const std::string kPrompt = " ZEMOK: ";

TEST_F(Commands, MethodWordsSelectTheirRows) {
    struct Case { const char* word; int method; };
    for (Case c : {Case{"F-R", 1}, Case{"p-r", 2}, Case{"B-P", 3}, Case{"P-S", 4},
                   Case{"D-F-P", 6}, Case{"B-F-G-S", 7}, Case{"BROYDEN", 8}, Case{"FLETCHER", 9},
                   Case{"O-L", 10}, Case{"O-S", 11}, Case{"SB", 12}, Case{"S-B", 12},
                   Case{"C-D", 14}, Case{"N-M", 15}, Case{"MONTE-CARLO", 16},
                   Case{"SA-MC", 17}, Case{"SA-NM", 18}}) {
        resetProgramState();
        session(std::string("METHOD,") + c.word + ",\nEXIT\n");
        EXPECT_EQ(E4DataSet.iStat(row::methodRunning), c.method) << c.word;
    }
}

TEST_F(Commands, MessageLevelAndTerminalStopping) {
    session("MESSAGE,5\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::messageLevel), 5);
    EXPECT_EQ(E4DataSet.iStat(row::terminalStopping), 1);
    session("MES,2\nT-MODE\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::messageLevel), 2);
    EXPECT_EQ(E4DataSet.iStat(row::terminalStopping), 1);
    session("T-M,N\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::terminalStopping), 0);
    std::string out = session("MESSAGE,lots\nEXIT\n");
    EXPECT_NE(out.find(" ILLEGAL COMMAND: \"MESSAGE,lots\"\n"), std::string::npos);
}

TEST_F(Commands, SetSchemesTerminationAndStatus) {
    session("SET,GRADIENT,4\nSET,T,L,5\nSET,T,O,WEAK\nSET,T,M\nSET,S,99,7\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::gradientScheme), 4);
    EXPECT_EQ(E4DataSet.iStat(row::localTermination), 5);
    EXPECT_EQ(E4DataSet.iStat(row::overallTermination), 1);
    EXPECT_EQ(E4DataSet.iStat(row::tolMultiplierSwitch), 1);
    EXPECT_EQ(E4DataSet.iStat(row::randomsToSkip), 7);
    std::string out = session("SET,GRADIENT,5\nSET,T,L,6\nSET,S,106,1\nSET,T,M,OFF\nEXIT\n");
    EXPECT_NE(out.find(" ILLEGAL COMMAND: \"SET,GRADIENT,5\"\n"), std::string::npos);
    EXPECT_NE(out.find(" ILLEGAL COMMAND: \"SET,T,L,6\"\n"), std::string::npos);
    EXPECT_NE(out.find(" ILLEGAL COMMAND: \"SET,S,106,1\"\n"), std::string::npos);
    EXPECT_EQ(E4DataSet.iStat(row::tolMultiplierSwitch), 0);
}

// What SET takes when the word that would say it is missing or is no
// choice: the hard overall termination, the tolerance multiplier on, a step
// of one direction vector, and the terminal for a channel (CR at the
// question).  Each row starts from the other value.
TEST_F(Commands, SetTakesItsDefaultsWithoutAValue) {
    E4DataSet.direct(1) = 4.0;
    const struct {
        const char* lines;
        int row;
        int value;
    } rows[] = {{"SET,T,O,WEAK\nSET,T,O\n", row::overallTermination, 0},
                {"SET,T,O,WEAK\nSET,T,O,HARD\n", row::overallTermination, 0},
                {"SET,T,M,OFF\nSET,T,M\n", row::tolMultiplierSwitch, 1},
                {"SET,T,M,OFF\nSET,T,M,ON\n", row::tolMultiplierSwitch, 1}};
    for (const auto& r : rows) {
        session(std::string(r.lines) + "EXIT\n");
        EXPECT_EQ(E4DataSet.iStat(r.row), r.value) << r.lines;
    }
    sysinf.dwUnit = 99;
    session("SET,S,35,1\nSET,S,59,1\nSTEP\n\nSET,DW\n\nEXIT\n");
    EXPECT_EQ(E4DataSet.xStart(1), 4.0);
    EXPECT_EQ(sysinf.dwUnit, sysinf.outUnit);
}

// The monitor zeroes the status vector when it starts; the vectors stay.
// The status elements are therefore set with SET,STATUS inside the session.
TEST_F(Commands, ScalingNeedsTheFactorsAndIsUndone) {
    E4DataSet.xStart(1) = 3.0;
    E4DataSet.xScale(1) = 2.0;
    std::string out = session("SET,S,35,2\nSET,S,54,1\nSET,X\nSET,X\nSET,X,OFF\nEXIT\n");
    EXPECT_NE(out.find(" Argument values already scaled!\n"), std::string::npos);
    EXPECT_EQ(E4DataSet.xStart(1), 3.0);
    EXPECT_EQ(E4DataSet.iStat(row::xScaled), 0);
}

TEST_F(Commands, StepMovesAlongTheDirection) {
    std::string out = session("STEP,0.5\nEXIT\n");
    EXPECT_NE(out.find(" ERROR: Direction vector not specified.\n ILLEGAL COMMAND: \"STEP,0.5\"\n"),
              std::string::npos);
    resetProgramState();
    E4DataSet.xStart(1) = 1.0;
    E4DataSet.direct(1) = 4.0;
    E4DataSet.direct(2) = -2.0;
    out = session("SET,S,35,2\nSET,S,59,1\nSTEP,abc\n0.5\nEXIT\n");
    EXPECT_NE(out.find(" Wrong step size, not a number\n"), std::string::npos);
    EXPECT_EQ(E4DataSet.xStart(1), 3.0);
    EXPECT_EQ(E4DataSet.xStart(2), -1.0);
    EXPECT_EQ(E4DataSet.xEnd(2), -1.0);
}

TEST_F(Commands, UserProblemTakesTheFirstDigitAsItsType) {
    // No curve is read here, so the user's problem is not selected; the
    // type is taken all the same.
    session("PROBLEM,USER,12\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::userType), 1);
    EXPECT_EQ(E4DataSet.iStat(row::problemCode), 0);
    session("PROBLEM,USER,7,X\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::userType), 7);
}

TEST_F(Commands, ProblemChangeSetsLimitsBoundsAndTheEndPoint) {
    session("PROBLEM,TEST,3\n\nEXIT\n");
    const E4DataSetRecord& d = E4DataSet;
    EXPECT_EQ(d.iStat(row::problemCode), 3);
    EXPECT_EQ(d.nVar(), 4);
    EXPECT_EQ(d.iStat(row::nFree), 4);
    EXPECT_EQ(d.iStat(row::functionEvaluations), 1);
    EXPECT_EQ(d.iStat(row::bLSet), 1);
    EXPECT_EQ(d.iStat(row::bUSet), 1);
    EXPECT_GT(d.iStat(row::maxNFE), 0);
    EXPECT_GT(d.iStat(row::maxITR), 0);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(d.xEnd(i), d.xStart(i));
        EXPECT_LT(d.bL(i), d.xStart(i));  // the Wood problem brings its own bounds
        EXPECT_EQ(d.bU(i), -d.bL(i));
        EXPECT_EQ(d.xScale(i), 1.0);
    }
    EXPECT_EQ(d.fEnd, d.fStart);
}

}  // namespace
