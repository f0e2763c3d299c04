// The report of E4FOM1 on dwUnit: the iteration table and the finish above
// message level 0, the block at the head of each iteration, the new point
// and the restarts above 1, vectors and scalars of every stage above 3.
#include "methods/first_order_driver.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "methods/method_table.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <string>

namespace {

using namespace first_order_trace;

constexpr std::string_view kTag = "E4FOM1";

int level() { return E4DataSet.iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }

// Headings go through the working text of 80 characters: one that begins
// with " --- " carries the tag in front, the others stand behind twelve
// blanks; a vector follows through I5WRA1.
void vector(std::string_view heading, const double* v) {
    int status = 0;
    if (heading.starts_with(" --- ")) {
        write(out(), "(1X,A6,A)", kTag, heading);
    } else {
        write(out(), "(12X,A)", heading);
    }
    I5WRA1(out(), v, 1, 1, E4DataSet.nVar(), "", status);
}

void scalar(std::string_view heading, double value) {
    write(out(), "(A50,T52,1P,G14.6)", padded(std::string(12, ' ') + std::string(heading), 80), value);
}

std::string reasonText(int iFlag) {
    const std::string twelve(12, ' ');
    switch (iFlag) {
        case 0: return twelve + "ATTEMPT TO FIND A NEW POINT WAS FAILED";
        case 1: return "Too small gradient at the starting point";
        case 3: return twelve + "EXIT ON FUNCTION CHANGE";
        case 4: return twelve + "EXIT ON ARGUMENT CHANGE";
        case 5: return "EXIT ON GRADIENT NORM";
        case 6: return twelve + "ALL CONVERGENCE CRITERIA SATISFIED";
        case 7: return twelve + "EXIT ON ITERATION COUNT";
        case 8: return twelve + "EXIT ON FUNCTION EVALUATIONS COUNT";
        case 9:
        case 10: return " DIVISION BY ZERO. The problem is likely singular";
        case 11: return " COMPUTATION IS IMPOSSIBLE";
        default: return " ";
    }
}

void iterationHead(const TraceRecord& r) {
    std::string tag = " ";
    if (r.count[1] != 0) tag += "  ( R E S T A R T )";
    if (r.count[2] != 0) tag += "  ( S T E E P E S T    D E S C E N T )";
    if (r.count[3] != 0) tag += "  (arbitrary direction)";
    write(out(), "(1X,/,1X,72(\"/\"))");
    write(out(),
          "(\" //  Routine:    \",A6,T72,\"//\",/,\" //  Method:     \",A50,T72,\"//\",/,"
          "\" //  Iteration:  \",I5,A50,T72,\"//\")",
          kTag, methodRow(r.count[0]), r.pass, padded(tag, 80));
    write(out(), "(1X,72(\"/\"),/)");
}

void tableRow(const TraceRecord& r) {
    const bool matrix = r.count[2] != 0;
    if (r.pass == 1 || r.pass % 10 == 0) {
        if (matrix) {
            write(out(), "(\" E4FOM1-|Itr.Rem.| No.of F |      F      |\",\"   Path  | cond(H) |\")");
        } else {
            write(out(), "(\" E4FOM1-|Itr.Rem.| No.of F |      F      |\",\"   Path  |\")");
        }
    }
    if (matrix) {
        write(out(), "(8X,\"|\",I8,\"|\",I9,\"|\",1P,G12.5,\" |\",2(1P,G9.2,\"|\"))", r.count[0], r.count[1], r.value,
              r.real[0], r.real[1]);
    } else {
        write(out(), "(8X,\"|\",I8,\"|\",I9,\"|\",1P,G12.5,\" |\",1P,G9.2,\"|\")", r.count[0], r.count[1], r.value,
              r.real[0]);
    }
}

void finished(const TraceRecord& r) {
    write(out(), "(1X,/,1X,A6,\" --- Search stopped. The reason:\")", kTag);
    write(out(), "(A)", reasonText(r.count[0]));
    write(out(),
          "(\" Return to monitor program after\",I5,\" iterations\",/,"
          "\" (total number of function evaluations =\",I7,\" ).\",/)",
          r.count[1], r.count[2]);
}

// The lines shown above message level 3.
void detail(const TraceRecord& r) {
    int status = 0;
    switch (r.code) {
        case StartingGradient:
        case Gradient:
            vector(r.code == Gradient ? " --- Corresponding gradient estimate:" : " --- Starting gradient estimate:",
                   r.point);
            scalar("Euclidean norm of the gradient:", r.value);
            break;
        case Direction: vector(" --- Direction vector:", r.point); break;
        case NextDirection: vector(" --- Direction vector for another iteration:", r.point); break;
        case HessianDiagonal: vector("Accumulated Hessian diagonal:", r.point); break;
        case StepResult:
            scalar("Step in fractions of direction vector:", r.real[0]);
            scalar("Norm of the argument change:", r.real[1]);
            scalar("Function value:", r.real[2]);
            scalar("Change in the function value:", r.real[3]);
            break;
        case DxDg: scalar("Scalar product of <DX,DG>:", r.value); break;
        case Beta: scalar("BETA-multiplier:", r.value); break;
        case Gamma: scalar("GAMMA-multiplier:", r.value); break;
        case HessianMatrix:
            write(out(), "(1X,A6,A)", kTag, " --- Accumulated Hessian matrix:");
            I5WRA1(out(), E4DataSet.Hesse.data(), kMaxVar, E4DataSet.nVar(), E4DataSet.nVar(), "", status);
            break;
        default: break;
    }
}

class FirstOrderReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        const int m = level();
        switch (r.code) {
            case NegativeDiagonal:
                write(out(), "(1X,A6,\" -W-\",I4,\"-th Hessian diagonal element is\",\" negative!\")", kTag, r.count[0]);
                break;
            case IterationHead:
                if (m > 1) iterationHead(r);
                break;
            case NewPoint:
                if (m > 1) vector(" --- New point obtained:", r.point);
                break;
            case TableRow:
                if (m > 0) tableRow(r);
                break;
            case RestartOrthogonality:
                if (m > 1) write(out(), "(1X,A6,\" --- Restart on <GKM1,GK> / GKN2 =\",1P,G14.6)", kTag, r.value);
                break;
            case RestartCounter:
                if (m > 1) write(out(), "(1X,A6,\" --- Restart on iteration counter\")", kTag);
                break;
            case AlmostOrthogonal:
                if (m > 1)
                    write(out(),
                          "(1X,A6,\" --- Produced direction is almost orthogonal to\",\" the gradient\",/,"
                          "12X,\"vector. It is need to restart with\",/,12X,\"<DIRECT,GK> / GKN2 =\",T52,1P,G14.6)",
                          kTag, r.value);
                break;
            case Finished:
                if (m > 0) finished(r);
                break;
            default:
                if (m > 3) detail(r);
                break;
        }
    }
};

}  // namespace

SearchTrace& firstOrderReport() {
    static FirstOrderReport report;
    return report;
}
