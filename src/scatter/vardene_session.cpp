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
#include <string>

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

// The region of the core-shell warning has been entered in this fit.
bool coreShellWarned = false;

// Core-shell spheres (and dumbbells) with a distribution of radii: the
// radial integrand is A(R)^2 / ((V(R) - V(Rc)) roout + roin V(Rc)), the
// form factor over the contrast-weighted volume.  While every radius of the
// range [max(sqrt(eps), Rout - 3 dR), Rout + 3 dR] is above the core this
// stays away from zero for contrasts of one sign; once the range reaches
// below the core, Rc > Rout - 3 dR, radii R < Rc enter, and the denominator
// vanishes at R^3 = Rc^3 (1 - roin/roout).  The misfit then has a pole that
// a search can fall into.  Said once per fit, at the first point that
// enters the region.
void warnCoreShellRegion(const ModelPhase* phases, int nPhase) {
    if (coreShellWarned) return;
    for (int p = 0; p < nPhase; ++p) {
        const ModelPhase& m = phases[p];
        if (m.phaseType != kPhaseSphere && m.phaseType != kPhaseDumbbell) continue;
        const ShellParticle& sh = m.shell;
        if (sh.Rout == 0.0 || sh.dR / sh.Rout < 1e-6) continue;  // monodisperse
        const double low = std::max(FitSession.sqrtEps, sh.Rout - 3.0 * sh.dR);
        if (std::max(sh.Rin, 0.0) <= low) continue;
        coreShellWarned = true;
        I05MES("USERF ----W- Phase " + std::to_string(p + 1) + ": core radius Rin = " + shortNumber(sh.Rin) +
               " above Rout - 3 dR = " + shortNumber(sh.Rout - 3.0 * sh.dR) +
               "; the radial integrand may pass through a pole, check the fit there.");
        return;
    }
}

// The outputs of a call at a high message level.
void writeResults(int level) {
    if (level >= 11) {
        writePamFile();
        writeStrFile();
    }
    if (level >= 10) {
        writeFitFile();
        writeCsvFile();
    }
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
        if (!runSessionPartB(x)) return 0.0;  // nothing to fit: nVar is 0
        if (firstPass) writeLogHeader();
        coreShellWarned = false;
    }
    unpackParameters(x);
    if (E4DataSet.nVar() == 0 || fitCurve.nPts < 2) return 0.0;

    ModelPhase phases[kMaxPhaseEntries];
    int nPhase = 0;
    modelPhasesOfTable(phases, nPhase);
    warnCoreShellRegion(phases, nPhase);
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
