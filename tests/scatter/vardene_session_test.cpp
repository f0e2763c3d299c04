// The fit dialogue through answers files and the terminal: phase table,
// layout of the argument vector, bounds, refused answers and the first call.
#include "vardene_session_fixture.h"

#include "scatter/parameter_vector.h"
#include "scatter/session_dialogue.h"
#include "scatter/vardene_session.h"

#include <cmath>
#include <vector>

namespace {

std::string head(int nPhase, const char* mode = "EXPERIMENT") {
    return "Series one\nFirst comment\n" + std::string(mode) + "\n" + std::to_string(nPhase) +
           "\n0.25\n";
}

std::vector<double> layout() {
    std::vector<double> x(kMaxVar, -99.0);
    layoutParameters(x.data());
    return x;
}

void expectBlock(const std::vector<double>& x, int k, const std::vector<double>& values,
                 const std::vector<double>& lower, const std::vector<double>& upper) {
    for (std::size_t j = 0; j < values.size(); ++j) {
        const int pos = k + static_cast<int>(j);
        EXPECT_DOUBLE_EQ(x[static_cast<std::size_t>(pos - 1)], values[j]) << "x(" << pos << ")";
        EXPECT_DOUBLE_EQ(E4DataSet.bL(pos), lower[j]) << "bL(" << pos << ")";
        EXPECT_DOUBLE_EQ(E4DataSet.bU(pos), upper[j]) << "bU(" << pos << ")";
        EXPECT_EQ(E4DataSet.iFixer(pos), 1) << "iFixer(" << pos << ")";
    }
}

// Blocks of the four phases of the fixture's rows, as laid out by hand:
// the lower bound of Rhs is the start Rout (50), Len has 400 as both bounds.
void expectSphereAt(const std::vector<double>& x, int k) {
    expectBlock(x, k, {1.0, 10, 1.0, 50, 0.5, 5, 55, 0.1}, {0.0, 5, -1, 40, 0, 1, 50, 0},
                {2.0, 20, 2, 60, 1, 10, 100, 0.5});
}
void expectCylinderAt(const std::vector<double>& x, int k) {
    expectBlock(x, k, {0.5, 8, 2.0, 30, -1, 3, 400}, {0.1, 4, 1, 20, -2, 1, 400},
                {0.9, 12, 3, 40, 0, 6, 400});
}
void expectDumbbellAt(const std::vector<double>& x, int k) {
    expectBlock(x, k, {0.25, 6, 1.5, 20, 0.75, 2}, {0, 3, 1, 15, 0, 0}, {1, 9, 2, 25, 1, 4});
}
void expectEllipsoidAt(const std::vector<double>& x, int k) {
    expectBlock(x, k, {0.3, 70, 1.5}, {0.2, 60, 1.1}, {0.4, 80, 3});
}

void expectCounts(int nVar) {
    EXPECT_EQ(E4DataSet.nVar(), nVar);
    EXPECT_EQ(E4DataSet.iStat(row::nFree), nVar);
    EXPECT_EQ(E4DataSet.iStat(row::xStartSet), 1);
    EXPECT_EQ(E4DataSet.iStat(row::bLSet), 1);
    EXPECT_EQ(E4DataSet.iStat(row::bUSet), 1);
}

}  // namespace

TEST_F(SessionTest, OneSpherePhaseFromTheAnswersFileIsSilentAndLaidOut) {
    answers(head(1) + kSphereRows);
    const std::string out = withTerminal("", [] { runSessionPartA(); });
    EXPECT_TRUE(FitSession.ansFound);
    EXPECT_EQ(out.find("Enter"), std::string::npos) << out;
    EXPECT_EQ(FitSession.seriesTitle, padded("Series one", 60));
    EXPECT_EQ(FitSession.seriesComment, padded("First comment", 60));
    EXPECT_EQ(FitSession.testMode, 'N');
    EXPECT_DOUBLE_EQ(FitSession.cSys, 0.25);
    ASSERT_EQ(PhaseTable.nPhase, 1);
    EXPECT_EQ(PhaseTable.phaseName[0], "SPHERE    ");
    EXPECT_EQ(PhaseTable.phaseType[0], kPhaseSphere);
    EXPECT_EQ(PhaseTable.iDist[0], 1);
    // The table keeps the typed lower bound of Rhs; only x's bounds change.
    EXPECT_DOUBLE_EQ(PhaseTable.Rhs[0].lower, 0.0);
    EXPECT_DOUBLE_EQ(PhaseTable.tau[0].upper, 0.5);

    const std::vector<double> x = layout();
    expectCounts(8);
    expectSphereAt(x, 1);
    EXPECT_DOUBLE_EQ(x[8], -99.0);  // nothing written behind the block
}

TEST_F(SessionTest, EachOtherPhaseTypeHasItsBlock) {
    struct Case {
        const char* rows;
        int type, nVar;
        void (*expect)(const std::vector<double>&, int);
    };
    const Case cases[] = {{kCylinderRows, kPhaseCylinder, 7, expectCylinderAt},
                          {kDumbbellRows, kPhaseDumbbell, 6, expectDumbbellAt},
                          {kEllipsoidRows, kPhaseEllipsoid, 3, expectEllipsoidAt}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rows);
        resetFitSession();
        answers(head(1) + c.rows);
        withTerminal("", [] { runSessionPartA(); });
        ASSERT_EQ(PhaseTable.nPhase, 1);
        EXPECT_EQ(PhaseTable.phaseType[0], c.type);
        const std::vector<double> x = layout();
        expectCounts(c.nVar);
        c.expect(x, 1);
    }
    // The cylinder's length is a single, outside the triples.
    EXPECT_DOUBLE_EQ(PhaseTable.Len[0], 0.0);  // the last case was an ellipsoid
}

TEST_F(SessionTest, FourMixedPhasesFollowOneAnotherInX) {
    answers(head(4) + kEllipsoidRows + kSphereRows + kCylinderRows + kDumbbellRows);
    withTerminal("", [] { runSessionPartA(); });
    ASSERT_EQ(PhaseTable.nPhase, 4);
    EXPECT_EQ(PhaseTable.phaseType[0], kPhaseEllipsoid);
    EXPECT_EQ(PhaseTable.phaseType[1], kPhaseSphere);
    EXPECT_EQ(PhaseTable.phaseType[2], kPhaseCylinder);
    EXPECT_EQ(PhaseTable.phaseType[3], kPhaseDumbbell);
    EXPECT_EQ(PhaseTable.iDist[2], 2);
    EXPECT_DOUBLE_EQ(PhaseTable.Len[2], 400.0);
    EXPECT_DOUBLE_EQ(PhaseTable.RoutC[2].value, 30.0);
    EXPECT_DOUBLE_EQ(PhaseTable.Rout[2].value, 0.0);  // a cylinder uses RoutC only

    const std::vector<double> x = layout();
    expectCounts(3 + 8 + 7 + 6);
    expectEllipsoidAt(x, 1);
    expectSphereAt(x, 4);
    expectCylinderAt(x, 12);
    expectDumbbellAt(x, 19);
}

TEST_F(SessionTest, MoreThanTenPhasesAreRefused) {
    answers("T\nC\nTEST\n11\n");
    const std::string input = "2\n0.5\n0.01\n" + std::string(kEllipsoidRows) + kEllipsoidRows;
    const std::string out = withTerminal(input, [] { runSessionPartA(); });
    EXPECT_NE(out.find(" USERF ----E- Answer \"11\" of the answers file refused: 1 to 10 phases "
                       "can be described.\n"),
              std::string::npos)
        << out;
    // The question comes at the terminal with its default.
    EXPECT_NE(out.find(" Enter Number of phases ................. <            0 >: "),
              std::string::npos)
        << out;
    EXPECT_EQ(FitSession.testMode, 'Y');
    EXPECT_DOUBLE_EQ(FitSession.cSys, 0.5);
    EXPECT_DOUBLE_EQ(FitSession.noiseT, 0.01);
    EXPECT_EQ(PhaseTable.nPhase, 2);
}

TEST_F(SessionTest, InputThatEndsEarlyKeepsTheCompletePhases) {
    answers(head(3) + kEllipsoidRows + "SPHERE\n1 0 2\n");
    const std::string out = withTerminal("", [] { runSessionPartA(); });
    EXPECT_NE(out.find("The answers file ends here"), std::string::npos) << out;
    EXPECT_NE(out.find(" USERF ----E- The input has ended: 1 phases are described."),
              std::string::npos)
        << out;
    EXPECT_EQ(PhaseTable.nPhase, 1);
    EXPECT_EQ(layoutParameters(layout().data()), 3);
}

TEST_F(SessionTest, UcKeyNamesTheFileWithItsCaseKept) {
    const std::string path = writeFile("Mixed.Ans", head(1) + kEllipsoidRows);
    splitCommandLine("/V /uc=" + path);
    const std::string out = withTerminal("", [] { runSessionPartA(); });
    EXPECT_EQ(FitSession.ansFile, padded(path, 128));
    EXPECT_TRUE(FitSession.ansFound);
    EXPECT_NE(out.find(" -2- UC="), std::string::npos) << out;
    EXPECT_EQ(PhaseTable.nPhase, 1);
}
