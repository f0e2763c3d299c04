// The LOAD and CHECK commands (E4CmdLoad, E4CmdCheck) and the parameter
// steps of LOAD's chain (loadParameter, parameterUsed, parameterName).
#pragma once

#include "monitor/monitor_state.h"

#include <optional>
#include <string_view>

// LOAD: one parameter of the data set, or all of them, from the command
// line, the terminal or the data file.
Outcome E4CmdLoad(MonitorState& m);
// CHECK: completeness of the data set for the chosen method, the iteration
// limits by rule, and the LOAD of the first thing missing.
Outcome E4CmdCheck(MonitorState& m);

// The parameters of LOAD, in the order of its chain.  Bounds is the one
// step for bL and bU; Temper loads temper, NtriesT and Tsced from words
// 4, 5 and 6.
enum class LoadParameter {
    MaxNFE, MaxITR, NVar, IFixer, XStart, XStep, RXTol, RFTol, TolScl, Deviat, HCond,
    FrlErr, FinDif, Bounds, StpMax, XScale, Direct, Temper, NtriesT, Tsced,
};

// The name that stands in prompts, data files and messages.
std::string_view parameterName(LoadParameter p);
// True when the method held in iStat(row::methodRunning) uses the parameter.
bool parameterUsed(LoadParameter p);
// Loads one parameter from word 4 on, from the source channel of the
// command.  Empty: the chain goes on; otherwise the command ends with the
// outcome given (a prerequisite, a failure or a cleared stack).
std::optional<Outcome> loadParameter(MonitorState& m, LoadParameter p);
