#pragma once

#include <sys/types.h>

#include <cstddef>

/// POSIX descriptors. Every operation but reading gives 0 when it worked, else the system's error
/// number, and all go on by themselves where a signal interrupts them.
namespace Platform {

/// What `read` gives.
ssize_t ReadSome(int descriptor, char* buffer, std::size_t size);
/// Writes everything, however slow the reader.
int WriteAll(int descriptor, const char* bytes, std::size_t size);
/// Waits until no other program holds the lock of a file, and holds it until the descriptor is
/// closed. EBUSY when another keeps it for ten seconds. Where the file system knows no locks, there
/// is nothing to wait for.
int LockAlone(int descriptor);
/// Cuts or lengthens a file.
int Resize(int descriptor, off_t size);
/// Puts on the disk what was written; what has no disk behind it is fine.
int Flush(int descriptor);
/// The descriptor is gone in any case; what could not be written until now shows here.
int CloseWritten(int descriptor);

}  // namespace Platform
