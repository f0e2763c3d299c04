// The next search direction of E4FOM1 by method: conjugate gradients with a
// periodic restart (Fletcher-Reeves, Polak-Ribiere), Beale-Powell with its
// restart tests, Perry-Shanno's one-step memory, and -H^-1 g through the
// eigenpairs of the updated Hessian approximation (methods 6 to 11).
#include "core/e4dataset.h"
#include "methods/first_order_driver.h"
#include "methods/first_order_driver_state.h"
#include "methods/hessian_update.h"
#include "methods/vector_routines.h"

#include <cmath>

namespace {

using namespace first_order_trace;

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }

// direct = beta * direct - gEnd (+ gamma * aux1), fixed components 0.
void combine(double beta, double gamma, bool withRestartPair) {
    E4DataSetRecord& d = ds();
    for (int i = 1; i <= d.nVar(); ++i) {
        if (!isFree(i)) {
            d.direct(i) = 0.0;
            continue;
        }
        d.direct(i) = beta * d.direct(i) - d.gEnd(i);
        if (withRestartPair) d.direct(i) += gamma * d.aux1(i);
    }
}

// Fletcher-Reeves (1) and Polak-Ribiere (2); every nFree + 1 iterations the
// steepest descent, announced only by the tag of the next iteration.
int conjugateGradient(int method) {
    FirstOrderState& s = firstOrderState();
    E4DataSetRecord& d = ds();
    if (s.cycle == d.iStat(row::nFree)) {
        combine(0.0, 0.0, false);
        s.cycle = -1;
        return 0;
    }
    const double beta = (method == 1 ? s.GKN2 : s.gdg) / s.GKOLD;
    firstOrderEvent(Beta, beta);
    combine(beta, 0.0, false);
    return 0;
}

// Beale-Powell: the three-term recurrence against the pair (aux1, aux2)
// saved at the last restart.  A restart follows when successive gradients
// are far from orthogonal, after nFree iterations, or when the new
// direction is not downhill enough; the rejected direction itself then
// becomes the restart pair (one further attempt, taken without a test).
int bealePowell() {
    FirstOrderState& s = firstOrderState();
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    const double t = s.restartTol;
    if (s.cycle != 0) s.restart = false;
    const double r = E4DOT1(d.gStart.data(), d.gEnd.data(), n) / s.GKN2;
    if (std::fabs(r) > t) {
        s.restart = true;
        firstOrderEvent(RestartOrthogonality, r);
    }
    if (s.cycle == d.iStat(row::nFree)) {
        s.restart = true;
        firstOrderEvent(RestartCounter);
    }
    const double D = E4DOT1(d.direct.data(), d.deltaG.data(), n);
    if (std::fabs(D) < s.rMin) return 10;
    const double beta = s.gdg / D;
    firstOrderEvent(Beta, beta);
    while (true) {
        double gamma = 0;
        if (s.restart) {
            s.restartD = D;
            s.cycle = 0;
            for (int i = 1; i <= n; ++i) {
                d.aux1(i) = isFree(i) ? d.direct(i) : 0.0;
                d.aux2(i) = isFree(i) ? d.deltaG(i) : 0.0;
            }
        } else {
            gamma = E4DOT1(d.gEnd.data(), d.aux2.data(), n) / s.restartD;
            firstOrderEvent(Gamma, gamma);
        }
        combine(beta, gamma, !s.restart);
        double sq = 0;
        s.dirNorm = E4NRM1(d.direct.data(), n, sq);
        if (s.restart) return 0;
        const double q = E4DOT1(d.direct.data(), d.gEnd.data(), n) / s.GKN2;
        if ((-1.0 - t < q && q < -(1.0 - t)) || q < -t * s.dirNorm / s.gNorm) return 0;
        firstOrderEvent(AlmostOrthogonal, q);
        s.restart = true;
    }
}

// Perry-Shanno: the memoryless quasi-Newton step of one update.
int perryShanno() {
    FirstOrderState& s = firstOrderState();
    E4DataSetRecord& d = ds();
    const double c = 1.0 / s.dxdg, w = 1.0 + s.dgSq * c;
    const double v = E4DOT1(d.gEnd.data(), d.deltaX.data(), d.nVar()), y = s.gdg;
    for (int i = 1; i <= d.nVar(); ++i) {
        d.direct(i) = isFree(i) ? c * ((d.deltaG(i) - w * d.deltaX(i)) * v + d.deltaX(i) * y) - d.gEnd(i) : 0.0;
    }
    return 0;
}

// Methods 6 to 11: update the matrix, then -H^-1 g through its eigenpairs,
// never through a factorization.
int quasiNewton() {
    FirstOrderState& s = firstOrderState();
    E4DataSetRecord& d = ds();
    int flag = 0;
    E4HES1(s.dxdg, flag);
    if (flag != 0) return 11;
    firstOrderEvent(HessianMatrix);
    applyInverseHessian(d.gEnd.data(), d.direct.data());
    for (int i = 1; i <= d.nVar(); ++i) d.direct(i) = isFree(i) ? -d.direct(i) : 0.0;
    return 0;
}

}  // namespace

int newDirection(int method) {
    switch (method) {
        case 1:
        case 2: return conjugateGradient(method);
        case 3: return bealePowell();
        case 4: return perryShanno();
        default: return quasiNewton();
    }
}
