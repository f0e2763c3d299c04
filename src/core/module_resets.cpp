// The list of module resets and the reset of the whole program state.
#include "core/module_resets.h"

#include "core/command_line.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<ModuleReset>& resets() {
    static std::vector<ModuleReset> list;
    return list;
}

}  // namespace

void registerModuleReset(ModuleReset reset) {
    std::vector<ModuleReset>& list = resets();
    if (std::find(list.begin(), list.end(), reset) == list.end()) list.push_back(reset);
}

void resetProgramState() {
    for (ModuleReset reset : resets()) reset();
    resetSysinf();
    resetE4DataSet();
    resetCommandLineLists();
    unit::resetUnits();
}
