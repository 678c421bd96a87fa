#pragma once

#include <windows.h>

#include <cstddef>

namespace Platform {

/// Writes everything, however slow the reader. 0 or the portable error number.
int WriteAll(HANDLE handle, const char* bytes, std::size_t size);

/// Has the system put what was written to a file on the disk. 0 or the portable error number; what
/// cannot be flushed, such as a device, is fine.
int Flush(HANDLE handle);

}  // namespace Platform
