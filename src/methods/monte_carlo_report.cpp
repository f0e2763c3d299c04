// The report of the Monte-Carlo search: the temperature when it falls,
// each point taken with the length of the step to it, at message level 1
// the running line every ten tries, and the line of a search that never
// found a better point.
#include "methods/monte_carlo.h"

#include "core/e4dataset.h"
#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/number_text.h"

#include <string>

namespace {

using namespace monte_carlo_trace;

constexpr std::string_view kTag = "E4MCM1";

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }

// The count of the tries left as text of at most 8 characters ("*" when
// it needs more).
std::string countText(int left) {
    std::string text(8, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(left, text, len, err);
    return text.substr(0, static_cast<std::size_t>(len));
}

void event(const TraceRecord& r) {
    if (level() <= 0) return;
    if (r.code == Temperature) write(out(), "(12X,\"temperature: \",1P,G15.7)", r.value);
    if (r.code == Accepted)
        write(out(), "(1X,A6,\" -s- \",A,\" nfe remainded, f(x) =\",1P,G15.7,\",  path =\",1P,G10.2,/)", kTag,
              countText(r.count[0]), r.value, r.real[0]);
}

// The running line of message level 1, every ten tries.
void pass(const TraceRecord& r) {
    if (level() != 1 || r.pass % 10 != 0) return;
    write(out(), "(\"+\",A6,\" --- \",A,\" nfe remainded, f(x) =\",1P,G15.7,\"                \")", kTag,
          countText(r.count[0]), r.value);
}

class MonteCarloReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        switch (r.kind) {
            case TraceKind::Event: event(r); break;
            case TraceKind::Pass: pass(r); break;
            case TraceKind::Stop:
                write(out(), "(12X,\"no better point has been found after\",I7,\" tries.\")", r.count[0]);
                break;
            case TraceKind::Start:
            case TraceKind::Point: break;
        }
    }
};

}  // namespace

SearchTrace& monteCarloReport() {
    static MonteCarloReport report;
    return report;
}
