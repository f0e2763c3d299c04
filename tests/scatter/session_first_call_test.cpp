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

TEST_F(SessionTest, FormatCodeOtherThanOneOrTwoIsRefused) {
    const std::string curve = writeFile("c.dat", curveText());
    answers(kPhases + "3\n");
    std::vector<double> x(kMaxVar, 0.0);
    const std::string out =
        withTerminal("2\n" + curve + "\n1\n1.0\n", [&] { vardeneSessionCall(x.data()); });
    EXPECT_NE(out.find(" USERF ----E- Answer \"3\" of the answers file refused: the format code is "
                       "1 (TAVLO) or 2 (ASCII).\n"),
              std::string::npos)
        << out;
    EXPECT_EQ(FitSession.formatCode, 2);
    EXPECT_EQ(fitCurve.nPts, 9);
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

// A SPHERE phase whose volume fraction makes the packing fraction reach 1
// has no physical structure factor: factor 1, and one warning for the
// whole evaluation, not one for each of its nine points.
TEST_F(SessionTest, UnphysicalStructureFactorWarnsOncePerEvaluation) {
    const std::string curve = writeFile("c.dat", curveText());
    answers("Series\nComment\nEXPERIMENT\n1\n5.0\nSPHERE\n1 1 1\n0 0 0\n0 0 0\n30 30 30\n1 1 1\n"
            "0 0 0\n30 30 30\n2\n0.5 0.5 0.5\n2\n" + curve + "\n1\n1.0\n");
    std::vector<double> x(kMaxVar, 0.0);
    double f = -1.0;
    std::string out = withTerminal("", [&] { f = vardeneSessionCall(x.data()); });
    const std::string warning = " USERF ----W- No physical structure factor of a SPHERE phase: factor 1 used.\n";
    std::size_t at = out.find(warning);
    ASSERT_NE(at, std::string::npos) << out;
    EXPECT_EQ(out.find(warning, at + 1), std::string::npos);
    EXPECT_TRUE(std::isfinite(f));
}
