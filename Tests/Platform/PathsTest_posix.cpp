#include <Platform/Paths.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Platform::FullPath;

TEST(CompareNames, LetterCaseMatters) {
    EXPECT_EQ(Platform::CompareNames("/a", "/a"), 0);
    EXPECT_LT(Platform::CompareNames("/A", "/a"), 0);
    EXPECT_GT(Platform::CompareNames("/a", "/A"), 0);
}

TEST(CurrentDirectory, IsTheFolderOfTheProcess) {
    EXPECT_EQ(Platform::CurrentDirectory(), std::filesystem::current_path().string());
}

TEST(CurrentDirectory, IsNothingInAFolderThatWasDeleted) {
    const auto before = std::filesystem::current_path();
    {
        const TemporaryFolder folder;
        std::filesystem::current_path(folder.Path());
    }
    EXPECT_EQ(Platform::CurrentDirectory(), std::nullopt);
    EXPECT_EQ(FullPath("a"), std::nullopt);
    std::filesystem::current_path(before);
}

TEST(EnterFolder, TheFolderBecomesTheProcesss) {
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    EXPECT_TRUE(Platform::EnterFolder(folder.Path()));
    EXPECT_EQ(Platform::CurrentDirectory(), folder.Path());
    EXPECT_FALSE(Platform::EnterFolder(folder.Path("none")));
    std::filesystem::current_path(before);
}

TEST(ToPath, BytesComeBackAsTheyWere) {
    for (const char* name : {"", "a b/c\\d", "caf\xE9", "\xE9\xAA\xA8.bin"})
        EXPECT_EQ(Platform::FromPath(Platform::ToPath(name)), name);
}

TEST(FullPath, KeepsAnAbsolutePath) {
    EXPECT_EQ(FullPath("/a/b.bin"), "/a/b.bin");
}

TEST(FullPath, CountsFromTheWorkingDirectory) {
    EXPECT_EQ(FullPath("a/b.bin"), *Platform::CurrentDirectory() + "/a/b.bin");
}

TEST(FullPath, ResolvesDots) {
    EXPECT_EQ(FullPath("/a/./b/../c"), "/a/c");
    EXPECT_EQ(FullPath("/a/.."), "/");
    EXPECT_EQ(FullPath("."), Platform::CurrentDirectory());
    EXPECT_EQ(FullPath("/a/...b"), "/a/...b");
}

TEST(FullPath, StaysUnderTheRoot) {
    EXPECT_EQ(FullPath("/../../a"), "/a");
}

TEST(FullPath, ResolvesDoubledSeparators) {
    EXPECT_EQ(FullPath("//a///b"), "/a/b");
    EXPECT_EQ(FullPath("/"), "/");
    EXPECT_EQ(FullPath("//"), "/");
}

TEST(FullPath, KeepsASeparatorAtTheEnd) {
    EXPECT_EQ(FullPath("/a/b/"), "/a/b/");
    EXPECT_EQ(FullPath("/a/b//"), "/a/b/");
}

TEST(FullPath, KeepsBackslashesAsPartOfNames) {
    EXPECT_EQ(FullPath("/a\\..\\b"), "/a\\..\\b");
}

TEST(FullPath, FollowsNoLinks) {
    const TemporaryFolder folder;
    std::filesystem::create_directory_symlink("/usr", folder.Path("link"));
    EXPECT_EQ(FullPath(folder.Path("link/../a")), folder.Path("a"));
}

TEST(FullPath, RefusesAnEmptyPath) {
    EXPECT_EQ(FullPath(""), std::nullopt);
}

TEST(FullPath, RefusesWhatIsLongerThanTheSystemTakes) {
    const std::string longest = "/" + std::string(4094, 'x');
    EXPECT_EQ(FullPath(longest), longest);
    EXPECT_EQ(FullPath(longest + "x"), std::nullopt);
}

}  // namespace

TEST(LastName, StandsBehindTheLastSlash) {
    EXPECT_EQ(Platform::LastName("/usr/bin/rigbake"), "rigbake");
    EXPECT_EQ(Platform::LastName("rigbake"), "rigbake");
    EXPECT_EQ(Platform::LastName("/usr/odd\\name"), "odd\\name");
    EXPECT_EQ(Platform::LastName("/usr/"), "");
    EXPECT_EQ(Platform::LastName(""), "");
}
