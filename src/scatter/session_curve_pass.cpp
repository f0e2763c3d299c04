// Second part of the fit dialogue, on every call with no evaluations
// counted: runSessionPartB with the format question and the curve input.
#include "scatter/session_dialogue.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "platform/units.h"
#include "scatter/answers_file.h"
#include "scatter/measured_curve.h"
#include "scatter/parameter_vector.h"
#include "scatter/phases.h"

#include <cmath>
#include <string>

namespace {

// Step B2: the format code, asked until it is 1 or 2.  False when the
// terminal input ended first.
bool askFormatCode(int& code) {
    int status = 0;
    I05LINE(sysinf.outUnit, "Choose type of data file format:.", status);
    nameValueLine(sysinf.outUnit, "1", "TAVLO format", -58, ' ');
    nameValueLine(sysinf.outUnit, "2", "ASCII format", -58, ' ');
    for (;;) {
        code = 2;
        ASKINUM("Enter the format code", code);
        if (code == 1 || code == 2) return true;
        if (unit::terminalInputEnded()) return false;
        refuseAnswer("the format code is 1 (TAVLO) or 2 (ASCII).");
    }
}

// The curve input asks through the prompt routines of the dialogue, so that
// its answers come from the answers file too, and refuses through it.
void routeCurveQuestions() {
    CurveQuestions questions;
    questions.askInt = ASKINUM;
    questions.askReal = ASKRNUM;
    questions.askInt2 = ASKINUM2;
    questions.askName = ASKNAM;
    questions.refuse = refuseAnswer;
    setCurveQuestions(questions);
}

// No curve or no parameter: nothing may be fitted.  nVar 0 tells the
// monitor that the problem is not set up.
void refuseProblem(bool curveRead) {
    fitCurve.nPts = 0;
    E4DataSet.nVar() = 0;
    E4DataSet.iStat(row::nFree) = 0;
    I05MES(curveRead ? "USERF ----E- No phase is described: there is nothing to fit, the problem is not set up."
                     : "USERF ----E- No curve was read: there is nothing to fit, the problem is not set up.");
}

}  // namespace

bool runSessionPartB(double* x) {
    FitSession.eps = X02RMDC(2);
    FitSession.sqrtEps = std::sqrt(FitSession.eps);
    layoutParameters(x);
    routeCurveQuestions();

    // Steps B3 to B5: the curve, asked for again until it holds at least
    // two points (the reader refuses files and fractions that leave fewer).
    int status = -2;
    int code = 2;
    while (askFormatCode(code)) {
        FitSession.formatCode = code;
        status = loadMeasuredCurve(code);
        if (status == 0 || status == -2) break;
    }
    // The first pass ends with the first curve that is read: until then a
    // new PROBLEM,USER starts the whole dialogue again (and replays the
    // answers file, which may have been mended meanwhile).
    if (status == 0 && E4DataSet.nVar() > 0) {
        FitSession.firstTime = false;
        return true;
    }
    refuseProblem(status == 0);
    return false;
}
