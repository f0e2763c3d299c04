// The file <base>.err: the measure of the fit, the value and standard
// error of each free parameter, and their correlation matrix.
#include "scatter/parameter_errors.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "platform/units.h"
#include "scatter/measured_curve.h"
#include "scatter/phases.h"
#include "scatter/result_files.h"

#include <algorithm>

namespace {

constexpr int kErrChannel = 21;
constexpr int kPerLine = 10;  // correlations on one line

std::string trimmed(const std::string& s) { return s.substr(0, static_cast<std::size_t>(R02LEN(s))); }

int writeHead(int u, const ParameterErrors& r) {
    const int dof = r.points - r.determined - 1;
    int st = write(u, "(1X,A)", "Parameter errors of the fit to " + trimmed(fitCurve.dataName));
    if (st == 0)
        st = write(u, "(1X,'chi-square =',1P,E14.6,'   points =',I5,'   parameters =',I4,'   degrees of freedom =',I5)",
                   r.chiSquare, r.points, r.determined, dof);
    if (st == 0 && dof > 0) st = write(u, "(1X,'reduced chi-square =',1P,E14.6)", r.chiSquare / dof);
    if (st == 0)
        st = write(u, "(1X,A,/,1X,A,/,1X,A,/)",
                   "Covariance C = 2 H^-1 / sum((I/Err)^2), H the Hessian of the misfit at the point;",
                   "standard error = sqrt(C(i,i)); the scale of the curve is fitted in every evaluation.",
                   "If the errors of the curve are doubtful, multiply by sqrt(reduced chi-square).");
    return st;
}

int writeTable(int u, const ParameterErrors& r) {
    int st = write(u, "(1X,A4,2X,A12,2A16)", "No.", padded("Parameter", 12), "Value", "Std. error");
    for (std::size_t a = 0; a < r.index.size() && st == 0; ++a) {
        if (r.positiveDefinite) {
            st = write(u, "(1X,I4,2X,A12,1P,2E16.7)", r.index[a], padded(r.name[a], 12), r.value[a], r.sigma[a]);
        } else {
            st = write(u, "(1X,I4,2X,A12,1P,E16.7,A)", r.index[a], padded(r.name[a], 12), r.value[a], "       undefined");
        }
    }
    if (st == 0 && !r.positiveDefinite)
        st = write(u, "(/,1X,A,/,1X,A)", "The Hessian is not positive definite at this point: no errors.",
                   "Are the parameters at a minimum, and does the curve determine each of them?");
    return st;
}

int writeCorrelations(int u, const ParameterErrors& r) {
    const int q = static_cast<int>(r.index.size());
    int st = write(u, "(/,1X,A)", "Correlation matrix:");
    for (int first = 0; first < q && st == 0; first += kPerLine) {
        const int last = std::min(q, first + kPerLine);
        FmtItems head;
        for (int c = first; c < last; ++c) head.emplace_back(r.index[static_cast<std::size_t>(c)]);
        st = writeItems(u, "(5X,10I8)", head);
        for (int a = 0; a < q && st == 0; ++a) {
            FmtItems row{r.index[static_cast<std::size_t>(a)]};
            for (int c = first; c < last; ++c) row.emplace_back(r.correlation[static_cast<std::size_t>(a * q + c)]);
            st = writeItems(u, "(1X,I4,10F8.4)", row);
        }
    }
    return st;
}

}  // namespace

void writeParameterErrors(const double* hessian, int ld) {
    if (fitCurve.nPts < 2 || PhaseTable.nPhase < 1) return;
    const ParameterErrors r = parameterErrors(hessian, ld);
    if (r.index.empty()) return;
    const std::string name = resultFileName(".err");
    if (!openResultFile(kErrChannel, name)) return;
    int st = writeHead(kErrChannel, r);
    if (st == 0) st = writeTable(kErrChannel, r);
    if (st == 0 && r.positiveDefinite) st = writeCorrelations(kErrChannel, r);
    closeResultFile(kErrChannel, name);
}
