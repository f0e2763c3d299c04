// E4GRD1: the gradient of the first-order searches.  Per call and per
// variable it takes the analytical formula, a forward or a central
// difference, with steps from the Hessian diagonal, the last step and the
// noise once a search has history, or from the stored relative intervals;
// with nothing to go on it hands the whole vector to E4FDA1.
#include "objective/gradient.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kUserProblem = 20;

int out() { return writerChannel(sysinf.dwUnit); }
int level() { return E4DataSet.iStat(row::messageLevel); }
bool isFree(int i) { return E4DataSet.iFixer(i) != 0; }

// Euclidean norm over the free variables, scaled by the largest free
// magnitude so that no square overflows or underflows.
double freeNorm(const double* v) {
    const int n = E4DataSet.nVar();
    double m = 0;
    for (int i = 1; i <= n; ++i) {
        if (isFree(i)) m = std::max(m, std::fabs(v[i - 1]));
    }
    if (m == 0) return 0;
    double sum = 0;
    for (int i = 1; i <= n; ++i) {
        if (isFree(i)) sum += (v[i - 1] / m) * (v[i - 1] / m);
    }
    return m * std::sqrt(sum);
}

void countEstimate() {
    E4DataSet.iStat(row::gradientEvaluations) += 1;
    E4DataSet.iStat(row::gEndSet) = 1;
}

// Scheme 3: true when the analytical code delivered g.  On its failure the
// scheme falls back to 0 for the rest of the problem.
bool analyticalGradient(double* x, double& f, double* g) {
    E4DataSetRecord& d = E4DataSet;
    int err = 0;
    if (d.iStat(row::problemCode) < kUserProblem) E4TFG1(x, f, g, err);
    else userGradient(x, f, g, err);
    if (err == 0) {
        for (int i = 1; i <= d.nVar(); ++i) {
            if (!isFree(i)) g[i - 1] = 0;
        }
        return true;
    }
    E04MES("E4GRD1 -E- SOMETHING WRONG WITH ANALYTICAL GRADIENT CODE.");
    E04MES("E4GRD1 -W- Finite-difference gradient scheme will be used.");
    d.iStat(row::gradientScheme) = 0;
    return false;
}

// What a search has learned: the noise e at x and EPSK, the size of the
// last change of the function.
struct History {
    double e = 0, EPSK = 0;
};

History learnedScale(double* x, double& f, int& gmode) {
    E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::FrlErrSet) == 0) {
        int err = 0;
        E4ERR1(x, f, err, "E4GRD1");
    }
    History h;
    h.e = (std::fabs(f) + 1.0) * d.FrlErr;
    const double hNorm = freeNorm(d.Hdiag.data()), dxNorm = freeNorm(d.deltaX.data());
    const double gNorm = freeNorm(d.gStart.data());
    h.EPSK = std::max({0.5 * hNorm * dxNorm * dxNorm, std::fabs(d.deltaF), gNorm * dxNorm});
    if (gNorm == 0) gmode = 2;
    if (level() >= 5) {
        write(out(), "(' E4GRD1 --- GMODE =',I2,', METHOD =',I2,', EPSK =',1P,G14.6)", gmode, 0, h.EPSK);
    }
    return h;
}

// One difference for variable i with the given step; x(i) is restored.
double difference(double* x, double f, int i, double step, bool forward) {
    const double xi = x[i - 1];
    double g = 0;
    if (forward) {
        x[i - 1] = xi + step;
        g = (E4FUN1(x) - f) / step;
    } else {
        x[i - 1] = xi - step;
        double back = E4FUN1(x);
        x[i - 1] = xi + step;
        g = (E4FUN1(x) - back) / (2.0 * step);
    }
    x[i - 1] = xi;
    return g;
}

}  // namespace

void E4GRD1(double* x, double& f, double* g) {
    E4DataSetRecord& d = E4DataSet;
    const double eps = X02RMDC(2), rMin = X02RMDC(3);
    const double delta = 10.0 * eps;
    if (d.nVar() < 1 || d.nVar() > kMaxVar) return;
    if (d.iStat(row::gradientScheme) == 3 && analyticalGradient(x, f, g)) {
        countEstimate();
        return;
    }
    int gmode = d.iStat(row::gradientScheme);
    const bool history = gmode == 0 && d.iStat(row::gradientEvaluations) != 0 && d.iStat(row::HdiagSet) != 0 &&
                         d.iStat(row::methodRunning) == d.iStat(row::methodDone);
    History h;
    if (history) h = learnedScale(x, f, gmode);

    const int n = d.nVar();
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) {
            g[i - 1] = 0;
            continue;
        }
        const double xa = std::fabs(x[i - 1]);
        const bool adaptive = gmode == 0 && history;
        bool forward = false;
        double step = 0;
        if (adaptive) {
            // Forward differences serve while the expected change of the
            // function outweighs the noise in them; near the minimum the
            // central difference takes over.
            const double curvature = std::max(std::fabs(d.Hdiag(i)), std::sqrt(eps));
            if (curvature == 0 || h.EPSK < std::sqrt(2.0 * curvature * h.e + rMin)) {
                step = std::pow(std::max(3.0 * (std::fabs(d.gStart(i)) * xa * eps + h.e), delta * xa), 0.333);
            } else {
                forward = true;
                step = std::max(std::sqrt(2.0 * h.e / curvature), delta * xa);
            }
        } else if (d.iStat(row::finDifSet) == 0) {
            int err = 0;
            E4FDA1(x, f, d.finDif.data(), g, d.Hdiag.data(), err, "E4GRD1");
            return;
        } else {
            step = std::fabs((xa + 0.1) * d.finDif(i));
            forward = gmode == 1;
            if (!forward) step *= 3.0;
        }
        step = std::max(step, delta);
        g[i - 1] = difference(x, f, i, step, forward);
        if (level() >= 5) {
            if (adaptive) {
                write(out(), "(' E4GRD1 --- Finite-difference adaptive procedure for',I3,' variable:')", i);
            } else {
                write(out(), "(' E4GRD1 --- Non-adaptive procedure with')");
            }
            write(out(), "(12X,'GMODE =',I2,', METHOD =',I2,', STEP =',1P,G14.6)", gmode, forward ? 1 : 0, step);
        }
    }
    if (level() >= 4) {
        write(out(), "(' E4GRD1 --- Produced gradient vector is:')");
        int status = 0;
        I5WRA1(out(), g, 1, 1, n, "", status);
    }
    countEstimate();
}
