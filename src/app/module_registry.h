// The one place where the modules are put together: the resets of every
// module's own state, in order, and the user's problem of the monitor.
#pragma once

void registerModules();
