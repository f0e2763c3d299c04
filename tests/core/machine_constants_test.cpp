// Tests of the machine constants: both tables against the IEEE values and
// std::numeric_limits, the probes, wrong codes and the first-call storage.
#include "support/terminal_test.h"
#include "core/machine_constants.h"

#include "platform/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

class MachineConstantsTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetMachineConstants();
    }
    void TearDown() override { unit::resetUnits(); }
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

}  // namespace
