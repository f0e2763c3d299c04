// The report of E04HES4 on dwUnit: the matrix and its eigenvectors, at
// every message level.
#include "methods/hessian_differences.h"

#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "core/console_layer.h"
#include "textfile/prompts.h"

namespace {

class HessianDifferencesReport : public SearchTrace {
public:
    void record(const TraceRecord& r) override {
        if (r.code != hessian_differences_trace::Written) return;
        E4DataSetRecord& d = E4DataSet;
        const int u = writerChannel(sysinf.dwUnit);
        int status = 0;
        I5WRA1(u, d.Hesse.data(), kMaxVar, d.nVar(), d.nVar(), "Hessian matrix:", status);
        if (status == 0) {
            I5WRA1(u, d.V_eigen.data(), kMaxVar, d.nVar(), d.nVar(), "Hessian eigenvectors (columnwise, as usual):",
                   status);
        }
    }
};

}  // namespace

SearchTrace& hessianDifferencesReport() {
    static HessianDifferencesReport report;
    return report;
}
