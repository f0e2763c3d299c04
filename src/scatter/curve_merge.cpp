// Sorting, cutting and joining of curve points: SORTMER (heap sort and merge
// of points that fall together), MINMAX, CURVECUT, JOINPTS.
#include "scatter/measured_curve.h"

#include "core/console_layer.h"
#include "core/machine_constants.h"
#include "platform/units.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// The arrays sorted together: s is the key, y and (with 3 columns) e follow.
struct SortedArrays {
    double* s;
    double* y;
    double* e;  // null when not carried
    void swap(int i, int j) const {
        std::swap(s[i], s[j]);
        std::swap(y[i], y[j]);
        if (e != nullptr) std::swap(e[i], e[j]);
    }
};

void siftDown(const SortedArrays& a, int root, int end) {
    while (2 * root + 1 < end) {
        int child = 2 * root + 1;
        if (child + 1 < end && a.s[child + 1] > a.s[child]) ++child;
        if (a.s[root] >= a.s[child]) return;
        a.swap(root, child);
        root = child;
    }
}

void heapSort(const SortedArrays& a, int n) {
    for (int root = n / 2 - 1; root >= 0; --root) siftDown(a, root, n);
    for (int end = n - 1; end > 0; --end) {
        a.swap(0, end);
        siftDown(a, 0, end);
    }
}

// Replaces the run of points i..i+m-1 by one point and closes the gap.
void mergeRun(const SortedArrays& a, int& n, int i, int m) {
    double sumS = 0.0;
    double sumY = 0.0;
    double sumE2 = 0.0;
    for (int k = i; k < i + m; ++k) {
        sumS += a.s[k];
        sumY += a.y[k];
        if (a.e != nullptr) sumE2 += a.e[k] * a.e[k];
    }
    a.s[i] = sumS / m;
    a.y[i] = sumY / m;
    if (a.e != nullptr) a.e[i] = std::sqrt(sumE2) / m;
    for (int k = i + 1; k + m - 1 < n; ++k) {
        a.s[k] = a.s[k + m - 1];
        a.y[k] = a.y[k + m - 1];
        if (a.e != nullptr) a.e[k] = a.e[k + m - 1];
    }
    n -= m - 1;
}

}  // namespace

void SORTMER(double* s, double* y, double* e, int& n, int nCols, double tol, int sortMode,
             int& status) {
    status = 0;
    if (sortMode != 1 && sortMode != 2) return;
    if (n == 0) {
        I05MES("SORTMER --E- Zero number of output data lines");
        status = -3;
        return;
    }
    if (nCols == 0) {
        I05MES("SORTMER --E- Zero number of output data columns");
        status = -4;
        return;
    }
    if (n < 2) return;
    const SortedArrays a{s, y, nCols >= 3 ? e : nullptr};
    heapSort(a, n);
    if (sortMode == 1) return;

    const double eps = X02RMDC(2);
    const double d = std::max((s[n - 1] - s[0]) * tol,
                              eps * std::max(std::fabs(s[0]), std::fabs(s[n - 1])));
    for (int i = 0; i < n - 1; ++i) {
        if (!(s[i + 1] < s[i] + d)) continue;
        int j = i + 1;
        while (j < n && s[j] < s[i] + d) ++j;
        mergeRun(a, n, i, j - i);
    }
}

void MINMAX(int n, const double* a, double& min, double& max) {
    if (n < 1) {
        min = 0.0;
        max = 0.0;
        return;
    }
    min = a[0];
    max = a[0];
    for (int i = 1; i < n; ++i) {
        min = std::min(min, a[i]);
        max = std::max(max, a[i]);
    }
}

int CURVECUT(const double* s, int n, double limit) {
    if (n < 1) return 0;
    const bool ascending = s[n - 1] >= s[0];
    // "Before the limit": below it on an ascending curve, above on a
    // descending one.  lo counts points known before, hi the first not.
    auto before = [&](double v) { return ascending ? v < limit : v > limit; };
    int lo = 0;
    int hi = n;
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        if (before(s[mid]))
            lo = mid + 1;
        else
            hi = mid;
    }
    return lo;
}

void JOINPTS(int n, const double* s, const double* y, const double* e, int target, int& nOut,
             double* sOut, double* yOut, double* eOut) {
    if (n < 1 || target < 1) {
        nOut = 0;
        return;
    }
    const int g = (n - 1) / target + 1;
    if (g == 1) {
        std::copy(s, s + n, sOut);
        std::copy(y, y + n, yOut);
        std::copy(e, e + n, eOut);
        nOut = n;
        return;
    }
    write(-1, "(1X,I4,A)", g, " successive data points joined");
    nOut = 0;
    for (int first = 0; first < n; first += g) {
        const int m = std::min(g, n - first);
        double sumS = 0.0;
        double sumY = 0.0;
        double sumE2 = 0.0;
        for (int k = first; k < first + m; ++k) {
            sumS += s[k];
            sumY += y[k];
            sumE2 += e[k] * e[k];
        }
        sOut[nOut] = sumS / m;
        yOut[nOut] = sumY / m;
        eOut[nOut] = std::sqrt(sumE2) / m;
        ++nOut;
    }
}
