#include <Platform/OpenForReading.h>

#include "Platform/Interruptions.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace {

TEST(OpenForReading, ASignalDoesNotEndTheWait) {
    const TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Interruptions interruptions;
    std::thread other([&] {
        interruptions.Send(20);
        // The opening ends with whoever writes, if it has not ended before.
        while (!interruptions.AreOver()) close(open(pipe.c_str(), O_WRONLY | O_NONBLOCK));
    });
    const Platform::OpenedFile file = Platform::OpenForReading(pipe);
    interruptions.End();
    other.join();
    EXPECT_NE(file, nullptr);
}

}  // namespace
