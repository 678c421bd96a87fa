#include <gtest/gtest.h>

#include "Support/MemoryLimit.h"

/// The entry of every test program.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    LimitMemory(RIGBAKE_TEST_MEMORY_MB);
    return RUN_ALL_TESTS();
}
