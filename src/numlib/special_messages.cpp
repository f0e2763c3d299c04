// Message helpers and the fatal stop of the special functions, and
// resetSpecialFunctions, which puts the whole family back to its start.
#include "numlib/special_functions.h"
#include "numlib/special_internal.h"

#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/number_text.h"

#include <cstdlib>

namespace special {

namespace {

constexpr int kMessageWidth = 80;
constexpr int kNumberField = 32;

std::string convertReal(double v, int nFrac, int type) {
    std::string field(kNumberField, ' ');
    int len = 0;
    int err = 0;  // silent conversion
    R02R2C1(v, field, 1, nFrac, len, type, 1, err);
    return field.substr(0, static_cast<std::size_t>(len > 0 ? len : 0));
}

}  // namespace

std::string realText(double v, int nFrac) { return convertReal(v, nFrac, 2); }

std::string realTextSingle(double v, int nFrac) { return convertReal(v, nFrac, 1); }

std::string intText(int i) {
    std::string field(kNumberField, ' ');
    int len = 0;
    int err = 0;
    R02I2C1(i, field, len, err);
    return field.substr(0, static_cast<std::size_t>(len > 0 ? len : 0));
}

void message(std::string_view text) {
    I05MES(text.substr(0, static_cast<std::size_t>(kMessageWidth)));
}

void fatalStop(std::string_view text) {
    write(-1, "(A)", std::string(text));
    unit::flush(-1);
    std::exit(1);
}

}  // namespace special

void resetSpecialFunctions() {
    special::resetChebyshev();
    special::resetFactorials();
    special::resetGammaFunctions();
    special::resetLogGamma();
    special::resetIncompleteBeta();
    special::resetBessel();
}
