// The step search of the bounded quasi-Newton method: E04LSH1 walks along a
// direction on function values only, with the slope at the start, and
// E04LSH2 decides each next trial.  It keeps the best step, the second and
// third best and an interval of uncertainty round the best; it fits a
// parabola through the slope or three points when that is safe, and falls
// back on extrapolation or a division of the interval otherwise.  At the end
// it demands a sufficient decrease and retreats towards the start until the
// demand is met.
#include "methods/bounded_family.h"

#include <algorithm>
#include <cmath>

namespace {

// First call: the start of the memory; result 2 when nothing can be done.
bool startSearch(double tolrel, double tolabs, double eta, double am, double xtry, double ftry,
                 double gtp, LshMemory& m) {
    m.tol = tolabs;
    // Written so that a value that is not a number also refuses.
    if (!(xtry > 0) || !(am > 2 * tolabs) || !(gtp <= 0)) {
        m.result = 2;
        return false;
    }
    m.xbest = m.xsec = m.xthird = m.lo = 0;
    m.fbest = m.fsec = m.fthird = m.flo = m.f0 = ftry;
    m.step = xtry;
    m.bracketed = -1;
    m.room = am;
    m.hi = std::abs(am) * tolrel + tolabs + am;
    m.fitHi = m.hi;
    m.prev = 2 * m.hi;
    m.decr = -0.0001 * gtp;
    m.slopeTest = -eta * gtp;
    m.phase = 2;
    return true;
}

// The trial just evaluated: a new best moves every position, others narrow
// the interval.
void takeTrial(double tolrel, double tolabs, double xtry, double ftry, LshMemory& m) {
    if (ftry <= m.fbest) {
        if (xtry >= 0) {
            m.flo = m.fbest;
            m.lo = 0;
            if (m.xthird == m.xsec && m.fbest == ftry) m.bracketed = 1;
        } else {
            m.hi = 0;
            m.bracketed = 1;
        }
        m.fthird = m.fsec;
        m.fsec = m.fbest;
        m.lo -= xtry;
        m.hi -= xtry;
        m.xthird = m.xsec - xtry;
        m.xsec = -xtry;
        m.xbest += xtry;
        m.room -= xtry;
        m.tol = std::abs(m.xbest) * tolrel + tolabs;
        m.fbest = ftry;
        return;
    }
    if (xtry < 0) {
        m.lo = xtry;
        m.flo = ftry;
    } else {
        m.hi = xtry;
        m.bracketed = 1;
    }
    if (ftry > m.fsec && m.xsec != 0) {
        m.xthird = xtry;
        m.fthird = ftry;
    } else {
        m.xthird = m.xsec;
        m.fthird = m.fsec;
        m.xsec = xtry;
        m.fsec = ftry;
    }
}

bool goesOn(double alpmin, double am, const LshMemory& m) {
    const double mid = (m.lo + m.hi) * 0.5;
    if (!(std::abs(mid) > 2 * m.tol - (m.hi - m.lo) * 0.5)) return false;
    if (!(alpmin < m.xbest + m.hi)) return false;
    return m.slopeTest * std::abs(m.lo) < m.flo - m.fbest || m.f0 <= m.fbest ||
           (std::abs(m.xbest - am) <= m.tol && m.bracketed >= 0);
}

// The parabola through the slope at the start (first choice) or through the
// three best points: its minimum is p / den from xbest.
void fitParabola(double gtp, LshMemory& m, double& p, double& den, double& old) {
    if (std::abs(m.prev) <= m.tol) {
        p = den = old = 0;
        return;
    }
    if (m.phase == 2) {
        const double q = m.xsec * gtp;
        den = 2 * ((m.fsec - m.fbest) - q);
        p = m.xbest == 0 ? m.xsec * m.xsec * gtp : m.xsec * (2 * (m.fbest - m.fsec) + q);
    } else {
        const double r = (m.fthird - m.fbest) * m.xsec;
        const double q = (m.fsec - m.fbest) * m.xthird;
        p = m.xsec * r - m.xthird * q;
        den = 2 * (q - r);
    }
    if (den > 0) p = -p;
    den = std::abs(den);
    old = m.prev;
    if (m.step != m.fitHi || m.bracketed > 0) m.prev = m.step;
}

// The step taken when no fit is accepted, and the range a fit must keep to.
void defaultStep(double tol, LshMemory& m, double& low, double& high) {
    const double mid = (m.lo + m.hi) * 0.5;
    low = m.lo;
    high = m.hi;
    if (m.xbest == m.lo) {
        m.step = mid;
        m.fitHi = m.hi;
        return;
    }
    if (m.bracketed < 0) {
        m.step = std::min(-4 * m.lo, m.room);
    } else {
        double u = m.lo, v = m.hi;
        if (std::abs(m.hi) <= tol || (m.xsec > 0 && std::abs(m.lo) > tol)) {
            u = m.hi;
            v = m.lo;
        }
        const double r = -(u / v);
        m.step = r >= 1 ? 5 * v * (1 / r + 0.1) / 11 : 0.5 * v * std::sqrt(r);
    }
    if ((m.xsec > 0 && m.xthird < 0) || (m.xsec < 0 && m.xthird > 0)) {
        m.fitHi = m.hi;
    } else if (m.step <= 0) {
        low = m.step;
        m.fitHi = m.hi;
    } else {
        high = m.step;
        m.fitHi = m.step;
    }
}

void chooseStep(double gtp, LshMemory& m) {
    double p = 0, den = 0, old = 0, low = 0, high = 0;
    fitParabola(gtp, m, p, den, old);
    defaultStep(m.tol, m, low, high);
    const double mid = (m.lo + m.hi) * 0.5;
    const double t2 = 2 * m.tol;
    if (std::abs(0.5 * den * old) <= std::abs(p) || p <= low * den || high * den <= p) {
        m.prev = mid > 0 ? m.hi : m.lo;
    } else {
        const double s = p / den;
        if (s - m.lo < t2 || m.hi - s < t2) {
            m.step = mid > 0 ? m.tol : -m.tol;
        } else {
            m.step = s;
        }
    }
    m.phase = 3;
}

// The step is kept within the room left, and at least tol long.
void finalStep(double tolrel, double& xtry, LshMemory& m) {
    if (m.room <= m.step) {
        m.step = m.room;
        m.room = (m.room - m.tol) / (tolrel + 1);
    }
    xtry = m.step;
    if (std::abs(m.step) < m.tol) xtry = m.step > 0 ? m.tol : -m.tol;
    m.result = 1;
}

// Steps 3 to 6 of the ending: the decrease demanded, or a shorter step.
void endingFromStep3(double tolabs, double alpmin, double& xtry, double ftry, LshMemory& m) {
    if (m.xbest + m.hi <= alpmin) {
        m.result = 4;
        return;
    }
    if (m.xbest * m.decr < m.f0 - ftry) {
        m.fbest = ftry;
        m.result = 0;
        return;
    }
    if (m.xbest != tolabs) {
        m.xbest = std::max(tolabs, m.sx * m.shrink);
        m.shrink = m.shrink * m.shrink;
        xtry = 0;
        m.phase = 5;
        m.result = 1;
        return;
    }
    m.result = 3;
}

// Step 2 of the ending: a best step at the limit is looked at once more.
void endingFromStep2(double tolabs, double alpmin, double am, double& xtry, double ftry,
                     LshMemory& m) {
    if (std::abs(m.xbest - am) < m.tol && m.xbest != tolabs) {
        if (m.room < 0 && m.xsec < 0 && m.xthird < 0) m.xbest = am;
        if (m.sb >= 0) {
            xtry = 0;
            m.phase = 4;
            m.result = 1;
            return;
        }
    }
    endingFromStep3(tolabs, alpmin, xtry, ftry, m);
}

void ending(double tolabs, double alpmin, double am, double& xtry, double& ftry, LshMemory& m) {
    m.sb = m.bracketed;
    m.sx = m.xbest;
    m.shrink = 0.5;
    ftry = m.fbest;
    if (m.xbest == 0) m.xbest = tolabs;
    endingFromStep2(tolabs, alpmin, am, xtry, ftry, m);
}

}  // namespace

void E04LSH2(double tolrel, double tolabs, double eta, double alpmin, double am, double& xtry,
             double& ftry, double gtp, LshMemory& m) {
    switch (m.phase) {
        case 2:
        case 3:
            takeTrial(tolrel, tolabs, xtry, ftry, m);
            if (!goesOn(alpmin, am, m)) {
                ending(tolabs, alpmin, am, xtry, ftry, m);
                return;
            }
            chooseStep(gtp, m);
            break;
        case 4: endingFromStep3(tolabs, alpmin, xtry, ftry, m); return;
        case 5: endingFromStep2(tolabs, alpmin, am, xtry, ftry, m); return;
        default:
            if (!startSearch(tolrel, tolabs, eta, am, xtry, ftry, gtp, m)) return;
            break;
    }
    finalStep(tolrel, xtry, m);
}

void E04LSH1(int n, FamilyFun fun, const Box& box, double tolrel, double tolabs, double eta,
             double alpmin, double am, const double* direct, double gtp, double* x, double& f,
             double& alpha, int& nfls, int& iflag, double* trial) {
    LshMemory m;
    m.phase = 1;
    double ftry = f;
    double xtry = alpha;
    int count = 0;
    iflag = 0;
    for (;;) {
        E04LSH2(tolrel, tolabs, eta, alpmin, am, xtry, ftry, gtp, m);
        if (m.result != 1) break;
        for (int i = 0; i < n; ++i) trial[i] = x[i] + (m.xbest + xtry) * direct[i];
        ftry = familyCall(fun, iflag, n, trial, box);
        ++count;
        if (iflag < 0) {
            nfls = count;
            return;
        }
    }
    nfls = count;
    if (m.result != 0) {
        iflag = 3;
        return;
    }
    alpha = m.xbest;
    for (int i = 0; i < n; ++i) {
        x[i] += m.xbest * direct[i];
        if (box.lo != nullptr) x[i] = std::clamp(x[i], box.lo[i], box.hi[i]);
    }
    f = m.fbest;
    iflag = 2;
}
