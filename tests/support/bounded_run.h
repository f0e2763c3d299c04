// Runs the built zemok in a folder with a time limit and a limit on what it
// may write, for sessions that must end by themselves.
#pragma once

#include <string>
#include <vector>

struct BoundedRun {
    std::string out;          // standard output and error, up to the limit
    int exitCode = -1;        // -1 when the program did not exit by itself
    int signal = 0;           // the signal that ended it, 0 if none
    bool timedOut = false;    // killed at the time limit
    bool tooMuch = false;     // killed for writing more than the limit
};

// With `unprivileged`, a run started by root runs as the user "nobody", for
// whom a read-only file cannot be written; `dir` is then opened to all.
BoundedRun runBounded(const std::string& dir, const std::string& input, const std::vector<std::string>& args,
                      double seconds, std::size_t maxBytes, bool unprivileged = false);
