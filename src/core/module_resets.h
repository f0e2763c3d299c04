// The program's start state.  Every module that keeps state of its own
// (first-call flags, saved searches, the records of the scattering fit)
// registers its reset once, in src/app/module_registry.cpp; resetProgramState
// runs them in the order of registration and then resets the shared records
// of this layer: sysinf, E4DataSet, the command-line lists and the unit table.
#pragma once

using ModuleReset = void (*)();

void registerModuleReset(ModuleReset reset);
void resetProgramState();
