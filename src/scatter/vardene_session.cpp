// One call of the scattering fit as the user function runs it:
// vardeneSessionCall with the TEST run, and modelPhasesOfTable.
#include "scatter/vardene_session.h"

#include "core/console_layer.h"
#include "scatter/structure_factor.h"

#include "core/e4dataset.h"
#include "scatter/answers_file.h"
#include "scatter/measured_curve.h"
#include "scatter/measured_curve_steps.h"
#include "scatter/model_curves.h"
#include "scatter/parameter_vector.h"
#include "scatter/phases.h"
#include "scatter/plot_layer.h"
#include "scatter/result_files.h"
#include "scatter/session_dialogue.h"

#include <algorithm>

void modelPhasesOfTable(ModelPhase* phases, int& nPhase) {
    nPhase = std::clamp(PhaseTable.nPhase, 0, kMaxPhaseEntries);
    for (int p = 0; p < nPhase; ++p) {
        const auto ip = static_cast<std::size_t>(p);
        ModelPhase& m = phases[p];
        m = ModelPhase{};
        m.phaseType = PhaseTable.phaseType[ip];
        m.Vf = PhaseTable.Vf[ip].value;
        const bool cylinder = m.phaseType == kPhaseCylinder;
        m.shell.Rin = cylinder ? PhaseTable.RinC[ip].value : PhaseTable.Rin[ip].value;
        m.shell.Rout = cylinder ? PhaseTable.RoutC[ip].value : PhaseTable.Rout[ip].value;
        m.shell.roin = PhaseTable.roin[ip].value;
        m.shell.roout = PhaseTable.roout[ip].value;
        m.shell.dR = PhaseTable.dR[ip].value;
        m.shell.iDist = PhaseTable.iDist[ip];
        m.len = PhaseTable.Len[ip];
        m.Rhs = PhaseTable.Rhs[ip].value;
        m.tau = PhaseTable.tau[ip].value;
        m.Rell = PhaseTable.Rell[ip].value;
        m.nu = PhaseTable.nu[ip].value;
    }
}

namespace {

// The outputs of a call at a high message level.
void writeResults(int level) {
    if (level >= 11) {
        writePamFile();
        writeStrFile();
    }
    if (level >= 10) writeFitFile();
    if (level >= 11) {
        writeLogRows();
        drawResultPicture();
        showResultTable();
        WaitClose();  // the end of the plot session
        closeLog();
    }
}

// The second description of the phases in a TEST run, always from the
// terminal; nVar keeps the count of the first description.
void secondDescription(double* x) {
    leaveAnswersFile();
    int n = PhaseTable.nPhase;
    ASKINUM("Enter Number of phases", n);
    PhaseTable.nPhase = std::clamp(n, 0, kMaxPhaseEntries);
    for (int p = 1; p <= PhaseTable.nPhase; ++p) {
        if (!readPhaseDescription(p)) break;
    }
    const int nVar = E4DataSet.nVar();
    layoutParameters(x);
    E4DataSet.nVar() = nVar;
}

// A TEST run replaces the measured intensities by the model with noise,
// seeded from the time of day, and takes errors and weights from them.
void simulateTestCurve(double* x) {
    const int n = fitCurve.nPts;
    NOISEADD(n, ModelCurves.sumCurve, fitCurve.I, FitSession.noiseT, testNoiseSeed(dateTimeText()));
    if (FitSession.noiseT <= 0.0) {
        ERREST(n, fitCurve.s, fitCurve.I, fitCurve.Err);
    } else {
        for (int k = 0; k < n; ++k) fitCurve.Err[k] = fitCurve.I[k] * FitSession.noiseT;
    }
    computeWeights();
    writeTestData();
    secondDescription(x);
}

}  // namespace

double vardeneSessionCall(double* x) {
    restoreFitSysinf();
    if (E4DataSet.iStat(row::functionEvaluations) == 0) {
        const bool firstPass = FitSession.firstTime;
        if (firstPass) runSessionPartA();
        runSessionPartB(x);
        if (firstPass) writeLogHeader();
    }
    unpackParameters(x);
    if (E4DataSet.nVar() == 0 || fitCurve.nPts < 2) return 0.0;

    ModelPhase phases[kMaxPhaseEntries];
    int nPhase = 0;
    modelPhasesOfTable(phases, nPhase);
    if (evaluateModel(phases, nPhase, FitSession.cSys, fitCurve.s, fitCurve.nPts) == kStrFacSubstituted)
        I05MES("USERF ----W- No physical structure factor of a SPHERE phase: factor 1 used.");
    // The volume fractions are kept in their normalized form, so that a
    // second run starts from them.
    for (int p = 0; p < nPhase; ++p) PhaseTable.Vf[static_cast<std::size_t>(p)].value = phases[p].Vf;
    if (FitSession.testMode == 'Y' && E4DataSet.iStat(row::functionEvaluations) == 0) simulateTestCurve(x);
    const double f = objectiveValue(fitCurve.I, fitCurve.w, fitCurve.nPts);
    if (E4DataSet.iStat(row::messageLevel) >= 10) fitDeviation(fitCurve.I, fitCurve.Err, fitCurve.nPts);
    writeResults(E4DataSet.iStat(row::messageLevel));
    return f;
}
