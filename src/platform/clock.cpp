// Clock and process services: dateText, timeText, cpuSeconds,
// environmentValue, setProgramArguments, programCommandLine.
#include "platform/clock.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace {

std::vector<std::string>& programArguments() {
    static std::vector<std::string> args;
    return args;
}

std::tm localNow() {
    std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    return parts;
}

std::string twoDigits(int v) {
    return std::string{static_cast<char>('0' + v / 10 % 10), static_cast<char>('0' + v % 10)};
}

}  // namespace

std::string dateText() {
    static const std::array<const char*, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm t = localNow();
    return twoDigits(t.tm_mday) + "-" + months[static_cast<std::size_t>(t.tm_mon)] + "-" +
           std::to_string(t.tm_year + 1900);
}

std::string timeText() {
    std::tm t = localNow();
    return twoDigits(t.tm_hour) + ":" + twoDigits(t.tm_min) + ":" + twoDigits(t.tm_sec);
}

double cpuSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

std::string environmentValue(const std::string& name) {
    const char* v = std::getenv(name.c_str());
    return v ? std::string(v) : std::string();
}

void setProgramArguments(int argc, const char* const* argv) {
    programArguments().clear();
    for (int i = 1; i < argc; ++i) programArguments().emplace_back(argv[i]);
}

std::string programCommandLine() {
    std::string line;
    for (const std::string& arg : programArguments()) {
        if (!line.empty()) line += ' ';
        bool quote = arg.find_first_of(" ,") != std::string::npos;
        line += quote ? "\"" + arg + "\"" : arg;
    }
    return line;
}
