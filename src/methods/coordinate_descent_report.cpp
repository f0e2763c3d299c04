// The report of coordinate descent: a refused fixed variable, the result of
// each linear search, the summary of each sweep and the final results.
#include "methods/coordinate_descent.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"

namespace {

using namespace coordinate_descent_trace;

constexpr std::string_view kTag = " E4CDM1 ---";

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }

void threeLines(double f, double change, double norm) {
    write(out(),
          "(12X,'Function value at the minimum =',1P,G14.6,/,12X,'Change in the function value  =',1P,G14.6,/,"
          "12X,'Norm of the argument change   =',1P,G14.6)",
          f, change, norm);
}

class CoordinateDescentReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        if (r.kind == TraceKind::Event && r.code == Closed) {
            write(out(), "(A,I4,'-th coordinate is closed to search.')", kTag, r.count[0]);
        } else if (r.kind == TraceKind::Point && r.code == Coordinate) {
            if (level() > 1 || r.count[1] != 0) {
                write(out(), "(1X,I4,'-th coordinate: DELTAF =',1P,G14.6,', DELTAX =',1P,G14.6)", r.count[0],
                      r.real[0], r.real[1]);
            }
        } else if (r.kind == TraceKind::Pass) {
            if (level() > 0 && r.count[1] > 1) {
                write(out(), "(A,' Results for',I7,' iteration (remained',I7,'):')", kTag, r.pass, r.count[0]);
                threeLines(r.value, r.real[0], r.real[1]);
            }
        } else if (r.kind == TraceKind::Stop && r.code == Finished) {
            if (level() > 0) {
                write(out(), "(1X,/,A,' FINAL RESULTS:')", kTag);
                threeLines(r.value, r.real[0], r.real[1]);
            }
        }
    }
};

}  // namespace

SearchTrace& coordinateDescentReport() {
    static CoordinateDescentReport report;
    return report;
}
