// LOAD and CHECK inside the monitor on a scripted terminal: what they store
// in E4DataSet, the source word they add, and the limits CHECK sets.
#include "core/e4dataset.h"
#include "monitor/load_check.h"
#include "monitor/monitor.h"
#include "monitor/monitor_state.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "platform/units.h"

#include "monitor_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

// The Powell-Wood test problem: nVar 4, all free, xStart (3, -1, 0, 1).
const std::string kPowell = "PROBLEM,TEST,2\n\n\n";
// The one-dimensional test problem.
const std::string kOneDim = "PROBLEM,TEST,10\n\n";

class LoadCheck : public MonitorSession {
protected:
    // Runs one handler on `line` outside the loop, with `below` under it on
    // the stack when not empty.
    Outcome handle(CommandHandler h, const std::string& line, const std::string& below = "",
                   std::string* out = nullptr) {
        MonitorState& m = monitorState();
        m = MonitorState{};
        if (!below.empty()) m.stack[0] = padded(below, kLineWidth);
        m.sp = below.empty() ? 1 : 2;
        m.stack[static_cast<std::size_t>(m.sp - 1)] = padded(line, kLineWidth);
        setLine(m, line);
        splitMonitorLine(m);
        std::istringstream in;
        std::ostringstream os;
        unit::setTerminal(&in, &os);
        Outcome o = h(m);
        unit::resetTerminal();
        if (out) *out = os.str();
        return o;
    }
    // A data set ready for CHECK: problem, method, nVar free variables.
    void dataSet(int method, int nVar) {
        E4DataSetRecord& d = E4DataSet;
        d.iStat(row::problemCode) = 2;
        d.iStat(row::methodRunning) = method;
        d.nVar() = nVar;
        for (int i = 1; i <= nVar; ++i) d.iFixer(i) = 1;
        d.iStat(row::xStartSet) = 1;
    }
    bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

TEST_F(LoadCheck, AllFillsEveryEntryOfAVectorAndSetsItsFlag) {
    session(kPowell + "LOAD,,RX,ALL,1E-5\nEXIT\nY\nY\n");
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(E4DataSet.rXTol(i), 1e-5) << i;
    EXPECT_EQ(E4DataSet.rXTol(5), 0.0);  // only the nVar entries
    EXPECT_EQ(E4DataSet.iStat(row::rXTolSet), 1);
}

TEST_F(LoadCheck, ARangeWordFillsOnlyItsEntriesAndRenewsThePoint) {
    session(kPowell + "LOAD,,XSTART,(2:3),0.5\nEXIT\nY\nY\n");
    const double want[] = {3.0, 0.5, 0.5, 1.0};
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(E4DataSet.xStart(i), want[i - 1]) << i;
        EXPECT_EQ(E4DataSet.xEnd(i), want[i - 1]) << i;
    }
    EXPECT_EQ(E4DataSet.fStart, 0.0);
    EXPECT_EQ(E4DataSet.iStat(row::xStartSet), 1);
    EXPECT_EQ(E4DataSet.iStat(row::fSet), 0);
}

TEST_F(LoadCheck, AParameterOutsideItsMethodsChangesNothing) {
    std::string out = session(kPowell + "METHOD,B-F-G-S\nLOAD,,HCOND,5\nMETHOD,F-R\nLOAD,,HCOND,7\nEXIT\nY\nY\n");
    EXPECT_TRUE(has(out, " \"hCond\" is not used in this context (min. method, etc.)\n"));
    EXPECT_EQ(E4DataSet.hCond, 5.0);
    EXPECT_EQ(E4DataSet.iStat(row::hCondSet), 1);
}

// Each parameter that only some methods use is taken by the first and the
// last method of its range and refused just outside it (method 0 is no method).
TEST_F(LoadCheck, MethodRangesOfTheParametersEndWhereTheyShould) {
    const struct {
        const char* name;
        const char* load;
        int low, high;
    } rows[] = {{"tolScl", "LOAD,,TO,2", 1, 11},        {"deviat", "LOAD,,DE,ALL,0.5", 16, 17},
                {"hCond", "LOAD,,HC,1E6", 6, 11},        {"finDif", "LOAD,,FIN,ALL,1E-6", 1, 11},
                {"ARGUMENT BOUND", "LOAD,,BL,ALL,-5", 12, 12}, {"temper", "LOAD,,TE,1,5,0.5", 17, 18},
                {"NtriesT", "LOAD,,NT,5", 17, 18},      {"Tsced", "LOAD,,TS,0.5", 17, 18}};
    for (const auto& r : rows) {
        for (int method : {r.low - 1, r.low, r.high, r.high + 1}) {
            if (method < 1) continue;
            TerminalTest::SetUp();
            const std::string out = session(kPowell + "SET,STATUS,2," + std::to_string(method) + "\n" + r.load +
                                             "\nEXIT\nY\nY\n");
            const bool refused = has(out, " \"" + std::string(r.name) + "\" is not used in this context");
            EXPECT_EQ(refused, method < r.low || method > r.high) << r.name << ", method " << method << "\n" << out;
        }
    }
}

TEST_F(LoadCheck, ScalarsAndIntegersFromTheLine) {
    session(kPowell + "METHOD,SA-MC,100\nLOAD,,RF,1E-9\nLOAD,,TE,2.5,30,0.75\nLOAD,,MAXI,12\nEXIT\nY\nY\n");
    EXPECT_EQ(E4DataSet.rFTol, 1e-9);
    EXPECT_EQ(E4DataSet.iStat(row::rFTolSet), 1);
    EXPECT_EQ(E4DataSet.temper, 2.5);
    EXPECT_EQ(E4DataSet.iStat(row::NtriesT), 30);
    EXPECT_EQ(E4DataSet.Tsced, 0.75);
    EXPECT_EQ(E4DataSet.iStat(row::temperSet), 1);
    EXPECT_EQ(E4DataSet.iStat(row::TscedSet), 1);
    // Simulated annealing counts tries: maxNFE follows maxITR.
    EXPECT_EQ(E4DataSet.iStat(row::maxITR), 12);
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 12);
}

TEST_F(LoadCheck, ShorthandGetsTheSourceWordOfTheMode) {
    Outcome o = handle(E4CmdLoad, "LOAD,MAXN,5000");
    EXPECT_EQ(o, Outcome::Rewrite);
    EXPECT_EQ(std::string(monitorState().text()), "LOAD,TERMINAL,MAXN,5000");
    sysinf.MODEE4 = 1;
    o = handle(E4CmdLoad, "LOAD,MAXN,5000");
    EXPECT_EQ(o, Outcome::Rewrite);
    EXPECT_EQ(std::string(monitorState().text()), "LOAD,FILE,MAXN,5000");
    sysinf.MODEE4 = 0;
    resetMonitorState();
    session("MAXN,5000\nEXIT\n");
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 5000);
}

TEST_F(LoadCheck, BadValuesStoreNothing) {
    std::string out = session(kPowell + "LOAD,,RX,ALL,1E-5\nLOAD,,RX,ALL,abc\nLOAD,,XSTART,7,1.0\nEXIT\nY\nY\n");
    EXPECT_TRUE(has(out, " COMMAND \"LOAD,,RX,ALL,abc\" WAS FAILED TO EXECUTE\n"));
    EXPECT_TRUE(has(out, " I5LRA2 -E- INDEX IS OUTSIDE OF BOUNDS!\n"
                         " COMMAND \"LOAD,,XSTART,7,1.0\" WAS FAILED TO EXECUTE\n"));
    EXPECT_EQ(E4DataSet.rXTol(2), 1e-5);
    EXPECT_EQ(E4DataSet.xStart(1), 3.0);
    EXPECT_EQ(E4DataSet.xStart(4), 1.0);
}

TEST_F(LoadCheck, NVarOutsideItsRangeIsAskedAgain) {
    std::string out = session("LOAD,,NVAR,200\n3\nEXIT\n");
    EXPECT_TRUE(has(out, " NUMBER OF VARIABLES = ( 200 ) IS OUTSIDE OF PERMITTED RANGE!\n"));
    EXPECT_EQ(E4DataSet.nVar(), 3);
    sysinf.MODEE4 = 1;
    // In auto mode the command fails and the old value stays.
    EXPECT_EQ(handle(E4CmdLoad, "LOAD,,NVAR,129"), Outcome::ErrorExit);
    EXPECT_EQ(E4DataSet.nVar(), 3);
}

TEST_F(LoadCheck, FixingDialogueFixesAndPinsTheBounds) {
    session(kPowell + "EXIT\nY\nY\n");
    const double problemLower = E4DataSet.bL(1);
    std::string out = session(kPowell + "LOAD,,IF\n2\nY\n4\nN\n\nEXIT\nY\nY\n");
    EXPECT_TRUE(has(out, " iFixer CHANGED\n"));
    EXPECT_EQ(E4DataSet.iFixer(2), 0);
    EXPECT_EQ(E4DataSet.iFixer(4), 1);
    EXPECT_EQ(E4DataSet.iStat(row::nFree), 3);
    EXPECT_EQ(E4DataSet.bL(2), -1.0);
    EXPECT_EQ(E4DataSet.bU(2), -1.0);
    EXPECT_EQ(E4DataSet.bL(1), problemLower);  // its flag did not change
    // Freed again, variable 2 gets the big bounds.
    session(kPowell + "LOAD,,IF\n2\nY\n\nLOAD,,IF\n2\nN\n\nEXIT\nY\nY\n");
    EXPECT_EQ(E4DataSet.iFixer(2), 1);
    EXPECT_EQ(E4DataSet.bL(2), -std::sqrt(X02RMDC(5)));
    EXPECT_EQ(E4DataSet.bU(2), std::sqrt(X02RMDC(5)));
    // An answer of Exit clears the stack and changes nothing.
    out = session(kPowell + "LOAD,,IF\n3\nE\nEXIT\nY\nY\n");
    EXPECT_FALSE(has(out, "iFixer CHANGED"));
    EXPECT_EQ(E4DataSet.iFixer(3), 1);
}

// UN walks the chain and asks, at the terminal, only for what is not set,
// in the chain's order.
TEST_F(LoadCheck, UnsetParametersAreAskedInTheOrderOfTheChain) {
    std::string out = session(kPowell + "METHOD,B-F-G-S\nLOAD,TERMINAL,UN\n"
                              "0.1 0.2 0.3 0.4\n"     // xStep
                              "1e-3 1e-3 1e-3 2e-3\n" // rXTol
                              "1e-8\n3\n1e6\n1e-14\n" // rFTol, tolScl, hCond, FrlErr
                              "1e-6 1e-6 1e-6 1e-6\n" // finDif
                              "9 9 9 8\n"             // stpMax
                              "1 2 3 4\n"             // xScale
                              "1 0 0 0\n"             // direct
                              "EXIT\nY\nY\n");
    E4DataSetRecord& d = E4DataSet;
    EXPECT_EQ(d.xStep(4), 0.4);
    EXPECT_EQ(d.rXTol(4), 2e-3);
    EXPECT_EQ(d.rFTol, 1e-8);
    EXPECT_EQ(d.tolScl, 3.0);
    EXPECT_EQ(d.hCond, 1e6);
    EXPECT_EQ(d.FrlErr, 1e-14);
    EXPECT_EQ(d.finDif(1), 1e-6);
    EXPECT_EQ(d.stpMax(4), 8.0);
    EXPECT_EQ(d.xScale(3), 3.0);
    EXPECT_EQ(d.direct(1), 1.0);
    for (int row : {39, 40, 41, 42, 44, 45, 47, 53, 54, 59}) EXPECT_EQ(d.iStat(row), 1) << row;
    // The point was set by the problem and is not asked for.
    EXPECT_EQ(d.xStart(1), 3.0);
    EXPECT_TRUE(has(out, " \"ARGUMENT BOUND\" is not used in this context (min. method, etc.)\n"));
    EXPECT_TRUE(has(out, " argument scaling factors ................................: "));
}

TEST_F(LoadCheck, SourceIsAskedWhenNoValueFollows) {
    std::string out = session("MAXN\n\n300\nLOAD,,EX\nEXIT\n");
    // The ":" of a question stands in column 59: 11 dots behind the 32
    // characters of the question and its blank, 12 behind the 44 of
    // "Enter maximum number of function evaluations".
    EXPECT_TRUE(has(out, " Data source? [ Terminal / File ] ........... < Terminal >: "));
    EXPECT_TRUE(has(out, " Enter maximum number of function evaluations ............: "));
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 300);
}

TEST_F(LoadCheck, UnknownNameIsTypedAgain) {
    // Without a help file only the question remains; the reply replaces
    // the command and runs.
    std::string out = session("LOAD,,FOO\nMAXN,42\nEXIT\n");
    EXPECT_TRUE(has(out, " Please enter the last command once again ................: "));
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 42);
}

// maxITR and maxNFE that CHECK gives with four free variables and nothing
// loaded: 10 N and (N + N/3 + 15) * 10 N up to method 14, 300 N for the
// simplex searches, 1000 N tries for Monte-Carlo.
TEST_F(LoadCheck, LimitsOfEveryMethodRow) {
    struct Row { int method, maxITR, maxNFE; };
    const Row rows[] = {{1, 40, 800},  {2, 40, 800},  {3, 40, 800},  {4, 40, 800},
                        {6, 40, 800},  {7, 40, 800},  {8, 40, 800},  {9, 40, 800},
                        {10, 40, 800}, {11, 40, 800}, {12, 40, 800}, {14, 40, 800},
                        {15, 1200, 1200}, {16, 0, 4000}, {17, 0, 4000}, {18, 1200, 1200}};
    sysinf.MODEE4 = 1;  // a missing method parameter ends CHECK without a dialogue
    for (const Row& r : rows) {
        resetProgramState();
        sysinf.MODEE4 = 1;
        dataSet(r.method, 4);
        handle(E4CmdCheck, "CHECK ALL");
        EXPECT_EQ(E4DataSet.iStat(row::maxITR), r.maxITR) << r.method;
        EXPECT_EQ(E4DataSet.iStat(row::maxNFE), r.maxNFE) << r.method;
    }
}

TEST_F(LoadCheck, LimitsRespectWhatWasLoaded) {
    sysinf.MODEE4 = 1;
    dataSet(7, 4);
    E4DataSet.iStat(row::maxITR) = 30;  // maxITR loaded, maxNFE not: left for RUN to warn
    handle(E4CmdCheck, "CHECK ALL");
    EXPECT_EQ(E4DataSet.iStat(row::maxITR), 30);
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 0);
    dataSet(16, 4);
    E4DataSet.iStat(row::maxITR) = 0;
    E4DataSet.iStat(row::maxNFE) = 500;  // tries given to METHOD are replaced
    handle(E4CmdCheck, "CHECK ALL");
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 4000);
    dataSet(15, 4);
    E4DataSet.iStat(row::maxNFE) = 100;
    E4DataSet.iStat(row::maxITR) = 0;
    handle(E4CmdCheck, "CHECK ALL");
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 100);
    EXPECT_EQ(E4DataSet.iStat(row::maxITR), 100);
    dataSet(14, 1);  // one variable, but the method is above 12
    E4DataSet.iStat(row::maxNFE) = 0;
    E4DataSet.iStat(row::maxITR) = 0;
    handle(E4CmdCheck, "CHECK ALL");
    EXPECT_EQ(E4DataSet.iStat(row::maxITR), 10);
    EXPECT_EQ(E4DataSet.iStat(row::maxNFE), 160);
}

TEST_F(LoadCheck, StartOutsideItsBoundMovesTheBound) {
    std::string out = session(kPowell + "METHOD,S-B\nLOAD,,BL,ALL,-0.5\nCHECK\n-2\nEXIT\nY\nY\n");
    EXPECT_TRUE(has(out, " E4MON1 -E- Wrong LOWER bound for 2-th variable:\n"
                         "            -0.5000,  maximum = -1.000.\n"
                         " Parameter \"bL,2\" not specified!\n"));
    // The LOAD,,bL,2 that CHECK pushed took -2; the second pass is complete.
    EXPECT_EQ(E4DataSet.bL(2), -2.0);
    EXPECT_TRUE(has(out, " Data set is complete\n"));
    // The second pass finds variable 2 inside its new bound.
    EXPECT_EQ(out.find("Wrong LOWER"), out.rfind("Wrong LOWER"));
}

TEST_F(LoadCheck, UpperBoundBelowTheStart) {
    sysinf.MODEE4 = 1;
    dataSet(12, 2);
    E4DataSet.iStat(row::bLSet) = E4DataSet.iStat(row::bUSet) = 1;
    E4DataSet.xStart(1) = 2.25;
    E4DataSet.bL(1) = -1.0;
    E4DataSet.bU(1) = 1.5;
    E4DataSet.bL(2) = -1.0;
    E4DataSet.bU(2) = 1.0;
    std::string out;
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "", &out), Outcome::ErrorExit);
    EXPECT_EQ(out, " E4MON1 -E- Wrong UPPER bound for 1-th variable:\n"
                   "            1.500,  minimum = 2.250.\n"
                   " Parameter \"bU,1\" not specified!\n");
    EXPECT_EQ(E4DataSet.bU(1), 2.25);
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "", &out), Outcome::Done);
}

TEST_F(LoadCheck, CompleteIsSaidOnlyForACheckTypedAtTheTerminal) {
    dataSet(7, 2);
    std::string out;
    EXPECT_EQ(handle(E4CmdCheck, "CHECK", "", &out), Outcome::Done);
    EXPECT_EQ(out, " Data set is complete\n");
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "RUN", &out), Outcome::Done);
    EXPECT_EQ(out, "");
}

TEST_F(LoadCheck, CheckWalksProblemThenMethod) {
    std::string out;
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "", &out), Outcome::Prerequisite);
    EXPECT_EQ(out, " Problem to be solved is not defined!\n");
    EXPECT_EQ(std::string(monitorState().text()), "PROBLEM");
    E4DataSet.iStat(row::problemCode) = 2;
    sysinf.MODEE4 = 1;
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "", &out), Outcome::Prerequisite);
    EXPECT_EQ(out, " Method for minimization is not defined!\n");
    EXPECT_EQ(std::string(monitorState().text()), "METHOD B-F-G-S");
    // EVALUATE needs no method.
    E4DataSet.nVar() = 2;
    EXPECT_EQ(handle(E4CmdCheck, "CHECK ALL", "EVALUATE,F", &out), Outcome::ErrorExit);
    EXPECT_EQ(out, " Parameter \"xStart\" not specified!\n");
}

}  // namespace
