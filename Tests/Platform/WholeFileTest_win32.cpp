#include <Platform/WholeFile.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>
#include <filesystem>

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
    const HANDLE reader =
        CreateFileA(out.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(Save(out, "new"), EACCES);
    CloseHandle(reader);
    EXPECT_EQ(folder.ReadFile("out"), "old");
}

TEST(WholeFile, ADeviceIsWritten) {
    EXPECT_EQ(Save("NUL", "new"), 0);
}

TEST(WholeFile, WhatCannotBeOpenedGivesThePortableErrorNumber) {
    const TemporaryFolder folder;
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path()), EACCES);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path("none/out")), ENOENT);
    EXPECT_EQ(Platform::WholeFile().Open(""), ENOENT);
    EXPECT_NE(Platform::WholeFile().Open(folder.Path(std::string(300, 'x'))), 0);
}

}  // namespace
