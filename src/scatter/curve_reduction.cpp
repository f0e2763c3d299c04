// From the raw curve to the fitted one: angularMultiplier, the units
// question, the fraction, the reduction to 101 points, positive values, weights.
#include "scatter/measured_curve_steps.h"

#include "core/console_layer.h"
#include "core/machine_constants.h"
#include "platform/edit_format.h"
#include "platform/units.h"
#include "textfile/file_spec.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"

#include <cmath>
#include <string>
#include <vector>

FitCurve fitCurve;
RawCurve rawCurve;

double angularMultiplier(int code) {
    // The multipliers are held as single-precision constants.
    switch (code) {
        case 2: return static_cast<double>(0.1f);
        case 3: return static_cast<double>(6.283185f);
        case 4: return static_cast<double>(0.62831853f);
        default: return 1.0;
    }
}

void writeNameValue(std::string_view left, std::string_view middle, int pos, char filler) {
    std::string out(80, ' ');
    int outLen = 0;
    R02LINE(left, middle, "", pos, 0, filler, out, outLen);
    const int length = R02LEN(out);
    if (length < 1) {
        write(6, "(A)", " ");
        return;
    }
    int status = 0;
    I05LINE(6, out.substr(0, static_cast<size_t>(length)), status);
}

void setBaseName() {
    const std::string& name = fitCurve.dataName;
    const std::string full = name.substr(0, static_cast<size_t>(std::max(R02LEN(name), 0)));
    const size_t slash = full.find_last_of("/\\:");
    const std::string word = slash == std::string::npos ? full : full.substr(slash + 1);
    std::string base(32, ' ');
    std::string ext(32, ' ');
    int err = 0;
    R02PFN(word, base, ext, "FAT32", err);
    base.resize(32, ' ');
    fitCurve.baseName = base;
}

void convertAngularUnits() {
    write(-1, "(A)", " Angular units in the input file :   ");
    write(-1, "(A)", " 4*pi*sin(theta)/lambda [1/angstrom] (1)");
    write(-1, "(A)", " 4*pi*sin(theta)/lambda [1/nm      ] (2)");
    write(-1, "(A)", " 2*   sin(theta)/lambda [1/angstrom] (3)");
    int code = 1;
    curveQuestions().askInt(" 2*   sin(theta)/lambda [1/nm      ] (4)", code);
    if (code < 2 || code > 4) return;
    const double multiplier = angularMultiplier(code);
    for (int i = 0; i < rawCurve.n; ++i) rawCurve.s[i] *= multiplier;
    std::string text(32, ' ');
    int len = 0;
    int err = 0;
    R02R2C1(multiplier, text, 3, 4, len, 2, 1, err);
    writeNameValue("Angular units multiplied by", text.substr(0, static_cast<size_t>(len)), 30,
                   '.');
}

int askFraction() {
    const int n = rawCurve.n;
    for (;;) {
        curveQuestions().askReal("Enter Fraction of the curve", fitCurve.fraction);
        const int count = CURVECUT(rawCurve.s, n, rawCurve.s[n - 1] * fitCurve.fraction);
        if (count >= 2) return count;
        I05MES("VARDENE -E- This fraction leaves fewer than 2 points of the curve; "
               "a fraction of 1 keeps all but the last.");
        curveQuestions().refuse("the fraction leaves fewer than 2 points.");
        if (unit::terminalInputEnded()) return -1;
    }
}

void reduceCurve(int count) {
    writeList(-1, count, kMaxFitPoints);
    JOINPTS(count, rawCurve.s, rawCurve.I, rawCurve.Err, kMaxFitPoints, fitCurve.nPts, fitCurve.s,
            fitCurve.I, fitCurve.Err);
    if (fitCurve.nPts == count) return;
    std::string text(16, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(fitCurve.nPts, text, len, err);
    writeNameValue("Number of points reduced to", text.substr(0, static_cast<size_t>(len)), 0, '.');
    write(6, "(A)", "");
}

namespace {

void makePositive(double* v, int n, double eps) {
    for (int k = 0; k < n; ++k) {
        if (v[k] <= 0.0) v[k] = std::fabs(v[k]);
        v[k] += eps;
    }
}

}  // namespace

void makePositiveAndWeigh() {
    const int n = fitCurve.nPts;
    const double eps = X02RMDC(2);
    // Negative intensities (a background subtracted from a weak signal)
    // are folded to positive: the model cannot follow them otherwise.
    int negative = 0;
    double firstS = 0.0;
    for (int k = 0; k < n; ++k) {
        if (fitCurve.I[k] < 0.0 && negative++ == 0) firstS = fitCurve.s[k];
    }
    makePositive(fitCurve.I, n, eps);
    writeList(-1, " I(1), I(last)    :", fitCurve.I[0], fitCurve.I[n - 1]);
    writeList(-1, " s(1), s(last)    :", fitCurve.s[0], fitCurve.s[n - 1]);
    makePositive(fitCurve.Err, n, eps);
    writeList(-1, " Err(1), Err(last):", fitCurve.Err[0], fitCurve.Err[n - 1]);
    if (negative > 0)
        I05MES("VARDENE --W- " + std::to_string(negative) + " negative intensities, the first at s = " +
               shortNumber(firstS) + ", are taken as positive.");
    computeWeights();
}

std::string shortNumber(double v) {
    const std::string t = formatRecords("(1P,G12.4)", FmtItems{v}).text;
    const size_t a = t.find_first_not_of(' ');
    return a == std::string::npos ? t : t.substr(a, t.find_last_not_of(' ') - a + 1);
}

std::vector<std::string> separatedWords(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    for (char c : text) {
        if (c == ' ' || c == '\t' || c == ',' || c == ';') {
            if (!word.empty()) words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.empty()) words.push_back(word);
    return words;
}

void computeWeights() {
    const int n = fitCurve.nPts;
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        const double ratio = fitCurve.I[k] / fitCurve.Err[k];
        sum += ratio * ratio;
    }
    const double nrm = std::sqrt(sum);
    for (int k = 0; k < n; ++k) fitCurve.w[k] = (1.0 / fitCurve.Err[k]) / nrm;
}
