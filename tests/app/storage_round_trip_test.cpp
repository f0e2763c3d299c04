// A search stored with SAVE and taken up in a new session with RECOVER and
// CONTINUE ends where the same search ends without the interruption.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

// The end-of-job value and the point line of a session.
struct End {
    double value = -1.0;
    std::string point;
    long evaluations = -1;
    bool reported = false;  // RUN's data report was written: the search started afresh
};

End endOf(const std::string& out) {
    End e;
    e.reported = out.find("reports current information:") != std::string::npos;
    const std::string key = " Produced function minimum is equal to";
    const std::size_t at = out.rfind(key);
    if (at == std::string::npos) return e;
    e.value = std::strtod(out.c_str() + at + key.size(), nullptr);
    const std::size_t point = out.find(" at the point:\n\n", at);
    if (point != std::string::npos) {
        const std::size_t from = point + 16;
        e.point = out.substr(from, out.find('\n', from) - from);
    }
    const std::size_t after = out.find(" after ", at);
    if (after != std::string::npos) e.evaluations = std::strtol(out.c_str() + after + 7, nullptr, 10);
    return e;
}

// Runs `commands` as the command file of an auto-mode session in `dir`.
End session(const std::string& dir, const std::string& commands) {
    writeFile(dir + "/zemok.cmd", commands);
    writeFile(dir + "/zemok.inp", "");
    return endOf(runZemok("MODE,AUTO\n", {}, dir).out);
}

struct Case {
    const char* method;
    int first;  // iterations before the interruption
    int rest;
};

TEST(StorageRoundTrip, RecoveredSearchEndsWhereTheUninterruptedOneEnds) {
    const Case cases[] = {{"N-M", 150, 2000}, {"B-F-G-S", 5, 200}};
    for (const Case& c : cases) {
        const std::string start = "PROBLEM,TEST,3\nMETHOD," + std::string(c.method) + "\nMAXITR," +
                                  std::to_string(c.first) + "\nRUN\n";
        const std::string more = "MAXITR," + std::to_string(c.rest) + "\nCONTINUE\nEXIT\n";
        const std::string dir = freshFolder("roundtrip");
        const End stopped = session(dir, start + "SAVE,,wood\nEXIT\n");
        const End resumed = session(dir, "RECOVER,wood\n" + more);
        const End whole = session(dir, start + more);
        std::filesystem::remove_all(dir);
        // Wood's function has its minimum 0 at (1, 1, 1, 1).
        EXPECT_GT(stopped.value, 1e-6) << c.method;
        EXPECT_FALSE(resumed.reported) << c.method;  // CONTINUE went on with the recovered search
        EXPECT_LT(resumed.value, 1e-12) << c.method;
        EXPECT_LT(whole.value, 1e-12) << c.method;
        EXPECT_EQ(resumed.point, "   1.00000       1.00000       1.00000       1.00000    ") << c.method;
        EXPECT_EQ(resumed.point, whole.point) << c.method;
        // The counters came back: the evaluations of both sessions add up.
        EXPECT_GT(resumed.evaluations, stopped.evaluations) << c.method;
    }
}

}  // namespace
