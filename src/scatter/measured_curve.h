// The measured curve of the scattering fit: FitCurve, the readers TAVREAD and
// LOADATF, SORTMER, MINMAX, CURVECUT, JOINPTS, ERREST, SMOERR, loadMeasuredCurve.
#pragma once

#include <string>
#include <string_view>

// Room of the raw curve as the loaders deliver it, and of the fitted curve.
constexpr int kRawRoom = 1056;
constexpr int kCurveRoom = 1024;
constexpr int kMaxTextLines = 1024;
constexpr int kMaxFitPoints = 101;
// Channels of one frame at most, and the widest window of channels taken.
constexpr int kMaxFrameChannels = 1152;
constexpr int kMaxWindow = 1026;

// Arrays here are 0-based: point k of the curve (k = 1..n) is element k-1.
struct FitCurve {
    int nPts = 0;
    double s[kCurveRoom] = {};
    double I[kCurveRoom] = {};
    double Err[kCurveRoom] = {};
    double w[kCurveRoom] = {};
    std::string title = std::string(60, ' ');   // binary format
    std::string header = std::string(80, ' ');  // text format
    std::string dataName = std::string(80, ' ');
    std::string baseName = std::string(32, ' ');
    int firstChannel = 51;
    int lastChannel = 474;
    double fraction = 0.0;  // the "Enter Fraction of the curve" answer held
};
extern FitCurve fitCurve;

// The raw curve before units, cut and reduction (n points).
struct RawCurve {
    int n = 0;
    double s[kRawRoom] = {};
    double I[kRawRoom] = {};
    double Err[kRawRoom] = {};
};
extern RawCurve rawCurve;

// Back to the program's start: empty curve, channels 51 to 474, fraction 0,
// the terminal questions.
void resetMeasuredCurve();

// The questions the curve input asks.  By default they go to the terminal;
// the fit session may route them through its own prompt routines (answers
// file).  A null entry keeps the terminal question.
struct CurveQuestions {
    void (*askInt)(std::string_view prompt, int& value) = nullptr;
    void (*askReal)(std::string_view prompt, double& value) = nullptr;
    void (*askInt2)(std::string_view prompt, int& first, int& last) = nullptr;
    // A file name into `name` (its size is kept); ext "" means no default.
    void (*askName)(std::string_view prompt, std::string_view ext, std::string& name) = nullptr;
    // The last answer cannot make a curve (a file that does not read, a
    // window or a fraction that leaves no points); `why` tells the reason.
    // It is asked again.  At the terminal the reader's own message says it.
    void (*refuse)(std::string_view why) = nullptr;
};
void setCurveQuestions(const CurveQuestions& questions);
const CurveQuestions& curveQuestions();

// Steps B3 to B5 of the fit dialogue: reads the curve of format code 1
// (binary frames) or 2 (text), converts the angular units, cuts the curve at
// the fraction asked, reduces it to at most 101 points, makes intensities
// and errors positive and computes the weights into fitCurve.  A file that
// cannot be read, a channel window that does not fit or a fraction leaving
// fewer than 2 points is refused with a message and asked again.  Returns 0
// with a curve of at least 2 points, -1 for a format code other than 1 or 2,
// -2 when the terminal input ended before a usable curve was read.
int loadMeasuredCurve(int formatCode);
// The same in the form the session's curve reader takes.
void readMeasuredCurve(int formatCode);

// Binary frame set: reads channels first..last (1-based, included) of a
// frame into data1 (and the error frame into data2).  frame in and out;
// nFrames: in, negative forbids the frame question; out, the frame count.
// Returns 0; -1 when a file question got a blank reply (" TAVREAD: Input
// file not defined" is written, the caller asks its questions again); -2
// when the window reaches beyond the channels of the frame.
int TAVREAD(int channel, std::string_view name, int first, int last, double* data1,
            double* data2, std::string& title, int& frame, int& nFrames, double& param);

// Text data file: col1..col3 have room for maxLines values.
void LOADATF(std::string_view mode, int channel, std::string_view name, std::string& header,
             double* col1, double* col2, double* col3, int maxLines, int& n, int& nCols,
             int sortMode, int& status);
void SORTMER(double* s, double* y, double* e, int& n, int nCols, double tol, int sortMode,
             int& status);
void MINMAX(int n, const double* a, double& min, double& max);
int CURVECUT(const double* s, int n, double limit);
void JOINPTS(int n, const double* s, const double* y, const double* e, int target, int& nOut,
             double* sOut, double* yOut, double* eOut);

// Angular units code 1..4 -> multiplier of s (1 for code 1 and others).
double angularMultiplier(int code);

// Error estimate by smoothing.  Returns sum e^2 / sum y^2, or -0.0009 for
// the flat 3 percent.
double ERREST(int n, const double* s, const double* y, double* e);
void SMOERR(int n, int m, const double* s, const double* y, const double* w, double* ySm,
            double* eSm);
// The window sizes ERREST uses for n points.
void errestWindows(int n, int& m1, int& m2);
