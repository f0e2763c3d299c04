// E4SRH1: the linear search.  All its arithmetic is on the line: a point is
// its abstract argument s, the real argument x0 + s * d.  Phase 1 walks out
// from 0 with golden-ratio growth until three points bracket a minimum;
// phase 2 narrows the bracket by parabolic interpolation through the three
// best points, falling back on golden-section steps whenever the parabola
// is not trustworthy (Brent's safeguards).  It reports through its trace;
// linear_search_report.cpp writes the lines.
#include "methods/linear_search.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "methods/vector_routines.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"

#include <cmath>

namespace {

using namespace linear_search_trace;

constexpr double kGrowth = 1.618033988749895;   // golden ratio
constexpr double kGolden = 0.3819660112501051;  // golden-section fraction, 2 - golden ratio

double withSign(double magnitude, double of) { return of < 0.0 ? -std::fabs(magnitude) : std::fabs(magnitude); }

// Everything one search works with.
struct LineSearch {
    // The call's arguments.
    double* x0;
    double* x;
    const double* d;
    double& step;  // D, the last step, once the bracket is closed
    double stepMax;
    double& f;     // FXMIN once the bracket is closed
    double* xTol;
    int n, maxSteps, mode;
    SearchTrace& report;

    // Quantities on the line.
    double F0 = 0, F = 0, X0 = 0, Xp = 0, Fp = 0;
    double A = 0, FA = 0, B = 0, FB = 0, XMIN = 0, XL = 0, FXL = 0, XSL = 0, FXSL = 0;
    double XTEST = 0, FXTEST = 0, E = 0, W = 0, AXTOL = 0, AFTOL = 0;
    double big = 0;
    int count = 0;
    bool limited = false;
    bool phase2 = false;
    int flag = 0;

    void emit(const TraceRecord& r) { traceTo(report, r); }
    void event(int code, std::array<double, 4> real = {}, int c0 = 0) {
        TraceRecord r{TraceKind::Event, code};
        r.real = real;
        r.count[0] = c0;
        emit(r);
    }

    // The trial point x0 + XTEST * d and its value.
    void evaluate(int phase) {
        int same = 0;
        E4STP1(x0, x, d, n, 1.0, XTEST, same);
        FXTEST = E4FUN1(x);
        ++count;
        TraceRecord r{TraceKind::Point, Trial};
        r.pass = phase;
        r.count[0] = count;
        r.real[0] = XTEST;
        r.value = FXTEST;
        r.point = x;
        emit(r);
    }

    // A trial beyond the step bound is put on the bound.
    double bounded(double wanted) {
        if (stepMax <= 0.0 || std::fabs(wanted) <= stepMax) return wanted;
        const double taken = withSign(stepMax, wanted);
        event(StepLimited, {wanted, taken});
        limited = true;
        return taken;
    }

    bool bracket();
    bool reduce();
    void closeBracket();
    bool converged() const;
    double parabolicStep(bool& refused);
    void newBest();
    void worsePoint(double D);
    void abnormalEnd();
    void tooManySteps() {
        event(TooManySteps, {}, count);
        abnormalEnd();
    }
    void finish();
};

// Phase 1.  Returns true when the search is over (a return or an abnormal
// end), false when the bracket is closed.
bool LineSearch::bracket() {
    while (true) {
        XTEST = bounded(X0 + step);
        evaluate(1);
        if (std::fabs(XTEST) > big || std::fabs(FXTEST) > big) {
            event(NoBracket);
            abnormalEnd();
            return true;
        }
        if (count >= maxSteps) {
            tooManySteps();
            return true;
        }
        if (FXTEST <= F) {
            Xp = X0, Fp = F;
            X0 = XTEST, F = FXTEST;
            if (mode == 5 || limited) {
                XMIN = XTEST;
                f = FXTEST;
                return true;
            }
            step *= kGrowth;
            continue;
        }
        if (count == 1) {
            // Uphill at once: turn round, starting again from the base point
            // with a longer step.
            Xp = XTEST, Fp = FXTEST;
            step *= -kGrowth;
            continue;
        }
        closeBracket();
        return false;
    }
}

void LineSearch::closeBracket() {
    XMIN = X0;
    f = F;
    if (Xp <= XTEST) {
        A = Xp, FA = Fp, B = XTEST, FB = FXTEST;
    } else {
        A = XTEST, FA = FXTEST, B = Xp, FB = Fp;
    }
    if (Fp < FXTEST) {
        XL = Xp, FXL = Fp, XSL = XTEST, FXSL = FXTEST;
    } else {
        XL = XTEST, FXL = FXTEST, XSL = Xp, FXSL = Fp;
    }
    XTEST = XMIN;
    FXTEST = F;
    int same = 0;
    E4STP1(x0, x, d, n, 1.0, XMIN, same);
    W = E = step = B - A;
    count = 0;
    phase2 = true;
    event(Bracketed, {A, B, XMIN});
}

bool LineSearch::converged() const {
    const double M = (A + B) * 0.5;
    const bool bX = std::fabs(XMIN - M) <= (AXTOL - W * 0.5) + AXTOL;
    const bool bF = FXSL - f <= AFTOL;
    switch (mode) {
        case 0: return bX;
        case 1: return bF;
        case 2: return bX || bF;
        case 3: return bX && bF;
        default: return false;  // modes 4 and 5 end on a new best point
    }
}

// The step of the parabola through XMIN, XL and XSL, or refused = true when
// the golden section must be taken instead.  A degenerate parabola is an
// abnormal end, told by refused = true and flag 2.
double LineSearch::parabolicStep(bool& refused) {
    refused = true;
    const double D1 = XMIN - XSL, D2 = XMIN - XL, D3 = XL - XSL;
    const double R1 = (f - FXL) * D1, R2 = (f - FXSL) * D2;
    const double Q = 2.0 * (R1 - R2);
    double P = D2 * R2 - D1 * R1;
    if (D1 == 0.0 || D2 == 0.0 || D3 == 0.0) {
        event(ParabolaDegenerate, {D2, D1, D3, Q});
        abnormalEnd();
        return 0.0;
    }
    if (Q < 0.0) P = -P;
    const double Eold = E;
    E = step;
    const double absQ = std::fabs(Q);
    if (std::fabs(0.5 * Eold * absQ) <= std::fabs(P)) return 0.0;  // not less than half the step before last
    if ((A - XMIN) * absQ >= P) return 0.0;                         // would leave the bracket at A
    if ((B - XMIN) * absQ <= P) return 0.0;                         // would leave the bracket at B
    if (((Q / D2) / D1) / D3 <= 0.0) return 0.0;                    // the parabola is not convex
    refused = false;
    const double S = P / absQ, U = XMIN + S, M = (A + B) * 0.5;
    if (U - A < 2.0 * AXTOL || B - U < 2.0 * AXTOL) return M - XMIN < 0.0 ? -AXTOL : AXTOL;
    return S;
}

void LineSearch::newBest() {
    if (XTEST >= XMIN) {
        A = XMIN, FA = f;
    } else {
        B = XMIN, FB = f;
    }
    XSL = XL, FXSL = FXL;
    XL = XMIN, FXL = f;
    XMIN = XTEST, f = FXTEST;
}

void LineSearch::worsePoint(double D) {
    double replaced = 0;
    if (XTEST < XMIN) {
        replaced = FA;
        A = XTEST, FA = FXTEST;
    } else {
        replaced = FB;
        B = XTEST, FB = FXTEST;
    }
    if (FXTEST - replaced >= AFTOL) {
        // Inside the bracket a point above an end: the line is not unimodal.
        flag = 1;
        event(Multimodal, {D, FXTEST - f});
    }
    if (FXTEST <= FXL || XL == XMIN) {
        XSL = XL, FXSL = FXL;
        XL = XTEST, FXL = FXTEST;
    } else if (FXTEST <= FXSL || XSL == XMIN || XL == XSL) {
        XSL = XTEST, FXSL = FXTEST;
    }
}

// Phase 2.  Returns at the return or an abnormal end.
bool LineSearch::reduce() {
    while (true) {
        if (XMIN == XTEST) {
            int err = 0;
            E4TOL1(x, f, xTol, AFTOL, err, "E4SRH1");
            E4RAT1(d, xTol, n, AXTOL);
        }
        event(Debug, {A, FA, B, FB});
        event(DebugPoint, {XMIN, f}, 1);
        event(DebugPoint, {XL, FXL}, 2);
        event(DebugPoint, {XSL, FXSL}, 3);
        event(DebugPoint, {XTEST, FXTEST}, 4);
        event(DebugTail, {E, AXTOL, AFTOL});
        if (converged()) return true;
        if (count > maxSteps) {
            tooManySteps();
            return true;
        }
        const double M = (A + B) * 0.5;
        bool golden = true;
        double D = 0;
        if (std::fabs(E) > AXTOL) {
            D = parabolicStep(golden);
            if (flag == 2) return true;
            if (!golden) event(Parabolic, {D});
        }
        if (golden) {
            E = XMIN < M ? B - XMIN : A - XMIN;
            D = E * kGolden;
            event(Golden, {D});
        }
        if (std::fabs(D) < AXTOL) D = D < 0.0 ? -AXTOL : AXTOL;
        step = D;
        event(StepToMake, {D});
        const double next = bounded(XMIN + D);
        if (next == XTEST) {
            event(StepTooSmall);
            abnormalEnd();
            return true;
        }
        XTEST = next;
        evaluate(2);
        if (FXTEST <= f) {
            newBest();
            if (mode == 4 || mode == 5 || limited) return true;
        } else {
            worsePoint(D);
        }
        W = B - A;
    }
}

// The best point stands: in phase 1 that is X0 with F.
void LineSearch::abnormalEnd() {
    flag = 2;
    if (!phase2) {
        XMIN = X0;
        f = F;
    }
    event(Abnormal, {FXTEST, XTEST, f, XMIN}, count);
}

void LineSearch::finish() {
    if (XTEST != XMIN) {
        int same = 0;
        E4STP1(x0, x, d, n, 1.0, XMIN, same);
    }
}

}  // namespace

void E4SRH1(double* x0, double* x, const double* d, double& step, double stepMax, double& f, double& path,
            double& dF, double* xTol, int n, int& flag, int channel, int msgLevel, int maxSteps, int mode,
            std::string_view tag) {
    if (n < 1 || n > kMaxVar) {  // no vector of the data set has that many entries
        path = dF = 0;
        flag = 2;
        return;
    }
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    LineSearch s{x0, x, d, step, stepMax, f, xTol, n, maxSteps, mode, linearSearchReport(channel, msgLevel, tag)};
    s.big = std::sqrt(rBig);
    s.F0 = f;
    s.F = flag != 0 ? f : E4FUN1(x0);
    flag = 0;
    TraceRecord begin{TraceKind::Start, Begin};
    begin.real = {step, stepMax};
    s.emit(begin);
    if (!s.bracket()) s.reduce();
    s.finish();
    path = s.XMIN;
    dF = f - s.F0;
    flag = s.flag;
    TraceRecord end{TraceKind::Stop, Return};
    end.value = f;
    end.real = {path, dF};
    end.count[0] = flag;
    s.emit(end);
}
