// NumberTextTest: starts each test of the number and text conversions from
// the program's start state, with the console captured in a string.
#pragma once

#include "core/machine_constants.h"
#include "platform/units.h"
#include "textfile/number_text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

class NumberTextTest : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        resetMachineConstants();
        resetNumberText();
        unit::setTerminal(nullptr, &out_);
    }
    void TearDown() override { unit::resetUnits(); }

    // What was written on the console since the last call.
    std::string output() {
        std::string text = out_.str();
        out_.str("");
        return text;
    }

    std::ostringstream out_;
};

// Messages on: the incoming err that switches them on.
constexpr int kTalk = -10;
