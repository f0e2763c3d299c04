// Double-precision machine constants: X02ADD, X02MDC1-X02MDC6, X02RMDC, X02IMDC,
// and resetMachineConstants.
#include "core/machine_constants.h"

#include "core/machine_experiments.h"
#include "platform/units.h"

#include <cstdlib>

namespace x02 {

namespace {

// The adder is reached through a volatile pointer: the compiler can neither
// fold the experiments into constants nor keep a sum in a wider register.
double (*volatile doubleAdder)(double, double) = &X02ADD;

Cache<double> doubles;

}  // namespace

double Precision<double>::add(double a, double b) { return doubleAdder(a, b); }

void fatalStop() {
    write(-1, "(A)", " FATAL ERROR");
    unit::flush(-1);
    std::exit(1);
}

// Defined beside the single-precision twins.
void resetSingle();

}  // namespace x02

double X02ADD(double a, double b) {
    volatile double sum = a + b;
    return sum;
}

void X02MDC1(double& eps, double& rMin, double& rMax, double& rBig, int& nDigits) {
    x02::mainSet<double>(x02::doubles, eps, rMin, rMax, rBig, nDigits);
}

double X02RMDC(int code) { return x02::realConstant<double>(x02::doubles, code); }

int X02IMDC(int code) { return x02::integerConstant<double>(x02::doubles, code); }

void X02MDC2(int& beta, int& t, bool& rnd, bool& ieee) {
    x02::baseSet<double>(x02::doubles, beta, t, rnd, ieee);
}

void X02MDC3(int& emin, double& rMin, bool& ieee, int beta, int t) {
    x02::minExponent<double>(emin, rMin, ieee, beta, t);
}

void X02MDC4(int& emin, double start, int beta) {
    x02::underflowProbe<double>(emin, start, beta);
}

void X02MDC5(int& emax, double& rMax, int& exbits, int beta, int t, int emin, bool ieee) {
    x02::maxExponent<double>(emax, rMax, exbits, beta, t, emin, ieee);
}

void X02MDC6(double& gMin, double& gMax, int& err) {
    x02::gammaSet<double>(x02::doubles, gMin, gMax, err);
}

void resetMachineConstants() {
    x02::doubles = x02::Cache<double>{};
    x02::resetSingle();
}

