// Limits of the number and text conversions: realTextLimits, integerTextLimits,
// resetNumberText (first-call state of the R02 converters).
#include "textfile/number_text_limits.h"

#include "core/machine_constants.h"
#include "textfile/number_text.h"

#include <cmath>

namespace {

struct LimitStore {
    bool haveReal[2] = {false, false};
    RealTextLimits real[2];
    bool haveInteger = false;
    IntegerTextLimits integer;
};

LimitStore store;

RealTextLimits measureRealLimits(bool single) {
    RealTextLimits lim;
    const double rBig = single ? static_cast<double>(X02RMDCS(5)) : X02RMDC(5);
    lim.S = single ? X02IMDCS(4) : X02IMDC(4);
    lim.Z = single ? static_cast<double>(X02RMDCS(3)) : X02RMDC(3);
    const double decades = std::log10(rBig);
    lim.L = static_cast<int>(1.0 + decades);
    lim.X = static_cast<int>(std::log10(1.0 + decades) + 1.0);
    return lim;
}

}  // namespace

const RealTextLimits& realTextLimits(int type) {
    const int k = type == 1 ? 1 : 0;
    if (!store.haveReal[k]) {
        store.real[k] = measureRealLimits(k == 1);
        store.haveReal[k] = true;
    }
    return store.real[k];
}

const IntegerTextLimits& integerTextLimits() {
    if (!store.haveInteger) {
        IntegerTextLimits& lim = store.integer;
        lim.largest = X02IMDC(12);
        lim.largestDigits = X02IMDC(13);
        lim.maxDecExp = X02IMDC(10);
        lim.minDecExp = X02IMDC(9);
        lim.rMin = X02RMDC(3);
        lim.rMax = X02RMDC(4);
        lim.eps = X02RMDC(2);
        store.haveInteger = true;
    }
    return store.integer;
}

void resetNumberText() { store = LimitStore{}; }
