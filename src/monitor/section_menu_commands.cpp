// The commands of the local menu of sections that set it up and act:
// Variable, Npoints, Size, Plot, Move, Direct and File=name.
#include "monitor/section_menu.h"

#include "core/console_layer.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "methods/vector_routines.h"
#include "monitor/section.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"

#include <cctype>
#include <cmath>
#include <optional>

namespace section_menu {

namespace {

bool isExit(std::string_view reply) { return R02PFX(reply, "EX", 1); }

std::string trimmedRow(int k) {
    const std::string r = parameterRow(k);
    return r.substr(0, static_cast<std::size_t>(R02LEN(r)));
}

void showVariable(const Menu& m, int i) {
    write(sysinf.outUnit, "(1X,A,'-th variable value = ',A)", sectionIntegerText(i), sectionNumberText(m.x[i - 1]));
}

// The first point of the smallest value of the last curve (1-based), 0 when
// no value is a number.
int firstLowest() {
    const SectionCurve& c = lastSection();
    int best = 0;
    for (int i = 1; i <= c.n; ++i) {
        const double v = c.F[static_cast<std::size_t>(i - 1)];
        if (std::isfinite(v) && (best == 0 || v < c.F[static_cast<std::size_t>(best - 1)])) best = i;
    }
    return best;
}

// The point of the curve that Move goes to (1-based, a fraction allowed);
// empty when nothing is to happen.
std::optional<double> moveTarget(Menu& m) {
    const std::string w2 = m.word(2);
    if (R02PFX(w2, "M", 1)) return firstLowest();
    if (std::optional<double> t = sectionReal(w2)) return t;
    write(sysinf.outUnit, "(' To update the argument value load the',' corresponding ordinal number of')");
    const std::string reply = m.ask("the chosen histogram point [ Min / value ]", sectionIntegerText(m.half));
    const char c = static_cast<char>(std::toupper(static_cast<unsigned char>(reply.empty() ? ' ' : reply[0])));
    if (c == 'M') return firstLowest();
    if (std::isdigit(static_cast<unsigned char>(c))) return c - '0';
    return std::nullopt;
}

}  // namespace

Result variable(Menu& m) {
    m.slot.fill(0);
    std::string w = m.word(2);
    while (true) {
        const std::optional<int> v = sectionInteger(w);
        if (v && *v >= 1 && *v <= m.n) {
            m.at(Variable) = *v;
            m.stemWord = "var";
            m.stemIndex = sectionIntegerText(*v);
            m.title = "Coordinate section for " + m.stemIndex + " variable.";
            return Result::Done;
        }
        w = m.ask("Load " + trimmedRow(1), "");
        if (isExit(w)) return Result::Abandon;
    }
}

Result npoints(Menu& m) {
    std::string w = m.word(2);
    while (true) {
        if (std::optional<int> v = sectionInteger(w)) {
            int p = *v;
            if (p >= 2 && p <= kMaxSectionPoints && p % 2 == 0) {
                p = p < kMaxSectionPoints ? p + 1 : p - 1;
                E04MES("Number of points corrected to odd value " + sectionIntegerText(p));
            }
            if (p >= 3 && p <= kMaxSectionPoints) {
                m.points = m.at(Points) = p;
                m.half = (p + 1) / 2;
                return Result::Done;
            }
        }
        w = m.ask("Load " + trimmedRow(2), sectionIntegerText(kDefaultPoints));
        if (isExit(w)) return Result::Abandon;
        if (w.empty()) w = sectionIntegerText(kDefaultPoints);
    }
}

Result size(Menu& m) {
    m.at(WidthSet) = 0;
    if (std::optional<double> v = sectionReal(m.word(2))) {
        m.W = *v;
        m.at(WidthSet) = 1;
        return Result::Done;
    }
    if (m.W == 0.0) m.W = 1.0;
    const bool alongVariable = m.at(AlongDirection) == 0;
    if (alongVariable && m.at(Variable) == 0) {
        m.push("VARIABLE");
        return Result::Pushed;
    }
    if (alongVariable) showVariable(m, m.at(Variable));
    while (true) {
        const std::string reply = m.ask("Load the section width", sectionNumberText(m.W));
        if (isExit(reply)) return Result::Abandon;
        if (reply.empty()) {
            m.at(WidthSet) = m.W > 0.0 ? 1 : 0;
            return Result::Done;
        }
        if (std::optional<double> v = sectionReal(reply)) {
            m.W = *v;
            m.at(WidthSet) = 1;
            return Result::Done;
        }
    }
}

Result plot(Menu& m) {
    // The later overrides the earlier, so that Variable runs first, then
    // Npoints, then Size.
    std::string need;
    if (m.at(WidthSet) == 0) need = "SIZE";
    if (m.at(Points) == 0) need = "NPOINT";
    if (m.at(Variable) == 0 && m.at(AlongDirection) == 0) need = "VARIABLE";
    if (!need.empty()) {
        m.push(need);
        return Result::Pushed;
    }
    if (m.at(AlongDirection) == 0) {
        m.dirv.fill(0.0);
        m.dirv(m.at(Variable)) = 1.0;
    }
    int err = 0;
    E4SCT2(sectionTarget, m.f, m.x, m.dirv.data(), m.n, m.W, m.points, m.h,
           sectionStem(m.given, m.stemWord, m.stemIndex), m.title, err);
    if (err != 0) return Result::Failed;
    m.plotVariable = m.at(AlongDirection) == 0 ? m.at(Variable) : 0;
    m.plotDirection = m.dirv;
    m.plotW = m.W;
    m.plotH = m.h;
    m.at(Plotted) = 1;
    return Result::Done;
}

// The point moves to point t of the curve: along a variable that variable
// takes the value of the point, x(v) - W/2 + (t - 1) h; along a direction
// the point moves by the offset of t times the direction vector.
Result move(Menu& m) {
    if (m.at(Plotted) == 0) {
        m.push("PLOT");
        return Result::Pushed;
    }
    const std::optional<double> target = moveTarget(m);
    if (!target) return Result::Done;
    const double t = *target;
    const int n = lastSection().n;
    if (!(t >= 1.0 && t <= n)) {
        I05MES("E4SCT1 -E- There is no histogram point " + sectionNumberText(t) + "; the curve has " +
               sectionIntegerText(n) + " points.");
        return Result::Failed;
    }
    const double offset = -m.plotW / 2.0 + (t - 1.0) * m.plotH;
    if (m.plotVariable != 0) {
        m.x[m.plotVariable - 1] = m.x[m.plotVariable - 1] - m.plotW / 2.0 + (t - 1.0) * m.plotH;
    } else {
        int same = 0;
        E4STP1(m.x, m.x, m.plotDirection.data(), m.n, 1.0, offset, same);
    }
    m.f = sectionTarget(m.x);
    m.at(Plotted) = 0;
    return Result::Done;
}

Result direct(Menu& m) {
    const E4DataSetRecord& d = E4DataSet;
    m.at(AlongDirection) = 0;
    const std::string w2 = m.word(2);
    if (w2.empty()) return Result::Done;
    if (R02PFX(w2, "H", 1)) {
        if (d.iStat(row::V_eigenSet) == 0) {
            I05MES("No eigenvectors computed. Use \"eva,hes\" to get them.");
            return Result::Failed;
        }
        const std::optional<int> k = sectionInteger(m.word(3));
        if (!k || *k < 1 || *k > m.n) {
            I05MES("Third-level command must be index of Hessian eigenvector");
            return m.word(3).empty() ? Result::Done : Result::Failed;
        }
        for (int i = 1; i <= m.n; ++i) m.dirv(i) = d.V_eigen(i, *k);
        m.at(AlongDirection) = 1;
        m.stemWord = "eig";
        m.stemIndex = sectionIntegerText(*k);
        m.title = "eigenvector No. " + m.stemIndex;
        return Result::Done;
    }
    if (R02PFX(w2, "D", 1)) {
        m.dirv = d.direct;
        m.at(AlongDirection) = d.iStat(row::directSet) != 0 ? 1 : 0;
        if (m.at(AlongDirection) == 0) I05MES("E4SCT1 -W- No direction vector is set (LOAD,,DIRECT or SET,DIRECTION).");
        m.stemWord = "_section";
        m.stemIndex.clear();
        m.title = "along the specified direction";
        return Result::Done;
    }
    I05MES("Second-level command must be either \"[D]irection\" or \"[H]esse\"");
    return Result::Abandon;
}

// File=name: the sections that follow are written to name (with the
// number of the variable or eigenvector behind it) .sec and .svg.
Result file(Menu& m) {
    std::string key(kWordWidth, ' '), name(kLineWidth, ' ');
    int count = 0, status = 0;
    R02CLS2(m.word(1), key, name, count, status);
    if (count < 2 || !R02PFX(key, "F", 1)) {
        I05MES("E4SCT1 -E- File=name needs a name.");
        return Result::Failed;
    }
    m.given = name.substr(0, static_cast<std::size_t>(R02LEN(name)));
    return Result::Done;
}

}  // namespace section_menu
