#include <Platform/FileTests.h>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace {

class FileTests : public testing::Test {
  protected:
    FileTests() { chmod(folder.Path().c_str(), 0777); }

    std::string FileWithMode(mode_t mode) const {
        const std::string path = folder.WriteFile("file", "content");
        chmod(path.c_str(), mode);
        return path;
    }

    static mode_t ModeOf(const std::string& path) {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_mode & 07777;
    }

    TemporaryFolder folder;
};

TEST_F(FileTests, AFileIsReadable) {
    EXPECT_TRUE(Platform::IsReadable(FileWithMode(0644)));
}

TEST_F(FileTests, WhatIsMissingIsNotReadable) {
    EXPECT_FALSE(Platform::IsReadable(folder.Path("none")));
    EXPECT_FALSE(Platform::IsReadable(""));
}

TEST_F(FileTests, AFolderIsNotReadable) {
    EXPECT_FALSE(Platform::IsReadable(folder.Path()));
}

TEST_F(FileTests, ADeviceIsReadable) {
    EXPECT_TRUE(Platform::IsReadable("/dev/null"));
}

TEST_F(FileTests, AFileWithoutPermissionIsNotReadable) {
    const std::string path = FileWithMode(0000);
    const OrdinaryUser user;
    EXPECT_FALSE(Platform::IsReadable(path));
}

TEST_F(FileTests, APipeNobodyWritesToIsReadableAndWritableWithoutWaiting) {
    const std::string path = folder.Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_TRUE(Platform::IsReadable(path));
    EXPECT_TRUE(Platform::IsWritable(path));
}

TEST_F(FileTests, AFileIsWritableAndKeepsItsContent) {
    EXPECT_TRUE(Platform::IsWritable(FileWithMode(0644)));
    EXPECT_EQ(folder.ReadFile("file"), "content");
}

TEST_F(FileTests, AFreeNameIsWritableAndStaysFree) {
    EXPECT_TRUE(Platform::IsWritable(folder.Path("none")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("none")));
    EXPECT_TRUE(Platform::IsWritable(folder.Path("no/such/folder/none")));
}

TEST_F(FileTests, AReadOnlyFileIsNotWritable) {
    const std::string path = FileWithMode(0444);
    const OrdinaryUser user;
    EXPECT_FALSE(Platform::IsWritable(path));
    EXPECT_FALSE(Platform::GrantsWrite(path));
}

TEST_F(FileTests, AFileThatCannotBeReadEitherCountsAsWritable) {
    const std::string path = FileWithMode(0000);
    const OrdinaryUser user;
    EXPECT_TRUE(Platform::IsWritable(path));
}

TEST_F(FileTests, AReadOnlyPipeIsNotWritable) {
    const std::string path = folder.Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    chmod(path.c_str(), 0444);
    const OrdinaryUser user;
    EXPECT_FALSE(Platform::IsWritable(path));
}

TEST_F(FileTests, AMissingFileIsNotGrantedWriting) {
    EXPECT_FALSE(Platform::GrantsWrite(folder.Path("none")));
    EXPECT_TRUE(Platform::GrantsWrite(FileWithMode(0644)));
}

TEST_F(FileTests, MakingWritableAddsTheOwnersBitsAlone) {
    const std::string path = FileWithMode(0555);
    EXPECT_EQ(Platform::MakeOwnerWritable(path), 0);
    EXPECT_EQ(ModeOf(path), 0755u);
    chmod(path.c_str(), 0044);
    EXPECT_EQ(Platform::MakeOwnerWritable(path), 0);
    EXPECT_EQ(ModeOf(path), 0644u);
}

TEST_F(FileTests, MakingWritableTellsWhyItFailed) {
    EXPECT_EQ(Platform::MakeOwnerWritable(folder.Path("none")), ENOENT);
    EXPECT_EQ(Platform::MakeOwnerWritable(FileWithMode(0644) + "/none"), ENOTDIR);
}

TEST_F(FileTests, MakingAnothersFileWritableIsRefused) {
    if (geteuid() != 0) GTEST_SKIP() << "needs a file of another user";
    const std::string path = FileWithMode(0444);
    const OrdinaryUser user;
    EXPECT_EQ(Platform::MakeOwnerWritable(path), EPERM);
}

}  // namespace
