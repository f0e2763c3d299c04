// E4ERR1: the computational noise of the target function from a table of
// differences along a direction, and the initial steps derived from it.
#include "objective/computational_noise.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "objective/noise_table.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <algorithm>
#include <cmath>

namespace {

// Step multiplier and the last table, kept between calls.
struct NoiseState {
    double RELSTP = 1.0;
    double RLSNEW = 1.0;
    DifferenceTable table;
};

NoiseState state;

int out() { return writerChannel(sysinf.dwUnit); }
int level() { return E4DataSet.iStat(row::messageLevel); }
bool isFree(int i) { return E4DataSet.iFixer(i) != 0; }

void writeVector(const double* v) {
    int status = 0;
    I5WRA1(out(), v, 1, 1, E4DataSet.nVar(), "", status);
}

// The trial point z = x + k * d * RELSTP over the free variables; returns 1
// when no component changed.
int trialPoint(const double* x, int k) {
    E4DataSetRecord& d = E4DataSet;
    int unchanged = 1;
    for (int i = 1; i <= d.nVar(); ++i) {
        d.aux1(i) = x[i - 1];
        if (!isFree(i)) continue;
        d.aux1(i) = x[i - 1] + k * d.aux2(i) * state.RELSTP;
        if (d.aux1(i) != x[i - 1]) unchanged = 0;
    }
    return unchanged;
}

// The quantities of one estimate: the point and its value, A = |f| + 1,
// the length L of the direction and its norm before scaling, the bounds on
// a step's change of the function, the full-step value F13, the last
// change C, the count of evaluations at entry and the status.
struct Search {
    const double* x = nullptr;
    double f = 0, A = 0, L = 0, norm0 = 0, eps = 0, DFMAX = 0, DFMIN = 0, F13 = 0, C = 0;
    int nfe0 = 0;
    int err = 0;
};

// The direction, scaled to the length L (steps 3 and 4).
void direction(Search& s) {
    E4DataSetRecord& d = E4DataSet;
    const int n = d.nVar();
    double sum = 0, norm = 0;
    for (int i = 1; i <= n; ++i) {
        d.aux2(i) = 0;
        if (!isFree(i)) continue;
        double xi = std::fabs(s.x[i - 1]) + 1.0;
        bool stepGiven = d.iStat(row::xStepSet) != 0 && d.xStep(i) != 0;
        d.aux2(i) = stepGiven ? std::fabs(d.xStep(i)) : xi;
        norm += d.aux2(i) * d.aux2(i);
        sum += 4.0 * xi * xi * std::pow(s.eps / s.A, 0.66666);
    }
    s.norm0 = std::sqrt(norm);
    s.L = 2.0 * 13.0 * std::sqrt(sum / n);
    for (int i = 1; i <= n; ++i) {
        if (isFree(i)) d.aux2(i) = s.norm0 > 0 ? d.aux2(i) * s.L / s.norm0 : s.L / std::sqrt(static_cast<double>(n));
    }
}

void noStepFound(const Search& s) {
    write(out(),
          "(' E4ERR1 -E- NO ACCEPTABLE ARGUMENT STEP FOUND',/,12X,'after ',I3,"
          "' allowed function evaluations.',/,12X,'Initial function value =',10X,1P,G14.6,/,"
          "12X,'Change in the function value =',4X,1P,G14.6,/,12X,'Relative step length =',"
          "12X,1P,G14.6)",
          30, s.f, s.C, state.RELSTP);
}

void stepReport(const Search& s) {
    if (level() < 4) return;
    write(out(),
          "(' E4ERR1 --- Norm of direction vector =',1P,G14.6,/,12X,'Absolute step length     =',"
          "1P,G14.6,/,12X,'Step length multiplier   =',1P,G14.6,/,12X,'Machine precision        =',"
          "1P,G14.6,/,12X,'Scaled direction vector:')",
          s.norm0, s.L, state.RELSTP, s.eps);
    writeVector(E4DataSet.aux2.data());
}

// Fills the table at the step in hand; false when a value changed too much
// and C holds that change.
bool fillTable(Search& s) {
    E4DataSetRecord& d = E4DataSet;
    double T[14];
    T[0] = s.f;
    double M = 0;
    for (int k = 1; k <= 12; ++k) {
        s.err = trialPoint(s.x, k);
        T[k] = E4FUN1(d.aux1.data());
        M = std::max(M, std::fabs(T[k] - s.f));
        if (k < 12 && M >= s.DFMAX) {
            s.C = M;
            state.RLSNEW = 0;
            return false;
        }
    }
    T[13] = s.F13;
    state.table.setValues(T);
    return true;
}

// The step search (step 7); false when no acceptable step exists.
bool stepSearch(Search& s) {
    E4DataSetRecord& d = E4DataSet;
    bool measure = true;
    while (true) {
        if (measure) {
            state.RLSNEW = state.RELSTP;
            s.err = trialPoint(s.x, 1);
            s.F13 = E4FUN1(d.aux1.data());
            s.C = std::fabs(s.F13 - s.f);
        }
        if (s.C > s.DFMAX) state.RELSTP *= 0.07;
        if (s.C < s.DFMIN) state.RELSTP *= 11.0;
        measure = true;
        if (state.RELSTP != state.RLSNEW) {
            if (d.iStat(row::functionEvaluations) - s.nfe0 <= 30) {
                if (level() >= 1)
                    write(out(),
                          "(' E4ERR1 --- RELSTP =',1P,G14.6,' .NE. RLSNEW =',1P,G14.6,/,12X,"
                          "'Step length correction...')",
                          state.RELSTP, state.RLSNEW);
                continue;
            }
            noStepFound(s);
        }
        state.RELSTP /= 13.0;
        if (state.RELSTP < X02RMDC(3) || state.RELSTP > X02RMDC(5)) {
            noStepFound(s);
            return false;
        }
        stepReport(s);
        if (fillTable(s)) return true;
        measure = false;  // back to the step rule with the change C
    }
}

void returnLine(std::string_view tag, std::string_view name) {
    if (level() >= 6) write(out(), "(1X,A6,' --- Return to ',A6)", tag, name);
}

}  // namespace

void resetComputationalNoise() { state = NoiseState{}; }

void E4ERR1(double* x, double& f, int& err, std::string_view name) {
    E4DataSetRecord& d = E4DataSet;
    Search s{.x = x, .f = f, .eps = X02RMDC(2), .nfe0 = d.iStat(row::functionEvaluations)};
    if (d.nVar() == 0 || d.iStat(row::nFree) == 0 || d.iStat(row::xStartSet) == 0) {
        err = 10;
        write(out(), "(A)", " E4ERR1 -E- WRONG INPUT DATA");
        returnLine("E4ERR1", name);
        return;
    }
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) f = E4FUN1(x);
    s.f = f;
    s.A = std::fabs(f) + 1.0;
    direction(s);
    s.DFMAX = std::pow(s.eps, 0.20000000298023224) * s.A;
    s.DFMIN = std::pow(s.eps, 0.699999988079071) * s.A;
    state.RELSTP = 1.0;
    bool tableBuilt = stepSearch(s);
    NoiseResult noise = tableBuilt ? state.table.analyse(level(), out()) : NoiseResult{};
    double N = noise.found ? noise.absolute : std::sqrt(static_cast<double>(d.nVar())) * s.eps * s.A;
    if (!noise.found) {
        s.err = 1;
        if (level() >= 1)
            write(out(), "(12X,'ERROR ESTIMATING WAS FAILED TO FOUND.',/,12X,'Return with the value',13X,1P,G14.6)", N);
    }
    d.FrlErr = std::max(s.eps, N / s.A);
    if (level() >= 1) write(out(), "(12X,'REL/ABS value =',19X,1P,G14.6)", d.FrlErr);
    d.iStat(row::FrlErrSet) += 1;
    if (tableBuilt && (level() >= 4 || (level() >= 1 && s.err != 0))) state.table.print(out());
    err = s.err;
    if (d.iStat(row::xStepSet) == 0) {
        deriveSteps(x, s.A, s.L, state.RELSTP, state.table, level(), out());
        d.iStat(row::xStepSet) = 1;
        if (level() >= 1) writeVector(d.xStep.data());
    }
    returnLine("E4ERR1", name);
}
