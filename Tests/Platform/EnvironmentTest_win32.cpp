#include <Platform/Environment.h>
#include <gtest/gtest.h>

namespace {

TEST(Environment, TellsWhatIsSet) {
    unsetenv("PLATFORM_TEST_VARIABLE");
    EXPECT_EQ(Platform::Environment("PLATFORM_TEST_VARIABLE"), std::nullopt);
    setenv("PLATFORM_TEST_VARIABLE", "\xC3\xA9 b", 1);
    EXPECT_EQ(Platform::Environment("PLATFORM_TEST_VARIABLE"), "\xC3\xA9 b");
    EXPECT_EQ(Platform::Environment("platform_test_VARIABLE"), "\xC3\xA9 b");
}

}  // namespace
