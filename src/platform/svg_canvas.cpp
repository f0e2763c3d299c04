// Graphics window canvas: window and font settings, colours and line masks,
// viewport and world mapping, pen, shapes, text and the SVG document.
#include "platform/svg_canvas.h"

#include "platform/units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

namespace canvas {
namespace {

struct Canvas {
    bool open = false;
    int channel = 0;
    WindowConfig config;
    int placeColumn = 0;
    int placeRow = 0;
    int focus = 0;
    int fontsLoaded = 0;
    bool fontSet = false;
    int cellHeight = 0;
    int cellWidth = 0;
    int colour = 15;
    int background = 0;
    std::uint16_t mask = 0xFFFF;
    int vx1 = 0, vy1 = 0, vx2 = 0, vy2 = 0;
    bool world = false;
    double wx1 = 0, wy1 = 0, wx2 = 1, wy2 = 1;
    double penX = 0, penY = 0;  // window pixels
    bool closeQuietly = false;
    std::string file = "graphics.svg";
    std::vector<std::string> elements;
    std::string lastWritten;  // the document of the last write, good or failed
    // A run of joined line segments of one colour and mask, kept open so
    // that a curve becomes one polyline.
    std::vector<std::pair<double, double>> run;
    int runColour = 0;
    std::uint16_t runMask = 0xFFFF;
};

Canvas& cv() {
    static Canvas c;
    return c;
}

// Classic 16-colour console palette.
constexpr std::array<const char*, 16> kPalette = {
    "#000000", "#0000AA", "#00AA00", "#00AAAA", "#AA0000", "#AA00AA", "#AA5500", "#AAAAAA",
    "#555555", "#5555FF", "#55FF55", "#55FFFF", "#FF5555", "#FF55FF", "#FFFF55", "#FFFFFF"};

int paletteIndex(int index) { return ((index % 16) + 16) % 16; }

// A coordinate with at most two decimals, shortest form.
std::string num(double v) {
    double r = std::round(v * 100.0) / 100.0;
    if (r == 0.0) r = 0.0;  // no "-0"
    std::array<char, 40> buf{};
    auto res = std::to_chars(buf.data(), buf.data() + buf.size(), r);
    return std::string(buf.data(), res.ptr);
}

std::string escapeXml(std::string_view text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            default:
                // Control characters are not allowed in XML text.
                out += (static_cast<unsigned char>(c) < 32) ? ' ' : c;
        }
    }
    return out;
}

std::string strokeAttributes(int colourIndex, std::uint16_t mask) {
    std::string a = " fill=\"none\" stroke=\"" + paletteColour(colourIndex) + "\" stroke-width=\"1\"";
    std::string dash = dashPattern(mask);
    if (!dash.empty()) a += " stroke-dasharray=\"" + dash + "\"";
    return a;
}

void flushRun() {
    Canvas& c = cv();
    if (c.run.size() >= 2) {
        std::string e = "<polyline points=\"";
        for (std::size_t i = 0; i < c.run.size(); ++i) {
            if (i > 0) e += ' ';
            e += num(c.run[i].first) + "," + num(c.run[i].second);
        }
        e += "\"" + strokeAttributes(c.runColour, c.runMask) + "/>";
        c.elements.push_back(e);
    }
    c.run.clear();
}

// A line from the pen to (x, y) in window pixels; joins the open run when it
// goes on from its end in the same colour and mask.
void segmentTo(double x, double y) {
    Canvas& c = cv();
    bool joins = !c.run.empty() && c.runColour == c.colour && c.runMask == c.mask &&
                 c.run.back().first == c.penX && c.run.back().second == c.penY;
    if (!joins) {
        flushRun();
        c.run.emplace_back(c.penX, c.penY);
        c.runColour = c.colour;
        c.runMask = c.mask;
    }
    c.run.emplace_back(x, y);
    c.penX = x;
    c.penY = y;
}

// Parses "h<height>w<width>..." of a font option text.
bool parseFontOption(std::string_view option, int& height, int& width) {
    height = 0;
    width = 0;
    int* target = nullptr;
    for (char ch : option) {
        char u = static_cast<char>(ch | 0x20);
        if (u == 'h') {
            target = &height;
        } else if (u == 'w') {
            target = &width;
        } else if (ch >= '0' && ch <= '9' && target != nullptr) {
            if (*target < 1000) *target = *target * 10 + (ch - '0');
        } else {
            target = nullptr;
        }
    }
    return height > 0 && width > 0;
}

void fillDefaults(WindowConfig& cfg) {
    const Canvas& c = cv();
    int ch = c.fontSet ? c.cellHeight : 16;
    int cw = c.fontSet ? c.cellWidth : 8;
    if (cfg.textCols < 1) cfg.textCols = cfg.pixelsX / cw;
    if (cfg.textRows < 1) cfg.textRows = cfg.pixelsY / ch;
    if (cfg.colours < 1) cfg.colours = 16;
    if (cfg.fontHeight < 1) cfg.fontHeight = ch;
}

}  // namespace

bool openWindow(int channel, std::string_view fileName) {
    if (fileName != "USER") return false;
    // A new window is blank: nothing of an earlier picture stays in it.
    Canvas& c = cv();
    Canvas fresh;
    fresh.file = c.file;
    fresh.fontsLoaded = c.fontsLoaded;
    fresh.closeQuietly = c.closeQuietly;
    c = std::move(fresh);
    c.open = true;
    c.channel = channel;
    c.config.pixelsX = kFrameWidth * 5 / 8;
    c.config.pixelsY = kFrameHeight * 3 / 4;
    fillDefaults(c.config);
    setViewport(0, 0, c.config.pixelsX - 1, c.config.pixelsY - 1);
    return true;
}

bool windowOpen() { return cv().open; }

bool setWindowConfig(int channel, const WindowConfig& config) {
    Canvas& c = cv();
    if (!c.open || channel != c.channel) return false;
    WindowConfig cfg = config;
    if (cfg.pixelsX == -1) cfg.pixelsX = c.config.pixelsX;
    if (cfg.pixelsY == -1) cfg.pixelsY = c.config.pixelsY;
    if (cfg.pixelsX < 1 || cfg.pixelsX > kFrameWidth || cfg.pixelsY < 1 ||
        cfg.pixelsY > kFrameHeight)
        return false;
    fillDefaults(cfg);
    c.config = cfg;
    setViewport(0, 0, cfg.pixelsX - 1, cfg.pixelsY - 1);
    return true;
}

bool getWindowConfig(int channel, WindowConfig& config) {
    const Canvas& c = cv();
    if (!c.open || channel != c.channel) return false;
    config = c.config;
    return true;
}

bool setWindowPlace(int channel, int column, int row) {
    Canvas& c = cv();
    if (!c.open || channel != c.channel || column < 0 || row < 0) return false;
    c.placeColumn = column;
    c.placeRow = row;
    return true;
}

void windowPlace(int& column, int& row) {
    column = cv().placeColumn;
    row = cv().placeRow;
}

void setFocus(int channel) { cv().focus = channel; }
int focusChannel() { return cv().focus; }

int loadFonts() {
    cv().fontsLoaded = 2;  // the fixed and the proportional monospace face
    return cv().fontsLoaded;
}

int selectFont(std::string_view option) {
    Canvas& c = cv();
    int h = 0;
    int w = 0;
    if (c.fontsLoaded == 0 || !parseFontOption(option, h, w)) return -1;
    c.fontSet = true;
    c.cellHeight = h;
    c.cellWidth = w;
    return 0;
}

bool fontCell(int& height, int& width) {
    const Canvas& c = cv();
    if (!c.fontSet) return false;
    height = c.cellHeight;
    width = c.cellWidth;
    return true;
}

void setColour(int index) { cv().colour = paletteIndex(index); }
int colour() { return cv().colour; }
void setBackground(int index) { cv().background = paletteIndex(index); }
void setLineMask(std::uint16_t mask) { cv().mask = mask; }

std::string paletteColour(int index) { return kPalette[static_cast<std::size_t>(paletteIndex(index))]; }

std::string dashPattern(std::uint16_t mask) {
    if (mask == 0xFFFF) return "";
    // Runs of set and clear bits from bit 15 down; the list starts with a
    // drawn run (of length 0 when the first bit is clear).
    std::vector<int> runs;
    bool drawn = true;
    int length = 0;
    for (int bit = 15; bit >= 0; --bit) {
        bool set = ((mask >> bit) & 1U) != 0;
        if (set != drawn) {
            runs.push_back(length);
            drawn = set;
            length = 0;
        }
        ++length;
    }
    runs.push_back(length);
    if (runs.size() % 2 != 0) runs.push_back(0);
    std::string out;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (i > 0) out += ' ';
        out += std::to_string(runs[i]);
    }
    return out;
}

void setViewport(int x1, int y1, int x2, int y2) {
    Canvas& c = cv();
    c.vx1 = std::min(x1, x2);
    c.vy1 = std::min(y1, y2);
    c.vx2 = std::max(x1, x2);
    c.vy2 = std::max(y1, y2);
    c.world = false;
    c.penX = c.vx1;
    c.penY = c.vy1;
}

void viewport(int& x1, int& y1, int& x2, int& y2) {
    const Canvas& c = cv();
    x1 = c.vx1;
    y1 = c.vy1;
    x2 = c.vx2;
    y2 = c.vy2;
}

void setWorld(double x1, double y1, double x2, double y2) {
    Canvas& c = cv();
    if (x1 == x2 || y1 == y2) return;
    c.world = true;
    c.wx1 = x1;
    c.wy1 = y1;
    c.wx2 = x2;
    c.wy2 = y2;
}

void worldToWindow(double x, double y, double& px, double& py) {
    const Canvas& c = cv();
    if (!c.world) {
        px = c.vx1 + x;
        py = c.vy1 + y;
        return;
    }
    px = c.vx1 + (x - c.wx1) * (c.vx2 - c.vx1) / (c.wx2 - c.wx1);
    py = c.vy1 + (c.wy2 - y) * (c.vy2 - c.vy1) / (c.wy2 - c.wy1);
}

// The pen stands on whole pixels: a world point goes to the nearest one.
void moveToWorld(double x, double y) {
    double px = 0;
    double py = 0;
    worldToWindow(x, y, px, py);
    cv().penX = std::round(px);
    cv().penY = std::round(py);
}

void lineToWorld(double x, double y) {
    double px = 0;
    double py = 0;
    worldToWindow(x, y, px, py);
    segmentTo(std::round(px), std::round(py));
}

void moveToPixel(int x, int y) {
    cv().penX = cv().vx1 + x;
    cv().penY = cv().vy1 + y;
}

void lineToPixel(int x, int y) { segmentTo(cv().vx1 + x, cv().vy1 + y); }

void penWorld(double& x, double& y) {
    const Canvas& c = cv();
    if (!c.world) {
        x = c.penX - c.vx1;
        y = c.penY - c.vy1;
        return;
    }
    x = c.wx1 + (c.penX - c.vx1) * (c.wx2 - c.wx1) / (c.vx2 - c.vx1);
    y = c.wy2 - (c.penY - c.vy1) * (c.wy2 - c.wy1) / (c.vy2 - c.vy1);
}

void penPixel(int& x, int& y) {
    x = static_cast<int>(std::lround(cv().penX)) - cv().vx1;
    y = static_cast<int>(std::lround(cv().penY)) - cv().vy1;
}

void drawEllipse(bool filled, int x1, int y1, int x2, int y2) {
    Canvas& c = cv();
    double cx = c.vx1 + (x1 + x2) / 2.0;
    double cy = c.vy1 + (y1 + y2) / 2.0;
    std::string fill = filled ? paletteColour(c.colour) : std::string("none");
    c.elements.push_back("<ellipse cx=\"" + num(cx) + "\" cy=\"" + num(cy) + "\" rx=\"" +
                         num(std::abs(x2 - x1) / 2.0) + "\" ry=\"" + num(std::abs(y2 - y1) / 2.0) +
                         "\" fill=\"" + fill + "\" stroke=\"" + paletteColour(c.colour) + "\"/>");
}

void drawRectangle(bool filled, int x1, int y1, int x2, int y2) {
    Canvas& c = cv();
    std::string fill = filled ? paletteColour(c.colour) : std::string("none");
    c.elements.push_back("<rect x=\"" + num(c.vx1 + std::min(x1, x2)) + "\" y=\"" +
                         num(c.vy1 + std::min(y1, y2)) + "\" width=\"" + num(std::abs(x2 - x1)) +
                         "\" height=\"" + num(std::abs(y2 - y1)) + "\" fill=\"" + fill +
                         "\" stroke=\"" + paletteColour(c.colour) + "\"/>");
}

void drawText(std::string_view text) {
    Canvas& c = cv();
    int h = c.fontSet ? c.cellHeight : 12;
    int w = c.fontSet ? c.cellWidth : 8;
    std::size_t first = text.find_first_not_of(' ');
    std::size_t last = text.find_last_not_of(' ');
    if (first != std::string_view::npos) {
        std::string_view shown = text.substr(first, last - first + 1);
        double x = c.penX + static_cast<double>(first) * w;
        // The pen is the top of the cell; the base line lies 4/5 down.
        double base = c.penY + std::round(0.8 * h);
        c.elements.push_back("<text x=\"" + num(x) + "\" y=\"" + num(base) +
                             "\" font-family=\"monospace\" font-size=\"" + std::to_string(h) +
                             "\" textLength=\"" + std::to_string(w * static_cast<int>(shown.size())) +
                             "\" lengthAdjust=\"spacingAndGlyphs\" fill=\"" +
                             paletteColour(c.colour) + "\">" + escapeXml(shown) + "</text>");
    }
    c.penX += static_cast<double>(w) * static_cast<double>(text.size());
}

void setCloseWithoutAsking(bool close) { cv().closeQuietly = close; }
bool closeWithoutAsking() { return cv().closeQuietly; }

std::string svgDocument() {
    flushRun();
    const Canvas& c = cv();
    std::string w = std::to_string(c.config.pixelsX);
    std::string h = std::to_string(c.config.pixelsY);
    std::string doc = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    doc += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h +
           "\" viewBox=\"0 0 " + w + " " + h + "\">\n";
    doc += "<title>" + escapeXml(c.config.title) + "</title>\n";
    doc += "<rect x=\"0\" y=\"0\" width=\"" + w + "\" height=\"" + h + "\" fill=\"" +
           paletteColour(c.background) + "\"/>\n";
    for (const std::string& e : c.elements) doc += e + "\n";
    doc += "</svg>\n";
    return doc;
}

void setPictureFile(std::string_view path) { cv().file = std::string(path); }
std::string pictureFile() { return cv().file; }

int writePicture() {
    Canvas& c = cv();
    unit::OpenSpec spec;
    spec.status = unit::Status::Replace;
    const std::string document = svgDocument();
    c.lastWritten = document;
    int st = unit::open(c.channel, c.file, spec);
    if (st != 0) return st;
    st = unit::writeBytes(c.channel, document);
    int stClose = unit::close(c.channel);
    return st != 0 ? st : stClose;
}

int closeWindow(int channel) {
    Canvas& c = cv();
    if (!c.open || channel != c.channel) return unit::IOERR_NOT_OPEN;
    // A picture written already, and not drawn on since, is not written
    // (nor its failure told) a second time.
    int st = svgDocument() == c.lastWritten ? 0 : writePicture();
    c.open = false;
    return st;
}

void resetCanvas() { cv() = Canvas{}; }

}  // namespace canvas
