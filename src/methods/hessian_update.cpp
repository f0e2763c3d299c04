// The quasi-Newton updates of the Hessian approximation and of its
// diagonal.  The matrix kept is B, the Hessian itself; its inverse is only
// ever applied through the eigenpairs of E4HES3 (hessian_update_spectrum.cpp).
#include "methods/hessian_update.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "methods/vector_routines.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace hessian_trace;

E4DataSetRecord& ds() { return E4DataSet; }
bool isFree(int i) { return ds().iFixer(i) != 0; }

double smallestNormal() {
    double eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int digits = 0;
    X02MDC1(eps, rMin, rMax, rBig, digits);
    return rMin;
}

void emit(int code, double value = 0, std::array<double, 4> real = {}, int c0 = 0) {
    TraceRecord r{TraceKind::Event, code};
    r.value = value;
    r.real = real;
    r.count[0] = c0;
    traceTo(hessianReport(), r);
}

// aux1 = B s over the free variables; returns <s, Bs>.
double productWithStep() {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    for (int i = 1; i <= n; ++i) {
        double sum = 0;
        if (isFree(i)) {
            for (int j = 1; j <= n; ++j) {
                if (isFree(j)) sum += d.Hesse(i, j) * d.deltaX(j);
            }
        }
        d.aux1(i) = sum;
    }
    return E4DOT1(d.deltaX.data(), d.aux1.data(), n);
}

// Broyden's symmetric rank-one correction B += r r^T / <s, r>, r = y - Bs.
int rankOne(double dxdg, double dBd, double rMin) {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    if (std::fabs(dxdg - dBd) < rMin) return 1;
    const double c = 1.0 / (dxdg - dBd);
    for (int i = 1; i <= n; ++i) {
        if (!isFree(i)) continue;
        for (int j = 1; j <= n; ++j) {
            if (isFree(j)) d.Hesse(i, j) += d.aux2(i) * d.aux2(j) * c;
        }
    }
    return 0;
}

// eta and psi of the Broyden family by method; 0 or the failure flag.
int multipliers(int method, double dxdg, double dBd, double rMin, double& eta, double& psi) {
    E4DataSetRecord& d = ds();
    eta = 1.0;
    psi = 0.0;
    double dHd = 0;
    if (method == 10 || method == 11) {
        applyInverseHessian(d.deltaG.data(), d.aux2.data());
        dHd = E4DOT1(d.deltaG.data(), d.aux2.data(), d.nVar());
        emit(DgHDg, dHd);
        if (std::fabs(dHd) < rMin) return 3;
    }
    switch (method) {
        case 6: psi = 1.0; break;                      // Davidon-Fletcher-Powell
        case 9: psi = dBd < dxdg ? 1.0 : 0.0; break;  // Fletcher's switch
        case 10: {                                     // Oren-Luenberger
            const double den = dHd * dBd - dxdg * dxdg;
            if (std::fabs(den) < rMin) return 4;
            eta = dxdg / dBd;
            psi = std::clamp(-dxdg * dxdg / den, 0.0, 1.0);
            break;
        }
        case 11: {  // Oren-Spedicato
            eta = std::sqrt(std::fabs(dHd / dBd));
            const double t = std::fabs(dHd * dBd / dxdg);
            psi = t > 0.0 ? 1.0 / (std::sqrt(t) + 1.0) : 1.0;
            break;
        }
        default: break;  // 7 Broyden-Fletcher-Goldfarb-Shanno
    }
    return 0;
}

// B = y y^T / <s,y> + eta (B - Bs (Bs)^T / <s,Bs>) + psi eta <s,Bs> v v^T,
// v = y / <s,y> - Bs / <s,Bs>; both triangles written from i <= j.
void familyUpdate(double dxdg, double dBd, double eta, double psi) {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    if (psi != 0.0) {
        for (int i = 1; i <= n; ++i) d.aux3(i) = isFree(i) ? d.deltaG(i) / dxdg - d.aux1(i) / dBd : 0.0;
    }
    for (int j = 1; j <= n; ++j) {
        if (!isFree(j)) continue;
        for (int i = 1; i <= j; ++i) {
            if (!isFree(i)) continue;
            double b = d.deltaG(i) * d.deltaG(j) / dxdg + eta * (d.Hesse(i, j) - d.aux1(i) * d.aux1(j) / dBd);
            if (psi != 0.0) b += psi * eta * dBd * d.aux3(i) * d.aux3(j);
            d.Hesse(i, j) = d.Hesse(j, i) = b;
        }
    }
}

}  // namespace

void applyInverseHessian(const double* g, double* y) {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    // c(l) = <V(:, l), g> / R(l), then y = V c, both over the free variables.
    Vec1<double, kMaxVar> c;
    for (int l = 1; l <= n; ++l) {
        if (!isFree(l) || d.R_eigen(l) == 0.0) continue;
        double sum = 0;
        for (int j = 1; j <= n; ++j) {
            if (isFree(j)) sum += d.V_eigen(j, l) * g[j - 1];
        }
        c(l) = sum / d.R_eigen(l);
    }
    for (int i = 1; i <= n; ++i) {
        double sum = 0;
        if (isFree(i)) {
            for (int l = 1; l <= n; ++l) {
                if (isFree(l)) sum += d.V_eigen(i, l) * c(l);
            }
        }
        y[i - 1] = sum;
    }
}

void E4HES1(double dxdg, int& flag) {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    const int method = d.iStat(row::methodRunning);
    const double rMin = smallestNormal();
    flag = 0;
    if (n < 1 || n > kMaxVar) {
        flag = -1;
        return;
    }
    const double dBd = productWithStep();
    if (method == 8) {
        for (int i = 1; i <= n; ++i) d.aux2(i) = isFree(i) ? d.deltaG(i) - d.aux1(i) : 0.0;
    }
    emit(DxBDx, dBd);
    if (method == 8) {
        flag = rankOne(dxdg, dBd, rMin);
    } else if (std::fabs(dBd) < rMin) {
        flag = 2;
    } else {
        double eta = 1, psi = 0;
        flag = multipliers(method, dxdg, dBd, rMin, eta, psi);
        if (flag == 0) {
            emit(Multipliers, 0, {eta, psi});
            familyUpdate(dxdg, dBd, eta, psi);
        }
    }
    if (flag != 0) {
        emit(UpdateFailed, 0, {}, flag);
        return;
    }
    E4HES3(flag);
    d.iStat(row::HesseSet) = 1;
}

void E4HES2(double* h, double dxdg, int& flag) {
    E4DataSetRecord& d = ds();
    const int n = d.nVar();
    const double rMin = smallestNormal();
    const double a = d.deltaXn, c = 1.0 / dxdg;
    flag = 0;
    if (n < 1 || n > kMaxVar) return;
    if (d.iStat(row::methodRunning) == 8) {
        // Rank one: w = a g0 + y, h += w^2 / <s, w>.
        for (int i = 1; i <= n; ++i) d.aux4(i) = isFree(i) ? a * d.gStart(i) + d.deltaG(i) : 0.0;
        const double sw = E4DOT1(d.deltaX.data(), d.aux4.data(), n);
        if (std::fabs(sw) < rMin) flag = 1;
        for (int i = 1; i <= n && flag == 0; ++i) {
            if (isFree(i)) h[i - 1] += d.aux4(i) * d.aux4(i) * (1.0 / sw);
        }
    } else {
        // With Bs taken as -a g0 (the step was along the Newton direction):
        // <s, Bs> = -a v, v = <s, g0>.
        const double v = E4DOT1(d.deltaX.data(), d.gStart.data(), n);
        if (std::fabs(v) < rMin) flag = 1;
        for (int i = 1; i <= n && flag == 0; ++i) {
            if (!isFree(i)) continue;
            const double y = d.deltaG(i), g0 = d.gStart(i);
            if (d.iStat(row::methodRunning) == 6) {
                h[i - 1] += ((1.0 - v * a * c) * y + 2.0 * a * g0) * c * y;
            } else {
                h[i - 1] += a * (1.0 / v) * g0 * g0 + y * y * c;
            }
        }
    }
    if (flag != 0) {
        emit(DiagonalFailed);
        return;
    }
    d.iStat(row::HdiagSet) = 1;
}
