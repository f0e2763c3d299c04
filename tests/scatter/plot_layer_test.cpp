// Tests of the plot layer and the picture of a fit: tick rule, label field,
// scale exponent, window and viewport, curves, texts, limits and the SVG.
#include "support/temp_folder.h"
#include "platform/svg_canvas.h"
#include "platform/units.h"
#include "scatter/fit_picture.h"
#include "scatter/plot_layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <vector>

namespace {

class PlotLayerTest : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        resetPlotLayer();
        resetFitPicture();
        unit::setTerminal(&in_, &out_);
    }
    void TearDown() override {
        unit::resetUnits();
        resetPlotLayer();
    }
    std::istringstream in_;
    std::ostringstream out_;
};

std::vector<double> ticksOf(const TickList& t) {
    return std::vector<double>(t.at.begin(), t.at.begin() + t.count);
}

void expectTicks(double a, double b, const std::vector<double>& want) {
    SCOPED_TRACE(testing::Message() << "axis " << a << " to " << b);
    std::vector<double> got = ticksOf(AxisTicks(a, b));
    ASSERT_EQ(got.size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i) {
        EXPECT_NEAR(got[i], want[i], 1e-9 * (std::abs(b) + std::abs(a)));
    }
}

int count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t p = text.find(what); p != std::string::npos; p = text.find(what, p + 1)) ++n;
    return n;
}

// Number of points of each polyline drawn in a colour.
std::vector<int> polylinePoints(const std::string& doc, const std::string& colour) {
    std::vector<int> sizes;
    std::regex line("<polyline points=\"([^\"]*)\" fill=\"none\" stroke=\"" + colour + "\"");
    for (auto it = std::sregex_iterator(doc.begin(), doc.end(), line); it != std::sregex_iterator();
         ++it) {
        std::string pts = (*it)[1];
        sizes.push_back(count(pts, " ") + 1);
    }
    return sizes;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(AxisRules, TolerantIntegerCountsAHairUnderAsTheWholeNumber) {
    EXPECT_EQ(tolerantInteger(2.9999999999999996), 3.0);
    EXPECT_EQ(tolerantInteger(-2.9999999999999996), -3.0);
    EXPECT_EQ(tolerantInteger(2.9999), 2.0);
    EXPECT_EQ(tolerantInteger(-0.5), 0.0);
    EXPECT_EQ(tolerantInteger(7.0), 7.0);
}

TEST(AxisRules, TickStepFollowsTheLeadingDigitsOfTheRange) {
    expectTicks(0.0, 1.0, {0.0, 0.2, 0.4, 0.6, 0.8, 1.0});         // r 1: factor 0.2
    expectTicks(0.0, 11.9, {0.0, 2.0, 4.0, 6.0, 8.0, 10.0});       // r 1.19: 0.2
    expectTicks(0.0, 12.0, {0.0, 5.0, 10.0});                      // r 1.2: 0.5
    expectTicks(0.0, 25.0, {0.0, 5.0, 10.0, 15.0, 20.0, 25.0});    // r 2.5: 0.5
    expectTicks(0.0, 50.0, {0.0, 10.0, 20.0, 30.0, 40.0, 50.0});   // r 5: 0.1 of 10^2
    expectTicks(0.0, 70.0, {0.0, 20.0, 40.0, 60.0});               // r 7: 0.2 of 10^2
    expectTicks(1.0, 9.0, {2.0, 4.0, 6.0, 8.0});
}

TEST(AxisRules, TicksOnNegativeAndStraddlingAxes) {
    expectTicks(-3.0, 7.0, {-2.0, 0.0, 2.0, 4.0, 6.0});
    expectTicks(-7.0, -3.0, {-7.0, -6.0, -5.0, -4.0, -3.0});
    // For a negative end the last tick may stand above it.
    expectTicks(-7.5, -3.5, {-7.0, -6.0, -5.0, -4.0, -3.0});
    expectTicks(-1e12, 1e12, {-1e12, -5e11, 0.0, 5e11, 1e12});
    EXPECT_EQ(AxisTicks(-3.0, 7.0).at[1], 0.0);  // the zero tick is exactly zero
}

TEST(AxisRules, TicksWithinAHundredthOfAStepOfTheEnds) {
    // 1.001 lies less than 0.01 step above 1.0: the first tick is 1.0.
    expectTicks(1.001, 2.0, {1.0, 1.2, 1.4, 1.6, 1.8, 2.0});
    // 1.005 is farther: the first tick is 1.2; 1.999 is within a hundredth
    // of 2.0, which becomes the last tick.
    expectTicks(1.005, 1.999, {1.2, 1.4, 1.6, 1.8, 2.0});
}

TEST(AxisRules, TicksOnRangesFromPicoToTera) {
    expectTicks(0.0, 1.1e-12, {0.0, 2e-13, 4e-13, 6e-13, 8e-13, 1e-12});
    expectTicks(0.0, 2e12, {0.0, 5e11, 1e12, 1.5e12, 2e12});
    expectTicks(3e-7, 4e-7, {3e-7, 3.2e-7, 3.4e-7, 3.6e-7, 3.8e-7, 4e-7});
    // A given step is used as it is.
    std::vector<double> given = ticksOf(AxisTicksStep(0.0, 1.0, 0.25));
    ASSERT_EQ(given.size(), 5u);
    EXPECT_DOUBLE_EQ(given[4], 1.0);
    EXPECT_EQ(AxisTicks(2.0, 2.0).count, 0);
}

TEST(AxisRules, LabelFieldFromTheLabelStep) {
    struct Case {
        double a, b;
        int w, d;
        const char* format;
    };
    const Case cases[] = {
        {0.0, 1.0, 6, 2, "(F6.2)"},         // k -1, U 0.2, m 0
        {0.0, 100.0, 5, 1, "(F6.1)"},       // k 2: F(|m|+4).1 with m 2
        {-5.0, 5.0, 3, 1, "(F4.1)"},        // straddling zero
        {10.0, 100.0, 5, 1, "(F6.1)"},      // F moved up by U for A > 0
        {-2000.0, 3000.0, 6, 1, "(F7.1)"},  // m 3
        {0.03125, 0.0625, 7, 3, "(F7.3)"},  // m -1, k -2
        {1.0, 1.0 + 1e-12, 28, 13, "(F28.13)"},
        {0.0, 1e12, 15, 1, "(F16.1)"},
        {-0.375, 0.25, 6, 2, "(F6.2)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " to " << c.b);
        LabelField f = AxisLabelField(c.a, c.b);
        EXPECT_EQ(f.w, c.w);
        EXPECT_EQ(f.d, c.d);
        EXPECT_EQ(f.format, c.format);
    }
}

TEST(AxisRules, LabelsAndScaleExponent) {
    EXPECT_EQ(tickLabel(0.05, AxisLabelField(0.03125, 0.0625)), "0.050");
    EXPECT_EQ(tickLabel(-4.0, AxisLabelField(-5.0, 5.0)), "-4.0");
    EXPECT_EQ(tickLabel(0.0, AxisLabelField(0.0, 1.0)), "0.00");
    EXPECT_EQ(axisExponent(0.0, 500.0), 2);
    EXPECT_EQ(axisExponent(0.0, 5000.0), 3);
    EXPECT_EQ(axisExponent(1e-4, 5e-4), -3);
    EXPECT_EQ(axisExponent(0.001, 0.005), -2);
    EXPECT_EQ(axisExponent(-7e5, 10.0), 5);
    EXPECT_EQ(axisExponent(0.0, 0.0), -30);
}

TEST_F(PlotLayerTest, WindowSizeAndPlaceByTheirWords) {
    OpenGraphics("FULL", "DNRIGHT");
    EXPECT_EQ(plotState.pixelsX, 1280);
    EXPECT_EQ(plotState.pixelsY, 1024);
    int col = -1, row = -1;
    canvas::windowPlace(col, row);
    EXPECT_EQ(col, 70);
    EXPECT_EQ(row, 20);
    OpenGraphics("half", "CENTER");
    EXPECT_EQ(plotState.pixelsX, 320);
    EXPECT_EQ(plotState.pixelsY, 1024);
    canvas::windowPlace(col, row);
    EXPECT_EQ(col, 35);
    EXPECT_EQ(row, 10);
    OpenGraphics("QUART", "UPCENTER");
    EXPECT_EQ(plotState.pixelsX, 320);
    EXPECT_EQ(plotState.pixelsY, 256);
    OpenGraphics("", "");
    EXPECT_EQ(plotState.pixelsX, 800);
    EXPECT_EQ(plotState.pixelsY, 768);
    EXPECT_EQ(plotState.textCols, 100);
    EXPECT_EQ(plotState.textRows, 48);
    canvas::windowPlace(col, row);
    EXPECT_EQ(col, 0);
    EXPECT_EQ(row, 0);
    canvas::WindowConfig cfg;
    ASSERT_TRUE(canvas::getWindowConfig(kGraphicsChannel, cfg));
    EXPECT_EQ(cfg.title, "Graphics Window");
}

TEST_F(PlotLayerTest, SetWorldLeavesMarginsForTheLabels) {
    OpenGraphics("", "");
    SetWorld(0.05, 0.05, 0.85, 0.85, 0, 0.0, 10.0, 0.0, 1.0);
    EXPECT_EQ(plotState.viewX1, 40);   // 0.05 * 800 + 0.5
    EXPECT_EQ(plotState.viewY1, 38);   // 38.4 + 0.5
    EXPECT_EQ(plotState.viewX2, 720);
    EXPECT_EQ(plotState.viewY2, 691);  // 691.2 + 0.5
    // dx = 10 / (680 - 64), dy = 1 / (653 - 72)
    EXPECT_DOUBLE_EQ(plotState.worldX1, -48.0 * 10.0 / 616.0);
    EXPECT_DOUBLE_EQ(plotState.worldX2, 10.0 + 32.0 * 10.0 / 616.0);
    EXPECT_DOUBLE_EQ(plotState.worldY1, -36.0 / 581.0);
    EXPECT_DOUBLE_EQ(plotState.worldY2, 1.0 + 36.0 / 581.0);
    SetWorld(0.0, 0.0, 0.5, 0.5, -2, 0.0, 10.0, 0.0, 1.0);
    EXPECT_EQ(plotState.worldX1, 0.0);
    EXPECT_EQ(plotState.worldY2, 1.0);
    double px = 0, py = 0;
    canvas::worldToWindow(10.0, 0.0, px, py);
    EXPECT_DOUBLE_EQ(px, 400.0);
    EXPECT_DOUBLE_EQ(py, 384.0);
}

TEST_F(PlotLayerTest, LinesTextsAndPenSteps) {
    OpenGraphics("", "");
    SetLine(3, 12);
    EXPECT_EQ(canvas::colour(), 12);
    SetLine(7, 20);  // style 1 and colour 0
    EXPECT_EQ(canvas::colour(), 0);
    SetWorld(0.0, 0.0, 0.5, 0.5, -2, 0.0, 10.0, 0.0, 1.0);
    PenWorld(false, 5.0, 0.5, 0);
    PenPixel(true, 10, -5, 1);
    PenWorld(true, 1.0, 0.0, 1);
    TextCell("AB", 5, 44, 9);
    TextCell("XY", 6, 44, 16);
    TextBottom("  abc   ", 0);
    std::string doc = canvas::svgDocument();
    // (5, 0.5) is pixel (200, 192); +(10,-5); then 1.0 in x is 40 pixels.
    EXPECT_NE(doc.find("points=\"200,192 210,187 250,187\" fill=\"none\" stroke=\"#000000\""),
              std::string::npos);
    EXPECT_NE(doc.find("<text x=\"352\" y=\"90\""), std::string::npos);
    EXPECT_NE(doc.find("fill=\"#5555FF\">AB</text>"), std::string::npos);
    EXPECT_NE(doc.find("fill=\"#000000\">XY</text>"), std::string::npos);
    // 5 characters centred in 100 columns: column 47, row 48 - 1 - 2 = 45,
    // half a cell lower; the two blanks move it two cells on.
    EXPECT_NE(doc.find("<text x=\"392\" y=\"736\""), std::string::npos);
    // TextCell sets the plot viewport back.
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    canvas::viewport(x1, y1, x2, y2);
    EXPECT_EQ(x2, 400);
    EXPECT_EQ(y2, 384);
}

TEST_F(PlotLayerTest, AxesShowTheScaleExponentOnlyAboveTwo) {
    OpenGraphics("", "");
    SetWorld(0.05, 0.05, 0.85, 0.85, 0, 0.0, 5000.0, 0.0, 500.0);
    DrawAxes("S", 0.0, 0.0, -1, " log I", 0.0, 0.0, -1);
    std::string doc = canvas::svgDocument();
    EXPECT_EQ(count(doc, ">S*E3</text>"), 1);
    EXPECT_EQ(count(doc, ">log I</text>"), 1);
    EXPECT_EQ(count(doc, "*E2"), 0);
    // x labels in thousands, F4.1; y labels 0 to 500 by 100, F6.1.
    for (const char* label : {">0.0<", ">1.0<", ">5.0<", ">100.0<", ">500.0<"}) {
        EXPECT_NE(doc.find(label), std::string::npos) << label;
    }
    EXPECT_EQ(doc.find(">6.0<"), std::string::npos);
    // Axis lines, and a tick of ch/2 = 6 pixels into the box at each tick:
    // six on x, six on y.
    std::regex tick("points=\"([0-9.]+),([0-9.]+) ([0-9.]+),([0-9.]+)\"");
    int upTicks = 0, rightTicks = 0;
    for (auto it = std::sregex_iterator(doc.begin(), doc.end(), tick); it != std::sregex_iterator();
         ++it) {
        double ax = std::stod((*it)[1]), ay = std::stod((*it)[2]);
        double bx = std::stod((*it)[3]), by = std::stod((*it)[4]);
        if (ax == bx && ay - by == 6.0) ++upTicks;
        if (ay == by && bx - ax == 6.0) ++rightTicks;
    }
    EXPECT_EQ(upTicks, 6);
    EXPECT_EQ(rightTicks, 6);
}

TEST_F(PlotLayerTest, CurveMarkersByLetterAndStep) {
    OpenGraphics("", "");
    SetWorld(0.0, 0.0, 1.0, 1.0, -2, 0.0, 10.0, 0.0, 10.0);
    const double x[6] = {1, 2, 3, 4, 5, 6};
    const double y[6] = {1, 2, 3, 4, 5, 6};
    SetLine(1, 4);
    PlotCurve(3, x, y, 'c', 1);
    std::string doc = canvas::svgDocument();
    EXPECT_EQ(count(doc, "rx=\"2\" ry=\"2\" fill=\"none\""), 3);
    EXPECT_EQ(polylinePoints(doc, "#AA0000"), std::vector<int>{3});

    resetPlotLayer();
    OpenGraphics("", "");
    SetWorld(0.0, 0.0, 1.0, 1.0, -2, 0.0, 10.0, 0.0, 10.0);
    SetLine(1, 2);
    PlotCurve(6, x, y, 'S', 3);  // points 1, 2 and 5
    PlotCurve(2, x, y, 'x', -1);
    PlotCurve(4, x, y, 'd', 0);
    doc = canvas::svgDocument();
    EXPECT_EQ(count(doc, "width=\"6\" height=\"6\" fill=\"#00AA00\""), 3);
    EXPECT_EQ(count(doc, ">x</text>"), 2);
    EXPECT_EQ(count(doc, "font-size=\"10\""), 2);  // the small font
    EXPECT_EQ(count(doc, "<ellipse"), 0);
    EXPECT_EQ(polylinePoints(doc, "#00AA00"), (std::vector<int>{6, 4}));
    // Point 1 (1, 1) of an 800 x 768 world of 10 by 10 is pixel (80, 691.2).
    EXPECT_NE(doc.find("<rect x=\"77\" y=\"688\" width=\"6\""), std::string::npos);
    int h = 0, w = 0;
    ASSERT_TRUE(canvas::fontCell(h, w));
    EXPECT_EQ(h, 12);  // the large font is back
}

TEST(FitPictureRules, LimitsLogarithmAndLegends) {
    EXPECT_DOUBLE_EQ(logIntensity(0.0), -15.0);
    EXPECT_DOUBLE_EQ(logIntensity(-1000.0), 3.0);
    resetFitPicture();
    plotCurves.nCurves = 2;
    plotCurves.nPts = 3;
    for (int c = 0; c < 2; ++c) {
        for (int k = 0; k < 3; ++k) {
            plotCurves.x[c][k] = 0.5;
            plotCurves.y[c][k] = 2.0;
        }
    }
    double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    plotLimits(plotCurves, x1, x2, y1, y2);
    EXPECT_DOUBLE_EQ(x1, 0.5 - (0.5 + 1e-15) / 10.0);
    EXPECT_DOUBLE_EQ(x2, 0.5 + (0.5 + 1e-15) / 10.0);
    EXPECT_DOUBLE_EQ(y1, 1.8 - 1e-16);
    EXPECT_DOUBLE_EQ(y2, 2.2 + 1e-16);
    plotCurves.y[1][2] = 0.0;
    plotCurves.y[1][0] = -15.0;
    plotLimits(plotCurves, x1, x2, y1, y2);
    EXPECT_DOUBLE_EQ(y1, -15.0);
    EXPECT_DOUBLE_EQ(y2, 2.0);
    plotCurves.x[0].fill(0.0);
    plotCurves.x[1].fill(0.0);
    plotLimits(plotCurves, x1, x2, y1, y2);
    EXPECT_DOUBLE_EQ(x1, -1e-16);
    EXPECT_DOUBLE_EQ(x2, 1e-16);

    EXPECT_EQ(curveLegend(1, 0), "(1) Exp");
    EXPECT_EQ(curveLegend(2, 0), "(2) Fit");
    EXPECT_EQ(curveLegend(3, 1), "(3) 1SPH ");
    EXPECT_EQ(curveLegend(5, 3), "(5) 3DMB ");
    EXPECT_EQ(curveLegend(12, 4), "(12) 1ELL ");  // phase 10: its first digit
    EXPECT_EQ(curveColour(1), 9);
    EXPECT_EQ(curveColour(5), 0);
    EXPECT_EQ(curveColour(10), 8);
    EXPECT_EQ(curveColour(11), 9);
    EXPECT_EQ(curveMarker(1), 'c');
    EXPECT_EQ(curveMarker(4), 's');
    EXPECT_EQ(curveMarker(5), 'c');
}

TEST_F(PlotLayerTest, PictureOfAFitHoldsEveryCurveAndLegend) {
    const int n = 5;
    const double s[n] = {0.01, 0.02, 0.03, 0.04, 0.05};
    const double I[n] = {1000.0, 500.0, 200.0, 100.0, 0.0};
    const double fit[n] = {990.0, 510.0, 190.0, 95.0, 40.0};
    const double sph[n] = {10.0, 5.0, 2.0, 1.0, 0.5};
    const double cyl[n] = {3.0, 2.0, 1.0, 0.5, 0.25};
    const double* phases[2] = {sph, cyl};
    const int types[2] = {1, 2};
    std::string base = freshFolder("plot") + "/picture";
    ASSERT_EQ(DrawFitPicture(n, s, I, fit, 2, phases, types, base), 0);
    EXPECT_EQ(out_.str(), " Graphics Window written to " + base + ".svg\n");
    EXPECT_DOUBLE_EQ(plotState.wyMin, -15.0);  // the zero intensity
    EXPECT_DOUBLE_EQ(plotState.wyMax, 3.0);
    EXPECT_DOUBLE_EQ(plotState.wxMin, 0.01);
    std::string doc = readFile(base + ".svg");
    for (const char* text : {">(1) Exp<", ">(2) Fit<", ">(3) 1SPH<", ">(4) 2CYL<", ">PLOT<",
                             ">S<", ">log I<"}) {
        EXPECT_EQ(count(doc, text), 1) << text;
    }
    EXPECT_EQ(count(doc, "fill=\"#00AA00\">PLOT<"), 1);
    // One polyline of five points per curve, in the colours 9, 12, 13, 2.
    for (const char* colour : {"#5555FF", "#FF5555", "#FF55FF", "#00AA00"}) {
        EXPECT_EQ(polylinePoints(doc, colour), std::vector<int>{5}) << colour;
    }
    EXPECT_EQ(count(doc, "rx=\"2\" ry=\"2\" fill=\"none\" stroke=\"#5555FF\""), 5);  // c
    EXPECT_EQ(count(doc, "rx=\"2\" ry=\"2\" fill=\"#FF5555\""), 5);                  // d
    EXPECT_EQ(count(doc, "height=\"4\" fill=\"none\" stroke=\"#FF55FF\""), 5);       // r
    EXPECT_EQ(count(doc, "height=\"4\" fill=\"#00AA00\""), 5);                       // s
    // Date stamp at (3, 768 - 15); its two leading blanks move it two cells.
    EXPECT_NE(doc.find("<text x=\"19\" y=\"763\""), std::string::npos);
    std::string check = "python3 -c \"import sys, xml.dom.minidom; xml.dom.minidom.parse(sys.argv[1])\" '" +
                        base + ".svg'";
    EXPECT_EQ(std::system(check.c_str()), 0);
    std::remove((base + ".svg").c_str());
}

TEST_F(PlotLayerTest, WaitCloseWritesThePictureAndReadsOneLine) {
    std::string path = freshFolder("plot") + "/wait.svg";
    OpenGraphics("", "");
    canvas::setPictureFile(path);
    in_.str("\nnext\n");
    WaitClose();
    EXPECT_EQ(out_.str(), " Press CR to terminate the program\n");
    EXPECT_FALSE(canvas::windowOpen());
    EXPECT_TRUE(canvas::closeWithoutAsking());
    EXPECT_NE(readFile(path).find("<title>Graphics Window</title>"), std::string::npos);
    std::string rest;
    std::getline(in_, rest);
    EXPECT_EQ(rest, "next");  // one line was read
    // At the end of input it returns as well.
    OpenGraphics("", "");
    WaitClose();
    EXPECT_EQ(count(out_.str(), "Press CR"), 2);
    std::remove(path.c_str());
}

}  // namespace
