// Noise of a simulated curve: NOISEADD with its multiplicative generator and
// polar normal deviates, the date and time text, and testNoiseSeed.
#include "scatter/model_curves.h"

#include "platform/clock.h"

#include <cmath>

namespace {

double frac(double v) { return v - std::trunc(v); }

// The generator: a multiplicative sequence started from 0.5284163.
struct NormalDeviates {
    double r = 0.5284163;
    bool haveSecond = false;
    double second = 0;

    explicit NormalDeviates(int seed) {
        for (int i = 0; i < seed; ++i) r = frac(987.0 * r);
    }
    double next() {
        if (haveSecond) {
            haveSecond = false;
            return second;
        }
        double p = 0, q = 0, d = 0;
        do {
            double a = frac(987.0 * r);
            r = frac(987.0 * a);
            double as = static_cast<float>(a), rs = static_cast<float>(r);
            p = (as - 1.0) + as;
            q = (rs - 1.0) + rs;
            d = p * p + q * q;
        } while (d > 1.0 || d == 0.0);
        double factor = std::sqrt(-2.0 * std::log(d) / d);
        second = q * factor;
        haveSecond = true;
        return p * factor;
    }
};

}  // namespace

void NOISEADD(int n, const double* in, double* out, double noise, int seed) {
    NormalDeviates g(seed);
    for (int i = 0; i < n; ++i) {
        double dev = g.next();
        out[i] = noise < 0 ? in[i] + std::sqrt(std::fabs(in[i])) * dev : (1.0 + noise * dev) * in[i];
    }
}

std::string dateTimeText() { return "  " + dateText() + "   " + timeText(); }

int testNoiseSeed(std::string_view dateTime) {
    auto digit = [&](std::size_t at) {
        char c = at < dateTime.size() ? dateTime[at] : '0';
        return c >= '0' && c <= '9' ? c - '0' : 0;
    };
    // Characters 20-21 and 23-24 (1-based): minutes and seconds.
    int t = ((digit(19) * 10 + digit(20)) * 10 + digit(22)) * 10 + digit(23);
    return std::abs(((106 * t + 1283) % 6075) * 6000) / 6075;
}
