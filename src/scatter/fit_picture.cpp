// Picture of a fit: plotCurves, resetFitPicture, logIntensity, plotLimits,
// curveColour, curveMarker, curveLegend, DrawFitPicture.
#include "scatter/fit_picture.h"

#include "core/console_layer.h"
#include "platform/svg_canvas.h"
#include "platform/units.h"
#include "scatter/measured_curve.h"
#include "scatter/plot_layer.h"
#include "textfile/number_text.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

PlotCurves plotCurves;

namespace {

constexpr std::array<int, 10> kCurveColours = {9, 12, 13, 2, 0, 1, 6, 11, 3, 8};
constexpr std::array<char, 4> kCurveMarkers = {'c', 'd', 'r', 's'};
constexpr std::array<const char*, 4> kTypeWords = {"SPH ", "CYL ", "DMB ", "ELL "};

std::string integerText(int i) {
    std::string text(12, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(i, text, len, err);
    return text.substr(0, static_cast<std::size_t>(std::max(len, 0)));
}

// Widens equal limits by a tenth of their size plus 1e-15 on each side.
void widenEqual(double& low, double& high) {
    if (low != high) return;
    low = low - (std::abs(low) + 1e-15) / 10.0;
    high = high + (std::abs(high) + 1e-15) / 10.0;
}

void fillCurve(int c, int nPts, const double* s, const double* values) {
    auto& x = plotCurves.x[static_cast<std::size_t>(c)];
    auto& y = plotCurves.y[static_cast<std::size_t>(c)];
    for (int k = 0; k < nPts; ++k) {
        x[static_cast<std::size_t>(k)] = s[k];
        y[static_cast<std::size_t>(k)] = logIntensity(values[k]);
    }
}

}  // namespace

void OpenPicture(std::string_view baseName) {
    OpenGraphics("", "");
    canvas::setPictureFile(std::string(baseName) + ".svg");
    canvas::setBackground(15);
    canvas::setColour(0);
    int h = 12;
    int w = 8;
    if (canvas::selectFont("h12w8f") != 0 || !canvas::fontCell(h, w)) {
        h = 12;
        w = 8;
    }
    plotState.cellHeight = h;
    plotState.cellWidth = w;
}

void resetFitPicture() {
    plotCurves.nCurves = 0;
    plotCurves.nPts = 0;
    for (auto& row : plotCurves.x) row.fill(0.0);
    for (auto& row : plotCurves.y) row.fill(0.0);
}

double logIntensity(double v) { return std::log10(std::abs(v + 1e-15)); }

void plotLimits(const PlotCurves& curves, double& xMin, double& xMax, double& yMin, double& yMax) {
    xMin = 0.0;
    xMax = 0.0;
    yMin = 0.0;
    yMax = 0.0;
    for (int c = 0; c < curves.nCurves; ++c) {
        double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
        MINMAX(curves.nPts, curves.x[static_cast<std::size_t>(c)].data(), x1, x2);
        MINMAX(curves.nPts, curves.y[static_cast<std::size_t>(c)].data(), y1, y2);
        xMin = (c == 0) ? x1 : std::min(xMin, x1);
        xMax = (c == 0) ? x2 : std::max(xMax, x2);
        yMin = (c == 0) ? y1 : std::min(yMin, y1);
        yMax = (c == 0) ? y2 : std::max(yMax, y2);
    }
    widenEqual(xMin, xMax);
    widenEqual(yMin, yMax);
}

int curveColour(int c) {
    int i = c % 10 == 0 ? 10 : c % 10;
    return kCurveColours[static_cast<std::size_t>(i - 1)];
}

char curveMarker(int c) {
    int i = c % 4 == 0 ? 4 : c % 4;
    return kCurveMarkers[static_cast<std::size_t>(i - 1)];
}

std::string curveLegend(int c, int phaseType) {
    std::string legend = "(" + integerText(c) + ")";
    if (c == 1) return legend + " Exp";
    if (c == 2) return legend + " Fit";
    std::string j = integerText(c - 2);
    std::string word = (phaseType >= 1 && phaseType <= 4)
                           ? kTypeWords[static_cast<std::size_t>(phaseType - 1)]
                           : "    ";
    return legend + " " + j.substr(0, 1) + word;
}

int DrawFitPicture(int nPts, const double* s, const double* I, const double* fitted, int nPhase,
                   const double* const* phaseI, const int* phaseType, std::string_view baseName) {
    nPts = std::clamp(nPts, 0, kMaxPlotPoints);
    nPhase = std::clamp(nPhase, 0, kMaxPlotCurves - 2);
    plotCurves.nPts = nPts;
    plotCurves.nCurves = nPhase + 2;
    fillCurve(0, nPts, s, I);
    fillCurve(1, nPts, s, fitted);
    for (int j = 0; j < nPhase; ++j) fillCurve(j + 2, nPts, s, phaseI[j]);
    double xMin = 0.0, xMax = 0.0, yMin = 0.0, yMax = 0.0;
    plotLimits(plotCurves, xMin, xMax, yMin, yMax);

    OpenPicture(baseName);
    SetWorld(0.05, 0.05, 0.85, 0.85, 0, xMin, xMax, yMin, yMax);
    DrawAxes("S", 0.0, yMin, -1, " log I", 0.0, xMin, -1);
    for (int c = 1; c <= plotCurves.nCurves; ++c) {
        const int colour = curveColour(c);
        const int type = c > 2 ? phaseType[c - 3] : 0;
        TextCell(curveLegend(c, type), c + 4, 44, colour);
        SetLine(1, colour);
        PlotCurve(nPts, plotCurves.x[static_cast<std::size_t>(c - 1)].data(),
                  plotCurves.y[static_cast<std::size_t>(c - 1)].data(), curveMarker(c), 1);
    }
    std::error_code ec;
    std::string directory = std::filesystem::current_path(ec).string();
    TextBottom(directory, 0);
    TextCell("PLOT", 2, 75, 2);
    DateStamp();
    int st = canvas::writePicture();
    if (st == 0) {
        I05MES("Graphics Window written to " + canvas::pictureFile());
    } else {
        I05MES("Graphics Window not written to " + canvas::pictureFile() + ": " + unit::ioText(st));
    }
    return st;
}
