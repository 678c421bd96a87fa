#include <Platform/WholeFile.h>

#include "EndingEvents_win32.h"
#include "Support/Permissions_win32.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <thread>
#include <utility>

namespace {

namespace fs = std::filesystem;

int Save(const std::string& path, const std::string& text) {
    Platform::WholeFile file;
    if (const int error = file.Open(path); error != 0) return error;
    return file.Save(text.data(), text.size());
}

TEST(WholeFile, TheContentIsReplacedAtOnce) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "the old content");
    Platform::WholeFile file;
    ASSERT_EQ(file.Open(out), 0);
    EXPECT_EQ(folder.ReadFile("out"), "the old content");
    EXPECT_EQ(file.Save("new", 3), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(Save(out, ""), 0);
    EXPECT_EQ(folder.ReadFile("out"), "");
}

TEST(WholeFile, WhatIsOpenedAndNotSavedStaysAsItWas) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    { EXPECT_EQ(Platform::WholeFile().Open(out), 0); }
    { EXPECT_EQ(Platform::WholeFile().Open(folder.Path("free")), 0); }
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_FALSE(fs::exists(folder.Path("free")));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1);
}

TEST(WholeFile, AFileThatMayNotBeWrittenIsNotReplaced) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    SetFileAttributesA(out.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Platform::WholeFile().Open(out), EACCES);
    SetFileAttributesA(out.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.ReadFile("out"), "old");
}

TEST(WholeFile, AFileThatSomebodyHasOpenIsNotReplaced) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    for (const DWORD sharing : {DWORD{FILE_SHARE_READ}, kAll}) {
        const HANDLE reader =
            CreateFileA(out.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_EQ(Platform::WholeFile().Open(out), EACCES);
        CloseHandle(reader);
    }
    EXPECT_EQ(folder.ReadFile("out"), "old");
}

/// A view of a file in memory, of which no handle is open any more.
class MappedFile {
  public:
    explicit MappedFile(const std::string& path) {
        const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        const HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
        view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
        CloseHandle(mapping);
        CloseHandle(file);
        EXPECT_NE(view, nullptr);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() { UnmapViewOfFile(view); }

  private:
    void* view;
};

TEST(WholeFile, AFileThatSomebodyHasInMemoryStaysAsItWas) {
    const TemporaryFolder folder;
    const std::string old(200'000, 'o');
    const std::string out = folder.WriteFile("out", old);
    for (const std::size_t size : {4096, 200'000, 400'000}) {
        {
            const MappedFile user(out);
            EXPECT_EQ(Save(out, std::string(size, 'n')), EACCES) << size;
            EXPECT_TRUE(folder.ReadFile("out") == old) << size;
        }
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()),
                  1);
    }
    EXPECT_EQ(Save(out, "new"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

/// A folder that takes no other file while the object lives.
class ClosedFolder {
  public:
    explicit ClosedFolder(std::string name) : folder(std::move(name)) {
        SetPermissions(folder, "D:P(A;;FRFX;;;WD)");
    }
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;
    ~ClosedFolder() { SetPermissions(folder, "D:P(A;OICI;FA;;;WD)"); }

  private:
    std::string folder;
};

TEST(WholeFile, InAFolderThatTakesNoOtherFileTheContentIsWrittenInPlace) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", std::string(200'000, 'o'));
    const ClosedFolder closed(folder.Path());
    ASSERT_NE(Save(folder.Path("other"), "new"), 0);
    for (const std::size_t size : {4096, 200'000, 400'000}) {
        const std::string text(size, 'n');
        EXPECT_EQ(Save(out, text), 0) << size;
        EXPECT_TRUE(folder.ReadFile("out") == text) << size;
    }
}

TEST(WholeFile, WhileAnEventEndsTheProcessNothingIsWrittenInPlace) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    const ClosedFolder closed(folder.Path());
    Platform::WholeFile file;
    ASSERT_EQ(file.Open(out), 0);
    int error = -1;
    std::optional<Platform::DeferEvents> event(std::in_place);
    std::thread other([&] { error = file.Save("newer", 5); });
    Sleep(200);
    EXPECT_EQ(fs::file_size(out), 3u);
    event.reset();
    other.join();
    EXPECT_EQ(error, 0);
    EXPECT_EQ(folder.ReadFile("out"), "newer");
}

TEST(WholeFile, InAFolderThatLeavesAFileBesideNoRoomTheContentIsWrittenInPlace) {
    // Longer than a folder's name may usually be.
    constexpr std::size_t kLength = 248;
    const TemporaryFolder folder;
    const std::string deep = folder.Path(std::string(kLength - folder.Path().size() - 1, 'x'));
    ASSERT_TRUE(CreateDirectoryA(("\\\\?\\" + WithSeparators(deep)).c_str(), nullptr));
    EXPECT_EQ(Save(deep + "/out", "new"), ENAMETOOLONG);
    folder.WriteFile(deep + "/out", "old");
    EXPECT_EQ(Save(deep + "/out", "newer"), 0);
    EXPECT_EQ(folder.ReadFile(deep + "/out"), "newer");
}

TEST(WholeFile, WhatSomebodyHasInMemoryIsNotMadeShorterInPlace) {
    const TemporaryFolder folder;
    const std::string old(200'000, 'o');
    const std::string out = folder.WriteFile("out", old);
    const ClosedFolder closed(folder.Path());
    const MappedFile user(out);
    EXPECT_EQ(Save(out, "new"), EACCES);
    EXPECT_TRUE(folder.ReadFile("out") == old);
    const std::string longer(400'000, 'n');
    EXPECT_EQ(Save(out, longer), 0);
    EXPECT_TRUE(folder.ReadFile("out") == longer);
}

TEST(WholeFile, ADeviceIsWritten) {
    EXPECT_EQ(Save("NUL", "new"), 0);
}

TEST(WholeFile, ANameThatNoFileCanHaveDoesNotOpen) {
    const TemporaryFolder folder;
    for (const std::string name : {"a*b", "a?b", "a<b", "a|b", "a\"b", "aa:b", "xx:y/a"})
        EXPECT_EQ(Platform::WholeFile().Open(folder.Path(name)), EINVAL) << name;
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(WholeFile, AFurtherStreamOfAFileDoesNotOpen) {
    const TemporaryFolder folder;
    const std::string out = WithSeparators(folder.WriteFile("out", "old"));
    for (const std::string& name : {out + ":x", out + "::$DATA", "\\\\?\\" + out + ":x"})
        EXPECT_EQ(Platform::WholeFile().Open(name), EINVAL) << name;
    EXPECT_EQ(Save("\\\\?\\" + out, "new"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST(WholeFile, WhatCannotBeOpenedGivesThePortableErrorNumber) {
    const TemporaryFolder folder;
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path()), EACCES);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path("none/out")), ENOENT);
    EXPECT_EQ(Platform::WholeFile().Open(""), ENOENT);
    EXPECT_NE(Platform::WholeFile().Open(folder.Path(std::string(300, 'x'))), 0);
}

}  // namespace
