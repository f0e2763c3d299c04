// The observer of the searches' traces.
#include "methods/search_trace.h"

namespace {
SearchTrace* observer = nullptr;
}

SearchTrace* setTraceObserver(SearchTrace* next) {
    SearchTrace* previous = observer;
    observer = next;
    return previous;
}

void traceTo(SearchTrace& report, const TraceRecord& r) {
    report.record(r);
    if (observer != nullptr) observer->record(r);
}
