// First calls of the test problems: setUpTestProblem with the dimension
// dialogue, the questions of problems 1 and 8, the limits, bounds and start points.
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/search_limits.h"
#include "core/sysinf.h"
#include "numlib/symmetric_eigen.h"
#include "objective/test_problems.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace {

constexpr double kBound = 1e20;
constexpr double kSmallestScale = 1e-10;
constexpr int kReplyWidth = 80;

// One reply line from the terminal, without its comment; an input that
// failed or ended counts as an empty reply.
std::string readReply() {
    std::string line(kReplyWidth, ' ');
    int len = 0, status = 0;
    I05RSL(sysinf.inUnit, line, len, E4DataSet.commentChars, status);
    if (status != 0) len = 0;
    return line.substr(0, static_cast<std::size_t>(len));
}

// First non-blank character of a reply, in upper case; blank when none.
char replyLetter(const std::string& reply) {
    std::size_t at = reply.find_first_not_of(' ');
    if (at == std::string::npos) return ' ';
    return static_cast<char>(std::toupper(static_cast<unsigned char>(reply[at])));
}

// One free-form read of n reals from the terminal.
void readReals(double* v, int n) {
    ListReader reader([](std::string& record) { return unit::readRecord(sysinf.inUnit, record); });
    int status = reader.readReals(v, n);
    if (status != 0) I05ERR("E4FUN1", status);
}

std::string integerText(int i) {
    std::string field(12, ' ');
    int len = 0, err = 0;
    R02I2C1(i, field, len, err);
    return field.substr(0, static_cast<std::size_t>(len));
}

// Dimension of a problem with a free dimension, and its default limits.
void chooseDimension(int code, const TestProblemInfo& info) {
    E4DataSetRecord& ds = E4DataSet;
    int& n = ds.nVar();
    if (sysinf.MODEE4 == 0 && n == 0) {
        I05ASK("Number of variables (\"CR\" for default)", sysinf.CursorPosition);
        int err = 0;
        n = R02C2I1(readReply(), err);
        if (err < 0) n = 0;
    }
    const bool autoDefault = sysinf.MODEE4 != 0 && code != 8;
    if (n < info.minVar || n > kMaxVar || autoDefault) n = info.defaultVar;
    if (code == 1) n = 2 * std::max(n / 2, 1);
    if (code == 2) n = 4 * std::max(n / 4, 1);
    testProblemLimits(n, ds.iStat(row::maxITR), ds.iStat(row::maxNFE));
    ds.iStat(row::nFree) = n;
}

void fixDimension(const TestProblemInfo& info) {
    E4DataSetRecord& ds = E4DataSet;
    ds.nVar() = info.defaultVar;
    ds.iStat(row::nFree) = info.defaultVar;
    ds.iStat(row::maxITR) = info.maxITR;
    ds.iStat(row::maxNFE) = info.maxNFE;
}

// Problem 1's questions: the form of the function and the scaling factor.
void askRosenbrockForm() {
    TargetFunctionState& state = targetFunctionState();
    announceDimension(E4DataSet.nVar(), "-dimensional Rosenbrock function");
    I05ASKD("What is the modification? [Classical/RZe]", "Classical", sysinf.CursorPosition);
    state.modification = replyLetter(readReply()) == 'R' ? 1 : 0;
    for (;;) {
        I05ASKD("Enter scaling factor", "1.0", sysinf.CursorPosition);
        std::string reply = readReply();
        int err = 0;
        double s = reply.empty() ? 1.0 : R02C2R1(reply, err);
        if (err < 0) continue;
        state.scale = s < kSmallestScale ? 1.0 : s;
        return;
    }
}

// Problem 8: the matrix, its eigenvalues, and the minimum.  False on the
// answer N to "Continue?".
bool loadSquaredProblem() {
    TargetFunctionState& state = targetFunctionState();
    const int n = E4DataSet.nVar();
    E04MES("Load upper right triangle of the Hessian (row by row)");
    state.hessian.a.fill(0.0);
    Vec1<double, kMaxVar> row;
    for (int i = 1; i <= n; ++i) {
        I05ASK("Row # " + integerText(i), sysinf.CursorPosition);
        row.fill(0.0);
        readReals(row.data(), n - i + 1);
        for (int j = i; j <= n; ++j) {
            state.hessian(i, j) = row(j - i + 1);
            state.hessian(j, i) = row(j - i + 1);
        }
    }
    state.hessianCopy = state.hessian;

    int status = 0;
    I5WRA1(sysinf.outUnit, state.hessian.data(), kMaxVar, n, n, "Hessian matrix:", status);
    Vec1<double, kMaxVar> eigenvalues, work;
    int err = 0;
    F02RSM1(state.hessianCopy.data(), eigenvalues.data(), work.data(), kMaxVar, n, err);
    if (err == 0) {
        write(sysinf.outUnit, "(A)", " Eigenvalues:");
        I05WMD1(sysinf.outUnit, eigenvalues.data(), n);
    }

    I05ASK("Continue? < Y > / N", sysinf.CursorPosition);
    if (replyLetter(readReply()) == 'N') return false;
    I05ASK("Load the desired minimum value", sysinf.CursorPosition);
    readReals(&state.minimumValue, 1);
    I05ASK("Enter coordinates of the minimum", sysinf.CursorPosition);
    state.minimumPoint.fill(0.0);
    readReals(state.minimumPoint.data(), n);

    double zAz = 0.0;
    for (int i = 1; i <= n; ++i) {
        double az = 0.0;
        for (int j = 1; j <= n; ++j) az += state.hessian(i, j) * state.minimumPoint(j);
        state.linearTerm(i) = -az;
        zAz += state.minimumPoint(i) * az;
    }
    state.constantTerm = state.minimumValue + 0.5 * zAz;
    return true;
}

void setBounds(int n) {
    E4DataSetRecord& ds = E4DataSet;
    for (int i = 1; i <= n; ++i) {
        ds.bL(i) = -kBound;
        ds.bU(i) = kBound;
        ds.iFixer(i) = 1;
    }
    ds.iStat(row::bLSet) = 1;
    ds.iStat(row::bUSet) = 1;
}

// Problem 1's start: the Rosenbrock valley from -1, every third variable
// and its bounds multiplied by the scaling factor.
void rosenbrockStart(double* x, int n) {
    const double s = targetFunctionState().scale;
    x[0] = -1.0;
    for (int i = 1; i < n; ++i) x[i] = x[i - 1] * x[i - 1] - 0.2;
    for (int i = 3; i <= n; i += 3) {
        x[i - 1] *= s;
        E4DataSet.bL(i) = -kBound * s;
        E4DataSet.bU(i) = kBound * s;
    }
}

void fillStart(double* x, int n, double v) { std::fill(x, x + n, v); }

void writeStartPoint(int code, double* x, int n) {
    switch (code) {
        case 1: rosenbrockStart(x, n); break;
        case 2:
            for (int i = 0; i < n; i += 4) {
                x[i] = 3.0;
                x[i + 1] = -1.0;
                x[i + 2] = 0.0;
                x[i + 3] = 1.0;
            }
            break;
        case 3: x[0] = -3.0; x[1] = -1.0; x[2] = -3.0; x[3] = -1.0; break;
        case 4: fillStart(x, n, 1.0 / n); break;
        case 5: x[0] = -1.0; x[1] = 0.0; x[2] = 0.0; break;
        case 6: x[0] = -14.0; x[1] = 21.0; break;
        case 7: x[0] = 0.0; x[1] = 0.0; break;
        case 9:
            fillStart(x, n, -0.5);
            x[0] = -4.0;
            if (n != 2) x[n - 1] = 0.5;
            break;
        case 10: x[0] = 1.0; break;
        case 11: x[0] = 0.5; x[1] = 0.0; x[2] = 2.5; x[3] = 3.0; break;
        case 12: fillStart(x, n, 2.0); break;
        default: fillStart(x, n, 0.0); break;  // problems 8, 13 and 14
    }
}

}  // namespace

bool setUpTestProblem(int code, double* x) {
    const TestProblemInfo& info = testProblemInfo(code);
    if (!info.welcome.empty()) E04MES("Welcome to " + std::string(info.welcome));
    if (info.freeDimension) {
        chooseDimension(code, info);
    } else {
        fixDimension(info);
    }
    if (code == 1) askRosenbrockForm();
    if (code == 8 && !loadSquaredProblem()) return false;
    const int n = E4DataSet.nVar();
    setBounds(n);
    writeStartPoint(code, x, n);
    return true;
}
