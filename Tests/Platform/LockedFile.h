#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <string>

/// Keeps the lock of a file while it lives, as whoever may read the file may do.
class LockedFile {
  public:
    explicit LockedFile(const std::string& path)
        : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)),
          isLocked(flock(descriptor, LOCK_EX) == 0) {}
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile() { close(descriptor); }

    bool IsLocked() const { return isLocked; }

  private:
    int descriptor;
    bool isLocked;
};
