// The local search of the bounded quasi-Newton method, E04JBM.  When the
// iteration believes it has finished, or can go no further, it probes the
// neighbourhood of the point along directions of its own, independent of
// the gradient: a first probe towards the far side of each free variable,
// then two step searches, one along a direction whose factors sum to zero
// (E04LSD1), one back through the start.  A better point sends the
// iteration on; otherwise the end stands.
#include "methods/bounded_factors.h"
#include "methods/bounded_iteration.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

double norm(const double* v, int n) {
    double s = 0;
    for (int i = 0; i < n; ++i) s += v[i] * v[i];
    return std::sqrt(s);
}

double probe(BqnRun& r, double* point) {
    const double v = familyCall(r.fun, r.iflag, r.n, point, r.box);
    ++r.nfcall;
    return v;
}

// The working values of one local search.
struct Local {
    double f0 = 0, h = 0, hcur = 0;
    double fcur = 0, ft2 = 0, hstep = 0, ahead = 0, behind = 0;
    double alpha = 0, P = 0;
};

// Steps 2 to 6: the first probe, h, 5h, 25h ... towards the far side of
// each free variable; a single free variable may try its near bound once.
// Returns 0 when a measurable change was found, else the code to return.
int firstProbe(BqnRun& r, Local& s, int& k) {
    double* dir = r.direct;
    double farthest = kBoundInfinity, near = 0, nearBound = 0;
    k = -1;
    for (int i = 0; i < r.n; ++i) {
        if (r.state[i] <= 0) {
            dir[i] = 0;
            continue;
        }
        const double dl = r.x[i] - r.bL[i], du = r.bU[i] - r.x[i];
        dir[i] = dl <= du ? 1.0 : -1.0;
        farthest = std::min(farthest, dl <= du ? du : dl);
        near = dl <= du ? -dl : -du;
        nearBound = dl <= du ? r.bL[i] : r.bU[i];
        k = i;
    }
    const double tolf = 100 * r.eps * (std::abs(s.f0) + 1);
    bool otherSide = s.h > farthest;
    if (otherSide && r.nfree >= 2) return 5;
    for (;;) {
        bool onNearBound = false;
        if (otherSide) {
            if (!(near <= -s.h)) return 5;
            s.hcur = near;
            otherSide = false;
            onNearBound = true;
        }
        for (int i = 0; i < r.n; ++i) r.base[i] = r.x[i] + s.hcur * dir[i];
        if (onNearBound) r.base[k] = nearBound;
        s.fcur = probe(r, r.base);
        if (tolf <= std::abs(s.fcur - s.f0)) {
            if (r.nfree == 1 && s.hcur > 0 && s.fcur > s.f0) {
                otherSide = true;
                continue;
            }
            if (r.nfree < 2 && s.fcur > s.f0) return 5;
            return 0;
        }
        if (s.hcur < 0) return 5;
        s.hcur *= 5;
        if (!(s.hcur <= farthest)) {
            if (r.nfree != 1) return 5;
            otherSide = true;
        }
    }
}

// Step 10: steps hstep, 5 hstep ... ahead, then the other way, until the
// value changes measurably.  Returns 0 then, else the code to return.
int walk(BqnRun& r, Local& s) {
    double* dir = r.direct;
    const double tolf2 = 100 * r.eps * (std::abs(s.fcur) + 1);
    auto trial = [&]() {
        for (int i = 0; i < r.n; ++i) r.xt2[i] = r.base[i] + s.hstep * dir[i];
        s.ft2 = probe(r, r.xt2);
    };
    while (s.hstep <= s.ahead) {
        trial();
        if (r.nfcall > r.maxcal) return 2;
        if (tolf2 <= std::abs(s.ft2 - s.fcur)) return 0;
        s.hstep *= 5;
    }
    if (s.behind < r.eps) return 5;
    for (int i = 0; i < r.n; ++i) dir[i] = -dir[i];
    std::swap(s.ahead, s.behind);
    s.hstep = std::min(s.ahead, s.hcur);
    for (;;) {
        trial();
        if (r.nfcall > r.maxcal) return 2;
        if (tolf2 <= std::abs(s.ft2 - s.fcur)) return 0;
        s.hstep *= 5;
        if (s.hstep > s.ahead) return 5;
    }
}

// Steps 11 to 13: from the better of base and the measured point, a step
// search along the walk's direction.  Returns 2 when maxcal is spent.
int searchAlong(BqnRun& r, Local& s, int pass) {
    double* dir = r.direct;
    const double slope = -std::abs(s.ft2 - s.fcur) / s.hstep;
    double span = s.ahead;
    if (s.ft2 > s.fcur) {
        s.fcur = s.ft2;
        span = s.hstep + s.behind;
        s.ahead = span;
        for (int i = 0; i < r.n; ++i) {
            dir[i] = -dir[i];
            r.base[i] = r.xt2[i];
        }
    }
    const double gtp = pass == 1 ? 0 : slope;
    s.alpha = pass == 1 ? s.hstep : (span >= 1 ? 1 : span - r.eps);
    s.P = norm(dir, r.n) + r.eps;
    const double am = std::min(r.stepmx / s.P, span);
    const double X = norm(r.base, r.n) + 1;
    const double tolrel = std::sqrt(r.eps) * X / s.P;
    const double tolabs = std::max((std::abs(s.fcur) + 1) * r.eps / (r.eps - gtp), X * r.eps / s.P);
    int nfls = 0;
    r.search(r.n, r.fun, r.box, tolrel, tolabs, 0, 0, am, dir, gtp, r.base, s.fcur, s.alpha, nfls, r.iflag,
             r.work);
    r.nfcall += nfls;
    return r.nfcall > r.maxcal ? 2 : 0;
}

// Step 14: the second search starts at x along x - base, in the room the
// bounds leave.
void secondDirection(BqnRun& r, Local& s) {
    double* dir = r.direct;
    s.hstep = s.hcur = s.h * s.h * s.h / s.P;
    for (int i = 0; i < r.n; ++i) {
        dir[i] = r.x[i] - r.base[i];
        if (r.state[i] > 0) r.base[i] = r.x[i];
    }
    s.fcur = s.f0;
    s.ahead = s.behind = kBoundInfinity;
    for (int i = 0; i < r.n; ++i) {
        const double v = std::abs(dir[i]);
        if (r.state[i] <= 0 || v < r.eps) continue;
        if (!(r.bL[i] > -kBoundInfinity || r.bU[i] < kBoundInfinity)) continue;
        double a = r.x[i] - r.bL[i], b = r.bU[i] - r.x[i];
        if (v >= 1 || a < v * r.big) a /= v;
        if (v >= 1 || b < v * r.big) b /= v;
        if (dir[i] > 0) {
            s.ahead = std::min(s.ahead, b);
            s.behind = std::min(s.behind, a);
        } else {
            s.ahead = std::min(s.ahead, a);
            s.behind = std::min(s.behind, b);
        }
    }
}

// Steps 16 to 20: the better point is taken; a bound it reached is added;
// the gradient decides whether the iteration goes on.
void takeBetterPoint(BqnRun& r, Local& s, int& finish) {
    std::copy(r.base, r.base + r.n, r.x);
    evaluateAtX(r);
    int m = 0;
    if (!addReachedBound(r, m)) return;
    if (r.method == 1 && s.h * s.h / s.P < s.alpha) r.method = 0;
    r.gtg = 0;
    if (r.nfree != 0) {
        freeGradient(r);
        const double a = std::abs(s.fcur) + 1;
        if (r.tolG0 <= r.gtg && (r.tolF * a <= std::abs(s.f0 - s.fcur) || r.tolG * a * a <= r.gtg)) {
            r.code = 0;
            finish = 0;
            return;
        }
    }
    if (m != 0 && r.lsCount < 2) {
        boundGradient(r, -1);
        E04MUL1(r);
        r.code = 0;
        if (r.release > 0 && std::abs(r.gmin) > releaseThreshold(r)) {
            clearMarks(r);
            releaseVariable(r, r.release);
            finish = 0;
        }
    }
}

}  // namespace

void E04LSD1(int n, int nfree, double& hcur, const double* bL, const double* bU,
             const int* state, const double* base, double* dir, double& ahead, double& behind,
             int& code) {
    const FamilyConstants& c = familyConstants();
    const int alternating = nfree % 2 == 0 ? nfree : nfree - 2;
    const double nextSign = alternating % 2 == 0 ? 1.0 : -1.0;
    int j = 0;
    double upMin = kBoundInfinity, dnMin = kBoundInfinity;
    for (int i = 0; i < n; ++i) {
        if (state[i] <= 0) continue;
        if (j < alternating) {
            dir[i] *= j % 2 == 0 ? 1.0 : -1.0;
        } else {
            dir[i] *= nextSign * (j == alternating ? 0.3579 : 0.6421);
        }
        ++j;
        const double v = dir[i];
        const double aheadBound = v > 0 ? bU[i] : bL[i];
        const double behindBound = v > 0 ? bL[i] : bU[i];
        upMin = std::min(upMin, (aheadBound - base[i]) / v);
        dnMin = std::min(dnMin, (base[i] - behindBound) / v);
    }
    const bool longIsDown = dnMin > upMin;
    const double longRoom = longIsDown ? dnMin : upMin;
    const double shortRoom = longIsDown ? upMin : dnMin;
    if (longRoom < c.eps) {
        code = 5;
        return;
    }
    if (longRoom < hcur) hcur = longRoom;
    const double s = hcur;
    if (s >= 1) {
        ahead = longRoom / s;
        behind = shortRoom / s;
    } else {
        ahead = longRoom < c.big * s ? longRoom / s : longRoom;
        behind = shortRoom < c.big * s ? shortRoom / s : shortRoom;
    }
    const double factor = longIsDown ? -s : s;
    for (int i = 0; i < n; ++i) dir[i] *= factor;
    code = 0;
}

void E04JBM(BqnRun& r, double h, int& finish) {
    finish = -1;
    familyTrace(TraceRecord{TraceKind::Event, bounded_trace::LocalSearch});
    ++r.lsCount;
    Local s;
    s.f0 = r.f;
    s.h = s.hcur = h;
    int k = -1;
    if (const int code = firstProbe(r, s, k); code != 0) {
        r.code = code;
        return;
    }
    if (r.nfcall > r.maxcal) {
        r.code = 2;
        return;
    }
    if (r.nfree == 1) {
        r.x[k] = r.base[k];
        evaluateAtX(r);
        freeGradient(r);
        r.code = 0;
        finish = 0;
        return;
    }
    int code = 0;
    E04LSD1(r.n, r.nfree, s.hcur, r.bL, r.bU, r.state, r.base, r.direct, s.ahead, s.behind, code);
    if (code == 5) {
        r.code = 5;
        return;
    }
    s.hcur = s.hstep = h;
    for (int pass = 1; pass <= 2; ++pass) {
        if (const int c = walk(r, s); c != 0) {
            r.code = c;
            return;
        }
        if (searchAlong(r, s, pass) == 2) {
            r.code = 2;
            return;
        }
        if (pass == 1) secondDirection(r, s);
    }
    if (s.f0 <= s.fcur) return;
    takeBetterPoint(r, s, finish);
}
