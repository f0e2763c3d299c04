// Shared pieces of LOAD's parameter steps: the marker and access word of
// the loaders, sourceFileName, needVariables and the iFixer step loadFixer.
#pragma once

#include "monitor/monitor_state.h"

#include <optional>
#include <string>
#include <string_view>

// The monitor's marker of a data-file line, and the access word of LOAD.
inline constexpr std::string_view kLoadMarker = " ";
inline constexpr std::string_view kLoadAccess = "SEQUENTIAL";

// The name of the file open on the source channel (drName when none is).
std::string sourceFileName(const MonitorState& m);
// The prerequisite "LOAD,,NVAR" while nVar is 0; empty otherwise.
std::optional<Outcome> needVariables(MonitorState& m);
// The iFixer step: the dialogue, the loaders, and what a changed vector
// does to the start point and the bounds.
std::optional<Outcome> loadFixer(MonitorState& m);
