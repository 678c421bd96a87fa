#include <Platform/Environment.h>
#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

TEST(Environment, TellsUnsetFromEmpty) {
    unsetenv("PLATFORM_TEST_VARIABLE");
    EXPECT_EQ(Platform::Environment("PLATFORM_TEST_VARIABLE"), std::nullopt);
    setenv("PLATFORM_TEST_VARIABLE", "", 1);
    EXPECT_EQ(Platform::Environment("PLATFORM_TEST_VARIABLE"), "");
    setenv("PLATFORM_TEST_VARIABLE", "\xE9 b", 1);
    EXPECT_EQ(Platform::Environment("PLATFORM_TEST_VARIABLE"), "\xE9 b");
}

}  // namespace
