// The report of the linear search: the step bound warnings and the abnormal
// end at every message level, multimodality above 0, the steps above 3, the
// start and the return above 5, the debug block above 7.
#include "methods/linear_search.h"

#include "core/console_layer.h"
#include "platform/units.h"

#include <string>

namespace {

using namespace linear_search_trace;

constexpr std::string_view kName = "E4SRH1";

class LinearSearchReport : public SearchTrace {
public:
    int channel = 6;
    int level = 0;
    std::string tag;

    void record(const TraceRecord& r) override {
        const int u = writerChannel(channel);
        const auto& v = r.real;
        switch (r.code) {
            case Begin:
                if (level > 5)
                    write(u, "(1X,A6,' --- Initial \"abstract\" step size   =',1P,G14.6,/,12X,"
                             "\"upper bound on the step length =\",1P,G14.6)",
                          kName, v[0], v[1]);
                break;
            case StepLimited:
                write(u, "(1X,A6,\" -W- Step length decreasing from\",1P,G14.6,\" to\",1P,G14.6)", kName, v[0], v[1]);
                break;
            case Multimodal:
                if (level > 0)
                    write(u, "(1X,A6,\" -W- Multimodality with dX =\",1P,G12.4,\", dF =\",1P,G12.4)", kName, v[0], v[1]);
                break;
            case NoBracket:
                write(u, "(1X,A6,\" -E- No interval bounded the minimum can be\",\" found.\")", kName);
                break;
            case TooManySteps: write(u, "(1X,A6,\" -E- Too many search steps has been made:\",I3)", kName, r.count[0]); break;
            case StepTooSmall:
                write(u, "(1X,A6,\" -W- Argument step is too small for\",\" the search to be continued.\")", kName);
                break;
            case ParabolaDegenerate:
                write(u, "(1X,A6,\" -E- Linear search message:\",/,12X,\"XMIN - XL =\",1P,G14.6,\",  XMIN - XSL =\",1P,G14.6,/,"
                         "12X,\"XL - XSL  =\",1P,G14.6,\",  Q          =\",1P,G14.6,/,"
                         "12X,\"Division by zero at the parabolation step.\")",
                      kName, v[0], v[1], v[2], v[3]);
                break;
            case Abnormal: abnormal(u, r); break;
            case Parabolic:
                if (level > 3) write(u, "(1X,A6,\" --- Parabolic interpolation with the step =\",1P,G14.6)", kName, v[0]);
                break;
            case Golden:
                if (level > 3) write(u, "(1X,A6,\" --- Golden section step length            =\",1P,G14.6)", kName, v[0]);
                break;
            case StepToMake:
                if (level > 3) write(u, "(12X,\"Step length to be made                =\",1P,G14.6)", v[0]);
                break;
            case Debug:
            case DebugPoint:
            case DebugTail:
                if (level > 7) debug(u, r);
                break;
            case Return:
                if (level > 5) write(u, "(1X,A6,\" --- Return to \",A)", kName, tag);
                break;
            default: break;
        }
    }

private:
    static void abnormal(int u, const TraceRecord& r) {
        write(u,
              "(12X,\"Linear search has failed to normally \",\"terminate.\",/,"
              "12X,\"Last function value  =\",1P,G14.6,/,12X,\"at ABSTRACT argument =\",1P,G14.6,/,"
              "12X,\"Least function \",\"value =\",1P,G14.6,/,12X,\"at ABSTRACT argument =\",1P,G14.6,/,"
              "12X,'here \"ABSTRACT argument\" means the linear search ',\"path\",/,"
              "12X,\"measured in fractions of the euclidean\",\" norm of\",/,12X,\"the direction vector.\",/,"
              "12X,\"Return \",\"with the best point after\",I3,\" performed steps.\")",
              r.real[0], r.real[1], r.real[2], r.real[3], r.count[0]);
    }

    static void debug(int u, const TraceRecord& r) {
        static const char* const kPoint[] = {"", "XMIN   =", "XL     =", "XSL    =", "XTEST  ="};
        static const char* const kValue[] = {"", ",  FXMIN  =", ",  FXL    =", ",  FXSL   =", ",  FXTEST ="};
        const auto& v = r.real;
        if (r.code == Debug) {
            write(u, "(1X,A6,\" --- Linear search debug message:\")", kName);
            write(u, "(12X,\"A      =\",1P,G14.6,\",  FA     =\",1P,G14.6)", v[0], v[1]);
            write(u, "(12X,\"B      =\",1P,G14.6,\",  FB     =\",1P,G14.6)", v[2], v[3]);
        } else if (r.code == DebugPoint) {
            write(u, "(12X,A,1P,G14.6,A,1P,G14.6)", kPoint[r.count[0]], v[0], kValue[r.count[0]], v[1]);
        } else {
            write(u, "(12X,\"E      =\",1P,G14.6,\",  AXTOL  =\",1P,G14.6,/,12X,\"AFTOL  =\",1P,G14.6)", v[0], v[1], v[2]);
        }
    }
};

}  // namespace

SearchTrace& linearSearchReport(int channel, int msgLevel, std::string_view tag) {
    static LinearSearchReport report;
    report.channel = channel;
    report.level = msgLevel;
    report.tag = std::string(tag);
    return report;
}
