// Tests of the machine constants: both tables against the IEEE values and
// std::numeric_limits, the probes, wrong codes and the first-call storage.
#include "core/machine_constants.h"

#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

class MachineConstantsTest : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        resetMachineConstants();
        unit::setTerminal(nullptr, &out_);
    }
    void TearDown() override { unit::resetUnits(); }
    std::string output() {
        std::string s = out_.str();
        out_.str("");
        return s;
    }
    std::ostringstream out_;
};

// Powers of two written as such, so that no limit is typed in by hand.
double two(int n) { return std::ldexp(1.0, n); }
float twoF(int n) { return std::ldexp(1.0f, n); }

TEST_F(MachineConstantsTest, DoubleRealTableMatchesIeeeValues) {
    using L = std::numeric_limits<double>;
    EXPECT_EQ(X02RMDC(1), two(-53));
    EXPECT_EQ(X02RMDC(2), two(-52));
    EXPECT_EQ(X02RMDC(2), L::epsilon());
    EXPECT_EQ(X02RMDC(3), two(-1022));
    EXPECT_EQ(X02RMDC(3), L::min());
    EXPECT_EQ(X02RMDC(4), L::max());
    EXPECT_EQ(X02RMDC(4), (1 - two(-53)) * two(1023) * 2);
    EXPECT_EQ(X02RMDC(5), two(1022));
    EXPECT_NEAR(X02RMDC(6), -170.5674972726612, 1e-12);
    EXPECT_NEAR(X02RMDC(7), 171.6144788718230, 1e-12);
    EXPECT_NEAR(X02RMDC(8), 708.3964185322641, 1e-12);
    EXPECT_NEAR(X02RMDC(9), 307.6526555685888, 1e-12);
    EXPECT_EQ(output(), "");
}

TEST_F(MachineConstantsTest, DoubleIntegerTableMatchesIeeeValues) {
    using L = std::numeric_limits<double>;
    const int expected[19] = {0,    2,    53,  11,  16,         -1021, 1023, -708, 709, -307,
                              308,  0,    2147483647,  10,  31, 32,    170,  18,   12};
    for (int code = 1; code <= 18; ++code) {
        if (code == 11) continue;
        EXPECT_EQ(X02IMDC(code), expected[code]) << "code " << code;
    }
    EXPECT_EQ(X02IMDC(1), L::radix);
    EXPECT_EQ(X02IMDC(2), L::digits);
    EXPECT_EQ(X02IMDC(5), L::min_exponent);
    EXPECT_EQ(X02IMDC(6), L::max_exponent - 1);  // the largest exponent, not one past it
    EXPECT_EQ(X02IMDC(12), std::numeric_limits<int>::max());
    EXPECT_EQ(X02IMDC(15), std::numeric_limits<int>::digits + 1);
    EXPECT_EQ(output(), "");
}

TEST_F(MachineConstantsTest, SingleTablesMatchIeeeValues) {
    using L = std::numeric_limits<float>;
    EXPECT_EQ(X02RMDCS(1), twoF(-24));
    EXPECT_EQ(X02RMDCS(2), L::epsilon());
    EXPECT_EQ(X02RMDCS(3), L::min());
    EXPECT_EQ(X02RMDCS(4), L::max());
    EXPECT_EQ(X02RMDCS(5), twoF(126));
    EXPECT_NEAR(X02RMDCS(6), -33.96258f, 2e-5f);
    EXPECT_NEAR(X02RMDCS(7), 35.03078f, 2e-5f);
    EXPECT_NEAR(X02RMDCS(8), std::log(twoF(126)), 1e-4f);
    EXPECT_NEAR(X02RMDCS(9), std::log10(twoF(126)), 1e-4f);

    const int expected[19] = {0,   2,   24,         8,  7,  -125, 127, -87, 88, -37,
                              38,  0,   2147483647, 10, 31, 32,   34,  10,  12};
    for (int code = 1; code <= 18; ++code) {
        if (code == 11) continue;
        EXPECT_EQ(X02IMDCS(code), expected[code]) << "code " << code;
    }
    EXPECT_EQ(X02IMDCS(1), L::radix);
    EXPECT_EQ(X02IMDCS(2), L::digits);
    EXPECT_EQ(X02IMDCS(5), L::min_exponent);
    EXPECT_EQ(X02IMDCS(6), L::max_exponent - 1);

    float eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int nDigits = 0;
    X02MDCS1(eps, rMin, rMax, rBig, nDigits);
    EXPECT_EQ(rBig, twoF(126));
    EXPECT_EQ(nDigits, 7);
    EXPECT_EQ(X02RMDC(2), two(-52));  // the double storage is apart
    EXPECT_EQ(output(), "");
}

TEST_F(MachineConstantsTest, WrongCodesAreRefusedWithTheirTexts) {
    EXPECT_EQ(X02RMDC(0), two(-52));
    EXPECT_EQ(X02RMDC(10), two(-52));
    EXPECT_EQ(output(), " X02RMDC --E- Wrong action code.\n X02RMDC --E- Wrong action code.\n");
    EXPECT_EQ(X02IMDC(0), 0);
    EXPECT_EQ(X02IMDC(11), 0);
    EXPECT_EQ(X02IMDC(19), 0);
    EXPECT_EQ(output(), " X02IMDC --E- Wrong argument value.\n"
                            " X02IMDC --E- Wrong argument value.\n"
                            " X02IMDC --E- Wrong argument value.\n");
    EXPECT_EQ(X02RMDCS(-1), twoF(-23));
    EXPECT_EQ(output(), " X02RMDCS -E- Wrong action code.\n");
    EXPECT_EQ(X02IMDCS(11), 0);
    EXPECT_EQ(output(), " X02IMDC --E- Wrong argument value.\n");
}

TEST_F(MachineConstantsTest, EdgePropertiesOfTheMeasuredValues) {
    volatile double eps1 = X02RMDC(1);
    volatile double below = 1.0 - eps1;
    volatile double above = 1.0 + eps1;
    EXPECT_NE(below, 1.0);
    EXPECT_EQ(above, 1.0);

    const double rBig = X02RMDC(5);
    EXPECT_LT(rBig, X02RMDC(4));
    EXPECT_GE(1.0 / rBig, X02RMDC(3));
    EXPECT_NE(std::exp(std::log(1.0 / rBig)), 0.0);
    EXPECT_GE(X02RMDC(6), 1.0 - X02RMDC(7));
    EXPECT_GE(X02RMDCS(6), 1.0f - X02RMDCS(7));
    // gMax is where the factorial leaves the numbers: 170! is finite, 171! is not.
    EXPECT_TRUE(std::isfinite(std::tgamma(X02IMDC(16) + 1.0)));
    EXPECT_FALSE(std::isfinite(std::tgamma(X02IMDC(16) + 2.0)));
}

TEST_F(MachineConstantsTest, BaseExperimentFindsBinaryRoundToNearest) {
    int beta = 0, t = 0;
    bool rnd = false, ieee = false;
    X02MDC2(beta, t, rnd, ieee);
    EXPECT_EQ(beta, 2);
    EXPECT_EQ(t, 53);
    EXPECT_TRUE(rnd);
    EXPECT_TRUE(ieee);
    EXPECT_EQ(rnd, std::numeric_limits<double>::round_style == std::round_to_nearest);
    EXPECT_EQ(ieee, std::numeric_limits<double>::is_iec559);
    X02MDCS2(beta, t, rnd, ieee);
    EXPECT_EQ(beta, 2);
    EXPECT_EQ(t, 24);
    EXPECT_TRUE(rnd);
    EXPECT_TRUE(ieee);
}

TEST_F(MachineConstantsTest, UnderflowProbesStopAtTheLastExactQuotient) {
    // From 1 the halving goes on down to the smallest subnormal 2^-1074, whose
    // half is lost: 1074 passes, emin = 1 - 1074.
    int emin = 0;
    X02MDC4(emin, 1.0, 2);
    EXPECT_EQ(emin, -1073);
    X02MDC4(emin, -1.0, 2);
    EXPECT_EQ(emin, -1073);
    // 1 + 1/8 needs three bits more: its quotient loses a bit three passes earlier.
    X02MDC4(emin, 1.125, 2);
    EXPECT_EQ(emin, -1070);
    X02MDCS4(emin, 1.0f, 2);
    EXPECT_EQ(emin, -148);
    X02MDCS4(emin, 1.125f, 2);
    EXPECT_EQ(emin, -145);

    // Gradual underflow shows as g - n = 3: emin = n - 1 + t.
    double rMin = 0;
    bool ieee = false;
    X02MDC3(emin, rMin, ieee, 2, 53);
    EXPECT_EQ(emin, -1021);
    EXPECT_EQ(rMin, two(-1022));
    EXPECT_TRUE(ieee);
    float rMinS = 0;
    X02MDCS3(emin, rMinS, ieee, 2, 24);
    EXPECT_EQ(emin, -125);
    EXPECT_EQ(rMinS, std::numeric_limits<float>::min());
    EXPECT_EQ(output(), "");
}

TEST_F(MachineConstantsTest, MaximumExponentFromTheMinimumOne) {
    int emax = 0, exbits = 0;
    double rMax = 0;
    X02MDC5(emax, rMax, exbits, 2, 53, -1021, true);
    EXPECT_EQ(emax, 1023);
    EXPECT_EQ(exbits, 11);
    EXPECT_EQ(rMax, std::numeric_limits<double>::max());
    // Without the IEEE step the bound stays one higher and y * 2^1025 overflows.
    X02MDC5(emax, rMax, exbits, 2, 53, -1021, false);
    EXPECT_EQ(emax, 1024);
    EXPECT_TRUE(std::isinf(rMax));

    float rMaxS = 0;
    X02MDCS5(emax, rMaxS, exbits, 2, 24, -125, true);
    EXPECT_EQ(emax, 127);
    EXPECT_EQ(exbits, 8);
    EXPECT_EQ(rMaxS, std::numeric_limits<float>::max());
}

}  // namespace
