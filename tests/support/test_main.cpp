// Main of every test program: the modules are put together as in zemok,
// and the folders a test makes are swept when it passed.
#include "app/module_registry.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    registerModules();
    ::testing::InitGoogleTest(&argc, argv);
    installFolderSweeper();
    return RUN_ALL_TESTS();
}
