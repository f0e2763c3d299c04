// Program entry of zemok: keeps the command line, puts the modules
// together and runs E4MAIN, which ends with the closing line.
#include "app/module_registry.h"
#include "monitor/monitor.h"
#include "platform/clock.h"

int main(int argc, char** argv) {
    setProgramArguments(argc, argv);
    registerModules();
    return E4MAIN();
}
