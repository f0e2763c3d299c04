// The table of differences of the noise estimate: DifferenceTable (fill,
// analyse, print) and deriveSteps, the initial search steps read off it.
#include "objective/noise_table.h"

#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "numlib/special_functions.h"
#include "platform/units.h"

#include <algorithm>
#include <cmath>

void DifferenceTable::setValues(const double* T) {
    for (int k = 1; k <= 14; ++k) at(1, k) = T[k - 1];
    last_ = 1;
}

NoiseResult DifferenceTable::analyse(int level, int channel) {
    for (int j = 2; j <= 8; ++j) {
        const int entries = 15 - j, pairs = 14 - j;
        double q = 0;
        for (int k = 1; k <= entries; ++k) {
            at(j, k) = at(j - 1, k + 1) - at(j - 1, k);
            q += at(j, k) * at(j, k);
        }
        last_ = j;
        int same = 0;
        for (int k = 1; k <= pairs; ++k) {
            if ((at(j, k) >= 0) == (at(j, k + 1) >= 0)) ++same;
        }
        if (q == 0) {
            if (level >= 1)
                write(channel, "(' E4ERR1 -W- Zero norm of',I2,'-th column of',' differences table.')", j);
            return {};
        }
        if (static_cast<double>(same) / pairs > 0.25 && j != 8) continue;
        const int m = j - 1;
        int err = 0;
        const double factor = std::sqrt(std::pow(S03FACT(m, err), 2) / S03FACT(2 * m, err));
        double n = 0;
        for (int k = 1; k <= entries; ++k) n = std::max(n, std::fabs(at(j, k)) * factor);
        if (level >= 1)
            write(channel,
                  "(' E4ERR1 --- Absolute computational noise for the',' object',/,12X,"
                  "'function has been estimated by using',I2,'-th',/,12X,"
                  "'column of the differences table as',1P,G14.6)",
                  j, n);
        return {true, n};
    }
    return {};
}

void DifferenceTable::print(int channel) const {
    write(channel, "(12X,'Finite-difference table is as follows:')");
    for (int r = 1; r <= 14; ++r) {
        FmtItems row;
        for (int j = 1; j <= std::min(last_, 15 - r); ++j) row.emplace_back(entry(j, r));
        writeItems(channel, "(8(G9.2))", row);
    }
}

namespace {

// The multiplier of the direction: quadratic from the curvature at the
// two ends, or linear from the spread of the values.
double stepMultiplier(double A, double L, double h, const DifferenceTable& t, const char*& text) {
    const double rMin = X02RMDC(3);
    auto limited = [rMin](double c) { return std::fabs(c) < rMin ? std::copysign(rMin, c) : c; };
    double c1 = limited((t.value(1) - 2 * t.value(2) + t.value(3)) / (h * h));
    double c2 = limited((t.value(12) - 2 * t.value(13) + t.value(14)) / (h * h));
    static const char* quadratic =
        "(12X,'Quadratic estimation of initial argument step which',/,12X,"
        "'may be used by any local search routine is:')";
    text = quadratic;
    if (c1 * c2 <= 0) return L;
    double n1 = -((t.value(3) - t.value(1)) / (2 * h)) / c1;
    double n2 = -((t.value(14) - t.value(12)) / (2 * h)) / c2;
    double ratio = n1 / n2;
    if (ratio > 0.1 && ratio < 10) return (n1 + n2) / 2;
    int p = 1, q = 1;
    for (int k = 2; k <= 14; ++k) {
        if (t.value(k) > t.value(p)) p = k;
        if (t.value(k) < t.value(q)) q = k;
    }
    double v = (t.value(p) - t.value(q)) / A;
    if (v == 0) {
        text = "(12X,'Initial argument step which is to be used by local',/,12X,"
               "'search was failed to found. So the step vector',/,12X,'is set as:')";
        return L;
    }
    text = "(12X,'Linear estimation of initial argument step which',/,12X,"
           "'may be used by any local search routine is:')";
    return std::clamp(std::abs(p - q) * 0.1 / v, 0.001, 1000.0) * h;
}

}  // namespace

void deriveSteps(const double* x, double A, double L, double h, const DifferenceTable& table,
                 int level, int channel) {
    E4DataSetRecord& d = E4DataSet;
    const char* text = nullptr;
    double w = stepMultiplier(A, L, h, table, text);
    if (level >= 1) write(channel, text);
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) == 0) {
            d.xStep(i) = 0;
            continue;
        }
        double v = std::fabs(w * d.aux2(i));
        double c = std::fabs(x[i - 1]) + 1.0;
        d.xStep(i) = (v <= 0.0001 * c || v >= 10 * c) ? 0.1 * c : v;
    }
}
