#include <Platform/Folders.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(Folders, AFolderIsToldFromAFile) {
    const TemporaryFolder folder;
    const std::string file = folder.WriteFile("file", "");
    EXPECT_TRUE(Platform::IsFolder(folder.Path()));
    EXPECT_TRUE(Platform::IsFolder(folder.Path() + "\\"));
    EXPECT_TRUE(Platform::IsFolder("C:\\"));
    EXPECT_FALSE(Platform::IsFolder(file));
    EXPECT_TRUE(Platform::IsRegularFile(file));
    EXPECT_FALSE(Platform::IsRegularFile(folder.Path()));
    EXPECT_FALSE(Platform::IsFolder(folder.Path("none")));
    EXPECT_FALSE(Platform::IsRegularFile(folder.Path("none")));
    EXPECT_FALSE(Platform::IsFolder(""));
}

TEST(Folders, ARootIsAFolderHoweverItIsNamed) {
    for (const std::string root :
         {"C:", "C:/", "\\\\?\\C:", "\\\\?\\C:\\", "\\\\.\\C:", "//?/C:", "\\", "/"}) {
        EXPECT_TRUE(Platform::IsFolder(root)) << root;
        EXPECT_TRUE(Platform::CreateFolders(root)) << root;
        EXPECT_FALSE(Platform::IsRegularFile(root)) << root;
    }
    for (const std::string none : {"Q:", "\\\\?\\Q:", "\\\\.\\NUL", "NUL", "\\\\?\\", "\\\\."}) {
        EXPECT_FALSE(Platform::IsFolder(none)) << none;
        EXPECT_FALSE(Platform::IsRegularFile(none)) << none;
    }
}

TEST(Folders, WhatIsThereExists) {
    const TemporaryFolder folder;
    for (const std::string& path :
         {folder.Path(), folder.Path() + "\\", folder.WriteFile("file", ""), std::string("NUL")})
        EXPECT_TRUE(Platform::Exists(path)) << path;
    for (const std::string& path : {folder.Path("none"), folder.Path("file/a"), std::string()})
        EXPECT_FALSE(Platform::Exists(path)) << path;
}

TEST(Folders, AllMissingParentsAreMade) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Platform::CreateFolders(folder.Path("a/b b/caf\xC3\xA9")));
    EXPECT_TRUE(Platform::IsFolder(folder.Path("a/b b/caf\xC3\xA9")));
}

TEST(Folders, NoFolderOfAShorterNameIsMade) {
    const TemporaryFolder folder;
    for (const char* name : {"a ", "a...", "a. ", "a \\b", "a../b", "c/a /b/"}) {
        EXPECT_FALSE(Platform::CreateFolders(folder.Path(name))) << name;
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << name;
    }
    EXPECT_TRUE(Platform::CreateFolders("\\\\.\\" + folder.Path("device\\form")));
    EXPECT_TRUE(Platform::IsFolder(folder.Path("device/form")));
    EXPECT_TRUE(Platform::CreateFolders(folder.Path(".a/./b c/d/..")));
    EXPECT_TRUE(Platform::IsFolder(folder.Path(".a/b c")));
}

TEST(Folders, ThereAlreadyIsFine) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Platform::CreateFolders(folder.Path()));
    EXPECT_TRUE(Platform::CreateFolders("C:\\"));
}

TEST(Folders, AFileInTheWayIsAFailure) {
    const TemporaryFolder folder;
    folder.WriteFile("a", "");
    EXPECT_FALSE(Platform::CreateFolders(folder.Path("a")));
    EXPECT_FALSE(Platform::CreateFolders(folder.Path("a/b")));
}

TEST(Folders, AMissingDriveIsAFailure) {
    EXPECT_FALSE(Platform::CreateFolders("Q:\\a"));
}

TEST(Folders, ANameThatIsTooLongIsAFailure) {
    const TemporaryFolder folder;
    EXPECT_FALSE(Platform::CreateFolders(folder.Path(std::string(260, 'x'))));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Folders, OfAChainThatIsTooLongNoPartIsMade) {
    constexpr std::size_t kLongest = 247;
    const TemporaryFolder folder;
    const std::string first = folder.Path("a\\");
    const std::string longest = first + std::string(kLongest - first.size(), 'x');
    EXPECT_FALSE(Platform::CreateFolders(longest + "x"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    EXPECT_TRUE(Platform::CreateFolders(longest));
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
