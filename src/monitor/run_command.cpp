// The commands RUN, CONTINUE and EVALUATE: their stack passes with guards,
// the warnings about the limits, the call of the minimizer, and the
// function, noise, tolerance, gradient and Hessian estimates at the end point.
#include "monitor/command_words.h"

#include "methods/hessian_differences.h"
#include "methods/method_table.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "objective/computational_noise.h"
#include "objective/gradient.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

namespace {

constexpr std::size_t kEvaluateGuard = 0;  // value 1: CHECK has been pushed
constexpr std::size_t kRunGuard = 2;       // value 3: CHECK has been pushed
constexpr std::size_t kReportGuard = 3;    // value 4: the report has been pushed
constexpr std::string_view kRevision = "09 May 02 03:30 ";

void startFromEndPoint() {
    E4DataSetRecord& d = E4DataSet;
    d.xStart = d.xEnd;
    d.fStart = d.fEnd;
}

// A method whose search is not built yet is refused plainly: nothing is
// searched and nothing is reported as a minimum.
Outcome refuseUnavailable(MonitorState& m, int method) {
    m.searchMade = false;
    const MethodRow& r = methodTableRow(method);
    m.errorText = r.minimizer == Minimizer::None
                      ? "Method " + std::to_string(method) + " has no search."
                      : "Method \"" + std::string(r.text) + "\" is not available yet.";
    return Outcome::ErrorExit;
}

void callMinimizer(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    int iFlag = d.iFlag;  // under CONTINUE the point at which the search resumes
    methodTableRow(d.iStat(row::methodRunning)).search(iFlag);
    d.iFlag = iFlag;
    m.searchMade = true;
    m.startValueKnown = true;
}

Outcome firstPass(MonitorState& m, bool isContinue) {
    E4DataSetRecord& d = E4DataSet;
    const int method = d.iStat(row::methodRunning);
    if (method != 0 && !methodAvailable(method)) return refuseUnavailable(m, method);
    if (isContinue) {
        if (d.iStat(row::functionEvaluations) < 2 || d.iStat(row::methodRunning) != d.iStat(row::methodDone) || d.iStat(row::iterations) == 0) {
            setLine(m, "RUN");
            return Outcome::Rewrite;
        }
        d.iStat(row::computationMode) = 1;
    } else {
        d.iStat(row::methodDone) = d.iStat(row::computationMode) = d.iStat(row::HesseSet) = 0;
        startFromEndPoint();
    }
    m.guards[kRunGuard] = 3;
    setLine(m, "CHECK ALL");
    return Outcome::Prerequisite;
}

// After the report: the warnings, the question, and the search itself.
Outcome lastPass(MonitorState& m) {
    m.guards[kReportGuard] = 0;
    E4DataSetRecord& d = E4DataSet;
    const int method = d.iStat(row::methodRunning);
    if (!methodAvailable(method)) return refuseUnavailable(m, method);
    if (interactive()) {
        limitWarnings(method, d.iStat(row::nFree), d.iStat(row::maxITR), d.iStat(row::maxNFE), commandsFromTerminal());
        if (commandsFromTerminal() && askYesNo("Continue?", "Y", sysinf.CursorPosition) == 'N') {
            sysinf.crUnit = sysinf.inUnit;
            return Outcome::Clear;
        }
    }
    if (d.iStat(row::computationMode) == 0) startFromEndPoint();
    callMinimizer(m);
    return Outcome::Done;
}

Outcome runOrContinue(MonitorState& m, bool isContinue) {
    if (firstLetter(m, 2) == 'H' && interactive()) {
        write(sysinf.outUnit, "(A)", " Sorry, nobody can help you!");
        return Outcome::Done;
    }
    if (m.guards[kReportGuard] == 4) return lastPass(m);
    if (m.guards[kRunGuard] != 3) return firstPass(m, isContinue);
    m.guards[kRunGuard] = 0;
    if (E4DataSet.iStat(row::messageLevel) > 9) E4DataSet.iStat(row::messageLevel) = 1;
    if (isContinue) return lastPass(m);
    write(writerChannel(sysinf.dwUnit), "(1X,70(\"/\"),/,/,\" ZEMOK --- Version 5.6 rev. \",A,\"reports current information:\")",
          kRevision);
    m.guards[kReportGuard] = 4;
    setLine(m, "REPORT,,DATA");
    return Outcome::Prerequisite;
}

Outcome incomplete(MonitorState& m) {
    m.errorText = "DATA SET IS INCOMPLETE FOR THE COMPUTATION TO PERFORM";
    return Outcome::ErrorExit;
}

// EVALUATE,G...[,F or n or V]: the gradient by the adaptive scheme, by
// scheme n, or by the present one; the scheme stays as set.  Returns false
// when the words changed.
bool gradientForm(MonitorState& m, Outcome& out) {
    E4DataSetRecord& d = E4DataSet;
    const char b = firstLetter(m, 3);
    if (b == 'F') {
        d.iStat(row::gradientScheme) = 0;
    } else if (b != ' ' && b != 'V') {
        const std::optional<int> scheme = wordInt(m, 3);
        if (!scheme || *scheme < 0 || *scheme > 3) {
            if (!commandsFromTerminal()) {
                out = illegalCommand(m);
                return true;
            }
            setWord(m, 2, "HELP");
            return false;
        }
        d.iStat(row::gradientScheme) = *scheme;
    }
    int status = 0;
    E4FDA1(d.xEnd.data(), d.fEnd, d.finDif.data(), d.gEnd.data(), d.Hdiag.data(), status, "E4MON1");
    if (status == 10) out = incomplete(m);
    return true;
}

// EVALUATE,HES...[,I...]: the Hessian from differences at the end point,
// handed to the user's problem, and with I the diagonal of its inverse.
Outcome hessianForm(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    const int level = d.iStat(row::messageLevel);
    if (level < 4) d.iStat(row::messageLevel) = 3;
    int status = 0;
    E04HES4(d.xEnd.data(), d.fEnd, d.finDif.data(), status, "E4MON1");
    if (level < 3) d.iStat(row::messageLevel) = level;
    if (status < 0) return incomplete(m);
    if (d.iStat(row::problemCode) >= 20) passHessianToUserProblem();
    if (firstLetter(m, 3) != 'I') return Outcome::Done;
    const int u = writerChannel(sysinf.dwUnit);
    Vec1<double, kMaxVar> diagonal;
    if (!inverseHessianDiagonal(diagonal.data())) {
        write(u, "(1X,A)", "ZEMOK -W- Incomplete Hessian rank.");
        return Outcome::Done;
    }
    write(u, "(1X,A)", "Inverse Hessian diagonal:");
    I05WMD1(u, diagonal.data(), d.nVar());
    return Outcome::Done;
}

// EVALUATE,F..., EVALUATE,A..., EVALUATE,G... and EVALUATE,HES...; returns
// false when the words changed.
bool evaluateForm(MonitorState& m, Outcome& out) {
    E4DataSetRecord& d = E4DataSet;
    char a = firstLetter(m, 2), b = firstLetter(m, 3);
    int status = 0;
    out = Outcome::Done;
    if (a == 'F' && (b == ' ' || b == 'V')) {
        const int level = d.iStat(row::messageLevel);
        if (level < 6) d.iStat(row::messageLevel) = 5;
        d.fEnd = E4FUN1(d.xEnd);
        d.iStat(row::messageLevel) = level;
    } else if (a == 'F' && b == 'E') {
        E4ERR1(d.xEnd.data(), d.fEnd, status, "E4MON1");
    } else if ((a == 'F' || a == 'A') && b == 'T') {
        d.iStat(a == 'F' ? row::rFTolSet : row::rXTolSet) = 0;
        Vec1<double, kMaxVar> xTol;
        double fTol = 0;
        E4TOL1(d.xEnd.data(), d.fEnd, xTol.data(), fTol, status, "E4MON1");
    } else if ((a == 'F' || a == 'A') && !(a == 'A' && b == 'S')) {
        if (!commandsFromTerminal()) {
            out = incompleteCommand(m);
            return true;
        }
        setWord(m, 2, "HELP");
        return false;
    } else if (a == 'A' && b == 'S') {
        // The finite-difference intervals afresh, by the adaptive procedure.
        const int scheme = d.iStat(row::gradientScheme);
        d.iStat(row::gradientScheme) = d.iStat(row::finDifSet) = 0;
        E4FDA1(d.xEnd.data(), d.fEnd, d.finDif.data(), d.gEnd.data(), d.Hdiag.data(), status, "E4MON1");
        d.iStat(row::gradientScheme) = scheme;
        if (status == 10) out = failedCommand(m);
        return true;
    } else if (a == 'G') {
        return gradientForm(m, out);
    } else if (wordBegins(m, 2, "HES")) {
        out = hessianForm(m);
        return true;
    } else {
        out = illegalCommand(m);
        return true;
    }
    if (status == 10) out = incomplete(m);
    return true;
}

}  // namespace

Outcome E4CmdRun(MonitorState& m) { return runOrContinue(m, false); }
Outcome E4CmdContinue(MonitorState& m) { return runOrContinue(m, true); }

Outcome E4CmdEvaluate(MonitorState& m) {
    while (true) {
        if (wordBegins(m, 2, "HEL")) {
            helpSection("EVALUATE");
            return Outcome::Done;
        }
        if (wordBlank(m, 2)) {
            setLine(m, "EVALUATE FUNCTION VALUE");
            return Outcome::Rewrite;
        }
        if (m.guards[kEvaluateGuard] != 1) {
            m.guards[kEvaluateGuard] = 1;
            setLine(m, "CHECK ALL");
            return Outcome::Prerequisite;
        }
        m.guards[kEvaluateGuard] = 0;
        Outcome out = Outcome::Done;
        if (evaluateForm(m, out)) return out;
    }
}
