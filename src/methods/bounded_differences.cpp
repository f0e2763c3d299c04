// Finite differences of the bounded quasi-Newton method.  E04HBF finds, by
// central differences at the start, a diagonal of second derivatives, the
// gradient and an interval for each variable that balances truncation
// against the cancellation in the function's last digits.  E04JBN gives the
// gradient during the iteration, forward as long as that is accurate enough,
// central otherwise.
//
// Every point lies in the box: where a step would cross a bound, the
// difference is taken on the other side of the point, forward by -h, and a
// central one as the one-sided formula of the same order through x + s and
// x + 2s, which costs the same two evaluations.
#include "methods/bounded_family.h"

#include "core/e4dataset.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

bool inBox(const Box& box, int i, double v) {
    return box.lo == nullptr || (v >= box.lo[i] && v <= box.hi[i]);
}

// Step of length h (or the room there is, when the box is narrower) towards
// the side of x(i) that has room: +h when x + h lies in the box, else -h.
double sideStep(const Box& box, const double* x, int i, double h) {
    if (inBox(box, i, x[i] + h)) return h;
    if (inBox(box, i, x[i] - h)) return -h;
    const double up = box.hi[i] - x[i];
    const double dn = x[i] - box.lo[i];
    return up >= dn ? up : -dn;
}

// f with x(i) moved by s; x(i) is restored.
double moved(FamilyFun fun, int& iflag, int n, double* x, int i, double s, const Box& box) {
    const double xi = x[i];
    x[i] = xi + s;
    const double v = familyCall(fun, iflag, n, x, box);
    x[i] = xi;
    return v;
}

// How a pair of values around x(i) is placed.
enum class Stencil { Central, OneSided, None };

struct Pair {
    Stencil stencil = Stencil::None;
    double s = 0;       // step of the first value (one-sided: towards the room)
    double f1 = 0;      // f(x + s)
    double f2 = 0;      // central: f(x - s); one-sided: f(x + 2s)
};

// Two values for the derivatives along i with step h.
Pair valuesAround(FamilyFun fun, int& iflag, int n, double* x, int i, double h, const Box& box,
                  int& nf) {
    Pair p;
    if (inBox(box, i, x[i] + h) && inBox(box, i, x[i] - h)) {
        p.stencil = Stencil::Central;
        p.s = h;
    } else if (inBox(box, i, x[i] + 2 * h)) {
        p.stencil = Stencil::OneSided;
        p.s = h;
    } else if (inBox(box, i, x[i] - 2 * h)) {
        p.stencil = Stencil::OneSided;
        p.s = -h;
    } else {
        return p;
    }
    p.f1 = moved(fun, iflag, n, x, i, p.s, box);
    const double s2 = p.stencil == Stencil::Central ? -p.s : 2 * p.s;
    p.f2 = moved(fun, iflag, n, x, i, s2, box);
    nf += 2;
    return p;
}

double firstDerivative(const Pair& p, double f0) {
    if (p.stencil == Stencil::Central) return (p.f1 - p.f2) / (2 * p.s);
    if (p.stencil == Stencil::OneSided) return (4 * p.f1 - p.f2 - 3 * f0) / (2 * p.s);
    return 0;
}

double secondDifference(const Pair& p, double f0) {
    if (p.stencil == Stencil::Central) return ((p.f1 - f0) - f0) + p.f2;
    if (p.stencil == Stencil::OneSided) return ((p.f2 - p.f1) - p.f1) + f0;
    return 0;
}

// The sums that judge the gradient: S = sum gi^2 / di, E = sum |gi| cnc / di,
// G = max |gi|, C = max cnc.
struct ErrorSums {
    double S = 0, E = 0, G = 0, C = 0;
    void add(double gi, double di, double cnc) {
        S += gi * gi / di;
        E += std::abs(gi) * cnc / di;
        G = std::max(G, std::abs(gi));
        C = std::max(C, cnc);
    }
    bool good(double eps) {
        C = std::max(C, eps);
        E = std::max(E, eps);
        const double r1 = C <= 2 * G ? C / (2 * G) : 1;
        const double r2 = E <= S ? E / S : 1;
        return r1 <= 0.1 && r2 <= 0.1;
    }
};

void variableBlock(int i, double x, double di, double gi, double h, double cnc, double errsum) {
    const double v[6] = {x, di, gi, h, cnc, errsum};
    TraceRecord r{TraceKind::Event, bounded_trace::HbfVariable};
    r.count[0] = i + 1;
    r.point = v;
    familyTrace(r);
}

}  // namespace

int E04HBF(int n, FamilyFun fun, const Box& box, double* x, int& nf, double* delta, double* L,
           int lh, double* D, double& f, double* g, int liw, double* w, int lw, int soft) {
    if (n < 1 || n > kMaxVar || lw < 2 * n || lh < n * (n - 1) / 2 || lh < 1 || liw < 1 || soft < 0 ||
        soft > 1) {
        return E04ERP1(soft, 1, FamilyRoutine::E04HBF);
    }
    const double eps = familyConstants().eps;
    int iflag = 0;
    nf = 1;
    const double f0 = familyCall(fun, iflag, n, x, box);
    const double a = std::abs(f0), b = a + 1;
    const double h0 = 30 * std::sqrt(eps * b);
    TraceRecord trial{TraceKind::Event, bounded_trace::HbfTrialStep};
    trial.value = h0;
    familyTrace(trial);

    std::array<bool, kMaxVar> placed{};
    ErrorSums sums;
    for (int i = 0; i < n; ++i) {
        const Pair p = valuesAround(fun, iflag, n, x, i, h0, box, nf);
        placed[i] = p.stencil != Stencil::None;
        const double di = placed[i] ? std::max(0.01, std::abs(secondDifference(p, f0)) / (h0 * h0)) : 1.0;
        const double gi = firstDerivative(p, f0);
        D[i] = di;
        g[i] = gi;
        delta[i] = std::sqrt(6 * eps * b / di);
        w[i] = (3 * (b + a) / delta[i] + 1) * eps;
        if (placed[i]) sums.add(gi, di, w[i]);
        variableBlock(i, x[i], di, gi, delta[i], w[i], sums.E);
    }
    int code = 0;
    if (!sums.good(eps)) {
        sums = ErrorSums{};
        for (int i = 0; i < n; ++i) {
            const double r = w[i] <= std::abs(g[i]) ? w[i] / std::abs(g[i]) : 1;
            if (placed[i] && r > 0.1) {
                const double hh = std::pow(delta[i], 0.66666);
                const Pair p = valuesAround(fun, iflag, n, x, i, hh, box, nf);
                if (p.stencil != Stencil::None) {
                    g[i] = firstDerivative(p, f0);
                    w[i] = (3 * (b + a) / hh + 1) * eps;
                }
            }
            if (placed[i]) sums.add(g[i], D[i], w[i]);
            variableBlock(i, x[i], D[i], g[i], delta[i], w[i], sums.E);
        }
        code = sums.good(eps) ? 0 : 2;
    }
    for (int k = 0; k < n * (n - 1) / 2; ++k) L[k] = 0;
    f = f0;
    return E04ERP1(soft, code, FamilyRoutine::E04HBF);
}

void E04JBN(int& iflag, int n, const int* state, double f, double* x, const double* delta,
            FamilyFun fun, const Box& box, int& method, int& nfcall, double* g, double* w1,
            double* w2, Serve serve) {
    const double eps = familyConstants().eps;
    auto served = [&](int i) { return serve == Serve::Free ? state[i] > 0 : state[i] < 0 && state[i] != -3; };
    auto trace = [&](int code, const double* v) {
        TraceRecord r{TraceKind::Event, code};
        r.point = v;
        r.count[0] = n;
        familyTrace(r);
    };
    if (method != 2) {
        for (int i = 0; i < n && iflag >= 0; ++i) {
            if (!served(i)) continue;
            const double s = sideStep(box, x, i, delta[i]);
            if (s == 0) {
                g[i] = 0;
                continue;
            }
            w1[i] = moved(fun, iflag, n, x, i, s, box);
            ++nfcall;
            g[i] = (w1[i] - f) / s;
        }
        trace(bounded_trace::JbnIntervals, delta);
        trace(bounded_trace::JbnForward, g);
        if (method == -1 || iflag < 0) return;
        if (method == 0) {
            double G = 0, C = eps;
            for (int i = 0; i < n; ++i) {
                if (!served(i)) continue;
                G = std::max(G, std::abs(g[i]));
                C = std::max(C, (6 * std::abs(f) + 3) * eps / delta[i] + eps);
            }
            const double ratio = G < C ? 1 : C / G;
            if (ratio <= 0.1) return;
            method = 1;
        }
    }
    for (int i = 0; i < n && iflag >= 0; ++i) {
        if (!served(i)) continue;
        const double s = sideStep(box, x, i, delta[i]);
        if (s == 0) continue;
        if (inBox(box, i, x[i] - s)) {
            w2[i] = moved(fun, iflag, n, x, i, -s, box);
            g[i] = ((w1[i] - w2[i]) * 0.5) / s;
        } else if (inBox(box, i, x[i] + 2 * s)) {
            w2[i] = moved(fun, iflag, n, x, i, 2 * s, box);
            g[i] = (4 * w1[i] - w2[i] - 3 * f) / (2 * s);
        } else {
            continue;
        }
        ++nfcall;
    }
    method = 1;
    trace(bounded_trace::JbnCentral, g);
}
