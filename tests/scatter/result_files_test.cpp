// The result files of the fit written from a fixed model and curve, whole and
// byte for byte: .pam, .str, .fit, .csv, the log, the table on the terminal, the
// picture beside them, and the fixed names of a TEST run.
#include "support/terminal_test.h"
#include "support/temp_folder.h"
#include "monitor/monitor.h"
#include "platform/units.h"
#include "scatter/measured_curve.h"
#include "scatter/model_curves.h"
#include "scatter/phases.h"
#include "scatter/result_files.h"
#include "scatter/structure_factor.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Four phases, one of each type, and a fifth of no type, which has no row.
// The sphere's Rout of 1e7 does not fit F9.2; its Vf of 0.126 shows as 0.13.
void fixedModel() {
    fitCurve.nPts = 2;
    fitCurve.s[0] = 0.01, fitCurve.s[1] = 0.02;
    fitCurve.I[0] = 100.0, fitCurve.I[1] = 50.0;
    fitCurve.baseName = "fixed";
    fitCurve.dataName = "fixed.dat";
    PhaseTableRecord& t = PhaseTable;
    t.nPhase = 5;
    t.phaseType = {kPhaseCylinder, kPhaseSphere, kPhaseDumbbell, kPhaseEllipsoid, kPhaseNone};
    t.Vf[0].value = 0.4, t.RinC[0].value = 10, t.roin[0].value = 1.5, t.RoutC[0].value = 20;
    t.roout[0].value = -0.5, t.dR[0].value = 2, t.Len[0] = 400, t.iDist[0] = 2;
    t.Vf[1].value = 0.126, t.Rin[1].value = 5, t.roin[1].value = 1, t.Rout[1].value = 1e7;
    t.roout[1].value = 0.25, t.dR[1].value = 3.456, t.Rhs[1].value = 55, t.tau[1].value = 0.1;
    t.iDist[1] = 1;
    t.Vf[2].value = 0.2, t.Rin[2].value = 6, t.roin[2].value = 1.5, t.Rout[2].value = 20;
    t.roout[2].value = 0.75, t.dR[2].value = 2, t.iDist[2] = 1;
    t.Vf[3].value = 0.174, t.Rell[3].value = 70, t.nu[3].value = 1.5;
    ModelCurves.cylInt[0][0] = 2.5, ModelCurves.cylInt[0][1] = 1.25;
    ModelCurves.sphInt[1][0] = 1000, ModelCurves.sphInt[1][1] = 0.001;
    ModelCurves.dmbInt[2][0] = -3, ModelCurves.dmbInt[2][1] = 0;
    ModelCurves.elpInt[3][0] = 12345.678, ModelCurves.elpInt[3][1] = 7;
    ModelCurves.sumCurve[0] = 40, ModelCurves.sumCurve[1] = 20;
    ModelCurves.scaleB = 2.5;
    ModelCurves.sigmaFit = 1.23456;
    strFacLast.etaLast = 0.1234, strFacLast.RhsLast = 55.5, strFacLast.tauLast = 0.1;
}

// The phase rows in their edit notation, without sigmaFit.
const std::string kCyl = " 1CYL     0.40    10.00     1.50    20.00    -0.50     2.00   400.00    2";
const std::string kSph = " 2SPH     0.13     5.00     1.00*********     0.25     3.46    55.00     0.10    1";
const std::string kDmb = " 3DMB     0.20     6.00     1.50    20.00     0.75     2.00    1";
const std::string kEll = " 4ELL     0.17    70.00     1.50";
const std::string kSigma = "      1.2346";  // F12.4
const std::string kRowsWithSigma =
    kCyl + kSigma + "\n" + kSph + kSigma + "\n" + kDmb + kSigma + "\n" + kEll + kSigma + "\n";

class ResultFilesTest : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        home = fs::current_path();
        dir = freshFolder("rf");
        fs::current_path(dir);
        unit::setTerminal(&in_, &out_);
        fixedModel();
    }
    void TearDown() override {
        unit::resetUnits();
        fs::current_path(home);
        fs::remove_all(dir);
        resetProgramState();
    }
    static std::string text(const std::string& name) {
        std::ifstream f(name);
        std::stringstream ss;
        ss << f.rdbuf();
        return ss.str();
    }
    fs::path home, dir;
};

TEST_F(ResultFilesTest, PamHoldsThePhaseRowsAndTheUnscaledPhaseCurves) {
    writePamFile();
    // R02R2C3 with fmt 0 for s and each phase, one blank behind each text;
    // the phase of no type contributes zeros.  A writes the whole field of
    // 256 characters behind the 1X.
    const std::string fill(256 - 6 * 12, ' ');
    EXPECT_EQ(text("fixed.pam"),
              kCyl + "\n" + kSph + "\n" + kDmb + "\n" + kEll + "\n" +
                  "  1.000e-002  2.500e+000  1.000e+003 -3.000e+000  1.235e+004  0.000e+000 " + fill + "\n" +
                  "  2.000e-002  1.250e+000  1.000e-003  0.000e+000  7.000e+000  0.000e+000 " + fill + "\n");
}

TEST_F(ResultFilesTest, PamLineIsTheFieldOfTwoHundredFiftySixCharacters) {
    // Ten phases of negative intensities: eleven texts of 11 characters and
    // a blank, 132 characters, well inside the field.
    PhaseTable.nPhase = 10;
    for (int j = 0; j < 10; ++j) {
        PhaseTable.phaseType[static_cast<std::size_t>(j)] = kPhaseEllipsoid;
        ModelCurves.elpInt[j][0] = -1.5e-300;
    }
    writePamFile();
    std::istringstream pam(text("fixed.pam"));
    std::string line;
    for (int row = 0; row < 11; ++row) std::getline(pam, line);  // ten phase rows
    EXPECT_EQ(line.size(), 257u);
    EXPECT_EQ(line.substr(0, 25), "  1.000e-002 -1.500e-300 ");
    EXPECT_EQ(line.find_last_not_of(' '), 131u);
}

TEST_F(ResultFilesTest, StrShowsTheFactorOfASpherePhaseOne) {
    PhaseTable.phaseType[0] = kPhaseSphere;
    ModelCurves.strFac[0][0] = 0.5, ModelCurves.strFac[0][1] = 1.25;
    writeStrFile();
    // G15.7 of 0.5 is F11.7 and of 1.25 F11.6, each with 4 blanks behind.
    EXPECT_EQ(text("fixed.str"),
              "  fix 0.123   55.50    0.10\n"
              "  1.0000000E-02  0.5000000    \n"
              "  2.0000000E-02   1.250000    \n");
}

TEST_F(ResultFilesTest, FitHoldsRowsWithSigmaAndTheScaledModel) {
    writeFitFile();
    EXPECT_EQ(text("fixed.fit"), kRowsWithSigma +
                                     "  0.1000000D-01  0.1000000D+03  0.1000000D+03\n"
                                     "  0.2000000D-01  0.5000000D+02  0.5000000D+02\n");
}

// The .csv file: named columns, then s, I, Err, w, the scaled model and
// each typed phase's share scaleB Vf I(j), 17 digits in E notation (here
// from the C library's %.16E).
TEST_F(ResultFilesTest, CsvHoldsNamedColumnsInPlainENotation) {
    fitCurve.Err[0] = 2.5, fitCurve.Err[1] = 0.125;
    fitCurve.w[0] = 0.3, fitCurve.w[1] = -7e-300;  // an exponent of three digits
    auto e = [](double v) {
        char buf[40];
        std::snprintf(buf, sizeof buf, "%.16E", v);
        return std::string(buf);
    };
    std::string expected = "s,I,error,weight,model,phase1_CYL,phase2_SPH,phase3_DMB,phase4_ELL\n";
    const double vf[4] = {0.4, 0.126, 0.2, 0.174};
    const double phase[2][4] = {{2.5, 1000, -3, 12345.678}, {1.25, 0.001, 0, 7}};
    for (int k = 0; k < 2; ++k) {
        expected += e(fitCurve.s[k]) + "," + e(fitCurve.I[k]) + "," + e(fitCurve.Err[k]) + "," + e(fitCurve.w[k]) +
                    "," + e(2.5 * ModelCurves.sumCurve[k]);
        for (int j = 0; j < 4; ++j) expected += "," + e(2.5 * vf[j] * phase[k][j]);
        expected += "\n";
    }
    writeCsvFile();
    EXPECT_EQ(text("fixed.csv"), expected);
    // A curve that is itself named fixed.csv is an input: it stays as it is.
    std::ofstream("fixed.csv") << "0.01 100 2.5\n";
    fitCurve.dataName = "fixed.csv";
    writeCsvFile();
    EXPECT_EQ(text("fixed.csv"), "0.01 100 2.5\n");
    EXPECT_EQ(out_.str(), " VARDENE --E- \"fixed.csv\" is an input of this fit: it is not overwritten.\n");
}

TEST_F(ResultFilesTest, LogHeaderOnceThenOneSetOfRowsPerCall) {
    FitSession.seriesTitle = "Series A";
    FitSession.seriesComment = "Two spheres";
    FitSession.cSys = 0.25;
    writeLogHeader();
    for (int call = 0; call < 2; ++call) {
        writeLogRows();
        closeLog();
    }
    std::istringstream log(text("vardene.log"));
    std::string dashes = " " + std::string(98, '-');
    std::string line;
    auto next = [&] {
        std::getline(log, line);
        return line;
    };
    EXPECT_EQ(next(), dashes);
    // Free-form texts of 62 characters behind the one leading blank.
    EXPECT_EQ(next(), "   Series A" + std::string(52, ' '));
    EXPECT_EQ(next(), "   Two spheres" + std::string(49, ' '));
    // The date and time text changes; its frame does not.
    next();
    EXPECT_EQ(line.substr(0, 23), "  VARDENE started:     ");
    EXPECT_EQ(line.size(), 23u + 24u);
    EXPECT_EQ(line.substr(23 + 13, 3), "   ");
    // ':' in column 58, the value (nInt 1, nFrac 3, fmt 1) from column 60.
    EXPECT_EQ(next(), " Water  concentration " + std::string(34, '.') + "  : 0.2500");
    EXPECT_EQ(next(), " Name   Parameters of phase");
    EXPECT_EQ(next(), dashes);
    std::string rest((std::istreambuf_iterator<char>(log)), std::istreambuf_iterator<char>());
    EXPECT_EQ(rest, kRowsWithSigma + kRowsWithSigma);
}

}  // namespace
