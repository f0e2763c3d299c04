// Tests of the CPU timers: the bank of 99 timers driven by a clock of known
// times, the refused numbers, and the " CPU time used:" line.
#include "support/terminal_test.h"
#include "numlib/cpu_timers.h"

#include "platform/units.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

double fakeNow = 0;
double fakeClock() { return fakeNow; }

class CpuTimersTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetCpuTimers();
        setCpuClock(&fakeClock);
        fakeNow = 10.0;
    }
    void TearDown() override {
        resetCpuTimers();
        unit::resetUnits();
    }
};

TEST_F(CpuTimersTest, FirstReadStartsTheTimerAndLaterReadsGiveTheTime) {
    EXPECT_EQ(Z02ECPU(5), 0.0);
    fakeNow = 12.5;
    EXPECT_EQ(Z02ECPU(5), 2.5);
    fakeNow = 13.5;
    EXPECT_EQ(Z02ECPU(5), 3.5);  // still running from 10
    // Another timer is independent.
    EXPECT_EQ(Z02ECPU(6), 0.0);
    fakeNow = 20.0;
    EXPECT_EQ(Z02ECPU(6), 6.5);
    EXPECT_EQ(Z02ECPU(5), 10.0);
}

TEST_F(CpuTimersTest, CputWritesMinutesAndSeconds) {
    int minutes = -1;
    double seconds = -1;
    Z02CPUT(1, minutes, seconds, 6);  // first read starts timer 1: 0 min 0 sec
    EXPECT_EQ(minutes, 0);
    EXPECT_EQ(seconds, 0.0);
    EXPECT_EQ(output(), " CPU time used:       0 min  0.00 sec\n");

    fakeNow = 135.5;  // 125.5 s after the start at 10
    Z02CPUT(1, minutes, seconds, 6);
    EXPECT_EQ(minutes, 2);
    EXPECT_EQ(seconds, 5.5);
    EXPECT_EQ(output(), " CPU time used:       2 min  5.50 sec\n");

    fakeNow = 10.0 + 59.996;  // the seconds round up in F5.2
    Z02CPUT(1, minutes, seconds, 6);
    EXPECT_EQ(output(), " CPU time used:       0 min 60.00 sec\n");

    fakeNow = 10.0 + 60.0 * 12345 + 59.25;
    Z02CPUT(1, minutes, seconds, 0);  // channel below 1: the terminal
    EXPECT_EQ(minutes, 12345);
    EXPECT_EQ(output(), " CPU time used:   12345 min 59.25 sec\n");
}

}  // namespace
