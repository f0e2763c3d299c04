// Tests of the graphics window canvas: palette, line masks, fonts, window
// configuration, world mapping, joined lines, shapes, text and the SVG file.
#include "support/temp_folder.h"
#include "platform/svg_canvas.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

class SvgCanvasTest : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        canvas::resetCanvas();
    }
    void TearDown() override { canvas::resetCanvas(); }

    // Opens a 200 x 100 window with the fonts loaded.
    static void openSmallWindow() {
        ASSERT_TRUE(canvas::openWindow(15, "USER"));
        canvas::WindowConfig cfg;
        cfg.pixelsX = 200;
        cfg.pixelsY = 100;
        ASSERT_TRUE(canvas::setWindowConfig(15, cfg));
        canvas::loadFonts();
    }
};

int count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t p = text.find(what); p != std::string::npos; p = text.find(what, p + 1)) ++n;
    return n;
}

// Parses the file with python's XML parser: true when it is well formed.
bool wellFormedXml(const std::string& path) {
    std::string cmd = "python3 -c \"import sys, xml.dom.minidom; xml.dom.minidom.parse(sys.argv[1])\" '" +
                      path + "' 2>/dev/null";
    return std::system(cmd.c_str()) == 0;
}

TEST_F(SvgCanvasTest, WorldCoordinatesRunUpwardsOnTheViewport) {
    openSmallWindow();
    canvas::setViewport(100, 50, 300, 250);
    canvas::setWorld(0.0, 0.0, 10.0, 20.0);
    double px = 0, py = 0;
    canvas::worldToWindow(5.0, 10.0, px, py);
    EXPECT_DOUBLE_EQ(px, 200.0);
    EXPECT_DOUBLE_EQ(py, 150.0);
    canvas::worldToWindow(0.0, 0.0, px, py);
    EXPECT_DOUBLE_EQ(px, 100.0);
    EXPECT_DOUBLE_EQ(py, 250.0);  // lower left of the world is the bottom
    canvas::worldToWindow(10.0, 20.0, px, py);
    EXPECT_DOUBLE_EQ(py, 50.0);
    canvas::moveToWorld(2.5, 15.0);
    int vx = 0, vy = 0;
    canvas::penPixel(vx, vy);
    EXPECT_EQ(vx, 50);  // viewport pixels: 100 + 50 in the window
    EXPECT_EQ(vy, 50);
    double wx = 0, wy = 0;
    canvas::penWorld(wx, wy);
    EXPECT_DOUBLE_EQ(wx, 2.5);
    EXPECT_DOUBLE_EQ(wy, 15.0);
}

TEST_F(SvgCanvasTest, JoinedSegmentsMakeOnePolylinePerColourAndMask) {
    openSmallWindow();
    canvas::setColour(4);
    canvas::moveToPixel(10, 10);
    canvas::lineToPixel(20, 10);
    canvas::lineToPixel(20, 30);
    canvas::setColour(2);
    canvas::lineToPixel(40, 30);  // new colour: a new line from the pen
    canvas::setLineMask(0xAAAA);
    canvas::moveToPixel(0, 0);
    canvas::lineToPixel(5, 5);
    std::string doc = canvas::svgDocument();
    EXPECT_NE(doc.find("<polyline points=\"10,10 20,10 20,30\" fill=\"none\" stroke=\"#AA0000\""),
              std::string::npos);
    EXPECT_NE(doc.find("<polyline points=\"20,30 40,30\" fill=\"none\" stroke=\"#00AA00\""),
              std::string::npos);
    EXPECT_NE(doc.find("points=\"0,0 5,5\" fill=\"none\" stroke=\"#00AA00\" stroke-width=\"1\" "
                       "stroke-dasharray=\"1 1"),
              std::string::npos);
    EXPECT_EQ(count(doc, "<polyline"), 3);
}

TEST_F(SvgCanvasTest, TextStandsBelowThePenAndIsEscaped) {
    openSmallWindow();
    canvas::selectFont("h12w8f");
    canvas::setColour(13);
    canvas::moveToPixel(10, 20);
    canvas::drawText("  a<b & c ");
    std::string doc = canvas::svgDocument();
    // Two leading blanks move the text two cells; base line 20 + 10.
    EXPECT_NE(doc.find("<text x=\"26\" y=\"30\" font-family=\"monospace\" font-size=\"12\" "
                       "textLength=\"56\" lengthAdjust=\"spacingAndGlyphs\" fill=\"#FF55FF\">"
                       "a&lt;b &amp; c</text>"),
              std::string::npos);
    int x = 0, y = 0;
    canvas::penPixel(x, y);
    EXPECT_EQ(x, 10 + 10 * 8);  // the pen moves behind the ten characters
    EXPECT_EQ(y, 20);
}

TEST_F(SvgCanvasTest, PictureFileIsWellFormedSvg) {
    openSmallWindow();
    canvas::setBackground(15);
    canvas::setColour(0);
    canvas::moveToPixel(1, 1);
    canvas::lineToPixel(50, 60);
    canvas::drawText("\"quoted\" & <tagged>");
    std::string path = freshFolder("svg") + "/canvas.svg";
    canvas::setPictureFile(path);
    ASSERT_EQ(canvas::closeWindow(15), 0);
    EXPECT_FALSE(canvas::windowOpen());
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_NE(text.str().find("width=\"200\" height=\"100\""), std::string::npos);
    EXPECT_NE(text.str().find("fill=\"#FFFFFF\""), std::string::npos);  // the background
    EXPECT_TRUE(wellFormedXml(path));
    // The checker itself finds a broken document.
    std::ofstream(path) << "<svg><text>a</svg>";
    EXPECT_FALSE(wellFormedXml(path));
    std::remove(path.c_str());
}

}  // namespace
