// Default limits of the searches and RUN's warnings about them.
#include "core/search_limits.h"

#include "core/console_layer.h"

#include <string>
#include <string_view>

namespace {

void warn(std::string_view head, int value, std::string_view advice, int recommended) {
    E04MES(std::string(head) + std::to_string(value));
    E04MES(std::string(advice) + std::to_string(recommended));
}

}  // namespace

int evaluationsForIterations(int n, int maxITR) { return (n + n / 3 + 15) * maxITR; }

void testProblemLimits(int n, int& maxITR, int& maxNFE) {
    maxITR = 20 * n;
    maxNFE = evaluationsForIterations(n, maxITR);
}

void userProblemLimits(int n, int& maxITR, int& maxNFE) {
    if (maxITR == 0) maxITR = 10 * n;
    if (maxNFE == 0) maxNFE = evaluationsForIterations(n, maxITR);
}

void defaultLimits(LimitRule rule, int nVar, int nFree, int& maxITR, int& maxNFE) {
    if (maxITR > 0 && maxNFE > 0) return;
    const int n = nFree;
    if (rule == LimitRule::FirstOrder && (nVar == 1 || n == 1)) {
        maxITR = 1;
        if (maxNFE <= 0) maxNFE = 50;
        return;
    }
    switch (rule) {
        case LimitRule::FirstOrder:
        case LimitRule::CoordinateDescent:
            if (maxITR <= 0) {
                maxITR = 10 * n;
                if (maxNFE <= 0) maxNFE = evaluationsForIterations(n, maxITR);
            }
            break;
        case LimitRule::Simplex:
            maxNFE = maxNFE <= 0 ? 300 * n : std::max(maxNFE, maxITR);
            maxITR = maxNFE;
            break;
        case LimitRule::MonteCarlo: maxNFE = 1000 * n; break;
        case LimitRule::AnnealedMonteCarlo:
            if (maxITR <= 0) maxNFE = 1000 * n;
            break;
        case LimitRule::None: break;
    }
}

void limitWarnings(int method, int nFree, int maxITR, int maxNFE, bool fromTerminal) {
    const int n = nFree;
    if (method >= 2 && method <= 14 && fromTerminal) {
        if (maxITR > 100 * n)
            warn("ZEMOK -W- Maximum number of iterations seems too large: ", maxITR,
                 "          Recommended value: ", 10 * n);
        const int needed = evaluationsForIterations(n, maxITR);
        if (maxNFE < needed)
            warn("ZEMOK -W- Max. number of function evaluations seems too small: ", maxNFE,
                 "          Recommended value: ", needed);
    }
    if (method == 15 || method == 16) {
        const int r = (method == 15 ? 100 : 1000) * n;
        const int tenth = static_cast<int>(static_cast<float>(r) * 0.1f);
        if (maxNFE < tenth)
            warn(" ZEMOK -W- Maximum number of F calls seems too small: ", maxNFE,
                 "           Recommended value: ", r);
        if (maxNFE > 100 * r)
            warn(" ZEMOK -W- Maximum number of F calls seems too large: ", maxNFE,
                 "           Recommended value: ", r);
    }
}
