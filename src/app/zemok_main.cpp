// Program entry of zemok: keeps the command line, fills the system record
// and runs E4MAIN, which ends with the closing line.
#include "monitor/monitor.h"
#include "platform/clock.h"

int main(int argc, char** argv) {
    setProgramArguments(argc, argv);
    return E4MAIN();
}
