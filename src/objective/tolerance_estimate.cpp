// E4TOL1: relative tolerances from the noise when the user gave none, and
// the absolute tolerances of a search at the current point.
#include "objective/computational_noise.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <cmath>

namespace {

int out() { return writerChannel(sysinf.dwUnit); }

void writeVector(const double* v) {
    int status = 0;
    I5WRA1(out(), v, 1, 1, E4DataSet.nVar(), "", status);
}

// Step 2: rFTol and rXTol from FrlErr where they are not loaded.
void relativeTolerances(double* x, double& f, int& err) {
    E4DataSetRecord& d = E4DataSet;
    const int level = d.iStat(row::messageLevel);
    if (d.iStat(row::FrlErrSet) == 0) E4ERR1(x, f, err, "E4TOL1");
    if (d.iStat(row::rFTolSet) == 0) {
        d.rFTol = d.FrlErr;
        if (level >= 1)
            write(out(), "(' E4TOL1 --- Relative function tolerance has been',/,12X,'estimated as',1P,G14.6)",
                  d.rFTol);
        d.iStat(row::rFTolSet) = 1;
    }
    if (d.iStat(row::rXTolSet) == 0) {
        const double tol = std::sqrt(d.FrlErr + X02RMDC(2));
        for (int i = 1; i <= d.nVar(); ++i) d.rXTol(i) = d.iFixer(i) != 0 ? tol : 0.0;
        if (level >= 1) {
            write(out(), "(' E4TOL1 --- relative argument tolerance has been',/,12X,'estimated as:')");
            writeVector(d.rXTol.data());
        }
        d.iStat(row::rXTolSet) = 1;
    }
}

}  // namespace

void E4TOL1(double* x, double& f, double* xTol, double& fTol, int& err, std::string_view name) {
    E4DataSetRecord& d = E4DataSet;
    const int level = d.iStat(row::messageLevel);
    err = 0;
    if (d.nVar() == 0 || d.iStat(row::nFree) == 0 || d.iStat(row::xStartSet) == 0) {
        err = 10;
        if (level >= 6) write(out(), "(' E4TOL1 --- Return to ',A6)", name);
        return;
    }
    if (d.iStat(row::rXTolSet) == 0 || d.iStat(row::rFTolSet) == 0) relativeTolerances(x, f, err);
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) f = E4FUN1(x);
    const double multiplier = d.iStat(row::tolMultiplierSwitch) != 0 ? d.tolScl + 1.0 : 1.0;
    fTol = (std::fabs(f) + 1.0) * d.rFTol * multiplier;
    for (int i = 1; i <= d.nVar(); ++i)
        xTol[i - 1] = d.iFixer(i) != 0 ? (std::fabs(x[i - 1]) + 1.0) * d.rXTol(i) * multiplier : 0.0;
    if (level < 4) return;
    if (d.iStat(row::tolMultiplierSwitch) == 0) {
        write(out(), "(' E4TOL1 --- Conventional tolerance estimation.')");
    } else {
        write(out(), "(' E4TOL1 --- Estimated absolute tolerances have been',' multiplied',/,12X,'by the factor',G13.7)",
              d.tolScl);
    }
    write(out(), "(12X,'absolute function tolerance:',1P,G14.6,/,12X,'absolute',' argument tolerance:')", fTol);
    writeVector(xTol);
    if (level >= 6) write(out(), "(' E4TOL1 --- Return to ',A6)", name);
}
