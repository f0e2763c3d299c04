// Result files of the fit: the phase rows, test.dat, the .pam, .str and .fit
// files, the log header and rows, the picture and the result table on the terminal.
#include "scatter/result_files.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/edit_format.h"
#include "platform/units.h"
#include "scatter/answers_file.h"
#include "scatter/fit_picture.h"
#include "scatter/measured_curve.h"
#include "scatter/model_curves.h"
#include "scatter/phases.h"
#include "scatter/structure_factor.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kPamChannel = 11, kFitChannel = 15, kLogChannel = 16, kTestChannel = 21;
constexpr int kTableChannel = 8;

std::string trimmed(const std::string& s) { return s.substr(0, static_cast<std::size_t>(R02LEN(s))); }

// True when `name` is a file this fit reads: the curve or the answers file.
bool isInputFile(const std::string& name) {
    std::error_code ec;
    for (const std::string& input : {trimmed(fitCurve.dataName), trimmed(FitSession.ansFile)}) {
        if (!input.empty() && std::filesystem::equivalent(name, input, ec)) return true;
    }
    return false;
}

// Opens a result file; false, said by name, when it is an input of the fit
// (never overwritten) or cannot be opened.
bool openFile(int channel, const std::string& name, unit::Position position = unit::Position::AsIs) {
    if (isInputFile(name)) {
        I05MES("VARDENE --E- \"" + name + "\" is an input of this fit: it is not overwritten.");
        return false;
    }
    unit::OpenSpec spec{unit::Status::Unknown, unit::Access::Sequential, position};
    if (position == unit::Position::AsIs) spec.status = unit::Status::Replace;
    if (unit::open(channel, name, spec) == 0) return true;
    I05MES("VARDENE --E- Cannot write the result file \"" + name + "\".");
    return false;
}

// Closes a result file; a write that failed (a full disk) is said by name.
void closeResult(int channel, const std::string& name) {
    const int st = unit::close(channel);
    if (st != 0) I05MES("VARDENE --E- Writing the result file \"" + name + "\" failed: " + unit::ioText(st));
}

// The file name of a result: baseName with the extension, or the fixed
// test name in a TEST run.
std::string resultName(const char* extension) {
    if (FitSession.testMode == 'Y') return std::string("test") + extension;
    return trimmed(fitCurve.baseName) + extension;
}

// Intensity of phase j at point k from the array of its type.
double phaseCurve(int j, int k) {
    switch (PhaseTable.phaseType[static_cast<std::size_t>(j)]) {
        case kPhaseSphere: return ModelCurves.sphInt[j][k];
        case kPhaseCylinder: return ModelCurves.cylInt[j][k];
        case kPhaseDumbbell: return ModelCurves.dmbInt[j][k];
        case kPhaseEllipsoid: return ModelCurves.elpInt[j][k];
        default: return 0.0;
    }
}

// A number of the .csv file: E notation with 17 significant digits and no
// blanks, which spreadsheets and plotting tools read as it stands.  An
// exponent of three digits drops its letter in the E edit ("1.5-100"): the
// letter is put back.
std::string csvNumber(double v) {
    std::string t = formatRecords("(1P,E24.16)", FmtItems{v}).text;
    t = t.substr(t.find_first_not_of(' '));
    if (t.find('E') == std::string::npos && std::isfinite(v)) t.insert(t.find_last_of("+-"), "E");
    return t;
}

}  // namespace

void writePhaseRows(int channel, bool withSigma) {
    const PhaseTableRecord& t = PhaseTable;
    const double sigma = ModelCurves.sigmaFit;
    for (int p = 0; p < t.nPhase; ++p) {
        const auto i = static_cast<std::size_t>(p);
        const int j = p + 1;
        FmtItems items;
        std::string format;
        switch (t.phaseType[i]) {
            case kPhaseSphere:
                items = {j, "SPH", t.Vf[i].value, t.Rin[i].value, t.roin[i].value, t.Rout[i].value,
                         t.roout[i].value, t.dR[i].value, t.Rhs[i].value, t.tau[i].value, t.iDist[i]};
                format = "(I2,A3,8F9.2,I5";
                break;
            case kPhaseCylinder:
                items = {j, "CYL", t.Vf[i].value, t.RinC[i].value, t.roin[i].value, t.RoutC[i].value,
                         t.roout[i].value, t.dR[i].value, t.Len[i], t.iDist[i]};
                format = "(I2,A3,7F9.2,I5";
                break;
            case kPhaseDumbbell:
                items = {j, "DMB", t.Vf[i].value, t.Rin[i].value, t.roin[i].value, t.Rout[i].value,
                         t.roout[i].value, t.dR[i].value, t.iDist[i]};
                format = "(I2,A3,6F9.2,I5";
                break;
            case kPhaseEllipsoid:
                items = {j, "ELL", t.Vf[i].value, t.Rell[i].value, t.nu[i].value};
                format = "(I2,A3,3F9.2";
                break;
            default: continue;  // a phase of no type has no row
        }
        if (withSigma) {
            items.emplace_back(sigma);
            format += ",F12.4";
        }
        writeItems(channel, format + ")", items);
    }
}

void writeTestData() {
    if (!openFile(kTestChannel, "test.dat")) return;
    writePhaseRows(kTestChannel, false);
    for (int k = 0; k < fitCurve.nPts; ++k)
        write(kTestChannel, "(3D15.7)", fitCurve.s[k], fitCurve.I[k], fitCurve.Err[k]);
    closeResult(kTestChannel, "test.dat");
}

void writePamFile() {
    if (!openFile(kPamChannel, resultName(".pam"))) return;
    writePhaseRows(kPamChannel, false);
    for (int k = 0; k < fitCurve.nPts; ++k) {
        std::string line;
        for (int j = -1; j < PhaseTable.nPhase; ++j) {
            std::string text(32, ' ');
            int len = 0, err = 0;
            R02R2C3(text, 0, j < 0 ? fitCurve.s[k] : phaseCurve(j, k), len, 0, err);
            line += text.substr(0, static_cast<std::size_t>(std::max(len, 0))) + " ";
        }
        write(kPamChannel, "(1X,A)", padded(line, 256));  // the whole field, cut or blank-filled
    }
    closeResult(kPamChannel, resultName(".pam"));
}

void writeStrFile() {
    if (!openFile(kPamChannel, resultName(".str"))) return;
    write(kPamChannel, "(2X,A3,F6.3,2F8.2)", fitCurve.dataName.substr(0, 3), strFacLast.etaLast,
          strFacLast.RhsLast, strFacLast.tauLast);
    const bool sphere = PhaseTable.nPhase > 0 && PhaseTable.phaseType[0] == kPhaseSphere;
    for (int k = 0; k < fitCurve.nPts; ++k)
        write(kPamChannel, "(3(1P,G15.7))", fitCurve.s[k], sphere ? ModelCurves.strFac[0][k] : 0.0);
    closeResult(kPamChannel, resultName(".str"));
}

void writeFitFile() {
    if (!openFile(kFitChannel, resultName(".fit"))) return;
    writePhaseRows(kFitChannel, true);
    for (int k = 0; k < fitCurve.nPts; ++k)
        write(kFitChannel, "(3D15.7)", fitCurve.s[k], fitCurve.I[k], ModelCurves.scaleB * ModelCurves.sumCurve[k]);
    closeResult(kFitChannel, resultName(".fit"));
}

void writeLogHeader() {
    if (!openFile(kLogChannel, "vardene.log", unit::Position::Append)) return;
    write(kLogChannel, "(1X,98('-'))");
    writeList(kLogChannel, padded("  " + trimmed(FitSession.seriesTitle), 62));
    writeList(kLogChannel, padded("  " + trimmed(FitSession.seriesComment), 62));
    writeList(kLogChannel, " VARDENE started:     ", dateTimeText());
    nameValueLineReal(kLogChannel, "Water  concentration", FitSession.cSys, 60, '.', 1, 3, 1);
    write(kLogChannel, "(A)", " Name   Parameters of phase");
    write(kLogChannel, "(1X,98('-'))");
    closeResult(kLogChannel, "vardene.log");
}

void writeLogRows() {
    if (openFile(kLogChannel, "vardene.log", unit::Position::Append)) writePhaseRows(kLogChannel, true);
}

void writeCsvFile() {
    const std::string name = resultName(".csv");
    if (!openFile(kFitChannel, name)) return;
    // The phase columns are the phases' shares of the model, scaleB Vf I(j),
    // so that they add up to the model column.
    std::string header = "s,I,error,weight,model";
    static const char* kTypeWord[] = {"", "SPH", "CYL", "DMB", "ELL"};
    std::vector<int> phases;
    for (int j = 0; j < std::min(PhaseTable.nPhase, kMaxPhases); ++j) {
        const int type = PhaseTable.phaseType[static_cast<std::size_t>(j)];
        if (type < kPhaseSphere || type > kPhaseEllipsoid) continue;
        phases.push_back(j);
        header += ",phase" + std::to_string(j + 1) + "_" + kTypeWord[type];
    }
    write(kFitChannel, "(A)", header);
    const double b = ModelCurves.scaleB;
    for (int k = 0; k < fitCurve.nPts; ++k) {
        std::vector<double> row = {fitCurve.s[k], fitCurve.I[k], fitCurve.Err[k], fitCurve.w[k],
                                   b * ModelCurves.sumCurve[k]};
        for (int j : phases) row.push_back(b * PhaseTable.Vf[static_cast<std::size_t>(j)].value * phaseCurve(j, k));
        std::string line;
        for (double v : row) line += (line.empty() ? "" : ",") + csvNumber(v);
        write(kFitChannel, "(A)", line);
    }
    closeResult(kFitChannel, name);
}

void closeLog() {
    if (unit::isOpen(kLogChannel)) closeResult(kLogChannel, "vardene.log");
}

void showResultTable() {
    const int out = sysinf.outUnit;
    write(out, "(A)", " Comp     Vf       Rin     roin     Rout     roout     dR");
    unit::OpenSpec spec{unit::Status::Old};
    spec.action = unit::Action::Read;
    if (unit::open(kTableChannel, resultName(".fit"), spec) != 0)
        I05MES("VARDENE --E- The result table cannot be read from \"" + resultName(".fit") + "\".");
    std::string row;
    for (int p = 0; p < PhaseTable.nPhase && unit::readRecord(kTableChannel, row) == 0; ++p)
        write(out, "(A72)", padded(row, 128));  // read into a field of 128 characters
    unit::close(kTableChannel);
}

void drawResultPicture() {
    static double noCurve[kMaxPoints];  // a phase of no type draws as zero
    std::array<const double*, kMaxPhases> phaseI{};
    std::array<int, kMaxPhases> phaseType{};
    const int nPhase = std::min(PhaseTable.nPhase, kMaxPhases);
    for (int j = 0; j < nPhase; ++j) {
        const int type = PhaseTable.phaseType[static_cast<std::size_t>(j)];
        phaseType[static_cast<std::size_t>(j)] = type;
        const double* curve = noCurve;
        if (type == kPhaseSphere) curve = ModelCurves.sphInt[j];
        if (type == kPhaseCylinder) curve = ModelCurves.cylInt[j];
        if (type == kPhaseDumbbell) curve = ModelCurves.dmbInt[j];
        if (type == kPhaseEllipsoid) curve = ModelCurves.elpInt[j];
        phaseI[static_cast<std::size_t>(j)] = curve;
    }
    std::array<double, kMaxPoints> fitted{};
    const int nPts = std::min(fitCurve.nPts, kMaxPoints);
    for (int k = 0; k < nPts; ++k)
        fitted[static_cast<std::size_t>(k)] = ModelCurves.scaleB * ModelCurves.sumCurve[k];
    DrawFitPicture(nPts, fitCurve.s, fitCurve.I, fitted.data(), nPhase, phaseI.data(), phaseType.data(),
                   resultName(""));
}

std::string resultFileName(const char* extension) { return resultName(extension); }

bool openResultFile(int channel, const std::string& name) { return openFile(channel, name); }

void closeResultFile(int channel, const std::string& name) { closeResult(channel, name); }
