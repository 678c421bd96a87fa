#include <Platform/Paths.h>

#include <Platform/Folders.h>

#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Platform::FullPath;

TEST(CompareNames, LetterCaseDoesNotMatter) {
    EXPECT_EQ(Platform::CompareNames("C:\\Caf\xC3\xA9", "c:\\cAF\xC3\x89"), 0);
    EXPECT_LT(Platform::CompareNames("A", "b"), 0);
    EXPECT_GT(Platform::CompareNames("B", "a"), 0);
}

TEST(CurrentDirectory, IsTheFolderOfTheProcess) {
    EXPECT_EQ(Platform::CurrentDirectory(), std::filesystem::current_path().string());
}

TEST(CurrentDirectory, IsNothingWhereItIsTooLong) {
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    std::optional<std::string> told;
    for (int i = 0; i < 6; ++i) {
        const std::filesystem::path deeper = std::string(50, 'd');
        std::error_code refused;
        std::filesystem::create_directory(deeper, refused);
        if (refused) break;
        std::filesystem::current_path(deeper, refused);
        if (refused) break;
        told = Platform::CurrentDirectory();
        if (!told) break;
        EXPECT_LT(told->size(), 260u);
    }
    std::filesystem::current_path(before);
}

TEST(FullPath, KeepsAnAbsolutePath) {
    EXPECT_EQ(FullPath("C:\\a\\b.bin"), "C:\\a\\b.bin");
    EXPECT_EQ(FullPath("c:\\a\\b.bin"), "c:\\a\\b.bin");
    EXPECT_EQ(FullPath("\\\\server\\share\\b.bin"), "\\\\server\\share\\b.bin");
}

TEST(FullPath, CountsFromTheWorkingDirectory) {
    EXPECT_EQ(FullPath("a/b.bin"), *Platform::CurrentDirectory() + "\\a\\b.bin");
    EXPECT_EQ(FullPath("."), Platform::CurrentDirectory());
}

TEST(FullPath, ComesOutWithBackslashes) {
    EXPECT_EQ(FullPath("C:/a/b.bin"), "C:\\a\\b.bin");
    EXPECT_EQ(FullPath("C:/a\\b/c.bin"), "C:\\a\\b\\c.bin");
}

TEST(FullPath, ResolvesDots) {
    EXPECT_EQ(FullPath("C:\\a\\.\\b\\..\\c"), "C:\\a\\c");
    EXPECT_EQ(FullPath("C:\\a\\.."), "C:\\");
    EXPECT_EQ(FullPath("C:\\..\\..\\a"), "C:\\a");
}

TEST(FullPath, ResolvesDoubledSeparators) {
    EXPECT_EQ(FullPath("C:\\a\\\\\\b"), "C:\\a\\b");
}

TEST(FullPath, KeepsASeparatorAtTheEnd) {
    EXPECT_EQ(FullPath("C:/a/b/"), "C:\\a\\b\\");
}

TEST(FullPath, BlanksAndLettersBeyondAsciiStay) {
    EXPECT_EQ(FullPath("C:/a b/caf\xC3\xA9.bin"), "C:\\a b\\caf\xC3\xA9.bin");
}

TEST(EnterFolder, TheFolderBecomesTheProcesss) {
    const TemporaryFolder folder;
    const std::string name = "caf\xC3\xA9 \xE9\xAA\xA8";
    ASSERT_TRUE(Platform::CreateFolders(folder.Path(name)));
    const auto before = std::filesystem::current_path();
    EXPECT_TRUE(Platform::EnterFolder(folder.Path(name)));
    EXPECT_EQ(Platform::CurrentDirectory(), WithSeparators(folder.Path()) + "\\" + name);
    EXPECT_FALSE(Platform::EnterFolder(folder.Path("none")));
    std::filesystem::current_path(before);
}

TEST(ToPath, LettersComeBackAsTheyWere) {
    const std::string name = "C:/caf\xC3\xA9/\xE9\xAA\xA8.bin";
    const std::filesystem::path path = Platform::ToPath(name);
    EXPECT_EQ(path.filename().wstring(), L"\u9AA8.bin");
    EXPECT_EQ(Platform::FromPath(path), name);
    EXPECT_EQ(Platform::FromPath(Platform::ToPath("a\\b/c")), "a\\b/c");
}

TEST(FullPath, RefusesAnEmptyPath) {
    EXPECT_EQ(FullPath(""), std::nullopt);
}

TEST(FullPath, RefusesWhatIsLongerThanTheSystemTakes) {
    const std::string longest = "C:\\" + std::string(256, 'x');
    EXPECT_EQ(FullPath(longest), longest);
    EXPECT_EQ(FullPath(longest + "x"), std::nullopt);
    EXPECT_EQ(FullPath(longest + std::string(1000, 'x')), std::nullopt);
}

TEST(FullPath, BackslashesSeparate) {
    EXPECT_TRUE(Platform::BackslashSeparates());
}

}  // namespace

TEST(LastName, StandsBehindTheLastSeparator) {
    EXPECT_EQ(Platform::LastName("C:\\tools\\x.exe"), "x.exe");
    EXPECT_EQ(Platform::LastName("C:/tools/x.exe"), "x.exe");
    EXPECT_EQ(Platform::LastName("x.exe"), "x.exe");
}
