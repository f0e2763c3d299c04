// Rules of the plot axes: tolerantInteger, axisTickStep, AxisTicks,
// AxisTicksStep, AxisLabelField, axisExponent, tickLabel.
#include "core/machine_constants.h"
#include "platform/edit_format.h"
#include "scatter/plot_layer.h"

#include <algorithm>
#include <cmath>

double tolerantInteger(double q) {
    const double eps = X02RMDC(2);
    double aq = std::abs(q);
    if (aq < std::sqrt(0.25 / eps)) {
        aq += 2.0 * eps * aq;
    } else if (aq < 0.25 / eps) {
        aq += eps * aq;
    }
    return std::copysign(std::trunc(aq), q);
}

double axisTickStep(double a, double b) {
    const double e1 = 1.0 - X02RMDC(2);
    double L = std::log10(b - a);
    double k = tolerantInteger(L);
    if (L < 0.0) k -= 1.0;
    double r = std::pow(10.0, L - k);
    double factor = 0.2;
    if (r < 1.2 * e1) {
        factor = 0.2;
    } else if (r < 3.0 * e1) {
        factor = 0.5;
    } else {
        k += 1.0;
        factor = (r < 6.0 * e1) ? 0.1 : 0.2;
    }
    return factor * std::pow(10.0, k);
}

TickList AxisTicksStep(double a, double b, double step) {
    TickList list;
    if (!(step > 0.0) || !(b >= a) || !std::isfinite(a) || !std::isfinite(b)) return list;
    // Ticks are whole multiples of the step, kept as their multiplier so that
    // the tick at zero is exactly zero.
    double first = tolerantInteger(a / step);
    if (first * step < a) first += 1.0;
    if (first * step - a > 0.99 * step) first -= 1.0;
    double last = tolerantInteger(b / step);
    if (b - last * step > 0.99 * step) last += 1.0;
    double n = tolerantInteger(last - first);
    for (int i = 0; i <= n && list.count < kMaxTicks; ++i) {
        list.at[static_cast<std::size_t>(list.count++)] = (first + i) * step;
    }
    return list;
}

TickList AxisTicks(double a, double b) {
    if (!(b > a)) return TickList{};
    return AxisTicksStep(a, b, axisTickStep(a, b));
}

LabelField AxisLabelField(double a, double b) {
    LabelField field;
    double R = b - a;
    if (!(R > 0.0) || !std::isfinite(R)) {
        field.w = 10;
        field.d = 3;
        field.format = "(F10.3)";
        return field;
    }
    double L = std::log10(R);
    int k = static_cast<int>(L > 0.0 ? std::trunc(L) : std::trunc(L - 1.0));
    double D = std::pow(10.0, k);
    double U = (R / D >= 5.0) ? 2.0 * D : (R / D >= 2.0) ? D : D / 2.0;
    double F = std::trunc(a / U) * U;
    if (a > 0.0) F += U;
    double n = std::trunc(1.0 + (b - F) / U);
    double G = F + (n - 1.0) * U;
    double big = std::max(std::abs(F), std::abs(G));
    int m = big > 0.0 ? static_cast<int>(std::trunc(std::log10(big))) : 0;
    int width = 0;
    if (k > 0) {
        width = std::abs(m) + 4;
        field.w = std::abs(m) + 3;
        field.d = 1;
    } else {
        field.d = std::abs(k) + 1;
        field.w = m + 2 * std::abs(k) + 4;
        width = field.w;
    }
    width = std::max(width, field.d + 2);  // a field that can hold "0." and its decimals
    field.format = "(F" + std::to_string(width) + "." + std::to_string(field.d) + ")";
    return field;
}

int axisExponent(double low, double high) {
    double big = std::max(std::log10(std::abs(low) + 1e-30), std::log10(std::abs(high) + 1e-30));
    return static_cast<int>(std::trunc(big));
}

std::string tickLabel(double value, const LabelField& field) {
    std::string text = formatRecords(field.format, FmtItems{FmtItem(value)}).text;
    std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    std::size_t last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}
