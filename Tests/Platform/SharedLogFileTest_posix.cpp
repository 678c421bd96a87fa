#include <Platform/SharedLogFile.h>

#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::SharedLogFile;

TEST(SharedLogFile, TextIsAddedAtTheEnd) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", "before\n"), "RigbakeTestMutex");
    EXPECT_EQ(folder.ReadFile("log"), "before\n");
    log.Append("one\n");
    log.Append(std::string("t\0o\n", 4));
    EXPECT_EQ(folder.ReadFile("log"), std::string("before\none\nt\0o\n", 15));
}

TEST(SharedLogFile, AnAdditionWaitsForItsTurn) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", ""), "RigbakeTestMutex");
    const int other = open(folder.Path("log").c_str(), O_RDWR);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    std::atomic<bool> done = false;
    std::thread adder([&] {
        log.Append("mine");
        done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(done);
    EXPECT_EQ(folder.ReadFile("log"), "");
    close(other);
    adder.join();
    EXPECT_EQ(folder.ReadFile("log"), "mine");
}

TEST(SharedLogFile, AFileThatCannotBeOpenedIsPassedOver) {
    const TemporaryFolder folder;
    SharedLogFile(folder.Path(), "RigbakeTestMutex").Append("text");
    SharedLogFile("", "RigbakeTestMutex").Append("text");
    SharedLogFile(folder.Path("no/such/folder"), "RigbakeTestMutex").Append("text");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
