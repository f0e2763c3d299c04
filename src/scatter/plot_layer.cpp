// Plot layer, window and pen: plotState, resetPlotLayer, OpenGraphics, SetWorld,
// SetLine, PenWorld, PenPixel, TextCell, TextBottom, DateStamp, WaitClose.
#include "scatter/plot_layer.h"

#include "core/console_layer.h"
#include "platform/svg_canvas.h"
#include "platform/units.h"
#include "scatter/model_curves.h"
#include "core/string_tools.h"

#include <algorithm>
#include <array>
#include <cmath>

PlotState plotState;

namespace {

struct Place {
    const char* word;
    int column;
    int row;
};

constexpr std::array<Place, 6> kPlaces = {{{"UPRIGHT", 70, 0},
                                           {"DNLEFT", 0, 20},
                                           {"DNRIGHT", 70, 20},
                                           {"CENTER", 35, 10},
                                           {"UPCENTER", 35, 0},
                                           {"DNCENTER", 35, 20}}};

constexpr std::array<std::uint16_t, 4> kLineMasks = {0xFFFF, 0xEEEE, 0xECEC, 0xAAAA};

// Pixel size of the window asked for by a size word.
void windowSizeFor(std::string_view size, int& width, int& height) {
    const double W = canvas::kFrameWidth;
    const double H = canvas::kFrameHeight;
    double w = 0.625 * W;
    double h = 0.75 * H;
    if (R02EQ(size, "FULL", 1)) {
        w = W;
        h = H;
    } else if (R02EQ(size, "HALF", 1)) {
        w = 0.25 * W;
        h = H;
    } else if (R02EQ(size, "QUART", 1)) {
        w = 0.25 * W;
        h = 0.25 * H;
    }
    width = static_cast<int>(w);
    height = static_cast<int>(h);
}

// Sets the plot viewport and its world window again after a whole-window
// text.
void restorePlotViewport() {
    canvas::setViewport(plotState.viewX1, plotState.viewY1, plotState.viewX2, plotState.viewY2);
    canvas::setWorld(plotState.worldX1, plotState.worldY1, plotState.worldX2, plotState.worldY2);
}

void wholeWindow() { canvas::setViewport(0, 0, plotState.pixelsX - 1, plotState.pixelsY - 1); }

// Writes `text` at a character cell of the whole window.
void textAtCell(std::string_view text, int row, int column, int halfRowDown) {
    wholeWindow();
    int cols = std::max<int>(plotState.textCols, 1);
    int rows = std::max<int>(plotState.textRows, 1);
    canvas::moveToPixel(column * plotState.pixelsX / cols, row * plotState.pixelsY / rows);
    if (halfRowDown != 0) PenPixel(true, 0, plotState.cellHeight / 2, 0);
    canvas::drawText(text);
    restorePlotViewport();
}

}  // namespace

void resetPlotLayer() {
    plotState = PlotState{};
    canvas::resetCanvas();
}

void OpenGraphics(std::string_view size, std::string_view place) {
    canvas::openWindow(kGraphicsChannel, "USER");
    canvas::WindowConfig config;
    windowSizeFor(size, config.pixelsX, config.pixelsY);
    config.title = "Graphics Window";
    config.fontName = "monospace";
    if (!canvas::setWindowConfig(kGraphicsChannel, config)) {
        canvas::setWindowConfig(kGraphicsChannel, config);
    }
    canvas::getWindowConfig(kGraphicsChannel, config);
    plotState.pixelsX = static_cast<std::int16_t>(config.pixelsX);
    plotState.pixelsY = static_cast<std::int16_t>(config.pixelsY);
    plotState.textCols = static_cast<std::int16_t>(config.textCols);
    plotState.textRows = static_cast<std::int16_t>(config.textRows);
    int column = 0;
    int row = 0;
    for (const Place& p : kPlaces) {
        if (R02EQ(place, p.word, 1)) {
            column = p.column;
            row = p.row;
        }
    }
    canvas::setWindowPlace(kGraphicsChannel, column, row);
    canvas::setFocus(kGraphicsChannel);
    canvas::loadFonts();
    plotState.viewX1 = 0;
    plotState.viewY1 = 0;
    plotState.viewX2 = static_cast<std::int16_t>(plotState.pixelsX - 1);
    plotState.viewY2 = static_cast<std::int16_t>(plotState.pixelsY - 1);
}

void SetWorld(double xv, double yv, double wv, double hv, int frame, double xMin, double xMax,
              double yMin, double yMax) {
    const double W = plotState.pixelsX;
    const double H = plotState.pixelsY;
    plotState.viewX1 = static_cast<std::int16_t>(std::trunc(xv * W + 0.5));
    plotState.viewY1 = static_cast<std::int16_t>(std::trunc(yv * H + 0.5));
    plotState.viewX2 = static_cast<std::int16_t>(std::trunc((xv + wv) * W + 0.5));
    plotState.viewY2 = static_cast<std::int16_t>(std::trunc((yv + hv) * H + 0.5));
    canvas::setViewport(plotState.viewX1, plotState.viewY1, plotState.viewX2, plotState.viewY2);
    const int width = plotState.viewX2 - plotState.viewX1;
    const int height = plotState.viewY2 - plotState.viewY1;
    if (frame == 1) canvas::drawRectangle(false, 0, 0, width, height);
    plotState.wxMin = xMin;
    plotState.wxMax = xMax;
    plotState.wyMin = yMin;
    plotState.wyMax = yMax;
    plotState.worldX1 = xMin;
    plotState.worldX2 = xMax;
    plotState.worldY1 = yMin;
    plotState.worldY2 = yMax;
    if (frame != -2) {
        const double cw = plotState.cellWidth;
        const double ch = plotState.cellHeight;
        const double dx = (xMax - xMin) / (width - 8.0 * cw);
        const double dy = (yMax - yMin) / (height - 6.0 * ch);
        plotState.worldX1 = xMin - 6.0 * cw * dx;
        plotState.worldX2 = xMax + 4.0 * cw * dx;
        plotState.worldY1 = yMin - 3.0 * ch * dy;
        plotState.worldY2 = yMax + 3.0 * ch * dy;
    }
    canvas::setWorld(plotState.worldX1, plotState.worldY1, plotState.worldX2, plotState.worldY2);
}

void SetLine(int style, int colour) {
    int s = (style >= 1 && style <= 4) ? style : 1;
    canvas::setLineMask(kLineMasks[static_cast<std::size_t>(s - 1)]);
    canvas::setColour((colour >= 0 && colour <= 15) ? colour : 0);
}

void PenWorld(bool relative, double x, double y, int draw) {
    if (relative) {
        double cx = 0.0;
        double cy = 0.0;
        canvas::penWorld(cx, cy);
        x += cx;
        y += cy;
    }
    if (draw == 1) {
        canvas::lineToWorld(x, y);
    } else {
        canvas::moveToWorld(x, y);
    }
}

void PenPixel(bool relative, int dx, int dy, int draw) {
    if (relative) {
        int cx = 0;
        int cy = 0;
        canvas::penPixel(cx, cy);
        dx += cx;
        dy += cy;
    }
    if (draw == 1) {
        canvas::lineToPixel(dx, dy);
    } else {
        canvas::moveToPixel(dx, dy);
    }
}

void TextCell(std::string_view text, int row, int column, int colour) {
    canvas::setColour((colour >= 1 && colour <= 15) ? colour : 0);
    textAtCell(text, row, column, 0);
}

void TextBottom(std::string_view text, int row) {
    const int len = R02LEN(text);
    const int column = std::max(1, (plotState.textCols - len) / 2);
    if (row <= 0) row = (plotState.textRows - 1) - 2 + row;
    textAtCell(text.substr(0, static_cast<std::size_t>(len)), row, column, 1);
}

void DateStamp() {
    canvas::setColour(0);
    wholeWindow();
    canvas::moveToPixel(3, plotState.pixelsY - 15);
    canvas::drawText(dateTimeText());
    restorePlotViewport();
}

void WaitClose() {
    std::string file = canvas::pictureFile();
    int st = canvas::closeWindow(kGraphicsChannel);
    if (st != 0) I05MES("Graphics Window not written to " + file + ": " + unit::ioText(st));
    writeList(6, "Press CR to terminate the program");
    canvas::setFocus(0);
    std::string line(80, ' ');
    int length = 0;
    int status = 0;
    I05RSL(5, line, length, "", status);  // end of input counts as CR
    canvas::setCloseWithoutAsking(true);
}
