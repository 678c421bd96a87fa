#include "FinalOutput_posix.h"

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>

namespace Platform {

namespace {

std::atomic<int> finalOutput = STDOUT_FILENO;
static_assert(std::atomic<int>::is_always_lock_free);

}  // namespace

int FinalOutput() {
    return finalOutput;
}

void SetFinalOutput(int descriptor) {
    finalOutput = descriptor;
}

bool IsPrintedInto(int descriptor) {
    struct stat file;
    if (fstat(descriptor, &file) != 0) return false;
    for (const int printed : {FinalOutput(), STDERR_FILENO}) {
        struct stat other;
        if (fstat(printed, &other) == 0 && other.st_dev == file.st_dev &&
            other.st_ino == file.st_ino)
            return true;
    }
    return false;
}

}  // namespace Platform
