// CPU timers: Z02ECPU and Z02CPUT, a bank of 99 timers in static storage,
// and resetCpuTimers, setCpuClock.
#include "numlib/cpu_timers.h"

#include "core/console_layer.h"
#include "platform/clock.h"
#include "platform/units.h"

#include <array>
#include <cstdlib>

namespace {

constexpr int kTimers = 99;

struct TimerBank {
    bool cleared = false;  // first call of Z02ECPU done
    std::array<double, kTimers + 1> start{};
    std::array<bool, kTimers + 1> started{};
};

TimerBank bank;
double (*cpuClock)() = &cpuSeconds;

// CPU time of the process at single-precision resolution.
double timeNow() { return static_cast<double>(static_cast<float>(cpuClock())); }

}  // namespace

double Z02ECPU(int k) {
    if (!bank.cleared) {
        bank.started.fill(false);
        bank.cleared = true;
    }
    if (k > kTimers || k < -kTimers) {
        I05MES("Z02ECPU --E- Timer number exceeds 99.");
        return 0.0;
    }
    const double t = timeNow();
    if (k == 0) k = -1;
    const int n = std::abs(k);
    if (k < 0 || !bank.started[n]) {
        bank.start[n] = t;
        bank.started[n] = true;
        return 0.0;
    }
    return t - bank.start[n];
}

void Z02CPUT(int k, int& minutes, double& seconds, int channel) {
    const double total = Z02ECPU(k);
    minutes = static_cast<int>(total / 60.0);
    seconds = total - 60.0 * minutes;
    if (k > 0) {
        write(writerChannel(channel), "(\" CPU time used:\",I8,\" min \",F5.2,\" sec\")", minutes,
              seconds);
    }
}

void resetCpuTimers() {
    bank = TimerBank{};
    cpuClock = &cpuSeconds;
}

void setCpuClock(double (*clock)()) { cpuClock = clock ? clock : &cpuSeconds; }
