// The report of the downhill simplex: the start block, the pass table, the
// vertex tables and the trial points at high message levels, and the stop.
#include "methods/simplex_search.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <string>

namespace {

using namespace simplex_trace;

constexpr std::string_view kTag = "E04DSMNM";

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }
void writeMatrix(int vertices) {
    int status = 0;
    I5WRA1(out(), E4DataSet.Hesse.data(), kMaxVar, E4DataSet.nVar(), vertices, "", status);
}

void writeValues(int vertices) {
    int status = 0;
    write(out(), "(A)", " vertex function values:");
    I5WRA1(out(), E4DataSet.Hdiag.data(), 1, 1, vertices, "", status);
}

void start(const TraceRecord& r) {
    if (level() <= 0) return;
    write(out(),
          "(1X,/,1X,A6,\" --- information at the start of the \",\"search:\",/,/,"
          "\" step \",20(\"-\"),1P,G14.6,/,\" step1 \",19(\"-\"),1P,G14.6,/,"
          "\" step2 \",19(\"-\"),1P,G14.6,/,\" starting function value -\",1P,G14.6,/,"
          "\" initial vertex coordinates:\")",
          kTag, r.real[0], r.real[1], r.real[2], r.real[3]);
    writeMatrix(r.count[0]);
    writeValues(r.count[0]);
    write(out(), "(1X,70(\"-\"))");
}

void pass(const TraceRecord& r) {
    if (level() <= 0) return;
    if (r.pass == 1 || r.pass % 10 == 0)
        write(out(), "(\" E04DSMNM --- |# succ. | NFE rem.|      f      |\",\"  deltaf  |\")");
    write(out(), "(14X,\"|\",I8,\"|\",I9,\"|\",1P,G12.5,\" |\",1P,G10.3,\"|\")", r.pass, r.count[0], r.value,
          r.real[0]);
}

void point(const TraceRecord& r) {
    if (level() <= 7) return;
    static const char* const kValue[] = {" reflected point function value --------",
                                         " extrapolated point function value -----",
                                         " contracted point function value -------"};
    static const char* const kPoint[] = {" reflected point coordinates:", " extrapolated point coordinates:",
                                         " contracted point coordinates:"};
    const int k = r.code - Reflected;
    int status = 0;
    write(out(), std::string("(\"") + kValue[k] + "\",1P,G14.6,/,\"" + kPoint[k] + "\")", r.value);
    I5WRA1(out(), r.point, 1, 1, E4DataSet.nVar(), "", status);
}

void event(const TraceRecord& r) {
    if (r.code == VertexTable) {
        if (level() <= 3) return;
        write(out(), "(1X,/,\" vertex coordinates at \",I7,\" iteration:\")", r.pass);
        writeMatrix(r.count[0]);
        writeValues(r.count[0]);
        return;
    }
    if (level() <= 7) return;
    static const char* const kReplacedBy[] = {" reflected one", " extrapolated one", " contracted one"};
    switch (r.code) {
        case Extremes:
            write(out(), "(\" largest function value no.\",I9,\" ) -\",1P,G14.6,/,"
                         "\" least function value no.\",I9,\" ) ---\",1P,G14.6)",
                  r.count[0], r.real[0], r.count[1], r.real[1]);
            break;
        case Replaced:
            write(out(), "(\" largest point has been replaced by the\",A)", kReplacedBy[r.count[0] - Reflected]);
            break;
        case SecondLargest: write(out(), "(\" second-largest function value ---------\",1P,G14.6)", r.value); break;
        case Reduced: write(out(), "(A)", " simplex has been reduced by half"); break;
        default: break;
    }
}

void stop(const TraceRecord& r) {
    if (level() <= 0) return;
    write(out(), "(1X,/,1X,A,\" --- search stopped. the reason:\")", kTag);
    if (r.code == Converged) {
        write(out(), "(14X,\"all convergence criteria have been satisfied.\")");
    } else {
        write(out(), "(14X,\"exceeded number of function evaluations.\")");
    }
    write(out(),
          "(14X,\"return to monitor program after\",I7,\" successes\",/,14X,"
          "\"total number of function evaluations =\",I9,\".\",/)",
          r.pass, r.count[0]);
}

class SimplexReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        switch (r.kind) {
            case TraceKind::Start: start(r); break;
            case TraceKind::Pass: pass(r); break;
            case TraceKind::Point: point(r); break;
            case TraceKind::Event: event(r); break;
            case TraceKind::Stop: stop(r); break;
        }
    }
};

}  // namespace

SearchTrace& simplexReport() {
    static SimplexReport report;
    return report;
}
