#include <Platform/OpenForReading.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

std::string Content(std::FILE* file) {
    char bytes[16];
    return {bytes, std::fread(bytes, 1, sizeof bytes, file)};
}

TEST(OpenForReading, BytesComeAsTheyStand) {
    const TemporaryFolder folder;
    const std::string bytes("a\r\n\x1A\0b\n", 7);
    const Platform::OpenedFile file =
        Platform::OpenForReading(folder.WriteFile("two words caf\xC3\xA9", bytes));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(Content(file.get()), bytes);
}

TEST(OpenForReading, WhatIsMissingGivesThePortableErrorNumber) {
    const TemporaryFolder folder;
    errno = 0;
    EXPECT_EQ(Platform::OpenForReading(folder.Path("none")), nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(Platform::OpenForReading(folder.Path("none/below")), nullptr);
    EXPECT_EQ(errno, ENOENT);
}

TEST(OpenForReading, TheReaderKeepsNobodyFromTheName) {
    const TemporaryFolder folder;
    const Platform::OpenedFile file = Platform::OpenForReading(folder.WriteFile("file", "old"));
    ASSERT_NE(file, nullptr);
    std::error_code error;
    fs::rename(folder.Path("file"), folder.Path("other"), error);
    EXPECT_FALSE(error) << error.message();
    EXPECT_TRUE(fs::remove(folder.Path("other"), error)) << error.message();
    EXPECT_EQ(Content(file.get()), "old");
}

}  // namespace
