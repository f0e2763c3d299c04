// Plot layer of the graphics window: PlotState, OpenGraphics, SetWorld, DrawAxes, AxisTicks,
// AxisLabelField, PlotCurve, SetLine, TextCell, TextBottom, DateStamp, WaitClose, PenWorld, PenPixel.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// State of the layer, kept between its calls.
struct PlotState {
    // Limits of the plotted data given to SetWorld; the axes run over them.
    double wxMin = 0.0, wxMax = 1.0, wyMin = 0.0, wyMax = 1.0;
    // Viewport in window pixels.
    std::int16_t viewX1 = 0, viewY1 = 0, viewX2 = 0, viewY2 = 0;
    // Window size in pixels and in text cells.
    std::int16_t pixelsX = 0, pixelsY = 0, textCols = 0, textRows = 0;
    // Character cell of the font in pixels.
    int cellHeight = 12, cellWidth = 8;
    // World window set on the viewport, label margins included.
    double worldX1 = 0.0, worldY1 = 0.0, worldX2 = 1.0, worldY2 = 1.0;
};
extern PlotState plotState;

// Channel of the graphics window.
constexpr int kGraphicsChannel = 15;

// Back to the program's start: layer state and canvas cleared.
void resetPlotLayer();

// Opens the graphics window; size "FULL", "HALF", "QUART" or another word,
// place "UPRIGHT", "DNLEFT", "DNRIGHT", "CENTER", "UPCENTER", "DNCENTER" or
// another word.
void OpenGraphics(std::string_view size, std::string_view place);
// Viewport (fractions of the window) and world coordinates; frame 1 draws
// the viewport outline, frame -2 takes the limits without label margins.
void SetWorld(double xv, double yv, double wv, double hv, int frame, double xMin, double xMax,
              double yMin, double yMax);
// Axes, ticks and labels; a step of 0 is automatic.  The x axis is drawn at
// y = yAxisAt and the y axis at x = xAxisAt.  Mode 1 draws a grid, -2 a frame.
void DrawAxes(std::string_view xLabel, double xStep, double yAxisAt, int xMode,
              std::string_view yLabel, double yStep, double xAxisAt, int yMode);
// n points x[0..n-1], y[0..n-1] with a marker letter; step 0 lines only,
// 1 markers on every point and lines, above 1 markers on point 1 and every
// point i (1-based) with i + 1 divisible by step, below 0 markers as for
// |step| and no lines.
void PlotCurve(int n, const double* x, const double* y, char marker, int step);
// Line style 1-4 and colour 0-15.
void SetLine(int style, int colour);
// Text at a character cell (row, column) of the window.
void TextCell(std::string_view text, int row, int column, int colour);
// Text centred in a row; a row of 0 or less counts from the bottom.
void TextBottom(std::string_view text, int row);
// Date and time at the lower left of the window.
void DateStamp();
// Finishes the picture, says where it was written and waits for a line.
void WaitClose();
// One pen step to a world point / by viewport pixels; relative adds the
// current position; draw 1 draws a line, anything else moves.
void PenWorld(bool relative, double x, double y, int draw);
void PenPixel(bool relative, int dx, int dy, int draw);

// --- rules of the axes ------------------------------------------------------

constexpr int kMaxTicks = 64;
struct TickList {
    int count = 0;
    std::array<double, kMaxTicks> at{};
};

// Integer part that counts a quotient a hair under a whole number as that
// number; sign of q, truncated toward zero.
double tolerantInteger(double q);
// Ticks of the axis from a to b (a < b) by the automatic step.
TickList AxisTicks(double a, double b);
// Ticks of the axis from a to b by a given step.
TickList AxisTicksStep(double a, double b, double step);
// Automatic tick step of the range a to b.
double axisTickStep(double a, double b);

// Fixed-point field of the tick labels of an axis from A to B (in label
// units): width w, decimals d, and the edit notation of the field.
struct LabelField {
    int w = 0;
    int d = 0;
    std::string format;  // e.g. "(F7.3)"
};
LabelField AxisLabelField(double a, double b);
// Decimal exponent of an axis from its two ends.
int axisExponent(double low, double high);
// A tick value in the label field, blanks cut.
std::string tickLabel(double value, const LabelField& field);
