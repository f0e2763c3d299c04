// The report of the Hessian routines on dwUnit: failures at every message
// level, warnings about the spectrum above 0, the condition number above 1,
// the eigenvalues above 2, the products and multipliers of the update
// above 4, the repaired matrix above 6.
#include "methods/hessian_update.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/prompts.h"

namespace {

using namespace hessian_trace;

int level() { return E4DataSet.iStat(row::messageLevel); }

const char* failureText(int flag) {
    switch (flag) {
        case 1: return "<DX,(DG-B*DX)> = 0";
        case 2: return "<DX,B*DX> = 0";
        case 3: return "<DG,H*DG> = 0";
        default: return "<DX,B*DX> * <DG,H*DG> - <DX,DG>**2 = 0";
    }
}

class HessianReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        const int u = writerChannel(sysinf.dwUnit);
        const int m = level();
        int status = 0;
        switch (r.code) {
            case DxBDx:
                if (m > 4) write(u, "(1X,A6,\" --- <DX,B*DX> =\",T41,1P,G14.6)", "E4HES1", r.value);
                break;
            case DgHDg:
                if (m > 4) write(u, "(12X,\"<DG,H*DG> =\",T41,1P,G14.6)", r.value);
                break;
            case Multipliers:
                if (m > 4)
                    write(u, "(12X,\"ETA-MULTIPLIER =\",T41,1P,G14.6,/,12X,\"PSI-MULTIPLIER =\",T41,1P,G14.6)",
                          r.real[0], r.real[1]);
                break;
            case UpdateFailed:
                write(u, "(1X,A6,\" --- \",A,\". DIVISION BY ZERO.\")", "E4HES1", failureText(r.count[0]));
                break;
            case DiagonalFailed:
                write(u, "(\" E4HES2 --- DIVISION BY ZERO. NO HESSIAN DIAGONAL\",\" UPDATING IS POSSIBLE.\")");
                break;
            case Eigenvalues:
                if (m <= 2) break;
                write(u, "(A)", " E4HES3 --- Hessian eigenvalues are as follows:");
                I05WMD1(u, r.point, r.count[0]);
                break;
            case LocalMaximum:
                if (m > 0) write(u, "(\" E4HES3 -W- MINIMIZED FUNCTION IS LIKELY TO HAVE LOCAL\",\" MAXIMUM.\")");
                break;
            case NotPositiveDefinite:
                if (m > 0) write(u, "(A)", " E4HES3 -W- HESSIAN MATRIX IS NOT POSITIVE DEFINITE.");
                break;
            case Empty: write(u, "(A)", " E4HES3 -E- HESSIAN IS EMPTY!"); break;
            case Condition:
                if (m <= 1) break;
                write(u, "(\" E4HES3 --- Hessian condition number =\",T41,1P,G14.6)", r.real[0]);
                if (r.count[0] != 0) write(u, "(12X,\"Corrected value =\",T41,1P,G14.6)", r.real[1]);
                break;
            case ModifiedMatrix:
                if (m <= 6) break;
                write(u, "(12X,\"Modified hessian matrix:\")");
                I5WRA1(u, E4DataSet.Hesse.data(), kMaxVar, E4DataSet.nVar(), E4DataSet.nVar(), "", status);
                break;
            default: break;
        }
    }
};

}  // namespace

SearchTrace& hessianReport() {
    static HessianReport report;
    return report;
}
