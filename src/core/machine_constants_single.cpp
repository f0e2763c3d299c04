// Single-precision twins of the machine constants: X02ADDS, X02MDCS1-X02MDCS6,
// X02RMDCS, X02IMDCS.
#include "core/machine_constants.h"

#include "core/machine_experiments.h"

namespace x02 {

namespace {

// Reached through a volatile pointer, as the double-precision adder.
float (*volatile singleAdder)(float, float) = &X02ADDS;

Cache<float> singles;

}  // namespace

float Precision<float>::add(float a, float b) { return singleAdder(a, b); }

void resetSingle() { singles = Cache<float>{}; }

}  // namespace x02

float X02ADDS(float a, float b) {
    volatile float sum = a + b;
    return sum;
}

void X02MDCS1(float& eps, float& rMin, float& rMax, float& rBig, int& nDigits) {
    x02::mainSet<float>(x02::singles, eps, rMin, rMax, rBig, nDigits);
}

float X02RMDCS(int code) { return x02::realConstant<float>(x02::singles, code); }

int X02IMDCS(int code) { return x02::integerConstant<float>(x02::singles, code); }

void X02MDCS2(int& beta, int& t, bool& rnd, bool& ieee) {
    x02::baseSet<float>(x02::singles, beta, t, rnd, ieee);
}

void X02MDCS3(int& emin, float& rMin, bool& ieee, int beta, int t) {
    x02::minExponent<float>(emin, rMin, ieee, beta, t);
}

void X02MDCS4(int& emin, float start, int beta) {
    x02::underflowProbe<float>(emin, start, beta);
}

void X02MDCS5(int& emax, float& rMax, int& exbits, int beta, int t, int emin, bool ieee) {
    x02::maxExponent<float>(emax, rMax, exbits, beta, t, emin, ieee);
}

void X02MDCS6(float& gMin, float& gMax, int& err) {
    x02::gammaSet<float>(x02::singles, gMin, gMax, err);
}
