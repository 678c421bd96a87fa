#include <Platform/OwnProgram.h>
#include <gtest/gtest.h>
#include <process.h>

#include <filesystem>

namespace {

TEST(OwnProgram, IsTheFileThatRuns) {
    const std::string path = Platform::OwnProgramFile();
    EXPECT_EQ(path.substr(path.rfind('\\') + 1), "PlatformTest.exe");
    EXPECT_EQ(path[1], ':');
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(OwnProgram, HasItsProcessNumber) {
    EXPECT_EQ(Platform::OwnProcessId(), static_cast<std::uint32_t>(_getpid()));
}

}  // namespace
