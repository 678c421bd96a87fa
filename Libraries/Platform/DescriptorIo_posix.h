#pragma once

#include <sys/types.h>

#include <cstddef>

/// POSIX descriptors. Every operation gives 0 when it worked, else the system's error number, and
/// goes on by itself where a signal interrupts it.
namespace Platform {

/// Writes everything, however slow the reader.
int WriteAll(int descriptor, const char* bytes, std::size_t size);
/// Cuts or lengthens a file.
int Resize(int descriptor, off_t size);
/// Puts on the disk what was written; what has no disk behind it is fine.
int Flush(int descriptor);
/// The descriptor is gone in any case; what could not be written until now shows here.
int CloseWritten(int descriptor);

}  // namespace Platform
