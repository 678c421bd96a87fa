#include <Platform/WholeFile.h>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

namespace {

namespace fs = std::filesystem;

/// Lets files grow to so many bytes only while it lives.
class SmallFiles {
  public:
    explicit SmallFiles(rlim_t bytes) : handler(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit small = before;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &before);
        signal(SIGXFSZ, handler);
    }

  private:
    rlimit before{};
    void (*handler)(int);
};

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
}

TEST(WholeFile, WhatDoesNotFitLeavesTheOldContent) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    const SmallFiles small(1000);
    EXPECT_EQ(Save(out, std::string(5000, 'x')), EFBIG);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(Save(folder.Path("free"), std::string(5000, 'x')), EFBIG);
    EXPECT_FALSE(fs::exists(folder.Path("free")));
}

TEST(WholeFile, AFileThatMayNotBeWrittenIsNotReplaced) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    chmod(folder.Path().c_str(), 0777);
    chmod(out.c_str(), 0444);
    const OrdinaryUser user;
    EXPECT_EQ(Platform::WholeFile().Open(out), EACCES);
    EXPECT_EQ(folder.ReadFile("out"), "old");
}

TEST(WholeFile, AWritableFileInAFolderThatTakesNoOtherIsWrittenInPlace) {
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "the old content");
    struct stat before {};
    stat(out.c_str(), &before);
    chmod(out.c_str(), 0666);
    chmod(folder.Path().c_str(), 0555);
    int error = -1;
    int tooLarge = -1;
    {
        const OrdinaryUser user;
        const SmallFiles small(1000);
        error = Save(out, std::string(1000, 'n'));
        tooLarge = Save(out, std::string(1001, 'x'));
    }
    chmod(folder.Path().c_str(), 0755);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(tooLarge, EFBIG);
    EXPECT_EQ(folder.ReadFile("out"), std::string(1000, 'n'));
    struct stat after {};
    stat(out.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST(WholeFile, AFileOfAnotherUserInASharedFolderIsWrittenInPlace) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set this up";
    const TemporaryFolder folder;
    const std::string out = folder.WriteFile("out", "old");
    chmod(out.c_str(), 0666);
    chmod(folder.Path().c_str(), 01777);
    int error = -1;
    {
        const OrdinaryUser user;
        error = Save(out, "new");
    }
    EXPECT_EQ(error, 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1);
}

TEST(WholeFile, APipeGetsTheBytesAndStays) {
    const TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string seen;
    std::thread reader([&] {
        const int end = open(pipe.c_str(), O_RDONLY);
        char buffer[100];
        for (ssize_t count; (count = read(end, buffer, sizeof buffer)) > 0;)
            seen.append(buffer, static_cast<std::size_t>(count));
        close(end);
    });
    EXPECT_EQ(Save(pipe, "new"), 0);
    reader.join();
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(WholeFile, ADeviceIsWrittenAndStays) {
    if (!fs::is_character_file("/dev/full")) GTEST_SKIP() << "there is no device that is full";
    EXPECT_EQ(Save("/dev/full", "new"), ENOSPC);
    EXPECT_EQ(Save("/dev/null", "new"), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(WholeFile, WhatCannotBeOpenedGivesTheSystemsErrorNumber) {
    const TemporaryFolder folder;
    folder.WriteFile("file", "");
    fs::create_symlink("loop", folder.Path("loop"));
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path()), EISDIR);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path("none/out")), ENOENT);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path("file/out")), ENOTDIR);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path("loop")), ELOOP);
    EXPECT_EQ(Platform::WholeFile().Open(folder.Path(std::string(300, 'x'))), ENAMETOOLONG);
    EXPECT_EQ(Platform::WholeFile().Open(""), ENOENT);
}

}  // namespace
