#include <Platform/WholeFile.h>

#include "Platform/SystemCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>

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

TEST_F(WholeFileInPlace, SignalsWaitWhileTheFileIsNotWhole) {
    for (const int reserving : {0, EOPNOTSUPP}) {
        calls.inFrontOfReserving = [=] { return reserving; };
        int writes = 0;
        calls.inFrontOfWriting = [&writes](off_t, size_t) {
            ++writes;
            sigset_t blocked;
            pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
            for (const int number : {SIGINT, SIGTERM, SIGHUP})
                EXPECT_EQ(sigismember(&blocked, number), 1) << number;
            return 0;
        };
        EXPECT_EQ(Save(kLonger), 0);
        EXPECT_GT(writes, 0);
        EXPECT_EQ(Save(kOld), 0);
    }
}

}  // namespace
