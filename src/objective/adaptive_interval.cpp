// E4FDS1, the single step of the adaptive finite differences, and the
// search for the interval of one variable: start at 10 sqrt(FrlErr)(|x|+1),
// grow or shrink until the central second difference is neither drowned in
// noise nor a mere truncation artefact, then take the interval that
// balances the two errors of a forward difference, 2 sqrt(noise/|f''|).
#include "objective/adaptive_interval.h"

#include "objective/gradient.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "objective/target_function.h"
#include "platform/units.h"

#include <algorithm>
#include <cmath>

namespace {

int out() { return writerChannel(sysinf.dwUnit); }
int level() { return E4DataSet.iStat(row::messageLevel); }

// One set of differences at one interval.
struct DiffSet {
    double STEP = 0, FFORW = 0, FBACK = 0, FDF = 0, FDB = 0, SDC = 0;
    double RCEFDF = 0, RCEFDB = 0, RCESDC = 0;
    double spread() const { return std::fabs(FDF - FDB); }
    double firstCondition() const { return std::max(RCEFDF, RCEFDB); }
};

// p / divisor without overflow: rBig where the quotient would exceed it.
double safeQuotient(double p, double divisor) {
    if (p == 0) return 0;
    if (p < divisor) return p / divisor;
    const double c = divisor / p;
    return c > X02RMDC(3) ? 1.0 / c : X02RMDC(5);
}

// Relative change between two second differences, taken against both.
double relativeChange(double previous, double next) {
    const double p = std::fabs(previous - next);
    return std::max(safeQuotient(p, std::fabs(previous)), safeQuotient(p, std::fabs(next)));
}

class IntervalSearch {
public:
    IntervalSearch(double* x, double f, int i, double FERROR)
        : x_(x), f_(f), i_(i), FERROR_(FERROR), x0_(x[i - 1]) {}

    IntervalResult run() {
        cur_.STEP = 10.0 * std::sqrt(relativeNoise()) * (std::fabs(x0_) + 1.0);
        firstStep_ = cur_.STEP;
        measure(cur_);
        best_ = cur_;
        if (cur_.firstCondition() < 0.1) saveFirstDerivative(cur_);
        bool found = false;
        if (cur_.RCESDC > 0.001 && cur_.RCESDC < 0.2) {
            R_ = 0;
            found = true;
        } else {
            found = cur_.RCESDC >= 0.2 ? grow() : shrink();
        }
        return found ? finalPhase() : diagnose();
    }

private:
    void measure(DiffSet& s) {
        E4FDS1(x_, f_, i_, K_, s.STEP, FERROR_, s.FFORW, s.FBACK, s.FDF, s.FDB, s.SDC, s.RCEFDF, s.RCEFDB,
               s.RCESDC);
    }
    void considerBest(const DiffSet& s) {
        if (s.spread() < best_.spread()) best_ = s;
    }
    void saveFirstDerivative(const DiffSet& s) {
        H1_ = s.STEP;
        savedFDF_ = s.FDF;
        savedCentral_ = (s.FDF + s.FDB) / 2.0;
    }

    // The interval is too small: the second difference is noise.
    bool grow() {
        while (K_ < 4) {
            const double previous = cur_.SDC;
            cur_.STEP *= 10.0;
            ++K_;
            measure(cur_);
            R_ = relativeChange(previous, cur_.SDC);
            considerBest(cur_);
            if (H1_ < 0 && cur_.firstCondition() < 0.1) saveFirstDerivative(cur_);
            if (cur_.RCESDC < 0.1) return true;
            if (std::fabs(cur_.SDC) < FERROR_ && cur_.SDC != 0) return true;
        }
        return false;
    }

    // The interval is too large: the trial at 0.08 of it is kept only while
    // its second difference stays clear of the noise.
    bool shrink() {
        while (K_ < 4) {
            DiffSet trial;
            trial.STEP = 0.08 * cur_.STEP;
            ++K_;
            measure(trial);
            R_ = relativeChange(cur_.SDC, trial.SDC);
            considerBest(trial);
            if (trial.RCESDC >= 0.1) return true;
            cur_ = trial;
            if (cur_.firstCondition() < 0.1) saveFirstDerivative(cur_);
            if (cur_.RCESDC > 0.001) return true;
        }
        return false;
    }

    IntervalResult diagnose();
    IntervalResult finalPhase();

    double* x_;
    double f_;
    int i_;
    double FERROR_, x0_;
    int K_ = 0;
    DiffSet cur_, best_;
    double firstStep_ = 0;
    double H1_ = -1, savedFDF_ = 0, savedCentral_ = 0;
    double R_ = 0;
};

// No interval passed the tests: say why, and take what is most credible.
IntervalResult IntervalSearch::diagnose() {
    IntervalResult r;
    r.failed = true;
    if (level() >= 5) {
        write(out(), "(12X,'The reason: NO OPTIMUM STEP FOR THE SECOND',' DERIVATIVE',/,12X,"
                     "'CAN BE FOUND. Cause diagnostics:')");
    }
    r.SDC = cur_.SDC;
    if (H1_ < 0) {
        r.SDC = 0;
        r.H = firstStep_;
        if (level() >= 5) write(out(), "(12X,'f(x) is likely to be constant.')");
    } else {
        if (cur_.RCESDC < 0.1) {
            r.H = cur_.STEP;
            r.P = cur_.FDF;
            r.C = (cur_.FDF + cur_.FDB) / 2.0;
            if (level() >= 5) {
                write(out(), "(12X,'second derivative is likely to be fast-growing with',/,12X,"
                             "'the decreasing the step length.')");
            }
        } else {
            r.H = H1_;
            r.P = savedFDF_;
            r.C = savedCentral_;
            r.SDC = 0;
            if (level() >= 5) write(out(), "(12X,'f(x) is likely to be either odd or nearly linear.')");
        }
        r.S = r.H * std::fabs(r.SDC) * 0.5 + 2.0 * FERROR_ / r.H;
    }
    const double B = (best_.FDF + best_.FDB) / 2.0, W = best_.spread() / 2.0;
    if (std::fabs(r.P - B) < W) {
        r.H = best_.STEP;
        r.P = best_.FDF;
        r.SDC = best_.SDC;
        r.C = B;
        r.S = std::fabs(r.SDC) * r.H * 0.5 + 2.0 * FERROR_ / r.H;
    }
    r.R = R_;
    return r;
}

// The interval that balances truncation against noise, checked by one
// forward difference against the central one; a second try starts from
// the best set.
IntervalResult IntervalSearch::finalPhase() {
    const double floor = std::pow(X02RMDC(2), 0.6) * std::fabs(x0_);
    IntervalResult r;
    for (int failures = 0;;) {
        const double T = std::fabs(cur_.SDC) <= FERROR_ ? std::fabs(cur_.STEP) : 2.0 * std::sqrt(FERROR_ / std::fabs(cur_.SDC));
        const double HOPTIM = std::max(T, floor);
        x_[i_ - 1] = x0_ + HOPTIM;
        const double F = E4FUN1(x_);
        x_[i_ - 1] = x0_;
        const double FDFOPT = (F - f_) / HOPTIM;
        const double FDC = (cur_.FFORW - cur_.FBACK) / (2.0 * cur_.STEP);
        const double SUMERR = std::fabs(cur_.SDC) * HOPTIM * 0.5 + 2.0 * FERROR_ / HOPTIM;
        const double DIFERR = std::fabs(FDFOPT - FDC);
        if (level() >= 6) {
            write(out(), "(12X,'HOPTIM =',1P,G14.6,/,12X,'FDFOPT =',1P,G14.6,',  FDC    =',1P,G14.6,/,12X,"
                         "'SUMERR =',1P,G14.6,',  DIFERR =',1P,G14.6)",
                  HOPTIM, FDFOPT, FDC, SUMERR, DIFERR);
        }
        r = IntervalResult{.H = HOPTIM, .P = FDFOPT, .C = FDC, .SDC = cur_.SDC, .S = SUMERR, .R = R_};
        if (std::max(DIFERR, SUMERR) <= 0.5) return r;
        ++failures;
        if (level() >= 5) {
            write(out(), "(' E4FDA1 -W- ',I2,' ATTEMPT OF OPTIMUM',' FINITE-DIFFERENCE INTERVAL',/,12X,"
                         "'ESTIMATION FOR',I3,'-TH VARIABLE WAS FAILED.')",
                  failures, i_);
        }
        if (failures == 2) {
            r.failed = true;
            return r;
        }
        cur_ = best_;
    }
}

}  // namespace

void E4FDS1(double* x, double f, int i, int K, double STEP, double FERROR, double& FFORW, double& FBACK,
            double& FDF, double& FDB, double& SDC, double& RCEFDF, double& RCEFDB, double& RCESDC) {
    const double x0 = x[i - 1];
    x[i - 1] = x0 + STEP;
    FFORW = E4FUN1(x);
    x[i - 1] = x0 - STEP;
    FBACK = E4FUN1(x);
    x[i - 1] = x0;
    FDF = (FFORW - f) / STEP;
    FDB = (f - FBACK) / STEP;
    SDC = (FBACK + (FFORW - f) - f) / STEP / STEP;
    // Relative condition errors: the noise 2 FERROR against the change that
    // each difference measures.
    const double rMin = X02RMDC(3);
    RCEFDF = 1.0 / std::max(std::fabs(FDF) * STEP / (2.0 * FERROR), rMin);
    RCEFDB = 1.0 / std::max(std::fabs(FDB) * STEP / (2.0 * FERROR), rMin);
    RCESDC = 1.0 / std::max(std::fabs(SDC) * STEP * STEP / (4.0 * FERROR), rMin);
    if (level() >= 6) {
        write(out(), "(12X,'K      = ',I3,' ,',11X,'STEP   =',1P,G14.6,/,12X,'FFORW  =',1P,G14.6,"
                     "',  FBACK  =',1P,G14.6,/,12X,'FDF    =',1P,G14.6,',  RCEFDF =',1P,G14.6,/,12X,"
                     "'FDB    =',1P,G14.6,',  RCEFDB =',1P,G14.6,/,12X,'SDC    =',1P,G14.6,"
                     "',  RCESDC =',1P,G14.6,/,12X,'FERROR =',1P,G14.6)",
              K, STEP, FFORW, FBACK, FDF, RCEFDF, FDB, RCEFDB, SDC, RCESDC, FERROR);
    }
}

double relativeNoise() { return std::max(E4DataSet.FrlErr, X02RMDC(2)); }

IntervalResult adaptiveInterval(double* x, double f, int i, double FERROR) {
    return IntervalSearch(x, f, i, FERROR).run();
}
