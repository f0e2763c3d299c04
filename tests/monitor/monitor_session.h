// MonitorSession: a test fixture that runs the command monitor on a scripted
// terminal, starting from the program's start state.
#pragma once

#include "monitor/monitor.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

class MonitorSession : public ::testing::Test {
protected:
    void SetUp() override { resetProgramState(); }
    void TearDown() override { unit::resetUnits(); }
    // Runs E4MON1 with `input` as the terminal; returns what it wrote.
    std::string session(const std::string& input) {
        std::istringstream in(input);
        std::ostringstream out;
        unit::setTerminal(&in, &out);
        E4MON1(status);
        unit::resetTerminal();
        return out.str();
    }
    int status = -1;
};
