// A TEST run of the fit: the measured intensities are replaced by the model
// of the first description with noise seeded from the time of day, errors and
// weights follow, and the second description comes from the terminal.
#include "vardene_session_fixture.h"

#include "core/e4dataset.h"
#include "scatter/measured_curve.h"
#include "scatter/model_curves.h"
#include "scatter/phases.h"
#include "scatter/scattering_reset.h"
#include "scatter/vardene_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

std::string curveText() {
    std::string text = "Grid of the simulated curve\n";
    for (int k = 1; k <= 20; ++k) text += std::to_string(0.01 * k) + " " + std::to_string(50.0 / k) + " 1.0\n";
    return text;
}

const std::string kEllipsoid = "ELLIPSOID\n0.3 0.2 0.4\n70 60 80\n1.5 1.1 3\n";

std::string testAnswers(const std::string& noise, const std::string& curve) {
    return "Series\nComment\nTEST\n1\n0.0\n" + noise + "\n" + kEllipsoid + "2\n" + curve + "\n1\n1.0\n";
}

TEST_F(SessionTest, TestRunWithoutNoiseTakesTheModelAsData) {
    answers(testAnswers("0.0", writeFile("grid.dat", curveText())));
    std::vector<double> x(kMaxVar, 0.0);
    double f = -1;
    std::string out = withTerminal("1\n" + kEllipsoid, [&] { f = vardeneSessionCall(x.data()); });
    ASSERT_GE(fitCurve.nPts, 2) << out;
    for (int k = 0; k < fitCurve.nPts; ++k) {
        EXPECT_EQ(fitCurve.I[k], ModelCurves.sumCurve[k]) << k;
        EXPECT_GT(fitCurve.Err[k], 0.0) << k;
    }
    EXPECT_LT(f, 1e-25);
    EXPECT_NE(out.find("Enter Number of phases"), std::string::npos) << out;
    EXPECT_EQ(E4DataSet.nVar(), 3);  // the count of the first description stays
}

TEST_F(SessionTest, TwoTestRunsInTheSameSecondHaveTheSameNoise) {
    const std::string curve = writeFile("grid.dat", curveText());
    for (int attempt = 0; attempt < 3; ++attempt) {
        std::string before = dateTimeText();
        std::vector<double> first, second;
        for (std::vector<double>* intensities : {&first, &second}) {
            resetProgramState();
            resetScatteringFit();
            answers(testAnswers("0.05", curve));
            std::vector<double> x(kMaxVar, 0.0);
            withTerminal("1\n" + kEllipsoid, [&] { vardeneSessionCall(x.data()); });
            intensities->assign(fitCurve.I, fitCurve.I + fitCurve.nPts);
            for (int k = 0; k < fitCurve.nPts; ++k)
                EXPECT_NEAR(fitCurve.Err[k], 0.05 * fitCurve.I[k], 1e-12 * fitCurve.I[k]);
        }
        if (dateTimeText() != before) continue;  // a second went by: try again
        ASSERT_FALSE(first.empty());
        EXPECT_EQ(first, second);
        // With noise the data differ from the model.
        double differences = 0;
        for (std::size_t k = 0; k < first.size(); ++k) differences += first[k] != ModelCurves.sumCurve[k];
        EXPECT_GT(differences, first.size() / 2.0);
        return;
    }
    FAIL() << "the clock moved on during every attempt";
}

}  // namespace
