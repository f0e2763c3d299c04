// Tests of R02CSO: the four actions, a full and an empty stack, cut texts,
// and every message.
#include "support/terminal_test.h"

#include "textfile/command_stack.h"

#include <vector>

namespace {

class CommandStackTest : public TerminalTest {
protected:
    std::vector<std::string> stack = std::vector<std::string>(20, std::string(80, ' '));
    std::string command;
    int sp = 0;
    int status = 99;

    // Runs the action; returns the command field trimmed, the status and sp.
    std::string run(const std::string& text, const std::string& action) {
        command = field(text, 80);
        R02CSO(command, action, stack, 20, sp, status);
        return command.substr(0, command.find_last_not_of(' ') + 1) + "|" + std::to_string(status) + "|" +
               std::to_string(sp);
    }
};

TEST_F(CommandStackTest, PushUpToTheLastEntryThenOverflow) {
    for (int k = 1; k <= 19; ++k) {
        std::string text = "CMD " + std::to_string(k);
        ASSERT_EQ(run(text, "PUSH"), text + "|0|" + std::to_string(k));
    }
    EXPECT_EQ(run("CMD 20", "push"), "CMD 20|1|20");
    EXPECT_EQ(output(), "");
    EXPECT_EQ(run("CMD 21", "PUSH"), "CMD 21|-1|20");
    EXPECT_EQ(stack[19], field("CMD 20", 80));
    EXPECT_EQ(output(), " R02CSO ---E- Command stack overflow.\n");
}

TEST_F(CommandStackTest, ReadKeepsPopRemovesClearEmpties) {
    run("RUN", "PUSH");
    run("  LOAD,XSTART  ", "PUSH");
    EXPECT_EQ(run("", "READ"), "  LOAD,XSTART|0|2");
    EXPECT_EQ(run("", "POP"), "  LOAD,XSTART|0|1");
    EXPECT_EQ(stack[1], field("", 80));
    EXPECT_EQ(run("", "Pop"), "RUN|0|0");
    run("A", "PUSH");
    EXPECT_EQ(run("", "CLEAR"), "|0|0");
    EXPECT_EQ(stack[0], field("", 80));
    EXPECT_EQ(output(), "");
}

}  // namespace
