#include <Platform/OutputCapture.h>
#include <Platform/WholeFile.h>

#include "Platform/SystemCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <utility>

namespace {

/// A writable file in a folder that takes no other.
class WholeFileInPlace : public testing::Test {
  protected:
    WholeFileInPlace() {
        chmod(folder.WriteFile("out", kOld).c_str(), 0666);
        chmod(folder.Path().c_str(), 0555);
    }
    ~WholeFileInPlace() override { chmod(folder.Path().c_str(), 0755); }

    int Save(const std::string& text) {
        const OrdinaryUser user;
        Platform::WholeFile file;
        if (const int error = file.Open(folder.Path("out")); error != 0) return error;
        return file.Save(text.data(), text.size());
    }

    /// Files take `bytes` and no more.
    void FillDisk(off_t bytes) {
        calls.inFrontOfWriting = [bytes](off_t at, size_t size) {
            return at + static_cast<off_t>(size) > bytes ? ENOSPC : 0;
        };
    }

    const std::string kOld = std::string(5000, 'o');
    const std::string kLonger = std::string(300000, 'n');
    TemporaryFolder folder;
    SystemCalls calls;
};

TEST_F(WholeFileInPlace, AShorterContentLeavesNothingOfTheOldOne) {
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(Save(""), 0);
    EXPECT_EQ(folder.ReadFile("out"), "");
}

TEST_F(WholeFileInPlace, NothingIsWrittenWhereTheSystemHasNoRoomToReserve) {
    for (const int error : {ENOSPC, EDQUOT, EFBIG, EIO}) {
        calls.inFrontOfReserving = [error] { return error; };
        calls.inFrontOfWriting = [](off_t, size_t) {
            ADD_FAILURE();
            return 0;
        };
        EXPECT_EQ(Save(kLonger), error);
    }
    EXPECT_EQ(folder.ReadFile("out"), kOld);
}

TEST_F(WholeFileInPlace, WhereTheSystemCannotReserveAFullDiskLeavesTheOldContent) {
    calls.inFrontOfReserving = [] { return EOPNOTSUPP; };
    for (const off_t room : {5000, 5001, 100000, 299999}) {
        FillDisk(room);
        EXPECT_EQ(Save(kLonger), ENOSPC);
        EXPECT_EQ(folder.ReadFile("out"), kOld);
    }
    FillDisk(300000);
    EXPECT_EQ(Save(kLonger), 0);
    EXPECT_EQ(folder.ReadFile("out"), kLonger);
    EXPECT_EQ(Save(kOld), 0);
    EXPECT_EQ(folder.ReadFile("out"), kOld);
}

TEST_F(WholeFileInPlace, AFullDiskThatShowsWhenItIsFlushedLeavesTheOldContent) {
    calls.inFrontOfReserving = [] { return EOPNOTSUPP; };
    calls.inFrontOfFlushing = [](int) { return ENOSPC; };
    EXPECT_EQ(Save(kLonger), ENOSPC);
    EXPECT_EQ(folder.ReadFile("out"), kOld);
}

TEST_F(WholeFileInPlace, TheWholeContentIsOnTheDiskInTheEnd) {
    std::string lastFlushed;
    calls.inFrontOfFlushing = [&](int) {
        lastFlushed = folder.ReadFile("out");
        return 0;
    };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(lastFlushed, "new");
    EXPECT_EQ(Save(kLonger), 0);
    EXPECT_TRUE(lastFlushed == kLonger);
    calls.inFrontOfFlushing = [](int) { return EIO; };
    EXPECT_EQ(Save("new"), EIO);
}

TEST_F(WholeFileInPlace, AnEndOfTheOldContentThatCannotBeCutOffIsAFailure) {
    calls.inFrontOfResizing = [](off_t size) {
        EXPECT_EQ(size, 3);
        return EIO;
    };
    EXPECT_EQ(Save("new"), EIO);
    int interruptions = 0;
    calls.inFrontOfResizing = [&](off_t) { return interruptions++ < 3 ? EINTR : 0; };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(interruptions, 4);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(WholeFileInPlace, AFailureThatShowsWhenItIsClosedIsOne) {
    calls.inFrontOfClosing = [](int) { return EDQUOT; };
    EXPECT_EQ(Save("new"), EDQUOT);
    calls.inFrontOfClosing = [](int) { return EINTR; };
    EXPECT_EQ(Save("newer"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "newer");
}

TEST_F(WholeFileInPlace, ItIsForAFolderThatTakesNoOtherFileAndNotForABrokenDisk) {
    chmod(folder.Path().c_str(), 0777);
    chmod(folder.Path("out").c_str(), 0666);
    int error = 0;
    calls.inFrontOfRenaming = [&error] { return error; };
    for (const int refusal : {EACCES, EPERM, EROFS, EBUSY, ENAMETOOLONG}) {
        error = refusal;
        EXPECT_EQ(Save(kLonger), 0) << refusal;
        EXPECT_TRUE(folder.ReadFile("out") == kLonger);
        EXPECT_EQ(Save(kOld), 0);
    }
    for (const int fault : {ENOENT, ENOSPC, EDQUOT, EIO, ENOTDIR, EXDEV}) {
        error = fault;
        EXPECT_EQ(Save(kLonger), fault);
        EXPECT_EQ(folder.ReadFile("out"), kOld);
    }
}

TEST_F(WholeFileInPlace, ItIsForAFolderThatLetsNoNameGo) {
    chmod(folder.Path().c_str(), 0777);
    calls.behindLookingCloser = [](struct statx& status) {
        status.stx_attributes |= STATX_ATTR_APPEND;
    };
    calls.inFrontOfLinking = [] {
        ADD_FAILURE();
        return EPERM;
    };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(WholeFileInPlace, AFolderThatIsGoneIsAFailure) {
    const std::string inner = folder.Path("inner");
    chmod(folder.Path().c_str(), 0777);
    for (const bool isReplaced : {false, true}) {
        SCOPED_TRACE(isReplaced);
        const std::string moved = folder.Path(isReplaced ? "replaced" : "removed");
        std::filesystem::create_directory(inner);
        chmod(inner.c_str(), 0777);
        chmod(folder.WriteFile("inner/out", kOld).c_str(), 0666);
        const OrdinaryUser user;
        Platform::WholeFile file;
        ASSERT_EQ(file.Open(inner + "/out"), 0);
        std::filesystem::rename(inner, moved);
        if (isReplaced) {
            std::filesystem::create_directory(inner);
            folder.WriteFile("inner/out", "another");
            chmod(inner.c_str(), 0555);
        }
        EXPECT_EQ(file.Save(kLonger.data(), kLonger.size()), ENOENT);
        if (isReplaced) {
            EXPECT_EQ(folder.ReadFile("inner/out"), "another");
            chmod(inner.c_str(), 0755);
        } else {
            EXPECT_FALSE(std::filesystem::exists(inner));
        }
    }
    EXPECT_EQ(folder.ReadFile("removed/out"), kOld);
    EXPECT_EQ(folder.ReadFile("replaced/out"), kOld);
}

TEST_F(WholeFileInPlace, AFileThatIsMovedAwayWhileItIsWrittenIsAFailure) {
    chmod(folder.Path().c_str(), 0777);
    bool isRefused = true;
    calls.inFrontOfRenaming = [&] { return std::exchange(isRefused, false) ? EACCES : 0; };
    calls.inFrontOfResizing = [this](off_t) {
        std::filesystem::rename(folder.Path("out"), folder.Path("elsewhere"));
        return 0;
    };
    EXPECT_EQ(Save("new"), ENOENT);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out")));
}

TEST_F(WholeFileInPlace, AFileThatHasNoNameAnyMoreIsReachedThroughTheSystemsLink) {
    chmod(folder.Path().c_str(), 0777);
    for (const bool isTaken : {false, true}) {
        const int open = ::open(folder.Path("out").c_str(), O_RDWR);
        ASSERT_GE(open, 0);
        std::filesystem::remove(folder.Path("out"));
        // So the system's link calls it.
        if (isTaken) folder.WriteFile("out (deleted)", "another");
        const std::string link = "/proc/self/fd/" + std::to_string(open);
        Platform::WholeFile file;
        ASSERT_EQ(file.Open(link), 0);
        EXPECT_EQ(file.Save("new", 3), 0);
        char content[10] = {};
        EXPECT_EQ(pread(open, content, sizeof content, 0), 3);
        EXPECT_STREQ(content, "new");
        close(open);
        if (isTaken) {
            EXPECT_EQ(folder.ReadFile("out (deleted)"), "another");
        }
        folder.WriteFile("out", kOld);
    }
}

/// As another program would.
bool IsLocked(const std::string& path) {
    const int other = open(path.c_str(), O_RDONLY);
    const bool isLocked = flock(other, LOCK_SH | LOCK_NB) != 0;
    if (isLocked) {
        EXPECT_EQ(errno, EWOULDBLOCK);
    }
    close(other);
    return isLocked;
}

TEST_F(WholeFileInPlace, ItIsLockedUntilItIsWhole) {
    int steps = 0;
    const auto look = [&] {
        EXPECT_TRUE(IsLocked(folder.Path("out")));
        ++steps;
        return 0;
    };
    calls.inFrontOfReserving = look;
    calls.inFrontOfWriting = [&](off_t, size_t) { return look(); };
    calls.inFrontOfResizing = [&](off_t) { return look(); };
    calls.inFrontOfFlushing = [&](int) { return look(); };
    calls.inFrontOfClosing = [&](int descriptor) {
        const bool isWritten = (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_WRONLY;
        return isWritten ? look() : 0;
    };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(steps, 5);
    EXPECT_FALSE(IsLocked(folder.Path("out")));
}

TEST_F(WholeFileInPlace, ItWaitsForAnotherThatWrites) {
    const int other = open(folder.Path("out").c_str(), O_RDONLY);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    int pauses = 0;
    calls.inFrontOfPausing = [&](const timespec&) {
        EXPECT_EQ(folder.ReadFile("out"), kOld);
        sigset_t blocked;
        pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
        EXPECT_EQ(sigismember(&blocked, SIGINT), 0);
        if (++pauses == 3) close(other);
        return EINTR;
    };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(pauses, 3);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(WholeFileInPlace, ALockThatIsNotGivenBackForTenSecondsIsAFailure) {
    const int other = open(folder.Path("out").c_str(), O_RDONLY);
    ASSERT_EQ(flock(other, LOCK_SH), 0);
    std::chrono::nanoseconds waited{0};
    calls.inFrontOfPausing = [&](const timespec& pause) {
        waited += std::chrono::seconds(pause.tv_sec) + std::chrono::nanoseconds(pause.tv_nsec);
        return EINTR;
    };
    EXPECT_EQ(Save("new"), EBUSY);
    EXPECT_EQ(waited, std::chrono::seconds(10));
    EXPECT_EQ(folder.ReadFile("out"), kOld);
    close(other);
}

TEST_F(WholeFileInPlace, WhereThereAreNoLocksNothingIsWaitedFor) {
    int error = 0;
    calls.inFrontOfLocking = [&] { return error; };
    calls.inFrontOfPausing = [](const timespec&) {
        ADD_FAILURE();
        return EINTR;
    };
    for (const int without : {ENOLCK, EOPNOTSUPP, EINVAL, ENOSYS}) {
        error = without;
        EXPECT_EQ(Save("new"), 0) << without;
        EXPECT_EQ(folder.ReadFile("out"), "new");
        folder.WriteFile("out", kOld);
    }
    error = EIO;
    EXPECT_EQ(Save("new"), EIO);
    EXPECT_EQ(folder.ReadFile("out"), kOld);
    int interruptions = 0;
    calls.inFrontOfLocking = [&] { return interruptions++ < 300 ? EINTR : 0; };
    EXPECT_EQ(Save("new"), 0);
    EXPECT_EQ(interruptions, 301);
}

TEST_F(WholeFileInPlace, AFileThatTheProgramPrintsIntoIsLeftAlone) {
    const int printed = open(folder.Path("out").c_str(), O_WRONLY | O_APPEND);
    ASSERT_GE(printed, 0);
    {
        const StandardOutput output(printed);
        EXPECT_EQ(Save("new"), EBUSY);
        const TemporaryFolder logs;
        Platform::OutputCapture capture;
        ASSERT_EQ(capture.Start(logs.Path("log")), Platform::OutputCapture::StartResult::kStarted);
        EXPECT_EQ(Save("new"), EBUSY);
        EXPECT_TRUE(capture.Stop());
        EXPECT_EQ(Save("new"), EBUSY);
    }
    EXPECT_EQ(folder.ReadFile("out"), kOld);
    const int errors = dup(STDERR_FILENO);
    dup2(printed, STDERR_FILENO);
    const int error = Save("new");
    dup2(errors, STDERR_FILENO);
    close(errors);
    close(printed);
    EXPECT_EQ(error, EBUSY);
    EXPECT_EQ(folder.ReadFile("out"), kOld);
    EXPECT_EQ(Save("new"), 0);
}

TEST_F(WholeFileInPlace, SignalsWaitWhileTheFileIsNotWhole) {
    for (const int reserving : {0, EOPNOTSUPP}) {
        calls.inFrontOfReserving = [=] { return reserving; };
        int writes = 0;
        calls.inFrontOfWriting = [&writes](off_t, size_t) {
            ++writes;
            sigset_t blocked;
            pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
            for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU})
                EXPECT_EQ(sigismember(&blocked, number), 1) << number;
            return 0;
        };
        EXPECT_EQ(Save(kLonger), 0);
        EXPECT_GT(writes, 0);
        EXPECT_EQ(Save(kOld), 0);
    }
}

}  // namespace
