// Reading the measured curve in either format: loadMeasuredCurve with the
// binary frame set and text file steps, readMeasuredCurve, resetMeasuredCurve.
#include "scatter/measured_curve_steps.h"

#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/file_spec.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kFrameChannel = 8;
constexpr int kTextChannel = 2;

// The intensities name of the last binary read, kept for the next pass.
std::string intensitiesName(60, ' ');

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<size_t>(std::max(R02LEN(text), 0))));
}

size_t filePartStart(std::string_view name) {
    const size_t slash = name.find_last_of("/\\:");
    return slash == std::string_view::npos ? 0 : slash + 1;
}

// Character `pos` (1-based) of the file part of a name onward, replaced.
void replaceInFilePart(std::string& name, size_t pos, std::string_view text) {
    const size_t at = filePartStart(trimmed(name)) + pos - 1;
    if (name.size() < at + text.size()) name.resize(at + text.size(), ' ');
    name.replace(at, text.size(), text);
}

bool inputEnded() { return unit::terminalInputEnded(); }

// The last answer cannot make a curve: refused through the dialogue (the
// rest of it then comes from the terminal), and asked again.  1, or -2 when
// the terminal input has ended.
int refuse(std::string_view why) {
    curveQuestions().refuse(why);
    return inputEnded() ? -2 : 1;
}

// Step 1 of the binary read: a window that a frame can hold.
bool askChannels() {
    for (;;) {
        curveQuestions().askInt2("First and last channels ", fitCurve.firstChannel,
                                 fitCurve.lastChannel);
        const int first = fitCurve.firstChannel;
        const int last = fitCurve.lastChannel;
        if (first >= 1 && last >= first && last - first + 1 <= kMaxWindow) return true;
        I05MES("TAVREAD -E- First and last channels must satisfy 1 <= first <= last, "
               "with at most 1026 channels.");
        if (refuse("the channels do not make a window of 1 to 1026 channels.") < 0) return false;
    }
}

void refuseWindow() {
    I05MES("TAVREAD -E- The channels asked reach beyond the channels of the frame.");
}

std::string frameSetRefusal(int status) {
    return status == -2 ? "the frames of this set do not hold the channels asked."
                        : "no frame set can be read under this name.";
}

// The intensities name (step 6): asked, or offered again for a multi-frame set.
void askIntensitiesName(int& frame) {
    if (frame == 0) {
        curveQuestions().askName("Input intensities file name", "sub", intensitiesName);
        return;
    }
    std::string name = intensitiesName;
    replaceInFilePart(name, 6, "0");
    int err = 0;
    I05EFND("Input file name, datafile", name, "!", 60, err);
    if (name.empty() || name[0] == ' ') return;
    write(-1, "(A)", " --------------------------------------------");
    const size_t start = filePartStart(trimmed(name));
    if (name.size() < start + 10) name.resize(start + 10, ' ');
    if (name.substr(start + 7, 3) == "   ") name.replace(start + 6, 4, ".sub");
    intensitiesName = name;
    intensitiesName.resize(60, ' ');
    frame = 0;
}

// Points of a frame whose s, intensity or error is not a finite number
// (NaN or infinity in the binary file) are dropped, as the text reader drops
// such lines, and their number is said.  Returns the points kept.
int dropNonFinitePoints(int n, const std::string& dataName) {
    int kept = 0;
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(rawCurve.s[i]) || !std::isfinite(rawCurve.I[i]) || !std::isfinite(rawCurve.Err[i])) continue;
        rawCurve.s[kept] = rawCurve.s[i];
        rawCurve.I[kept] = rawCurve.I[i];
        rawCurve.Err[kept] = rawCurve.Err[i];
        ++kept;
    }
    if (kept < n)
        I05MES("TAVREAD --W- " + std::to_string(n - kept) + " of " + std::to_string(n) + " points of " + dataName +
               " are not finite numbers (NaN or infinity) and are dropped.");
    return kept;
}

// Format code 1.  0 read, 1 ask again, -2 input ended.
int readFrameSet() {
    if (!askChannels()) return -2;
    const int first = fitCurve.firstChannel;
    const int last = fitCurve.lastChannel;
    double param = 1.0;
    int frame = 0;
    int nFrames = -1;
    std::string axisName(60, ' ');
    curveQuestions().askName("Angular axis file name", "sax", axisName);
    if (R02LEN(axisName) < 1) return refuse("the name of the angular axis file is asked for.");
    replaceInFilePart(axisName, 4, "000");
    int status = TAVREAD(kFrameChannel, axisName, first, last, rawCurve.s, rawCurve.s,
                         fitCurve.title, frame, nFrames, param);
    if (status == -2) refuseWindow();
    if (status != 0) return refuse(frameSetRefusal(status));
    const int n = last - first + 1;
    writeList(-1, " s(1), s(last) :", rawCurve.s[0], rawCurve.s[n - 1]);
    writeNameValue("Angular axis file", axisName, 57, ' ');
    write(6, "(' First and last channels read: ',2I10)", first, last);

    askIntensitiesName(frame);
    if (R02LEN(intensitiesName) < 1) return refuse("the name of the intensities file is asked for.");
    std::string dataName = trimmed(intensitiesName);
    const size_t start = filePartStart(dataName);
    dataName = dataName.substr(0, std::min(dataName.size(), start + 3)) + "000.sub";
    fitCurve.dataName = dataName;
    fitCurve.dataName.resize(80, ' ');
    status = TAVREAD(kFrameChannel, dataName, first, last, rawCurve.I, rawCurve.Err,
                     fitCurve.title, frame, nFrames, param);
    if (status == -2) refuseWindow();
    if (status != 0) return refuse(frameSetRefusal(status));
    write(6, "(A)", "");
    writeList(6, " Data file \"" + dataName + "\", Frame ", frame);
    write(6, "(A)", "");
    rawCurve.n = dropNonFinitePoints(n, dataName);
    if (rawCurve.n < 2) return refuse("the frame holds fewer than 2 points with finite values.");
    double eMin = 0.0;
    double eMax = 0.0;
    MINMAX(rawCurve.n, rawCurve.Err, eMin, eMax);
    if (eMin == 0.0 && eMax == 0.0)
        I05MES("TAVREAD --W- No errors in " + dataName + ": " + frameErrorsNote() +
               "; all errors are eps, the weights uniform.");
    return 0;
}

// Format code 2.  0 read, 1 ask again, -2 input ended.
int readTextFile() {
    curveQuestions().askName("Enter INTENSITY file name", "dat", fitCurve.dataName);
    if (R02LEN(fitCurve.dataName) < 1) return refuse("the name of the intensities file is asked for.");
    int n = 0;
    int nCols = 0;
    int status = 0;
    LOADATF("READ SAS", kTextChannel, fitCurve.dataName, fitCurve.header, rawCurve.s, rawCurve.I,
            rawCurve.Err, kMaxTextLines, n, nCols, 2, status);
    if (status < 0 || n < 2) {
        if (status >= 0) I05MES("LOADATF --E- Fewer than 2 data points in the file.");
        return refuse("the file holds no curve of 2 points or more.");
    }
    rawCurve.n = n;
    double estimate = 0.0;
    if (nCols < 3) estimate = ERREST(n, rawCurve.s, rawCurve.I, rawCurve.Err);
    for (int i = 0; i < n; ++i) rawCurve.Err[i] = std::fabs(rawCurve.Err[i]);
    double eMin = 0.0;
    double eMax = 0.0;
    MINMAX(n, rawCurve.Err, eMin, eMax);
    const bool zeroErrors = nCols >= 3 && eMax <= 0.0;
    if (zeroErrors) estimate = ERREST(n, rawCurve.s, rawCurve.I, rawCurve.Err);
    if ((nCols < 3 || zeroErrors) && estimate < 0.0)  // the flat errors
        I05MES(std::string(zeroErrors ? "LOADATF --W- The errors are all 0" : "LOADATF --W- No error column") +
               ", and no errors could be estimated from the scatter: errors are a flat 3 percent of I.");
    return 0;
}

}  // namespace

int loadMeasuredCurve(int formatCode) {
    fitCurve.nPts = 0;
    if (formatCode != 1 && formatCode != 2) return -1;
    for (;;) {
        rawCurve.n = 0;
        const int status = formatCode == 1 ? readFrameSet() : readTextFile();
        if (status == -2) return -2;
        if (status == 0) break;
    }
    const int n = rawCurve.n;
    writeList(-1, rawCurve.I[0], rawCurve.I[n - 1]);
    setBaseName();
    convertAngularUnits();
    const int count = askFraction();
    if (count < 0) return -2;
    reduceCurve(count);
    makePositiveAndWeigh();
    return 0;
}

void readMeasuredCurve(int formatCode) { loadMeasuredCurve(formatCode); }

void resetMeasuredCurve() {
    fitCurve = FitCurve{};
    rawCurve = RawCurve{};
    intensitiesName.assign(60, ' ');
    setCurveQuestions(CurveQuestions{});
}
