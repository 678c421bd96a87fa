#include <Platform/SharedLogFile.h>

#include "Support/DebuggerLines_win32.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::SharedLogFile;

constexpr const char* kLock = "RigbakeTestMutex";

TEST(SharedLogFile, TextIsAddedAtTheEnd) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", "before\r\n"), kLock);
    EXPECT_EQ(folder.ReadFile("log"), "before\r\n");
    log.Append("one\n");
    log.Append(std::string("t\0o\n", 4));
    EXPECT_EQ(folder.ReadFile("log"), std::string("before\r\none\r\nt\0o\r\n", 18));
}

TEST(SharedLogFile, WhatIsNoFilesOwnNameIsLeftAlone) {
    const TemporaryFolder folder;
    for (const char* name : {"log:x", "log::$DATA", "nul.log", "com1"})
        SharedLogFile(folder.Path(name), kLock).Append("text");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(SharedLogFile, AnAdditionWaitsForItsTurn) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", ""), kLock);
    const HANDLE lock = CreateMutexA(nullptr, TRUE, kLock);
    if (GetLastError() == ERROR_ALREADY_EXISTS) WaitForSingleObject(lock, INFINITE);
    std::atomic<bool> done = false;
    std::thread adder([&] {
        log.Append("mine");
        done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(done);
    EXPECT_EQ(folder.ReadFile("log"), "");
    ReleaseMutex(lock);
    CloseHandle(lock);
    adder.join();
    EXPECT_EQ(folder.ReadFile("log"), "mine");
}

TEST(SharedLogFile, TheLockOfAProcessThatDiedIsNoHindrance) {
    const TemporaryFolder folder;
    std::thread owner([] { CreateMutexA(nullptr, TRUE, "RigbakeTestAbandoned"); });
    owner.join();
    const SharedLogFile log(folder.Path("log"), "RigbakeTestAbandoned");
    log.Append("mine");
    EXPECT_EQ(folder.ReadFile("log"), "mine");
}

TEST(SendToDebugger, ItsTextArrivesThere) {
    DebuggerLines debugger;
    Platform::SendToDebugger("one\n");
    Platform::SendToDebugger("100%s");
    const std::vector<std::string> lines = debugger.Stop();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "one\n"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "100%s"), 1);
}

TEST(SharedLogFile, AFileThatCannotBeOpenedIsPassedOver) {
    const TemporaryFolder folder;
    SharedLogFile(folder.Path(), kLock).Append("text");
    SharedLogFile(folder.Path("no/such/folder"), kLock).Append("text");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
