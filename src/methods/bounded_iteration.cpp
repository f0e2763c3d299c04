// The active-set quasi-Newton iteration of method 12, E04JBF.  The
// variables are free, on a bound or fixed; the Hessian approximation of the
// free ones is held as L D L'.  Each iteration solves for a direction in the
// free subspace, stops at the first bound ahead, searches along it with
// E04LSH1 and updates the factors by BFGS.  A failed search is met, in this
// order, by central differences, by the square root of the diagonal, by
// throwing the matrix away; then the local search has the last word.  The
// signs of the gradient on the bound variables decide which one to release.
#include "core/e4dataset.h"
#include "methods/bounded_factors.h"
#include "methods/bounded_iteration.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

enum class Step { Iteration, StepC, TestT, TestV, StepW, LocalSearch, End };

double norm(const double* v, int n) {
    double s = 0;
    for (int i = 0; i < n; ++i) s += v[i] * v[i];
    return std::sqrt(s);
}

bool argumentsGood(const BqnRun& r) {
    const int n = r.n;
    const int nh = n * (n - 1) / 2;
    if (r.liw < 2 || r.lw < 9 * n || r.lh < nh || n < 1 || r.start < 0 || r.start > 3 || r.xtol < 0 ||
        r.eta < 0 || r.eta >= 1 || r.stepmx < r.xtol || r.maxcal < 1 || r.ibound < 0 || r.ibound > 4 ||
        r.soft < 0 || r.soft > 1) {
        return false;
    }
    if (r.ibound == 0)
        for (int i = 0; i < n; ++i)
            if (r.bL[i] > r.bU[i]) return false;
    if (r.ibound == 3 && r.bL[0] > r.bU[0]) return false;
    for (int i = 0; i < n; ++i)
        if (r.x[i] + r.delta[i] == r.x[i]) return false;
    return true;
}

// E04BDF1: the default bounds of ibound 1 to 3.
void E04BDF1(BqnRun& r) {
    for (int i = 0; i < r.n; ++i) {
        if (r.ibound == 1) {
            r.bL[i] = -kBoundInfinity;
            r.bU[i] = kBoundInfinity;
        } else if (r.ibound == 2) {
            r.bL[i] = 0;
            r.bU[i] = kBoundInfinity;
        } else if (r.ibound == 3) {
            r.bL[i] = r.bL[0];
            r.bU[i] = r.bU[0];
        }
    }
}

void formConstants(BqnRun& r) {
    const FamilyConstants& c = familyConstants();
    r.eps = c.eps;
    r.big = c.big;
    r.t = std::pow(r.eps, 0.66666);
    r.srt = std::sqrt(r.eps);
    r.tolM = 10 * r.srt;
    r.tolG0 = 0.0001 * r.eps;
    if (std::abs(r.xtol) < r.eps) r.xtol = 10 * r.srt;
    r.tolF = r.eps + r.xtol * r.xtol;
    r.tolG = r.t + r.xtol * r.xtol;
    r.tolX = r.srt + r.xtol;
    r.tiny = r.eps * r.eps;
    const double dmin = *std::min_element(r.delta, r.delta + r.n);
    r.dpow = std::pow(dmin, 0.66666);
    const int n = r.n;
    r.box = Box{r.bL, r.bU};
    r.gz = r.w;
    r.gzs = r.w + n;
    r.p = r.w + 2 * n;
    r.base = r.w + 3 * n;
    r.xt2 = r.w + 4 * n;
    r.direct = r.w + 5 * n;
    r.w1 = r.w + 6 * n;
    r.w2 = r.w + 7 * n;
    r.work = r.w + 8 * n;
}

bool outsideBounds(const BqnRun& r) {
    for (int i = 0; i < r.n; ++i) {
        if (r.x[i] < r.bL[i] - (std::abs(r.bL[i]) + 1) * r.srt) return true;
        if (r.x[i] > r.bU[i] + (std::abs(r.bU[i]) + 1) * r.srt) return true;
    }
    return false;
}

// E04BST1: a variable within reach of a bound goes onto it; one whose bounds
// coincide there is fixed; the others are free, numbered in order.
void E04BST1(BqnRun& r) {
    r.nfree = r.nfix = 0;
    for (int i = 0; i < r.n; ++i) {
        double tl = (std::abs(r.bL[i]) + 1) * r.srt;
        if (r.x[i] - r.bL[i] <= tl) {
            r.x[i] = r.bL[i];
            r.state[i] = -2;
        } else {
            tl = (std::abs(r.bU[i]) + 1) * r.srt;
            if (r.bU[i] - r.x[i] <= tl) {
                r.x[i] = r.bU[i];
                r.state[i] = -1;
            } else {
                r.state[i] = ++r.nfree;
                continue;
            }
        }
        if (r.bU[i] - r.bL[i] <= tl) {
            r.state[i] = -3;
            ++r.nfix;
        }
    }
}

// The supplied factors are cut down to the free variables, in their order.
void compressFactors(BqnRun& r) {
    int pos = 0;
    std::array<int, kMaxVar> index{};
    for (int i = 0; i < r.n; ++i)
        if (r.state[i] > 0) index[pos++] = i + 1;
    for (int a = 1; a <= r.nfree; ++a) {
        r.D[a - 1] = r.D[index[a - 1] - 1];
        for (int b = 1; b < a; ++b) r.L[packedIndex(a, b)] = r.L[packedIndex(index[a - 1], index[b - 1])];
    }
    for (int k = r.nfree; k < r.n; ++k) r.D[k] = 0;
    for (int a = r.nfree + 1; a <= r.n; ++a)
        for (int b = 1; b < a; ++b) r.L[packedIndex(a, b)] = 0;
}

void unitFactors(BqnRun& r) {
    for (int k = 0; k < r.n; ++k) r.D[k] = k < r.nfree ? 1.0 : 0.0;
    std::fill(r.L, r.L + r.lh, 0.0);
    r.cond = 1;
}

Step startRun(BqnRun& r) {
    const bool cold = r.start == 0 || outsideBounds(r);
    E04BST1(r);
    r.code = 0;
    r.iflag = 0;
    r.rmax = r.rmax0 = ratioLimit(r, r.nfree);
    if (!cold) {
        for (int i = 0; i < r.n; ++i)
            if (r.state[i] == -3) r.g[i] = 0;
        r.method = 1;
        if (r.nfix == r.n) return Step::End;
        if (r.nfree == 0) return Step::TestT;
        compressFactors(r);
        gatherFreeGradient(r);
        const double cond = conditionOf(r);
        if (cond == r.big) {
            r.code = 1;
            return Step::End;
        }
        r.cond = cond;
    } else {
        std::fill(r.g, r.g + r.n, 0.0);
        r.method = 0;
        evaluateAtX(r);
        if (r.nfix == r.n) return Step::End;
        if (r.nfree == 0) return Step::StepC;
        freeGradient(r);
        unitFactors(r);
    }
    const double a = std::abs(r.f) + 1;
    return 0.01 * a * a <= r.gtg ? Step::Iteration : Step::TestT;
}

Step afterFailure(BqnRun& r) {
    const double a = std::abs(r.f) + 1;
    if (r.method != 1) {
        r.method += 2;
        freeGradient(r);
    } else if (r.rmax >= 100 && r.t * a * a <= r.gtg) {
        r.rmax = std::sqrt(r.rmax);
        for (int k = 0; k < r.nfree; ++k) r.D[k] = std::sqrt(r.D[k]);
    } else if (r.rmax > 1) {
        r.rmax = 1;
        unitFactors(r);
    } else {
        r.rmax = r.rmax0;
        r.code = 3;
        return onBoundNotFixed(r) > 0 ? Step::StepC : Step::LocalSearch;
    }
    return Step::Iteration;
}

// Steps 10 to 15: a bound reached by the step, the new gradient, the update.
Step afterSuccess(BqnRun& r, double P) {
    if (r.method == 1 && r.dpow / P < r.alpha) r.method = 0;
    int m = 0;
    if (!addReachedBound(r, m)) return Step::End;
    r.gtg = 0;
    if (r.nfree == 0) return Step::StepC;
    freeGradient(r);
    if (m != 0) {
        r.gtp -= r.gzs[m - 1] * r.p[m - 1];
        for (int k = m; k <= r.nfree; ++k) {
            r.p[k - 1] = r.p[k];
            r.gzs[k - 1] = r.gzs[k];
        }
    }
    double gtpn = 0;
    for (int k = 0; k < r.nfree; ++k) gtpn -= r.gz[k] * r.p[k];
    bool updated = false;
    if (!E04FUP1(r.nfree, r.L, r.D, r.gz, r.gzs, r.gtp, gtpn, r.alpha, r.w2, r.work, r.eps, r.big, updated)) {
        r.code = 4;
        return Step::End;
    }
    if (updated) rescaleDiagonal(r);
    const double a = std::abs(r.f) + 1;
    if (r.gtg <= 0.01 * a * a || r.fold - r.f <= 0.1 * (1 + std::abs(r.fold)))
        return onBoundNotFixed(r) > 0 ? Step::StepC : Step::TestT;
    return Step::Iteration;
}

// Step 5: a variable already at the bound ahead joins the bound variables
// without a search.  Returns false when the factors fail.
bool boundOnTheWay(BqnRun& r, int i) {
    const int m = addBound(r, i, r.direct);
    r.direct[i] = 0;
    evaluateAtX(r);
    r.method = -1;
    if (!E04FDL1(m, r.nfree, r.L, r.D, r.work, r.big)) return false;
    return true;
}

// The direction -p from L D L' p = gz over the free variables.
void direction(BqnRun& r) {
    solveFactors(r.nfree, r.L, r.D, r.gz, r.p);
    r.pnorm = norm(r.p, r.nfree);
    r.gtp = 0;
    for (int k = 0; k < r.nfree; ++k) r.gtp -= r.gz[k] * r.p[k];
    for (int i = 0; i < r.n; ++i) r.direct[i] = r.state[i] > 0 ? -r.p[r.state[i] - 1] : 0.0;
    TraceRecord t{TraceKind::Event, bounded_trace::Direction};
    t.point = r.direct;
    t.count[0] = r.n;
    familyTrace(t);
}

Step iteration(BqnRun& r) {
    for (;;) {
        if (r.iter > E4DataSet.iStat(row::maxITR)) r.maxcal = r.nfcall - 1;
        if (r.nfcall > r.maxcal) {
            r.code = 2;
            return Step::End;
        }
        r.code = 0;
        r.fold = r.f;
        std::copy(r.gz, r.gz + r.nfree, r.gzs);
        direction(r);
        if (r.iprint > 0 && r.iter % r.iprint == 0) reportRow(r, 'a');
        const double P = r.eps + r.pnorm;
        double am = r.stepmx / P;
        int onTheWay = -1;
        for (int i = 0; i < r.n && onTheWay < 0; ++i) {
            if (std::abs(r.direct[i]) < r.tiny) continue;
            const bool down = r.direct[i] <= 0;
            const double bound = down ? r.bL[i] : r.bU[i];
            const double d = down ? r.x[i] - r.bL[i] : r.bU[i] - r.x[i];
            if (d <= (std::abs(bound) + 1) * r.srt) {
                onTheWay = i;
            } else {
                am = std::min(am, d / std::abs(r.direct[i]));
            }
        }
        if (onTheWay >= 0) {
            if (!boundOnTheWay(r, onTheWay)) {
                r.code = 4;
                return Step::End;
            }
            if (r.nfree == 0) return Step::StepC;
            gatherFreeGradient(r);
            continue;
        }
        const double q = std::abs(r.f - r.fest);
        r.alpha = (-r.gtp < 2 * q || q < r.eps) ? 1.0 : -2 * q / r.gtp;
        r.alpha = std::min(r.alpha, am);
        if (r.f > r.fest) r.fest = r.f - 1;
        const double X = 1 + norm(r.x, r.n);
        const double tolrel = r.srt * X / P;
        const double tolabs = std::max((std::abs(r.f) + 1) * r.eps / (r.eps - r.gtp), X * r.eps / P);
        const double alpmin = (1 - r.method) * r.dpow / P;
        int nfls = 0;
        r.search(r.n, r.fun, r.box, tolrel, tolabs, r.eta, alpmin, am, r.direct, r.gtp, r.x, r.f, r.alpha,
                 nfls, r.iflag, r.work);
        r.nfcall += nfls;
        ++r.iter;
        if (r.iflag < 0) {
            r.code = r.iflag;
            return Step::End;
        }
        const Step next = r.iflag == 2 ? afterSuccess(r, P) : afterFailure(r);
        if (next != Step::Iteration) return next;
    }
}

Step testT(BqnRun& r) {
    r.fail3 = r.code == 3;
    if (onBoundNotFixed(r) > 0) {
        E04MUL1(r);
    } else {
        r.ok = true;
        r.release = 0;
    }
    if (r.release > 0 && std::abs(r.gmin) > releaseThreshold(r)) {
        clearMarks(r);
        releaseVariable(r, r.release);
        return Step::Iteration;
    }
    if (r.ok) {
        if (r.nfree == 0) return Step::End;
        return r.fail3 ? Step::LocalSearch : Step::TestV;
    }
    return r.fail3 || r.nfree == 0 ? Step::StepW : Step::TestV;
}

Step testV(BqnRun& r) {
    const double a = std::abs(r.f) + 1;
    const bool converged =
        r.gtg < r.tolG0 * a * a ||
        (r.iter != 0 && r.alpha * r.pnorm < (1 + norm(r.x, r.n)) * r.tolX && std::abs(r.fold - r.f) < r.tolF * a &&
         r.gtg < r.tolG * a * a);
    if (!converged) {
        clearMarks(r);
        return Step::Iteration;
    }
    return r.ok ? Step::LocalSearch : Step::StepW;
}

// Trial release: each marked variable is moved off its bound in turn; the
// first that lowers f is released.
Step stepW(BqnRun& r) {
    int chosen = 0;
    const double step = std::pow(r.eps, 0.25);
    for (int i = 0; i < r.n && chosen == 0; ++i) {
        if (r.state[i] != -4 && r.state[i] != -5) continue;
        const double xi = r.x[i];
        double dv = (std::abs(xi) + 1) * step;
        if (r.state[i] == -4) dv = -dv;
        r.x[i] = xi + dv;
        const double ft = familyCall(r.fun, r.iflag, r.n, r.x, r.box);
        ++r.nfcall;
        if (ft < r.f) {
            chosen = i + 1;
        } else {
            r.x[i] = xi;
        }
    }
    clearMarks(r);
    if (chosen == 0) return Step::End;
    evaluateAtX(r);
    freeGradient(r);
    releaseVariable(r, chosen);
    return Step::Iteration;
}

Step localSearch(BqnRun& r) {
    if (!r.local) return Step::End;
    if (r.iprint > 0) reportRow(r, 'b');
    int finish = -1;
    E04JBM(r, std::sqrt(r.dpow), finish);
    return finish == 0 ? Step::Iteration : Step::End;
}

}  // namespace

int E04JBF(BqnRun& r) {
    if (r.n > kMaxVar || !argumentsGood(r)) return E04ERP1(r.soft, 1, FamilyRoutine::E04JBF);
    E04BDF1(r);
    formConstants(r);
    Step next = startRun(r);
    while (next != Step::End) {
        switch (next) {
            case Step::Iteration: next = iteration(r); break;
            case Step::StepC:
                boundGradient(r, -1);
                next = testT(r);
                break;
            case Step::TestT: next = testT(r); break;
            case Step::TestV: next = testV(r); break;
            case Step::StepW: next = stepW(r); break;
            case Step::LocalSearch: next = localSearch(r); break;
            case Step::End: break;
        }
    }
    if (r.iprint >= 0) reportRow(r, 'c');
    return E04ERP1(r.soft, r.code, FamilyRoutine::E04JBF);
}

bool addReachedBound(BqnRun& r, int& m) {
    bool moved = false;
    const int i = boundReached(r, r.direct, moved);
    m = 0;
    if (i == 0) return true;
    m = addBound(r, i - 1, r.direct);
    if (moved) evaluateAtX(r);
    if (E04FDL1(m, r.nfree, r.L, r.D, r.work, r.big)) return true;
    r.code = 4;
    return false;
}
