// TerminalTest: the one fixture of the tests that talk to the terminal.
// Each test starts from the program's start state (every registered module
// reset), with the terminal's input and output sent to string streams.
#pragma once

#include "core/module_resets.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

class TerminalTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetProgramState();
        unit::setTerminal(&in_, &out_);
    }
    void TearDown() override { unit::resetUnits(); }

    // The lines typed next at the terminal.
    void feed(const std::string& text) {
        in_.str(text);
        in_.clear();
        unit::restartTerminalInput();
    }
    // What was written on the terminal since the last call.
    std::string output() {
        std::string text = out_.str();
        out_.str("");
        return text;
    }

    std::istringstream in_;
    std::ostringstream out_;
};

// A blank-padded field of the given width.
inline std::string field(const std::string& text, std::size_t width) {
    std::string f = text.substr(0, std::min(text.size(), width));
    f.resize(width, ' ');
    return f;
}
