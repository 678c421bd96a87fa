#include <Platform/ReplaceFile.h>

#include "Platform/OrdinaryUser.h"
#include "Platform/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace {

class ReplaceFile : public testing::Test {
  protected:
    static mode_t ModeOf(const std::string& path) {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_mode & 07777;
    }

    TestFolder folder;
};

TEST_F(ReplaceFile, TheNewFileStandsInTheSameFolderAndIsEmpty) {
    std::string created;
    ASSERT_EQ(Platform::CreateFileBeside(folder.Path("out"), created), 0);
    EXPECT_EQ(std::filesystem::path(created).parent_path(), folder.Path());
    EXPECT_EQ(std::filesystem::file_size(created), 0u);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out")));
}

TEST_F(ReplaceFile, TwoNewFilesHaveDifferentNames) {
    std::string first;
    std::string second;
    ASSERT_EQ(Platform::CreateFileBeside(folder.Path("out"), first), 0);
    ASSERT_EQ(Platform::CreateFileBeside(folder.Path("out"), second), 0);
    EXPECT_NE(first, second);
}

TEST_F(ReplaceFile, APathWithoutAFolderMeansTheWorkingDirectory) {
    std::string created;
    ASSERT_EQ(Platform::CreateFileBeside("out", created), 0);
    EXPECT_EQ(created.find('/'), std::string::npos);
    EXPECT_TRUE(std::filesystem::remove(created));
}

TEST_F(ReplaceFile, ANewFileGetsThePermissionsOfAnyOther) {
    const mode_t mask = umask(027);
    std::string created;
    const int error = Platform::CreateFileBeside(folder.Path("out"), created);
    umask(mask);
    ASSERT_EQ(error, 0);
    EXPECT_EQ(ModeOf(created), 0640u);
}

TEST_F(ReplaceFile, ThePermissionsOfTheOldFileAreKept) {
    const std::string out = folder.Write("out", "old");
    chmod(out.c_str(), 0764);
    std::string created;
    ASSERT_EQ(Platform::CreateFileBeside(out, created), 0);
    EXPECT_EQ(ModeOf(created), 0764u);
}

TEST_F(ReplaceFile, TheWrittenFileTakesTheName) {
    const std::string out = folder.Write("out", "old");
    const std::string written = folder.Write("written", "new");
    EXPECT_EQ(Platform::ReplaceFile(written, out), 0);
    EXPECT_EQ(folder.Read("out"), "new");
    EXPECT_FALSE(std::filesystem::exists(written));
}

TEST_F(ReplaceFile, AFolderIsNotReplacedAndTheWrittenFileStays) {
    std::filesystem::create_directory(folder.Path("out"));
    const std::string written = folder.Write("written", "new");
    EXPECT_EQ(Platform::ReplaceFile(written, folder.Path("out")), EISDIR);
    EXPECT_EQ(folder.Read("written"), "new");
}

TEST_F(ReplaceFile, WhatIsMissingGivesTheSystemsErrorNumber) {
    std::string created;
    EXPECT_EQ(Platform::CreateFileBeside(folder.Path("none/out"), created), ENOENT);
    EXPECT_EQ(Platform::ReplaceFile(folder.Path("none"), folder.Path("out")), ENOENT);
}

TEST_F(ReplaceFile, AFolderWithoutWritePermissionGivesTheSystemsErrorNumber) {
    chmod(folder.Path().c_str(), 0555);
    int error = 0;
    {
        const OrdinaryUser user;
        std::string created;
        error = Platform::CreateFileBeside(folder.Path("out"), created);
    }
    chmod(folder.Path().c_str(), 0755);
    EXPECT_EQ(error, EACCES);
}

TEST_F(ReplaceFile, TheWordsAreTheSystemsOwn) {
    EXPECT_EQ(Platform::ErrorText(ENOENT), "No such file or directory");
}

}  // namespace
