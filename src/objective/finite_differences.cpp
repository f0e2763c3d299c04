// E4FDA1: the adaptive finite differences over all variables, with their
// reports, the revised initial steps, and Stewart's check of the noise
// estimate against the error that argument roundoff alone would cause.
#include "objective/gradient.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "objective/adaptive_interval.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <algorithm>
#include <cmath>

namespace {

int out() { return writerChannel(sysinf.dwUnit); }
int level() { return E4DataSet.iStat(row::messageLevel); }

void writeVector(const double* v) {
    int status = 0;
    I5WRA1(out(), v, 1, 1, E4DataSet.nVar(), "", status);
}

void returnLine(std::string_view name) {
    if (level() >= 6) write(out(), "(' E4FDA1 --- Return to ',A6)", name);
}

// The Newton step |f'/f''| becomes the initial search step of variable i
// when the second difference was stable; a loaded step pulls it to their
// geometric mean when the two are more than a factor 100 apart.
void reviseStep(int i, const IntervalResult& r) {
    E4DataSetRecord& d = E4DataSet;
    if (r.P == 0 || r.SDC == 0 || !(r.R < 0.5)) return;
    double s = std::fabs(r.P / r.SDC);
    const double loaded = std::fabs(d.xStep(i));
    if (d.iStat(row::xStepSet) != 0 && (s < 0.01 * loaded || s > 100.0 * loaded)) s = std::sqrt(s * loaded);
    d.xStep(i) = s;
}

// The adaptive loop over the variables; true when every free variable got
// a trustworthy interval.
bool adaptiveLoop(double* x, double f, double FERROR, double* finDif, double* g, double* Hdiag) {
    E4DataSetRecord& d = E4DataSet;
    bool allFound = true;
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) == 0) {
            g[i - 1] = Hdiag[i - 1] = finDif[i - 1] = 0;
            continue;
        }
        if (level() >= 5) write(out(), "(' E4FDA1 ',20('-'),' data for',I3,' variable ',21('-'))", i);
        const double x0 = x[i - 1];
        const IntervalResult r = adaptiveInterval(x, f, i, FERROR);
        g[i - 1] = r.C;
        Hdiag[i - 1] = r.SDC;
        finDif[i - 1] = r.H / (std::fabs(x0) + 1.0);
        if (level() >= 5) {
            write(out(), "(12X,'Return with the values:')");
            write(out(),
                  "(12X,'Current argument value               =',1P,G14.6,/,"
                  "12X,'Optimum finite-difference interval   =',1P,G14.6,/,"
                  "12X,'Forward-difference first derivative  =',1P,G14.6,/,"
                  "12X,'Central-difference first derivative  =',1P,G14.6,/,"
                  "12X,'Central-difference second derivative =',1P,G14.6,/,"
                  "12X,\"Summary error estimate in f'(x)      =\",1P,G14.6,/,"
                  "12X,'Relative error in f\"(x)              =',1P,G14.6)",
                  x0, r.H, r.P, r.C, r.SDC, r.S, r.R);
        }
        if (r.failed) allFound = false;
        reviseStep(i, r);
    }
    if (level() >= 1) {
        write(out(), "(' E4FDA1 --- REL/ABS finite-difference intervals',' produced:')");
        writeVector(finDif);
        write(out(), "(12X,'Resultant gradient vector is:')");
        writeVector(g);
        write(out(), "(12X,'Revised vector of initial search steps:')");
        writeVector(d.xStep.data());
        write(out(), "(12X,'Hessian diagonal obtained:')");
        writeVector(Hdiag);
    }
    d.iStat(row::HdiagSet) = 1;
    d.iStat(row::finDifSet) = 1;
    return allFound;
}

// Stewart's check: the relative error that the roundoff of the arguments
// alone puts into f, judged from the gradient, against the noise estimate.
void stewartCheck(const double* x, double f, const double* g) {
    E4DataSetRecord& d = E4DataSet;
    const double eps = X02RMDC(2);
    double E = 0;
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) == 0) continue;
        const double gi = std::fabs(g[i - 1]);
        const double e = gi < eps ? eps : std::max(eps, gi * (std::fabs(x[i - 1]) + 1.0) * eps / (std::fabs(f) + 1.0));
        if (level() >= 5) write(out(), "(12X,\"Stewart's computational error        =\",1P,G14.6)", e);
        E = std::max(E, e);
    }
    if (level() >= 5) write(out(), "(12X,'Re-estimated computational error     =',1P,G14.6)", E);
    if (1000.0 * E < d.FrlErr && level() >= 0) {
        write(out(),
              "(1X,A,' -W- ATTENTION: the function seems to have ','serious problems with',/,12X,"
              "'computational accuracy! The minimization ','will proceed',/,12X,'with NO WARRANTY!',/,12X,"
              "'The following REL/ABS error estimates are too ','different:',/,12X,"
              "'from finite-differences table (\"true error\"): ',1P,G14.6,/,12X,"
              "'error due to argument roundoff:               ',1P,G14.6)",
              "E4FDA1", d.FrlErr, E);
    }
}

}  // namespace

void E4FDA1(double* x, double& f, double* finDif, double* g, double* Hdiag, int& err, std::string_view name) {
    E4DataSetRecord& d = E4DataSet;
    err = 0;
    if (d.nVar() < 1 || d.nVar() > kMaxVar || d.iStat(row::nFree) == 0 || d.iStat(row::xStartSet) == 0) {
        err = 10;
        returnLine(name);
        return;
    }
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) f = E4FUN1(x);
    if (d.iStat(row::FrlErrSet) == 0) E4ERR1(x, f, err, "E4FDA1");
    const double FERROR = (std::fabs(f) + 1.0) * relativeNoise();

    const int scheme = d.iStat(row::gradientScheme);
    if (scheme == 3) {
        E4GRD1(x, f, g);
        if (d.iStat(row::gradientScheme) == 3) {
            if (level() >= 1) {
                write(out(), "(' E4FDA1 --- Analytically computed gradient is:')");
                writeVector(g);
            }
            return;
        }
    } else if ((scheme == 1 || scheme == 2) && d.iStat(row::finDifSet) != 0) {
        E4GRD1(x, f, g);
        if (level() >= 1) {
            write(out(), "(' E4FDA1 --- Fixed-difference gradient is:')");
            writeVector(g);
        }
    } else if (!adaptiveLoop(x, f, FERROR, finDif, g, Hdiag)) {
        err = 1;
    }
    stewartCheck(x, f, g);
    d.iStat(row::gradientEvaluations) += 1;
    d.iStat(row::gEndSet) += 1;
    returnLine(name);
}
