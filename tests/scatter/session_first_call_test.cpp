// The first call of the fit with a text curve: both parts of the dialogue,
// the layout, the normalized volume fraction and a second pass of part B.
#include "vardene_session_fixture.h"

#include "scatter/session_dialogue.h"
#include "scatter/vardene_session.h"

#include <cmath>
#include <vector>

namespace {

// Ten points s = 0.01 k, I = 100 / k, Err = 1 behind one header line.
std::string curveText() {
    std::string text = "Test curve of ten points\n";
    for (int k = 1; k <= 10; ++k) {
        text += std::to_string(0.01 * k) + " " + std::to_string(100.0 / k) + " 1.0\n";
    }
    return text;
}

const std::string kPhases =
    "Series\nComment\nEXPERIMENT\n1\n0.0\nELLIPSOID\n0.3 0.2 0.4\n70 60 80\n1.5 1.1 3\n";

}  // namespace

TEST_F(SessionTest, FirstCallRunsBothPartsAndASecondPassAsksAtTheTerminal) {
    const std::string curve = writeFile("c.dat", curveText());
    // Format 2, the file, units code 1, fraction 1: the last point is cut.
    answers(kPhases + "2\n" + curve + "\n1\n1.0\n");
    std::vector<double> x(kMaxVar, 0.0);
    double f = -1.0;
    std::string out = withTerminal("", [&] { f = vardeneSessionCall(x.data()); });
    EXPECT_EQ(out.find("Enter"), std::string::npos) << out;
    EXPECT_NE(out.find(" Choose type of data file format:.\n"), std::string::npos) << out;
    EXPECT_FALSE(FitSession.firstTime);
    EXPECT_EQ(E4DataSet.nVar(), 3);
    EXPECT_DOUBLE_EQ(x[0], 0.3);
    EXPECT_DOUBLE_EQ(x[1], 70.0);
    EXPECT_EQ(fitCurve.nPts, 9);
    EXPECT_TRUE(std::isfinite(f));
    EXPECT_GE(f, 0.0);
    // One phase: its volume fraction is normalized to 1 by the evaluation.
    EXPECT_DOUBLE_EQ(PhaseTable.Vf[0].value, 1.0);

    // The monitor counts again from 0: part B only, now at the terminal,
    // starting from the normalized volume fraction.
    E4DataSet.iStat(row::functionEvaluations) = 0;
    out = withTerminal("2\n" + curve + "\n1\n0.5\n", [&] { f = vardeneSessionCall(x.data()); });
    EXPECT_NE(out.find(" Enter the format code " + std::string(18, '.') + " <            2 >: "),
              std::string::npos)
        << out;
    EXPECT_EQ(out.find("series title"), std::string::npos);
    EXPECT_EQ(FitSession.seriesTitle, padded("Series", 60));
    EXPECT_DOUBLE_EQ(x[0], 1.0);
    EXPECT_EQ(fitCurve.nPts, 4);  // s below 0.05
}

TEST_F(SessionTest, LaterCallsOnlyUnpackAndEvaluate) {
    const std::string curve = writeFile("c.dat", curveText());
    answers(kPhases + "2\n" + curve + "\n1\n1.0\n");
    std::vector<double> x(kMaxVar, 0.0);
    withTerminal("", [&] { vardeneSessionCall(x.data()); });
    E4DataSet.iStat(row::functionEvaluations) = 5;
    x[1] = 65.0;
    const std::string out = withTerminal("", [&] { vardeneSessionCall(x.data()); });
    EXPECT_EQ(out, "");
    EXPECT_DOUBLE_EQ(PhaseTable.Rell[0].value, 65.0);
    EXPECT_DOUBLE_EQ(PhaseTable.Rell[0].lower, 60.0);
}

// One refused answer of the answers file sends the rest of the dialogue to
// the terminal, whatever the question: the file's later lines, written for
// the questions after an accepted answer, are never taken for other
// questions (no "1" or "0.5" tried as a file name).
TEST_F(SessionTest, RefusedAnswerSendsTheRestOfTheDialogueToTheTerminal) {
    const std::string curve = writeFile("c.dat", curveText());
    const std::string notes = writeFile("notes.dat", "No numbers\nin this file\n");
    const std::string sample = std::string(ZEMOK_SOURCE_DIR) + "/examples/sample-data/";
    const std::string ell = "ELLIPSOID\n0.3 0.2 0.4\n70 60 80\n1.5 1.1 3\n";
    const std::string head = "Series\nComment\nEXPERIMENT\n1\n0.0\n";
    struct Row {
        std::string answers, terminal, refused;
        int nPts;
    };
    const Row rows[] = {
        {head + ell + "2\n" + notes + "\n1\n0.5\n", curve + "\n1\n1.0\n", notes, 9},  // a name
        {head + ell + "2\n" + curve + "\n1\n0\n0.5\n", "1.0\n", "0", 9},               // a number
        {head + ell + "3\n2\n" + curve + "\n1\n0.5\n", "2\n" + curve + "\n1\n1.0\n", "3", 9},  // a format code
        {head + "sphere\n" + ell.substr(10) + "2\n" + curve + "\n1\n0.5\n",               // a word
         ell + "2\n" + curve + "\n1\n1.0\n", "sphere", 9},
        // The axis name of a frame set (its header question comes at the terminal).
        {head + ell + "1\n1 121\n" + dir.string() + "/none.sax\n" + sample + "Z84000.sub\n\n1\n0.5\n",
         "\n1 121\n" + sample + "Z83000.sax\n" + sample + "Z84000.sub\n\n1\n1.0\n", dir.string() + "/none.sax", 60},
    };
    for (const Row& row : rows) {
        resetProgramState();
        resetFitSession();
        resetMeasuredCurve();
        answers(row.answers);
        std::vector<double> x(kMaxVar, 0.0);
        const std::string out = withTerminal(row.terminal, [&] { vardeneSessionCall(x.data()); });
        EXPECT_NE(out.find(" USERF ----E- Answer \"" + row.refused + "\" of the answers file refused: "),
                  std::string::npos) << out;
        EXPECT_EQ(out.find("Cannot open"), std::string::npos) << out;
        EXPECT_FALSE(answersActive());
        EXPECT_EQ(E4DataSet.nVar(), 3) << row.refused;
        EXPECT_EQ(fitCurve.nPts, row.nPts) << row.refused;
        resetAnswersFile();
    }
    // When the terminal input ends before a curve is read, nothing is left
    // to fit: nVar is 0, so that the monitor does not select the problem.
    answers(rows[0].answers);
    std::vector<double> x(kMaxVar, 0.0);
    double f = -1.0;
    const std::string out = withTerminal("", [&] { f = vardeneSessionCall(x.data()); });
    EXPECT_NE(out.find(" USERF ----E- No curve was read: there is nothing to fit, the problem is not set up.\n"),
              std::string::npos) << out;
    EXPECT_EQ(E4DataSet.nVar(), 0);
    EXPECT_EQ(fitCurve.nPts, 0);
    EXPECT_EQ(f, 0.0);
}
