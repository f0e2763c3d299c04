// Parameter errors of the scattering fit: the covariance of the weighted
// least-squares fit from the Hessian of the misfit, the normalized volume
// fractions, and the file <base>.err.
#include "scatter/parameter_errors.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/string_tools.h"
#include "numlib/symmetric_eigen.h"
#include "platform/units.h"
#include "scatter/measured_curve.h"
#include "scatter/phases.h"
#include "scatter/result_files.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kSphereNames[] = {"Vf", "Rin", "roin", "Rout", "roout", "dR", "Rhs", "tau"};
constexpr const char* kCylinderNames[] = {"Vf", "RinC", "roin", "RoutC", "roout", "dR", "Len"};
constexpr const char* kEllipsoidNames[] = {"Vf", "Rell", "nu"};
constexpr const char* kTypeWords[] = {"", "SPH", "CYL", "DMB", "ELL"};

// A dense matrix, 0-based, row after row.
struct Matrix {
    int rows = 0, cols = 0;
    std::vector<double> v;
    Matrix(int r, int c) : rows(r), cols(c), v(static_cast<std::size_t>(r * c), 0.0) {}
    double& operator()(int i, int j) { return v[static_cast<std::size_t>(i * cols + j)]; }
    double operator()(int i, int j) const { return v[static_cast<std::size_t>(i * cols + j)]; }
};

// The names of the parameters of x and the positions of the volume fractions.
struct Layout {
    std::vector<std::string> name;  // name[i] for x(i), "" beyond the phases
    std::vector<int> vfPosition;
    bool isVf(int i) const { return std::find(vfPosition.begin(), vfPosition.end(), i) != vfPosition.end(); }
};

Layout layoutOf(int n) {
    Layout l;
    l.name.assign(static_cast<std::size_t>(n + 1), "");
    int k = 0;
    for (int j = 0; j < std::min(PhaseTable.nPhase, kMaxPhaseEntries); ++j) {
        const int type = PhaseTable.phaseType[static_cast<std::size_t>(j)];
        const int length = phaseBlockLength(type);
        if (length > 0 && k < n) l.vfPosition.push_back(k + 1);
        for (int b = 0; b < length && k < n; ++b) {
            const char* member = type == kPhaseCylinder    ? kCylinderNames[b]
                                 : type == kPhaseEllipsoid ? kEllipsoidNames[b]
                                                           : kSphereNames[b];
            l.name[static_cast<std::size_t>(++k)] = std::to_string(j + 1) + kTypeWords[type] + " " + member;
        }
    }
    return l;
}

// S = sum (I/Err)^2, the square of the norm by which the weights divide.
double weightNorm() {
    double s = 0.0;
    for (int k = 0; k < fitCurve.nPts; ++k) {
        if (fitCurve.Err[k] != 0.0) s += (fitCurve.I[k] / fitCurve.Err[k]) * (fitCurve.I[k] / fitCurve.Err[k]);
    }
    return s;
}

// The inverse of the symmetric matrix a through its eigenpairs; false when
// it is not positive definite at the precision of its entries.
bool invertPositive(Matrix& a) {
    const int m = a.rows;
    Matrix V = a;  // symmetric: rows and columns alike
    std::vector<double> d(static_cast<std::size_t>(m)), e(static_cast<std::size_t>(m));
    int err = 0;
    F02RSM1(V.v.data(), d.data(), e.data(), m, m, err);
    if (err != 0) return false;
    const double floor = m * X02RMDC(2) * std::fabs(d[0]);
    if (!std::all_of(d.begin(), d.end(), [&](double v) { return v > floor; })) return false;
    // V holds the eigenvectors column after column: element (i, l) at V(l, i).
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < m; ++j) {
            double s = 0.0;
            for (int l = 0; l < m; ++l) s += V(l, i) * V(l, j) / d[static_cast<std::size_t>(l)];
            a(i, j) = s;
        }
    }
    return true;
}

// Correlations and errors from the covariance of the reported values.
void fillFromCovariance(ParameterErrors& r, const Matrix& cov) {
    const int q = cov.rows;
    for (int a = 0; a < q; ++a) r.sigma[static_cast<std::size_t>(a)] = std::sqrt(std::max(cov(a, a), 0.0));
    for (int a = 0; a < q; ++a) {
        for (int c = 0; c < q; ++c) {
            const double s = r.sigma[static_cast<std::size_t>(a)] * r.sigma[static_cast<std::size_t>(c)];
            r.correlation[static_cast<std::size_t>(a * q + c)] = s > 0.0 ? cov(a, c) / s : (a == c ? 1.0 : 0.0);
        }
    }
}

// The point of the fit in the problem's own units, with the normalization
// u = v / T of the volume fractions, T = sum |v|, and the fraction that
// holds their common scale when all of them are free (0 otherwise).
struct FitPoint {
    Layout layout;
    std::vector<double> p, scale;  // 1-based
    double T = 0.0;
    int gauge = 0;
    double sign(int i) const { return p[static_cast<std::size_t>(i)] < 0.0 ? -1.0 : 1.0; }
    double at(int i) const { return p[static_cast<std::size_t>(i)]; }
};

FitPoint fitPoint(int n) {
    const E4DataSetRecord& d = E4DataSet;
    const bool scaled = d.iStat(row::xScaleSet) != 0 && d.iStat(row::xScaled) != 0;
    FitPoint f{layoutOf(n), std::vector<double>(static_cast<std::size_t>(n + 1)),
               std::vector<double>(static_cast<std::size_t>(n + 1), 1.0)};
    for (int i = 1; i <= n; ++i) {
        if (scaled) f.scale[static_cast<std::size_t>(i)] = d.xScale(i);
        f.p[static_cast<std::size_t>(i)] = d.xEnd(i) / f.scale[static_cast<std::size_t>(i)];
    }
    bool allFree = !f.layout.vfPosition.empty();
    for (int pos : f.layout.vfPosition) {
        f.T += std::fabs(f.at(pos));
        allFree = allFree && d.iFixer(pos) != 0;
        if (f.gauge == 0 || std::fabs(f.at(pos)) > std::fabs(f.at(f.gauge))) f.gauge = pos;
    }
    if (!allFree) f.gauge = 0;
    return f;
}

// The free parameters with their names and reported values; `used` gets
// those the inversion takes (all but the gauge).
void freeParameters(ParameterErrors& r, const FitPoint& f, int n, std::vector<int>& used) {
    for (int i = 1; i <= n; ++i) {
        if (E4DataSet.iFixer(i) == 0) continue;
        r.index.push_back(i);
        const std::string& name = f.layout.name[static_cast<std::size_t>(i)];
        r.name.push_back(name.empty() ? "x(" + std::to_string(i) + ")" : name);
        r.value.push_back(f.layout.isVf(i) && f.T > 0.0 ? f.at(i) / f.T : f.at(i));
        if (i != f.gauge) used.push_back(i);
    }
}

// H over the parameters taken, in the problem's own units: x = p xScale.
Matrix hessianBlock(const double* hessian, int ld, const FitPoint& f, const std::vector<int>& used) {
    const int m = static_cast<int>(used.size());
    Matrix H(m, m);
    for (int a = 0; a < m; ++a) {
        for (int b = 0; b < m; ++b) {
            const int i = used[static_cast<std::size_t>(a)], j = used[static_cast<std::size_t>(b)];
            H(a, b) = hessian[(j - 1) * ld + (i - 1)] * f.scale[static_cast<std::size_t>(i)] * f.scale[static_cast<std::size_t>(j)];
        }
    }
    return H;
}

// The Jacobian of the reported values by the parameters taken: the
// identity, but for a volume fraction du(a)/dv(b) = delta(a, b) / T -
// v(a) sgn(v(b)) / T^2.
Matrix reportJacobian(const ParameterErrors& r, const FitPoint& f, const std::vector<int>& used) {
    const int q = static_cast<int>(r.index.size()), m = static_cast<int>(used.size());
    Matrix J(q, m);
    for (int a = 0; a < q; ++a) {
        const int i = r.index[static_cast<std::size_t>(a)];
        for (int b = 0; b < m; ++b) {
            const int j = used[static_cast<std::size_t>(b)];
            J(a, b) = i == j ? 1.0 : 0.0;
            if (f.layout.isVf(i) && f.layout.isVf(j) && f.T > 0.0)
                J(a, b) = J(a, b) / f.T - f.at(i) * f.sign(j) / (f.T * f.T);
        }
    }
    return J;
}

// factor J A J'.
Matrix sandwich(const Matrix& J, const Matrix& A, double factor) {
    Matrix out(J.rows, J.rows);
    for (int a = 0; a < J.rows; ++a) {
        for (int c = 0; c < J.rows; ++c) {
            double s = 0.0;
            for (int b = 0; b < J.cols; ++b) {
                for (int e = 0; e < J.cols; ++e) s += J(a, b) * A(b, e) * J(c, e);
            }
            out(a, c) = factor * s;
        }
    }
    return out;
}

}  // namespace

ParameterErrors parameterErrors(const double* hessian, int ld) {
    const int n = std::clamp(E4DataSet.nVar(), 0, kMaxVar);
    const FitPoint f = fitPoint(n);
    ParameterErrors r;
    r.points = fitCurve.nPts;
    const double S = weightNorm();
    r.chiSquare = S * E4DataSet.fEnd;
    std::vector<int> used;
    freeParameters(r, f, n, used);
    const int q = static_cast<int>(r.index.size());
    r.determined = static_cast<int>(used.size());
    r.sigma.assign(static_cast<std::size_t>(q), 0.0);
    r.correlation.assign(static_cast<std::size_t>(q * q), 0.0);
    // C = (2 / S) H^-1, carried to the reported values.
    Matrix Hinv = hessianBlock(hessian, ld, f, used);
    r.positiveDefinite = S > 0.0 && (used.empty() || invertPositive(Hinv));
    if (r.positiveDefinite) fillFromCovariance(r, sandwich(reportJacobian(r, f, used), Hinv, 2.0 / S));
    return r;
}
