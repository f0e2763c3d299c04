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
    d.iStat(row::fSet) = 0;
    if (d.iStat(row::xScaled) != 0) {
        if (d.iStat(row::xScaleSet) != 0) {
            for (int i = 1; i <= kMaxVar; ++i) {
                d.xStart(i) /= d.xScale(i);
                d.xEnd(i) /= d.xScale(i);
            }
        }
        d.iStat(row::xScaled) = 0;
    }
    d.iStat(row::xScaleSet) = 0;
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
    d.iStat(row::nFree) = varied;
}

}  // namespace

void E4RST1(std::string_view mode) {
    E4DataSetRecord& d = E4DataSet;
    bool full = !mode.empty() && mode.front() == 'A';
    if (full) clearRows({row::tolSclSet, row::deviatSet, row::reserved46, row::stpMaxSet, row::cdVariable, row::vectorTerms, row::directSet, row::R_eigenSet, row::gradientScheme});
    clearRows({row::gEndSet, row::FrlErrSet, row::methodDone});
    bool argumentsHeld = d.iStat(row::xStartSet) != 0;
    if (!argumentsHeld) dropArguments();
    clearRows({row::HdiagSet, row::HesseSet, row::hCondSet, row::hCondSwitch, row::xStepSet, row::rXTolSet, row::rFTolSet, row::finDifSet});
    for (int i = 1; i <= kMaxVar; ++i) {
        d.deltaG(i) = 0;
        if (!argumentsHeld) {
            d.deltaX(i) = 0;
            d.xScale(i) = 1.0;
        }
    }
    if (d.iStat(row::fSet) == 0) d.deltaF = 0;
    if (!argumentsHeld) d.deltaXn = 0;
    d.FrlErr = 0;
    if (d.nVar() != 0) clearFixedEntries();
}
