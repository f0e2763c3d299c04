// Axes and curves of the plot layer: DrawAxes (axis lines, ticks, labels,
// scale exponent) and PlotCurve (markers and joining lines).
#include "platform/svg_canvas.h"
#include "scatter/plot_layer.h"
#include "textfile/number_text.h"

#include <cmath>
#include <string>

namespace {

// One axis as DrawAxes sees it: its ends, where it stands on the other
// axis, and where the opposite line of a frame stands.
struct Axis {
    bool isX = true;
    double low = 0.0;
    double high = 0.0;
    double at = 0.0;
    double opposite = 0.0;
};

// World point of the value v along the axis.
void penOnAxis(const Axis& axis, double v, double across, int draw) {
    if (axis.isX) {
        PenWorld(false, v, across, draw);
    } else {
        PenWorld(false, across, v, draw);
    }
}

// The axis label with "*E" and the exponent behind it when the values are
// shown scaled.
std::string axisTitle(std::string_view label, int e) {
    std::string title(label);
    if (std::abs(e) > 2) {
        std::string digits(12, ' ');
        int len = 0;
        int err = 0;
        R02I2C1(e, digits, len, err);
        title += "*E" + digits.substr(0, static_cast<std::size_t>(len));
    }
    return title;
}

void drawAxisLine(const Axis& axis, std::string_view label, int mode) {
    const int cw = plotState.cellWidth;
    const int ch = plotState.cellHeight;
    penOnAxis(axis, axis.low, axis.at, 0);
    penOnAxis(axis, axis.high, axis.at, 1);
    if (axis.isX) {
        PenPixel(true, -15 * cw, static_cast<int>(1.75 * ch), 0);
    } else {
        PenPixel(true, cw, static_cast<int>(-1.5 * ch), 0);
    }
    canvas::drawText(label);
    if (mode == -2) {
        penOnAxis(axis, axis.low, axis.opposite, 0);
        penOnAxis(axis, axis.high, axis.opposite, 1);
    }
}

// Tick mark (or grid line) at v and its label.
void drawTick(const Axis& axis, double v, const std::string& label, const LabelField& field,
              int mode) {
    const int cw = plotState.cellWidth;
    const int ch = plotState.cellHeight;
    const int into = ch / 2;
    penOnAxis(axis, v, axis.at, 0);
    if (mode == 1) {
        penOnAxis(axis, v, axis.opposite, 1);
        penOnAxis(axis, v, axis.at, 0);
    } else if (axis.isX) {
        PenPixel(true, 0, -into, 1);
        PenPixel(true, 0, into, 0);
    } else {
        PenPixel(true, into, 0, 1);
        PenPixel(true, -into, 0, 0);
    }
    if (axis.isX) {
        PenPixel(true, -cw * (field.w - field.d - 2), ch / 2, 0);
    } else {
        PenPixel(true, -cw * field.w, 0, 0);
    }
    canvas::drawText(label);
    if (mode == -2) {
        penOnAxis(axis, v, axis.opposite, 0);
        if (axis.isX) {
            PenPixel(true, 0, into, 1);
        } else {
            PenPixel(true, -into, 0, 1);
        }
    }
}

void drawAxis(const Axis& axis, std::string_view label, double step, int mode) {
    const int e = axisExponent(axis.low, axis.high);
    const double p = std::pow(10.0, e);
    const bool scaled = std::abs(e) > 2;
    drawAxisLine(axis, axisTitle(label, e), mode);
    TickList ticks = (step > 0.0) ? AxisTicksStep(axis.low / p, axis.high / p, step / p)
                                  : AxisTicks(axis.low / p, axis.high / p);
    LabelField field =
        scaled ? AxisLabelField(axis.low / p, axis.high / p) : AxisLabelField(axis.low, axis.high);
    for (int i = 0; i < ticks.count; ++i) {
        double t = ticks.at[static_cast<std::size_t>(i)];
        double value = scaled ? t : t * p;
        drawTick(axis, t * p, tickLabel(value, field), field, mode);
    }
}

// Half size in pixels and fill of a marker shape; false for a letter.
bool markerShape(char marker, int& half, bool& filled, bool& round) {
    switch (marker) {
        case '.': half = 1; filled = true; round = true; return true;
        case 'c': half = 2; filled = false; round = true; return true;
        case 'd': half = 2; filled = true; round = true; return true;
        case 'C': half = 3; filled = false; round = true; return true;
        case 'D': half = 3; filled = true; round = true; return true;
        case 'r': half = 2; filled = false; round = false; return true;
        case 's': half = 2; filled = true; round = false; return true;
        case 'R': half = 3; filled = false; round = false; return true;
        case 'S': half = 3; filled = true; round = false; return true;
        default: return false;
    }
}

// Marker centred on the pen; the pen stays on the point.
void drawMarker(char marker, int smallHeight, int smallWidth) {
    int px = 0;
    int py = 0;
    canvas::penPixel(px, py);
    int half = 0;
    bool filled = false;
    bool round = false;
    if (markerShape(marker, half, filled, round)) {
        if (round) {
            canvas::drawEllipse(filled, px - half, py - half, px + half, py + half);
        } else {
            canvas::drawRectangle(filled, px - half, py - half, px + half, py + half);
        }
        return;
    }
    double wx = 0.0;
    double wy = 0.0;
    canvas::penWorld(wx, wy);
    canvas::moveToPixel(px - smallWidth / 2, py - smallHeight / 2);
    canvas::drawText(std::string(1, marker));
    canvas::moveToWorld(wx, wy);
}

}  // namespace

void DrawAxes(std::string_view xLabel, double xStep, double yAxisAt, int xMode,
              std::string_view yLabel, double yStep, double xAxisAt, int yMode) {
    Axis xAxis{true, plotState.wxMin, plotState.wxMax, yAxisAt, plotState.wyMax};
    Axis yAxis{false, plotState.wyMin, plotState.wyMax, xAxisAt, plotState.wxMax};
    drawAxis(xAxis, xLabel, xStep, xMode);
    drawAxis(yAxis, yLabel, yStep, yMode);
}

void PlotCurve(int n, const double* x, const double* y, char marker, int step) {
    int smallHeight = 10;
    int smallWidth = 5;
    if (canvas::selectFont("h10w5p") != 0 || !canvas::fontCell(smallHeight, smallWidth)) {
        smallHeight = plotState.cellHeight;
        smallWidth = plotState.cellWidth;
    }
    const int every = std::abs(step);
    for (int i = 0; i < n; ++i) {
        const int draw = (i > 0 && step >= 0) ? 1 : 0;
        PenWorld(false, x[i], y[i], draw);
        // Point numbers are 1-based in the marker rule.
        const int point = i + 1;
        bool mark = every == 1 || (every > 1 && (point == 1 || (point + 1) % every == 0));
        if (mark) drawMarker(marker, smallHeight, smallWidth);
    }
    canvas::selectFont("h12w8f");
}
