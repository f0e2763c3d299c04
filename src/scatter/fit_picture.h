// Picture of a fit on logarithmic intensity: PlotCurves, plotCurves, logIntensity,
// plotLimits, curveLegend, OpenPicture, DrawFitPicture, resetFitPicture.
#pragma once

#include <array>
#include <string>
#include <string_view>

constexpr int kMaxPlotCurves = 12;      // measured, fitted and 10 phases
constexpr int kMaxPlotPoints = 10001;

// The curves of the picture, x and y of each.
struct PlotCurves {
    int nCurves = 0;
    int nPts = 0;
    std::array<std::array<double, kMaxPlotPoints>, kMaxPlotCurves> x{};
    std::array<std::array<double, kMaxPlotPoints>, kMaxPlotCurves> y{};
};
extern PlotCurves plotCurves;
void resetFitPicture();

// log10(|v + 1e-15|): the plotted value of an intensity.
double logIntensity(double v);
// Limits over the first nCurves curves of nPts points; equal limits are
// widened by a tenth of their size plus 1e-15 on each side.
void plotLimits(const PlotCurves& curves, double& xMin, double& xMax, double& yMin, double& yMax);
// Colour index and marker letter of curve c (1-based).
int curveColour(int c);
char curveMarker(int c);
// Legend of curve c; phaseType (1 SPHERE, 2 CYLINDER, 3 DUMBBELL,
// 4 ELLIPSOID) counts for the phase curves c > 2.
std::string curveLegend(int c, int phaseType);

// Opens the graphics window for a picture written to baseName + ".svg":
// white ground, black pen, the font cell of the plot texts.
void OpenPicture(std::string_view baseName);

// Draws the measured curve I, the fitted curve (already scaled) and the
// unscaled curve of each phase, phaseI[j][0..nPts-1] of type phaseType[j],
// all over s[0..nPts-1], and writes the picture to baseName + ".svg".
// Returns the iostat of writing the picture.
int DrawFitPicture(int nPts, const double* s, const double* I, const double* fitted, int nPhase,
                   const double* const* phaseI, const int* phaseType, std::string_view baseName);
