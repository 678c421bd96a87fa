#include <Platform/OpenForReading.h>

#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

std::atomic<int> interruptions = 0;

TEST(OpenForReading, ASignalDoesNotEndTheWait) {
    const TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    struct sigaction interrupt {};
    struct sigaction before;
    interrupt.sa_handler = [](int) { ++interruptions; };
    sigaction(SIGUSR1, &interrupt, &before);

    std::atomic<bool> isOpen = false;
    std::thread other([&, opener = pthread_self()] {
        while (interruptions < 20 && !isOpen) {
            pthread_kill(opener, SIGUSR1);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        // The opening ends with whoever writes, if it has not ended before.
        while (!isOpen) close(open(pipe.c_str(), O_WRONLY | O_NONBLOCK));
    });
    const Platform::OpenedFile file = Platform::OpenForReading(pipe);
    isOpen = true;
    other.join();
    sigaction(SIGUSR1, &before, nullptr);
    EXPECT_NE(file, nullptr);
}

}  // namespace
