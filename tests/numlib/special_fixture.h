// SpecialFixture: the tests of the special functions and the runs test start
// from the program's start state, with the console captured.
#pragma once

#include "numlib/special_functions.h"
#include "textfile/console_fixture.h"

class SpecialFixture : public ConsoleFixture {
protected:
    void SetUp() override {
        ConsoleFixture::SetUp();
        resetSpecialFunctions();
    }
    // What was written on the console since the last call.
    std::string take() { return output(); }
};
