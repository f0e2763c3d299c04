// The report of the annealed simplex: the start block of the plain simplex,
// the table of the iterations with its header every tenth one, and the
// temperature reached after each temperature.
#include "methods/annealed_simplex.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "methods/simplex_search.h"
#include "platform/units.h"

namespace {

using namespace annealed_trace;

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }

void pass(const TraceRecord& r) {
    if (level() <= 0) return;
    if (r.pass % 10 == 0)
        write(out(), "(\" E04DSMSA --- |# iters |# F rem. |      F      |\",\"change in F|\")");
    write(out(), "(14X,\"|\",I8,\"|\",I9,\"|\",1P,G12.5,\" |\",1P,G10.3,\" |\")", r.pass, r.count[0], r.value,
          r.real[0]);
}

void temperature(const TraceRecord& r) {
    if (level() <= 0) return;
    write(out(), "(\" E04DSMSA --- * Temperature:\",1P,G10.2)", r.value);
}

class AnnealedSimplexReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        switch (r.kind) {
            // The simplex is built as the plain one builds it, and shown so.
            case TraceKind::Start: simplexReport().record(r); break;
            case TraceKind::Pass: pass(r); break;
            case TraceKind::Event:
                if (r.code == Temperature) temperature(r);
                break;
            case TraceKind::Point:
            case TraceKind::Stop: break;
        }
    }
};

}  // namespace

SearchTrace& annealedSimplexReport() {
    static AnnealedSimplexReport report;
    return report;
}
