// Main of every test program: the modules are put together as in zemok.
#include "app/module_registry.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    registerModules();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
