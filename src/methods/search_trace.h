// What a search tells while it runs.  A search describes each step by a
// TraceRecord and hands it to its report writer, which turns it into the
// lines of the search's report (at the message levels that show them), and
// to the observer a test may have put in, which sees the same path without
// reading any text.
#pragma once

#include <array>

enum class TraceKind {
    Start,   // the search starts (or goes on under CONTINUE)
    Pass,    // a pass or iteration is reported: pass, best value
    Point,   // a trial point was evaluated: code says which, value, point
    Event,   // something happened to the search: code says what
    Stop,    // the search ends: code is the reason
};

struct TraceRecord {
    TraceKind kind = TraceKind::Event;
    int code = 0;                   // which point, event or reason; each search names its codes
    int pass = 0;                   // passes or iterations so far
    double value = 0.0;             // function value of the record
    std::array<double, 4> real{};   // further numbers, each search says which
    std::array<int, 4> count{};     // further counts
    const double* point = nullptr;  // x(1..nVar) of a trial point, or nullptr
};

class SearchTrace {
public:
    virtual ~SearchTrace() = default;
    virtual void record(const TraceRecord& r) = 0;
};

// Puts in an observer of every search (nullptr takes it out); returns the
// one that was in.
SearchTrace* setTraceObserver(SearchTrace* observer);
// Hands `r` to the search's report writer and then to the observer.
void traceTo(SearchTrace& report, const TraceRecord& r);
