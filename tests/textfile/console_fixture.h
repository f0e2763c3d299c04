// ConsoleFixture: starts each test of the text services from the program's
// start state with the terminal sent to string streams.
#pragma once

#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/word_splitter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

class ConsoleFixture : public ::testing::Test {
protected:
    void SetUp() override {
        unit::resetUnits();
        resetSysinf();
        resetWordSplitter();
        unit::setTerminal(&in_, &out_);
    }
    void TearDown() override { unit::resetUnits(); }

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
