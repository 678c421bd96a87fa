#pragma once

#include <sys/stat.h>
#include <sys/types.h>
#include <time.h>

#include <functional>

/// While it lives, this program's calls of the system go through what the test puts here; an empty
/// function leaves them as they are. One at a time. A function that gives an error number makes
/// the call fail with it; 0 lets it pass.
class SystemCalls {
  public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    std::function<int()> inFrontOfLocking;
    /// A pause that fails is over at once.
    std::function<int(const timespec& pause)> inFrontOfPausing;
    std::function<int()> inFrontOfReserving;
    /// Gets the place in the file and the bytes; for regular files only.
    std::function<int(off_t at, size_t size)> inFrontOfWriting;
    std::function<int(int descriptor)> inFrontOfFlushing;
    /// May change what the system said.
    std::function<void(const char* path, struct stat& status)> behindLooking;
    std::function<void(struct statx& status)> behindLookingCloser;
    std::function<int()> inFrontOfLinking;
    std::function<int()> inFrontOfRenaming;
    /// In place of another descriptor.
    std::function<int()> inFrontOfDuplicating;
    /// From a pipe.
    std::function<int()> inFrontOfReading;
    std::function<int()> inFrontOfReadingAt;
    std::function<int(off_t size)> inFrontOfResizing;
    /// For regular files only; they are closed all the same.
    std::function<int(int descriptor)> inFrontOfClosing;
};
