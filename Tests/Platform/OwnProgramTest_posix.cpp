#include <Platform/OwnProgram.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

TEST(OwnProgram, IsTheFileThatRuns) {
    const std::string path = Platform::OwnProgramFile();
    EXPECT_EQ(path.substr(path.rfind('/') + 1), "PlatformTest");
    EXPECT_EQ(path.front(), '/');
    EXPECT_EQ(access(path.c_str(), X_OK), 0);
}

TEST(OwnProgram, HasItsProcessNumber) {
    EXPECT_EQ(Platform::OwnProcessId(), static_cast<std::uint32_t>(getpid()));
}

}  // namespace
