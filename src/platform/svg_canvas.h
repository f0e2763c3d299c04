// Drawing back end of the graphics window: a pixel canvas with colours, line
// masks, viewport, world coordinates, shapes and text, written as an SVG file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The graphics window is one child window of the frame.  Everything drawn on
// it is kept as picture elements in window pixels (origin at the upper left,
// y downwards) and written as an SVG document when the window is closed or
// the picture is finished.  Colours are indices 0-15 of the classic console
// palette; fonts are a monospace family at the cell size of the option text.
namespace canvas {

// Pixel size of the frame that holds the windows.
constexpr int kFrameWidth = 1280;
constexpr int kFrameHeight = 1024;

// Window configuration; a field of -1 is left to the back end to choose.
struct WindowConfig {
    int pixelsX = -1;
    int pixelsY = -1;
    int textCols = -1;
    int textRows = -1;
    int colours = -1;
    int fontHeight = -1;
    std::string title;
    std::string fontName;
};

// Opens the child window on `channel`; the file name must be "USER".
// Returns false when the name is another one.
bool openWindow(int channel, std::string_view fileName);
bool windowOpen();
// Sets the configuration: pixel sizes outside 1 to the frame size are a
// failure (false, nothing changes); -1 fields get the back end's choice
// (text rows and columns from the current font cell, 16 colours).
bool setWindowConfig(int channel, const WindowConfig& config);
bool getWindowConfig(int channel, WindowConfig& config);
// Places the window with its upper left corner at a text cell of the frame.
bool setWindowPlace(int channel, int column, int row);
void windowPlace(int& column, int& row);
// Gives a window the focus; the console has channel 0 here.
void setFocus(int channel);
int focusChannel();

// Fonts: loadFonts gives their number; selectFont takes an option text such
// as "h12w8f" (cell 12 high, 8 wide) and gives 0, or -1 when the text names
// no cell; fontCell reads the cell of the current font (false before any).
int loadFonts();
int selectFont(std::string_view option);
bool fontCell(int& height, int& width);

// Colour by palette index 0-15 (others are taken mod 16), background colour,
// line style as a 16-bit mask (bit 15 is the first pixel).
void setColour(int index);
int colour();
void setBackground(int index);
void setLineMask(std::uint16_t mask);
// "#RRGGBB" of a palette index.
std::string paletteColour(int index);
// SVG dash pattern of a mask: empty for a solid line.
std::string dashPattern(std::uint16_t mask);

// Viewport in window pixels (corners included); world coordinates on it
// with y upwards: (x1, y1) is the lower left, (x2, y2) the upper right.
void setViewport(int x1, int y1, int x2, int y2);
void viewport(int& x1, int& y1, int& x2, int& y2);
void setWorld(double x1, double y1, double x2, double y2);
// Window pixel of a world point.
void worldToWindow(double x, double y, double& px, double& py);

// Pen: move or draw to a world point or to a pixel of the viewport.
void moveToWorld(double x, double y);
void lineToWorld(double x, double y);
void moveToPixel(int x, int y);
void lineToPixel(int x, int y);
// Current pen position, in world coordinates and in viewport pixels.
void penWorld(double& x, double& y);
void penPixel(int& x, int& y);

// Ellipse and rectangle in a box of viewport pixels, filled or outlined.
void drawEllipse(bool filled, int x1, int y1, int x2, int y2);
void drawRectangle(bool filled, int x1, int y1, int x2, int y2);
// Text at the pen (upper left of its first cell) in the current font; the
// pen moves behind it.
void drawText(std::string_view text);

// Behaviour of the frame at program end: close without asking or not.
void setCloseWithoutAsking(bool close);
bool closeWithoutAsking();

// The SVG document of the window as it stands.
std::string svgDocument();
// File the picture goes to (default "graphics.svg").
void setPictureFile(std::string_view path);
std::string pictureFile();
// Writes the document on the window's channel to the picture file; returns
// the iostat of the writing (0 success).
int writePicture();
// Writes the picture and closes the window.
int closeWindow(int channel);

// Back to the program's start: no window, no elements, default settings.
void resetCanvas();

}  // namespace canvas
