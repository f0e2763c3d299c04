// The picture of a section, drawn by the plot layer that draws the fit:
// the function against the offset from the current point, the title below.
#include "monitor/section.h"

#include "core/console_layer.h"
#include "platform/svg_canvas.h"
#include "platform/units.h"
#include "scatter/fit_picture.h"
#include "scatter/plot_layer.h"

#include <algorithm>
#include <cmath>

namespace {

// Equal limits are widened by a tenth of their size, so that a flat curve
// still has an axis to stand on.
void widenEqual(double& low, double& high) {
    if (low != high) return;
    const double d = (std::fabs(low) + 1e-15) / 10.0;
    low -= d;
    high += d;
}

}  // namespace

int drawSectionPicture(std::string_view stem, std::string_view title, int n, const double* X, const double* F) {
    const std::string file = std::string(stem) + ".svg";
    if (n < 1 || !std::all_of(F, F + n, [](double v) { return std::isfinite(v); })) {
        I05MES("Section picture not drawn: the curve holds values that are not numbers.");
        return -1;
    }
    auto [xLow, xHigh] = std::minmax_element(X, X + n);
    auto [fLow, fHigh] = std::minmax_element(F, F + n);
    double xMin = *xLow, xMax = *xHigh, yMin = *fLow, yMax = *fHigh;
    widenEqual(xMin, xMax);
    widenEqual(yMin, yMax);

    OpenPicture(stem);
    SetWorld(0.05, 0.05, 0.85, 0.85, 0, xMin, xMax, yMin, yMax);
    DrawAxes("offset", 0.0, yMin, -1, " f", 0.0, xMin, -1);
    SetLine(1, 12);
    // Markers on every point while they can be told apart.
    PlotCurve(n, X, F, 'c', n <= 101 ? 1 : 0);
    SetLine(1, 0);
    TextBottom("Surface section, " + std::string(title), 0);
    DateStamp();
    const int st = canvas::writePicture();
    if (st == 0) {
        I05MES("Section drawn in " + file);
    } else {
        I05MES("Section picture not written to " + file + ": " + unit::ioText(st));
    }
    return st;
}
