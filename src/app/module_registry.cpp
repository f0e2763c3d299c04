// Registration of the module resets, of the scattering fit as USERF and of
// its parameter errors as the use of a Hessian of the user's problem.
#include "app/module_registry.h"

#include "core/machine_constants.h"
#include "core/module_resets.h"
#include "methods/annealed_simplex.h"
#include "methods/first_order_driver.h"
#include "methods/hessian_differences.h"
#include "methods/monte_carlo.h"
#include "methods/random_generators.h"
#include "methods/simplex_search.h"
#include "monitor/monitor.h"
#include "numlib/cpu_timers.h"
#include "numlib/special_functions.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "objective/user_function.h"
#include "scatter/parameter_errors.h"
#include "scatter/scattering_reset.h"
#include "scatter/user_function.h"
#include "textfile/number_text.h"
#include "textfile/word_splitter.h"

void registerModules() {
    registerModuleReset(resetMachineConstants);
    registerModuleReset(resetWordSplitter);
    registerModuleReset(resetNumberText);
    registerModuleReset(resetCpuTimers);
    registerModuleReset(resetSpecialFunctions);
    registerModuleReset(resetTargetFunction);
    registerModuleReset(resetComputationalNoise);
    registerModuleReset(resetSimplexSearch);
    registerModuleReset(resetRandomGenerators);
    registerModuleReset(resetAnnealedSimplex);
    registerModuleReset(resetMonteCarloSearch);
    registerModuleReset(resetFirstOrderDriver);
    registerModuleReset(resetScatteringFit);
    registerModuleReset(resetMonitorState);
    setUserFunction(USERF);
    setUserHessianUse(writeParameterErrors);
}
