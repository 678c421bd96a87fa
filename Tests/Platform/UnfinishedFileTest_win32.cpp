#include <Platform/UnfinishedFile.h>

#include "EndingEvents_win32.h"
#include "Support/Permissions_win32.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <thread>
#include <utility>

namespace {

namespace fs = std::filesystem;

class UnfinishedFile : public testing::Test {
  protected:
    /// Starts a file beside `path`, writes "new" and publishes it.
    int Replace(const std::string& path) {
        if (const int error = file.CreateBeside(path); error != 0) return error;
        if (const int error = file.Write("new", 3); error != 0) return error;
        return file.Publish();
    }

    /// How many files stand in the folder, hidden ones too.
    std::ptrdiff_t CountFiles() const {
        return std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator());
    }

    TemporaryFolder folder;
    Platform::UnfinishedFile file;
};

TEST_F(UnfinishedFile, TheNameLeadsToTheOldContentUntilAllIsWritten) {
    const std::string out = folder.WriteFile("out", "old");
    ASSERT_EQ(file.CreateBeside(out), 0);
    EXPECT_EQ(file.Write("n", 1), 0);
    EXPECT_EQ(file.Write("ew", 2), 0);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(folder.ReadFile(fs::path(file.GetName()).filename().string()), "new");
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFreeNameIsTaken) {
    EXPECT_EQ(Replace(folder.Path("out")), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(Replace(folder.Path("two words caf\xC3\xA9")), 0);
    EXPECT_EQ(folder.ReadFile("two words caf\xC3\xA9"), "new");
}

TEST_F(UnfinishedFile, WhatIsNotPublishedIsGone) {
    const std::string out = folder.WriteFile("out", "old");
    {
        Platform::UnfinishedFile given;
        ASSERT_EQ(given.CreateBeside(out), 0);
        ASSERT_EQ(given.Write("new", 3), 0);
    }
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, TwoFilesAreUnfinishedAtOnce) {
    Platform::UnfinishedFile other;
    ASSERT_EQ(file.CreateBeside(folder.Path("one")), 0);
    ASSERT_EQ(other.CreateBeside(folder.Path("two")), 0);
    ASSERT_EQ(file.Write("1", 1), 0);
    ASSERT_EQ(other.Write("2", 1), 0);
    EXPECT_EQ(other.Publish(), 0);
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("one"), "1");
    EXPECT_EQ(folder.ReadFile("two"), "2");
}

TEST_F(UnfinishedFile, APathWithoutAFolderMeansTheWorkingDirectory) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    const int error = Replace("out");
    fs::current_path(before);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(UnfinishedFile, TheMarksOfTheOldFileAreKept) {
    const std::string out = folder.WriteFile("out", "old");
    SetFileAttributesA(out.c_str(), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_EQ(Replace(out), 0);
    EXPECT_NE(GetFileAttributesA(out.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(UnfinishedFile, ThePermissionsOfTheOldFileAreKept) {
    const std::string out = folder.WriteFile("out", "old");
    const std::string usual = PermissionsOf(out);
    // For the owner and the administrators alone; for everybody.
    for (const char* const words : {"D:P(A;;FA;;;OW)(A;;FA;;;BA)", "D:P(A;;FA;;;WD)"}) {
        SetPermissions(out, words);
        const std::string before = PermissionsOf(out);
        ASSERT_NE(before, usual);
        ASSERT_EQ(Replace(out), 0);
        EXPECT_EQ(PermissionsOf(out), before);
        EXPECT_EQ(folder.ReadFile("out"), "new");
    }
}

TEST_F(UnfinishedFile, AFileWhosePermissionsCannotBeKeptIsNotReplaced) {
    const std::string out = folder.WriteFile("out", "old");
    SetPermissions(out, "D:P(A;;FW;;;WD)");
    if (!PermissionsOf(out).empty()) GTEST_SKIP() << "this system tells the owner in any case";
    EXPECT_EQ(Replace(out), EACCES);
    EXPECT_EQ(fs::file_size(out), std::string("old").size());
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AnotherNameOfTheOldFileKeepsTheOldContent) {
    const std::string out = folder.WriteFile("out", "old");
    fs::create_hard_link(out, folder.Path("other"));
    ASSERT_EQ(Replace(out), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(folder.ReadFile("other"), "old");
}

TEST_F(UnfinishedFile, NoneIsMadeAnyMoreWhenAnEventEndsTheProcess) {
    int error = -1;
    std::optional<Platform::DeferEvents> event(std::in_place);
    std::thread other([&] { error = file.CreateBeside(folder.Path("out")); });
    Sleep(200);
    EXPECT_EQ(CountFiles(), 0);
    event.reset();
    other.join();
    EXPECT_EQ(error, 0);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFolderIsNotReplaced) {
    fs::create_directory(folder.Path("out"));
    EXPECT_EQ(Replace(folder.Path("out")), EACCES);
    EXPECT_TRUE(fs::is_directory(folder.Path("out")));
    EXPECT_EQ(CountFiles(), 1);
}

/// Looks into a file for a moment, as a scanner does.
class Scanner {
  public:
    explicit Scanner(const std::string& path)
        : file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        end = std::thread([this] {
            Sleep(60);
            CloseHandle(file);
        });
    }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;
    ~Scanner() { end.join(); }

  private:
    HANDLE file;
    std::thread end;
};

TEST_F(UnfinishedFile, AFileThatIsBusyForAMomentIsReplacedAfterIt) {
    const std::string out = folder.WriteFile("out", "old");
    ASSERT_EQ(file.CreateBeside(out), 0);
    ASSERT_EQ(file.Write("new", 3), 0);
    const Scanner scanner(out);
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(UnfinishedFile, OneThatIsBusyForAMomentIsPublishedOrGoneAfterIt) {
    ASSERT_EQ(file.CreateBeside(folder.Path("out")), 0);
    {
        const Scanner scanner(file.GetName());
        EXPECT_EQ(file.Publish(), 0);
    }
    EXPECT_TRUE(folder.Has("out"));
    std::optional<Platform::UnfinishedFile> given(std::in_place);
    ASSERT_EQ(given->CreateBeside(folder.Path("out")), 0);
    const Scanner scanner(given->GetName());
    given.reset();
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFileThatStaysBusyStaysAsItWas) {
    const std::string out = folder.WriteFile("out", "old");
    ASSERT_EQ(file.CreateBeside(out), 0);
    ASSERT_EQ(file.Write("new", 3), 0);
    const HANDLE reader =
        CreateFileA(out.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(file.Publish(), EACCES);
    CloseHandle(reader);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFolderThatLeavesTheUsualNameNoRoomTakesAFile) {
    // No folder's name may be longer, so that each can hold a file with a short name.
    constexpr std::size_t kLongestFolder = 247;
    for (std::size_t length = 230; length <= kLongestFolder; ++length) {
        const std::string deep = folder.Path(std::string(length - folder.Path().size() - 1, 'x'));
        ASSERT_TRUE(fs::create_directory(deep));
        ASSERT_EQ(file.CreateBeside(deep + "/out"), 0) << length;
        EXPECT_LT(file.GetName().size(), std::size_t{MAX_PATH});
        EXPECT_EQ(Replace(deep + "/out"), 0) << length;
        EXPECT_EQ(folder.ReadFile(deep + "/out"), "new") << length;
        EXPECT_EQ(Replace(deep + "/out"), 0) << length;
        fs::remove(deep + "/out");
        EXPECT_TRUE(fs::remove(deep)) << "something else was left in it";
    }
}

TEST_F(UnfinishedFile, TwoAreUnfinishedWhereOnlyShortNamesFit) {
    const std::string deep = folder.Path(std::string(247 - folder.Path().size() - 1, 'x'));
    ASSERT_TRUE(fs::create_directory(deep));
    Platform::UnfinishedFile other;
    ASSERT_EQ(file.CreateBeside(deep + "/one"), 0);
    ASSERT_EQ(other.CreateBeside(deep + "/two"), 0);
    EXPECT_NE(file.GetName(), other.GetName());
    EXPECT_LT(other.GetName().size(), std::size_t{MAX_PATH});
}

TEST_F(UnfinishedFile, WhatIsMissingGivesThePortableErrorNumber) {
    EXPECT_EQ(file.CreateBeside(folder.Path("none/out")), ENOENT);
    EXPECT_EQ(file.CreateBeside(""), ENOENT);
}

TEST_F(UnfinishedFile, ANameThatNoFileCanHaveIsRefusedAtOnce) {
    for (const char* name : {"a*b", "a?b", "out:x"})
        EXPECT_EQ(file.CreateBeside(folder.Path(name)), EINVAL) << name;
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(UnfinishedFile, ATemporaryFileStandsInTheFolderForThemAndGoes) {
    const std::string before = std::getenv("TMP");
    setenv("TMP", folder.Path().c_str(), 1);
    {
        Platform::UnfinishedFile temporary;
        EXPECT_EQ(temporary.CreateTemporary(), 0);
        EXPECT_EQ(temporary.Write("text", 4), 0);
        EXPECT_EQ(CountFiles(), 1);
        EXPECT_EQ(folder.ReadFile(fs::path(temporary.GetName()).filename().string()), "text");
        const std::string usual = folder.WriteFile("usual", "");
        const std::string permissions = PermissionsOf(temporary.GetName());
        EXPECT_NE(permissions, PermissionsOf(usual));
        for (const char* const others : {";WD)", ";BU)", ";AU)"})
            EXPECT_EQ(permissions.find(others), std::string::npos) << permissions;
        fs::remove(usual);
    }
    EXPECT_EQ(CountFiles(), 0);
    setenv("TMP", before.c_str(), 1);
}

}  // namespace
