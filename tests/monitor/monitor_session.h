// MonitorSession: the terminal fixture running the command monitor.
#pragma once

#include "monitor/monitor.h"
#include "support/terminal_test.h"

class MonitorSession : public TerminalTest {
protected:
    // Runs E4MON1 with `input` as the terminal; returns what it wrote.
    std::string session(const std::string& input) {
        unit::setTerminal(&in_, &out_);
        feed(input);
        E4MON1(status);
        return output();
    }
    int status = -1;
};
