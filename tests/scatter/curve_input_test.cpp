// Tests of the curve input: LOADATF on text files, TAVREAD on frame sets,
// and the whole dialogue of loadMeasuredCurve with its refusals.
#include "support/terminal_test.h"
#include "support/temp_folder.h"
#include "scatter/measured_curve.h"

#include "monitor/monitor.h"
#include "core/machine_constants.h"
#include "platform/edit_format.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

const std::string kData = ZEMOK_TEST_DATA;
const std::string kSample = std::string(ZEMOK_SOURCE_DIR) + "/examples/sample-data/";

class CurveInputTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetMeasuredCurve();
        // Short: the file questions hold names of 60 characters.
        dir_ = freshFolder("ci");
    }
    void TearDown() override {
        if (HasFailure()) std::cerr << "Console:\n" << out_.str();
        unit::resetUnits();
        std::error_code ec;
        std::filesystem::remove_all(dir_, ec);
    }
    void replies(const std::string& text) { in_.str(text); }
    bool said(const std::string& text) const { return out_.str().find(text) != std::string::npos; }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }

    // A header file of the frame format and its frames of 4-byte reals.
    void writeHeader(const std::string& name, int channels, int frames, const std::string& data,
                     const std::string& errors = "") {
        std::ofstream h(path(name));
        const int more = errors.empty() ? 0 : 1;
        h << "Test set " << name << "\n\n";
        h << formatRecords("(10I8)", FmtItems{channels, frames, 0, 0, 0, 0, 0, 0, 0, more}).text
          << "\n" << data << "\n";
        if (!errors.empty()) {
            h << formatRecords("(10I8)", FmtItems{0, 0, 0, 0, 0, 0, 0, 0, 0, 1}).text
              << "\nNOPARM.DAT\n";
            h << formatRecords("(2I8)", FmtItems{channels, frames}).text << "\n" << errors << "\n";
        }
    }
    void writeFrames(const std::string& name, const std::vector<std::vector<float>>& frames) {
        std::ofstream f(path(name), std::ios::binary);
        for (const auto& frame : frames)
            f.write(reinterpret_cast<const char*>(frame.data()),
                    static_cast<std::streamsize>(frame.size() * sizeof(float)));
    }
    int loadText(const std::string& file, int& nCols, std::string& header) {
        int n = 0;
        int status = 0;
        nCols = 0;
        LOADATF("READ SAS", 2, kData + "/" + file, header, rawCurve.s, rawCurve.I, rawCurve.Err,
                kMaxTextLines, n, nCols, 2, status);
        status_ = status;
        return n;
    }

    std::filesystem::path dir_;
    int status_ = 0;
};

TEST_F(CurveInputTest, BlankLinesEqualAbscissaeAndDescendingFiles) {
    int nCols = 0;
    std::string header(80, ' ');
    EXPECT_EQ(loadText("curve_blank_inside.dat", nCols, header), 4);
    EXPECT_DOUBLE_EQ(rawCurve.I[3], 2.0);

    ASSERT_EQ(loadText("curve_equal_s.dat", nCols, header), 3);
    EXPECT_DOUBLE_EQ(rawCurve.s[1], 0.02);
    EXPECT_DOUBLE_EQ(rawCurve.I[1], 4.0);
    EXPECT_DOUBLE_EQ(rawCurve.Err[1], std::sqrt(0.36 + 16.0) / 2.0);
    EXPECT_EQ(header.substr(0, 26), "Points of equal s ! merged");

    ASSERT_EQ(loadText("curve_descending.dat", nCols, header), 4);
    EXPECT_DOUBLE_EQ(rawCurve.s[0], 0.01);
    EXPECT_DOUBLE_EQ(rawCurve.I[0], 4.0);
    EXPECT_DOUBLE_EQ(rawCurve.s[3], 0.04);
    EXPECT_DOUBLE_EQ(rawCurve.Err[3], 0.1);
}

TEST_F(CurveInputTest, MalformedTextFilesAreTold) {
    int nCols = 0;
    std::string header(80, ' ');
    EXPECT_EQ(loadText("curve_text_inside.dat", nCols, header), 3);  // read stops at the text
    EXPECT_EQ(status_, 0);

    EXPECT_EQ(loadText("curve_no_numbers.dat", nCols, header), 0);
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(nCols, 0);
    EXPECT_TRUE(said(" LOADATF --E- No data lines recognized."));

    EXPECT_EQ(loadText("curve_empty.dat", nCols, header), 0);
    EXPECT_EQ(status_, -1);

    EXPECT_EQ(loadText("no_such_curve.dat", nCols, header), 0);
    EXPECT_EQ(status_, -5);
    EXPECT_TRUE(said("LOADATF --E- Cannot open data file \"" + kData + "/no_such_curve.dat\"."));
}

// Where the reading rules lose or invent points, one line behind the
// rules' own output says so; the rules themselves stay (each row's point
// count is what they give).  Fraction 2 keeps every point read.
TEST_F(CurveInputTest, LostOrInventedPointsAreToldInOneLine) {
    struct Row {
        const char* file;
        const char* line;
        int nPts;
    };
    const Row rows[] = {
        {"curve_comment_inside.dat",
         "LOADATF --W- Line 6 \"# detector 2 from here\" is not numbers: the read ends there, 3 "
         "non-blank line(s) after it are not read.", 3},
        // Line 5 takes its error from line 6, whose point is lost.
        {"curve_short_line.dat",
         "LOADATF --W- 1 line(s) with fewer than 3 numbers, the first line 5: their missing values "
         "are taken from the next line.", 5},
        // Lines 3 and 4 of the sample are numeric, but no run of three lines.
        {"../../examples/sample-data/isis83404.txt",
         "LOADATF --W- 2 numeric line(s) before the data, the first line 3, are read as header.", 61},
        {"curve_first_numeric.dat",
         "LOADATF --W- No header line: the first data line is taken as the header, its point is not read.", 4},
        // s = 0, I > 0 and an error above 0 are kept: only s below 0 is dropped.
        {"curve_sas_filter.dat",
         "LOADATF --W- 3 line(s) with s < 0, I = 0, an error of 0 or a value that is not finite are left out.", 3},
        {"curve_equal_s.dat", "LOADATF --W- 1 point(s) of nearly equal s are merged with their neighbours.", 3},
        {"curve_negative.dat",
         "VARDENE --W- 2 negative intensities, the first at s = 3.0000E-02, are taken as positive.", 5},
        // Four points are too few for the smoothing: the flat errors.
        {"curve_two_columns.dat",
         "LOADATF --W- No error column, and no errors could be estimated from the scatter: errors are a "
         "flat 3 percent of I.", 4},
    };
    for (const Row& row : rows) {
        out_.str("");
        resetMeasuredCurve();
        replies(kData + "/" + row.file + "\n1\n2\n");
        ASSERT_EQ(loadMeasuredCurve(2), 0) << row.file;
        EXPECT_EQ(fitCurve.nPts, row.nPts) << row.file;
        EXPECT_TRUE(said(std::string(" ") + row.line + "\n")) << row.file << "\n" << out_.str();
    }
    // The limit of lines (1024 in the dialogue) cuts the curve where it stands in the file.
    int n = 3;
    int nCols = 0;
    int status = 0;
    std::string header(80, ' ');
    LOADATF("READ SAS", 2, kData + "/curve_descending.dat", header, rawCurve.s, rawCurve.I, rawCurve.Err,
            kMaxTextLines, n, nCols, 2, status);
    EXPECT_EQ(n, 3);
    EXPECT_TRUE(said(" LOADATF --W- Only 3 points are read: the curve is cut at s = 2.0000E-02, 1 line(s) "
                     "after it are not read.\n"));
}

TEST_F(CurveInputTest, BothFormatsOfTheSampleAgree) {
    replies(kSample + "isis83404.txt\n1\n1\n");
    ASSERT_EQ(loadMeasuredCurve(2), 0);
    ASSERT_EQ(rawCurve.n, 121);
    const RawCurve text = rawCurve;
    EXPECT_DOUBLE_EQ(text.s[0], 0.009);
    EXPECT_DOUBLE_EQ(text.I[120], 0.3373845);
    EXPECT_DOUBLE_EQ(text.Err[0], 0.8087308);
    EXPECT_EQ(fitCurve.nPts, 60);  // 120 points before s(last), joined in pairs
    EXPECT_EQ(fitCurve.baseName.substr(0, 10), "isis83404 ");

    resetMeasuredCurve();
    replies("1 121\n" + kSample + "Z83000.sax\n" + kSample + "Z84000.sub\n\n1\n1\n");
    ASSERT_EQ(loadMeasuredCurve(1), 0);
    ASSERT_EQ(rawCurve.n, 121);
    for (int i = 0; i < 121; ++i) {
        EXPECT_NEAR(rawCurve.s[i], text.s[i], 1e-6 * text.s[i]) << i;
        EXPECT_NEAR(rawCurve.I[i], text.I[i], 1e-6 * text.I[i]) << i;
        EXPECT_NEAR(rawCurve.Err[i], text.Err[i], 1e-6 * text.Err[i]) << i;
    }
    EXPECT_TRUE(said(" Enter  the  frame  number"));

    resetMeasuredCurve();
    replies("1 121\n" + kSample + "Z83000.sax\n" + kSample + "Z83000.sub\n1\n1\n");
    ASSERT_EQ(loadMeasuredCurve(1), 0);
    EXPECT_EQ(rawCurve.Err[0], 0.0);
    EXPECT_TRUE(said(" TAVREAD --W- No errors in " + kSample + "Z83000.sub: Z83002.I1D is named as its parameter "
                     "file (header lines 5 and 6), not as its error file (lines 7 and 8); all errors are eps, "
                     "the weights uniform.\n"));
    EXPECT_EQ(fitCurve.Err[0], X02RMDC(2));  // no errors: all at the floor
    EXPECT_EQ(fitCurve.Err[59], X02RMDC(2));
}

// NaN and infinity in a binary frame set are dropped as the text reader
// drops such lines, and counted in one line.
TEST_F(CurveInputTest, FramePointsThatAreNotFiniteAreDroppedAndCounted) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    writeHeader("N10000.sax", 5, 1, "N10001.DAT");
    writeFrames("N10001.DAT", {{0.01f, 0.02f, 0.03f, 0.04f, 0.05f}});
    writeHeader("N20000.sub", 5, 2, "N20001.DAT");
    writeFrames("N20001.DAT", {{10, nan, 30, 40, 50}, {1, 2, 3, inf, 5}});
    replies("1 5\n" + path("N10000.sax") + "\n" + path("N20000.sub") + "\n1\n1\n");
    ASSERT_EQ(loadMeasuredCurve(1), 0);
    ASSERT_EQ(rawCurve.n, 3);
    EXPECT_EQ(rawCurve.I[1], 30.0);
    EXPECT_EQ(rawCurve.I[2], 50.0);
    EXPECT_TRUE(said(" TAVREAD --W- 2 of 5 points of " + path("N20000.sub") +
                     " are not finite numbers (NaN or infinity) and are dropped.\n"))
        << out_.str();
}

TEST_F(CurveInputTest, TwoFrameSetHoldsIntensitiesThenErrors) {
    writeHeader("T20000.sub", 4, 2, "T20001.DAT");
    writeFrames("T20001.DAT", {{10, 20, 30, 40}, {1, 2, 3, 4}});
    std::vector<double> d1(3), d2(3);
    std::string title(60, ' ');
    int frame = 0;
    int nFrames = 0;
    double param = 0.0;
    ASSERT_EQ(TAVREAD(8, path("T20000.sub"), 2, 4, d1.data(), d2.data(), title, frame, nFrames,
                      param),
              0);
    EXPECT_EQ(nFrames, 2);
    EXPECT_EQ(param, 1.0);
    EXPECT_EQ(d1, (std::vector<double>{20, 30, 40}));
    EXPECT_EQ(d2, (std::vector<double>{2, 3, 4}));
    EXPECT_EQ(title.substr(0, 19), "Test set T20000.sub");
    EXPECT_TRUE(said(" Header file "));
    EXPECT_FALSE(said("frame  number"));

    // An axis of two frames read into one array keeps the second frame.
    ASSERT_EQ(TAVREAD(8, path("T20000.sub"), 1, 2, d1.data(), d1.data(), title, frame, nFrames,
                      param),
              0);
    EXPECT_EQ(d1[0], 1.0);
    EXPECT_EQ(d1[1], 2.0);
}

TEST_F(CurveInputTest, BadFrameFilesOfferTheRetryDialogue) {
    writeHeader("T40000.sub", 4, 1, "T40001.DAT");
    writeFrames("T40001.DAT", {{5, 6, 7, 8}});
    writeHeader("T50000.sub", 4, 1, "T50001.DAT");
    writeFrames("T50001.DAT", {{5, 6}});  // truncated record
    {
        std::ofstream bad(path("T60000.sub"));
        bad << "Wrong numbers\n\n     abc       1\nT40001.DAT\n";
    }
    std::vector<double> d1(4), d2(4);
    std::string title(60, ' ');
    int frame = 0;
    int nFrames = 0;
    double param = 0.0;
    replies(path("T60000.sub") + "\n" + path("T40000.sub") + "\n");
    ASSERT_EQ(TAVREAD(8, path("missing.sub"), 1, 4, d1.data(), d2.data(), title, frame, nFrames,
                      param),
              0);
    EXPECT_TRUE(said(" TAVREAD: error opening or reading header file  "));
    EXPECT_TRUE(said(" Enter the header file name <XNN000.ext>: "));
    EXPECT_EQ(d1[3], 8.0);

    replies(path("T40001.DAT") + "\n");
    ASSERT_EQ(TAVREAD(8, path("T50000.sub"), 1, 4, d1.data(), d2.data(), title, frame, nFrames,
                      param),
              0);
    EXPECT_TRUE(said(" TAVREAD: error opening or reading data file  "));
    EXPECT_EQ(d1[0], 5.0);

    replies("\n");
    EXPECT_EQ(TAVREAD(8, path("missing.sub"), 1, 4, d1.data(), d2.data(), title, frame, nFrames,
                      param),
              -1);
    EXPECT_TRUE(said(" TAVREAD: Input file not defined"));
}

TEST_F(CurveInputTest, DialogueRefusesWhatCannotMakeACurve) {
    writeHeader("T70000.sax", 121, 1, "T70001.DAT");
    std::vector<float> frame(121);
    for (int i = 0; i < 121; ++i) frame[i] = 0.01f * (i + 1);
    writeFrames("T70001.DAT", {frame});
    writeHeader("T71000.sub", 121, 1, "T71001.DAT");
    writeFrames("T71001.DAT", {frame});
    // The default window 51..474 exceeds the frame; 1..2000 is too long.
    replies("\n" + path("T70000.sax") + "\n1 2000\n11 20\n" + path("T70000.sax") + "\n" +
            path("T71000.sub") + "\n2\n0\n0.925\n");
    ASSERT_EQ(loadMeasuredCurve(1), 0);
    EXPECT_TRUE(said("The channels asked reach beyond the channels of the frame."));
    EXPECT_TRUE(said("with at most 1026 channels."));
    EXPECT_TRUE(said("fewer than 2 points"));
    EXPECT_NE(fitCurve.dataName.find("T71000.sub"), std::string::npos);
    // s of channels 11..20 is 0.11..0.20, in 1/nm: times 0.1f; the fraction
    // 0.925 keeps the points below 0.925 * s(20), channels 11..18.
    ASSERT_EQ(fitCurve.nPts, 8);
    EXPECT_DOUBLE_EQ(fitCurve.s[0], static_cast<double>(0.11f) * static_cast<double>(0.1f));
    EXPECT_TRUE(said("Angular units multiplied by"));
    EXPECT_EQ(loadMeasuredCurve(3), -1);
}

}  // namespace
