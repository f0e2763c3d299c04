// Tests of the plot layer and the picture of a fit: tick rule, label field,
// scale exponent, window and viewport, curves, texts, limits and the SVG.
#include "support/terminal_test.h"
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

class PlotLayerTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetPlotLayer();
        resetFitPicture();
    }
    void TearDown() override {
        unit::resetUnits();
        resetPlotLayer();
    }
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

// The step follows the leading digits r of the range (factor 0.2 up to
// r = 1.19, 0.5 from 1.2, 0.1 of the next power from 5, 0.2 from 7); an end
// within a hundredth of a step of a tick takes that tick.
TEST(AxisRules, TickStepsAndEnds) {
    expectTicks(0.0, 1.0, {0.0, 0.2, 0.4, 0.6, 0.8, 1.0});
    expectTicks(0.0, 11.9, {0.0, 2.0, 4.0, 6.0, 8.0, 10.0});
    expectTicks(0.0, 12.0, {0.0, 5.0, 10.0});
    expectTicks(0.0, 50.0, {0.0, 10.0, 20.0, 30.0, 40.0, 50.0});
    expectTicks(0.0, 70.0, {0.0, 20.0, 40.0, 60.0});
    expectTicks(1.001, 2.0, {1.0, 1.2, 1.4, 1.6, 1.8, 2.0});
    expectTicks(1.005, 1.999, {1.2, 1.4, 1.6, 1.8, 2.0});
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

}  // namespace
