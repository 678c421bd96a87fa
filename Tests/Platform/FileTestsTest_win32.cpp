#include <Platform/FileTests.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <filesystem>

namespace {

class FileTests : public testing::Test {
  protected:
    ~FileTests() override { SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL); }

    void MakeReadOnly() const { SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY); }

    /// Has the file open, as another program might, as long as the test lasts.
    void OpenElsewhere(DWORD access, DWORD sharing) {
        other = CreateFileA(file.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
    }

    void TearDown() override {
        if (other != INVALID_HANDLE_VALUE) CloseHandle(other);
    }

    TemporaryFolder folder;
    std::string file = folder.WriteFile("a file caf\xC3\xA9", "content");
    HANDLE other = INVALID_HANDLE_VALUE;
};

TEST_F(FileTests, AFileIsReadableAndWritableAndKeepsItsContent) {
    EXPECT_TRUE(Platform::IsReadable(file));
    EXPECT_TRUE(Platform::IsWritable(file));
    EXPECT_TRUE(Platform::GrantsWrite(file));
    EXPECT_EQ(folder.ReadFile("a file caf\xC3\xA9"), "content");
}

TEST_F(FileTests, WhatIsMissingIsNotReadable) {
    EXPECT_FALSE(Platform::IsReadable(folder.Path("none")));
    EXPECT_FALSE(Platform::IsReadable(""));
}

TEST_F(FileTests, AFolderIsNotReadable) {
    EXPECT_FALSE(Platform::IsReadable(folder.Path()));
}

TEST_F(FileTests, ADeviceIsReadable) {
    EXPECT_TRUE(Platform::IsReadable("NUL"));
}

TEST_F(FileTests, ADeviceThatIsCalledLikeAFileIsNeitherReadableNorWritable) {
    for (const char* const name : {"nul.bin", "no/such/folder/nul", "aux", "com1.bin"}) {
        EXPECT_FALSE(Platform::IsReadable(name)) << name;
        errno = 0;
        EXPECT_FALSE(Platform::IsWritable(name)) << name;
        EXPECT_EQ(errno, EINVAL) << name;
    }
    EXPECT_TRUE(Platform::IsWritable("NUL"));
}

TEST_F(FileTests, AFreeNameIsWritableAndStaysFree) {
    EXPECT_TRUE(Platform::IsWritable(folder.Path("none")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("none")));
    EXPECT_TRUE(Platform::IsWritable(folder.Path("no/such/folder/none")));
}

TEST_F(FileTests, AReadOnlyFileIsNotWritable) {
    MakeReadOnly();
    EXPECT_TRUE(Platform::IsReadable(file));
    EXPECT_FALSE(Platform::IsWritable(file));
    EXPECT_FALSE(Platform::GrantsWrite(file));
}

TEST_F(FileTests, AFileThatSomebodyReadsIsNotWritable) {
    OpenElsewhere(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_TRUE(Platform::IsReadable(file));
    EXPECT_FALSE(Platform::IsWritable(file));
}

TEST_F(FileTests, AFileThatSomebodyWritesIsNotReadableAndCountsAsWritable) {
    OpenElsewhere(GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_FALSE(Platform::IsReadable(file));
    EXPECT_TRUE(Platform::IsWritable(file));
}

TEST_F(FileTests, AMissingFileIsNotGrantedWriting) {
    EXPECT_FALSE(Platform::GrantsWrite(folder.Path("none")));
}

TEST_F(FileTests, MakingWritableTakesTheReadOnlyMarkOff) {
    MakeReadOnly();
    EXPECT_EQ(Platform::MakeOwnerWritable(file), 0);
    EXPECT_TRUE(Platform::IsWritable(file));
    EXPECT_TRUE(Platform::GrantsWrite(file));
}

TEST_F(FileTests, MakingWritableTellsWhyItFailed) {
    EXPECT_EQ(Platform::MakeOwnerWritable(folder.Path("none")), ENOENT);
}

}  // namespace
