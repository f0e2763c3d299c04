// The monitor loop fed with thousands of random, binary and over-long lines:
// it must neither crash nor lose the session, and every line is answered.
#include "monitor/monitor.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace {

std::string randomLine(std::mt19937& rng) {
    static const std::string specials = "'\"()[]{}<>=,;!#~ \t\r\x01\x7f\xff";
    std::uniform_int_distribution<int> kind(0, 5);
    std::uniform_int_distribution<int> len(0, 200);
    std::uniform_int_distribution<int> byte(1, 255);
    std::string line;
    switch (kind(rng)) {
        case 0: line.assign(10000, 'W'); break;                      // one huge word
        case 1: line = std::string(1, specials[rng() % specials.size()]); break;
        default:
            for (int i = len(rng); i > 0; --i) {
                char c = static_cast<char>(byte(rng));
                line += c == '\n' ? ' ' : c;
            }
    }
    // EXIT would end the session early, and "@" hands the line to the shell.
    std::size_t first = line.find_first_not_of(" \t,;");
    if (first == std::string::npos) return line;
    if (line[first] == '@') line[first] = 'Z';
    if ((line[first] == 'E' || line[first] == 'e') && first + 1 < line.size() &&
        (line[first + 1] == 'X' || line[first + 1] == 'x'))
        line[first] = 'Z';
    return line;
}

TEST(MonitorRobustness, RandomLinesNeverEndOrBreakTheSession) {
    std::mt19937 rng(20261122);
    std::ostringstream script;
    const int lines = 3000;
    for (int i = 0; i < lines; ++i) script << randomLine(rng) << '\n';
    script << "EXIT\n";
    std::istringstream in(script.str());
    std::ostringstream out;
    resetProgramState();
    unit::setTerminal(&in, &out);
    int status = -1;
    E4MON1(status);
    unit::resetTerminal();
    EXPECT_EQ(status, 0);
    // Random words reach commands that ask questions, which take the next
    // lines as replies; but every line was read and the session ended well.
    std::string text = out.str();
    std::size_t prompts = 0;
    for (std::size_t at = text.find(" ZEMOK: "); at != std::string::npos;
         at = text.find(" ZEMOK: ", at + 1))
        ++prompts;
    EXPECT_GT(prompts, static_cast<std::size_t>(lines / 2));
    EXPECT_EQ(in.peek(), std::char_traits<char>::eof());
    // No message line of the monitor is wider than the 80 characters it allows.
    std::istringstream rows(text);
    for (std::string row; std::getline(rows, row);) {
        std::size_t at = row.find(" ILLEGAL COMMAND: ");
        if (at != std::string::npos) {
            EXPECT_LE(row.size() - at, 80u);
        }
    }
}

}  // namespace
