// E4RST1: drops what depends on changed data after a command changed the
// problem, the point or the method.
#include "core/e4dataset.h"

namespace {

void clearRows(std::initializer_list<int> rows) {
    for (int r : rows) E4DataSet.iStat(r) = 0;
}

// The argument values are no longer held: unscale xStart and xEnd if they
// are held scaled, and forget the scaling.
void dropArguments() {
    E4DataSetRecord& d = E4DataSet;
    d.iStat(37) = 0;
    if (d.iStat(57) != 0) {
        if (d.iStat(54) != 0) {
            for (int i = 1; i <= kMaxVar; ++i) {
                d.xStart(i) /= d.xScale(i);
                d.xEnd(i) /= d.xScale(i);
            }
        }
        d.iStat(57) = 0;
    }
    d.iStat(54) = 0;
}

void clearFixedEntries() {
    E4DataSetRecord& d = E4DataSet;
    int n = d.nVar();
    int varied = 0;
    for (int i = 1; i <= n && i <= kMaxVar; ++i) {
        if (d.iFixer(i) != 0) {
            ++varied;
            continue;
        }
        d.direct(i) = 0;
        d.deltaX(i) = 0;
        d.deltaG(i) = 0;
        d.Hdiag(i) = 0;
    }
    d.iStat(36) = varied;
}

}  // namespace

void E4RST1(std::string_view mode) {
    E4DataSetRecord& d = E4DataSet;
    bool full = !mode.empty() && mode.front() == 'A';
    if (full) clearRows({42, 43, 46, 53, 56, 58, 59, 60, 8});
    clearRows({48, 45, 3});
    bool argumentsHeld = d.iStat(38) != 0;
    if (!argumentsHeld) dropArguments();
    clearRows({49, 50, 44, 12, 39, 40, 41, 47});
    for (int i = 1; i <= kMaxVar; ++i) {
        d.deltaG(i) = 0;
        if (!argumentsHeld) {
            d.deltaX(i) = 0;
            d.xScale(i) = 1.0;
        }
    }
    if (d.iStat(37) == 0) d.deltaF = 0;
    if (!argumentsHeld) d.deltaXn = 0;
    d.FrlErr = 0;
    if (d.nVar() != 0) clearFixedEntries();
}
