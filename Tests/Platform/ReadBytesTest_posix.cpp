#include <Platform/ReadBytes.h>

#include <Platform/OpenForReading.h>

#include "Platform/Interruptions.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <thread>

namespace {

/// What is read of a pipe whose writer takes its time while signals come, with the library's own
/// buffer or without.
std::string ReadOfSlowPipe(bool hasBuffer) {
    const TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int writing = open(pipe.c_str(), O_RDWR);
    const Platform::OpenedFile file = Platform::OpenForReading(pipe);
    EXPECT_NE(file, nullptr);
    if (!hasBuffer) std::setvbuf(file.get(), nullptr, _IONBF, 0);

    Interruptions interruptions;
    std::thread other([&] {
        for (const char* part : {"one ", "two ", "three"}) {
            interruptions.Send(5);
            EXPECT_GT(write(writing, part, std::char_traits<char>::length(part)), 0);
        }
        interruptions.Send(5);
        close(writing);
    });
    char bytes[64];
    const std::size_t count = Platform::ReadBytes(file.get(), bytes, sizeof bytes);
    EXPECT_EQ(std::ferror(file.get()), 0);
    interruptions.End();
    other.join();
    return {bytes, count};
}

TEST(ReadBytes, GoesOnWhereSignalsInterruptIt) {
    EXPECT_EQ(ReadOfSlowPipe(true), "one two three");
    EXPECT_EQ(ReadOfSlowPipe(false), "one two three");
}

TEST(ReadBytes, AFailureEndsItAndIsTold) {
    // Opens like a file and cannot be read from its begin.
    const Platform::OpenedFile file = Platform::OpenForReading("/proc/self/mem");
    ASSERT_NE(file, nullptr);
    char bytes[4];
    errno = 0;
    EXPECT_EQ(Platform::ReadBytes(file.get(), bytes, sizeof bytes), 0u);
    EXPECT_EQ(errno, EIO);
    EXPECT_NE(std::ferror(file.get()), 0);
}

}  // namespace
