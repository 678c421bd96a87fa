#include <Platform/Folders.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <filesystem>

namespace {

TEST(Folders, AFolderIsToldFromAFile) {
    const TemporaryFolder folder;
    const std::string file = folder.WriteFile("file", "");
    EXPECT_TRUE(Platform::IsFolder(folder.Path()));
    EXPECT_FALSE(Platform::IsFolder(file));
    EXPECT_TRUE(Platform::IsRegularFile(file));
    EXPECT_FALSE(Platform::IsRegularFile(folder.Path()));
    EXPECT_FALSE(Platform::IsFolder(folder.Path("none")));
    EXPECT_FALSE(Platform::IsRegularFile(folder.Path("none")));
    EXPECT_FALSE(Platform::IsRegularFile("/dev/null"));
}

TEST(Folders, WhatIsThereExists) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("none", folder.Path("link"));
    for (const std::string& path :
         {folder.Path(), folder.WriteFile("file", ""), std::string("/dev/null")})
        EXPECT_TRUE(Platform::Exists(path)) << path;
    for (const std::string& path :
         {folder.Path("none"), folder.Path("link"), folder.Path("file/a"), std::string()})
        EXPECT_FALSE(Platform::Exists(path)) << path;
}

TEST(Folders, AllMissingParentsAreMade) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Platform::CreateFolders(folder.Path("a/b/c")));
    EXPECT_TRUE(Platform::IsFolder(folder.Path("a/b/c")));
}

TEST(Folders, ThereAlreadyIsFine) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Platform::CreateFolders(folder.Path()));
    EXPECT_TRUE(Platform::CreateFolders("/"));
}

TEST(Folders, TheUsersMaskDecidesThePermissions) {
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    EXPECT_TRUE(Platform::CreateFolders(folder.Path("a")));
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(folder.Path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0750u);
}

TEST(Folders, AFileInTheWayIsAFailure) {
    const TemporaryFolder folder;
    folder.WriteFile("a", "");
    EXPECT_FALSE(Platform::CreateFolders(folder.Path("a")));
    EXPECT_FALSE(Platform::CreateFolders(folder.Path("a/b")));
}

TEST(Folders, RelativeAndDoubledSeparatorsWork) {
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    EXPECT_TRUE(Platform::CreateFolders("x//y/"));
    std::filesystem::current_path(before);
    EXPECT_TRUE(Platform::IsFolder(folder.Path("x/y")));
}

}  // namespace
