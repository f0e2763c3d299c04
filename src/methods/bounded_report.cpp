// The report of method 12 on dwUnit: the iteration table of E04RPT1 with
// its marks, the vectors at higher message levels, the lines of the finite
// differences, the local search, the failure reporter and the driver.
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "methods/bounded_family.h"
#include "platform/units.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"

#include <string>

namespace {

using namespace bounded_trace;

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }

const char* routineName(int routine) {
    static const char* const kNames[] = {"E04JAF", "E04JBF", "E04HBF"};
    return routine >= 0 && routine <= 2 ? kNames[routine] : "E04JAF";
}

// The heading as it stands, then the vector through I5WRA1.
void vector(std::string_view title, const double* v, int entries) {
    int status = 0;
    write(out(), "(A)", std::string(title));
    I5WRA1(out(), v, 1, 1, entries, "", status);
}

// A number right-justified in a field of `width` columns.
std::string field(const std::string& text, int width) {
    std::string f = text;
    f.resize(static_cast<std::size_t>(width), ' ');
    int err = 0;
    R02JUST(f, 1, width, 'R', err);
    return f;
}

std::string integerField(int value, int width) {
    std::string text(static_cast<std::size_t>(width), ' ');
    int len = 0, err = 0;
    R02I2C1(value, text, len, err);
    return field(text, width);
}

std::string realField(double value, int width) {
    std::string text(static_cast<std::size_t>(width), ' ');
    int len = 0, err = 0;
    R02R2C1(value, text, 1, 4, len, 2, 0, err);
    return field(text, width);
}

// E04RPT1: the header every tenth iteration, then the row.
void reportRow(const TraceRecord& r) {
    const std::string head = std::string("E04JAF ") + static_cast<char>(r.code);
    if (r.pass % 10 == 0) write(out(), "(A)", head + "|Itr.Rem.| No.of F |     F      |  cond(H)   |");
    write(out(), "(A)",
          head + "|" + integerField(r.count[0], 8) + "|" + integerField(r.count[1], 9) + "|" +
              realField(r.value, 12) + "|" + realField(r.real[0], 12) + "|");
}

void differenceLines(const TraceRecord& r) {
    if (level() <= 5) return;
    switch (r.code) {
        case HbfTrialStep:
            write(out(), "(\" E04HBF --- Trial step for the second derivative = \",1P,G14.6)", r.value);
            break;
        case HbfVariable:
            write(out(),
                  "(\" E04HBF --- For\",I5,\" variable:\",/,9X,\"X =\",1P,G14.6,7X,\"DI =\",1P,G14.6,6X,"
                  "\"GI =\",1P,G14.6,/,9X,\"H =\",1P,G14.6,\"   CNCERR =\",1P,G14.6,\"  ERRSUM =\",1P,"
                  "G14.6,/)",
                  r.count[0], r.point[0], r.point[1], r.point[2], r.point[3], r.point[4], r.point[5]);
            break;
        case JbnIntervals: vector(" E04JBN --- Finite-diff. intervals:", r.point, r.count[0]); break;
        case JbnForward: vector(" E04JBN --- Forward-diff. gradient:", r.point, r.count[0]); break;
        case JbnCentral: vector(" E04JBN --- Central-diff. gradient:", r.point, r.count[0]); break;
        case Direction: vector(" E04LBV --- Direction vector:", r.point, r.count[0]); break;
        default: break;
    }
}

void event(const TraceRecord& r) {
    switch (r.code) {
        case ReportPoint:
            if (level() > 3) vector("            Current point:", r.point, r.count[0]);
            break;
        case ReportGradient:
            if (level() > 3) vector("            Gradient vector:", r.point, r.count[0]);
            break;
        case ReportDirection:
            if (level() > 3) vector("            Direction vector:", r.point, r.count[0]);
            break;
        case LocalSearch:
            if (level() > 0) write(out(), "(A)", " E04JBM --- Local search attempt...");
            break;
        case ExceededSteps:
            write(out(), "(\" \",A6,\" -E- Exceeded maximum number of search steps.\",/)", routineName(r.count[0]));
            break;
        case FatalError:
            write(out(), "(\" \",A6,\" -E- Fatal error no.\",I5,/)", routineName(r.count[0]), r.count[1]);
            break;
        case SoftError:
            write(out(), "(\" \",A6,\" -E- Soft error no.\",I5,/)", routineName(r.count[0]), r.count[1]);
            break;
        case WrongBound:
            write(out(), "(1X,A,A,I4,A)", "E4JAF1",
                  r.count[1] == 1 ? " -E- WRONG LOWER BOUND FOR" : " -E- WRONG UPPER BOUND FOR", r.count[0],
                  "-TH VARIABLE");
            break;
        default: differenceLines(r); break;
    }
}

// The driver's translation of a return code that is not 0.
void returnCode(const TraceRecord& r) {
    write(out(), "(1X,A,\" --- RETURN CODE =\",I3)", "E4JAF1", r.count[0]);
    if (r.count[0] != 2) return;
    if (r.count[1] < r.count[2]) {
        write(out(), "(12X,\"Exceeded max. number of function evaluations\",/)");
    } else {
        write(out(), "(12X,\"Exceeded max. number of iterations\",/)");
    }
}

class BoundedReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        switch (r.kind) {
            case TraceKind::Pass: reportRow(r); break;
            case TraceKind::Event: event(r); break;
            case TraceKind::Stop: returnCode(r); break;
            default: break;
        }
    }
};

}  // namespace

SearchTrace& boundedReport() {
    static BoundedReport report;
    return report;
}
