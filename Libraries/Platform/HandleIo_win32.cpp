#include "HandleIo_win32.h"

#include "ErrorNumber_win32.h"

#include <algorithm>
#include <cerrno>

namespace Platform {

namespace {

/// Some devices refuse larger pieces.
constexpr std::size_t kLargestPiece = 1 << 20;

}  // namespace

int WriteAll(HANDLE handle, const char* bytes, std::size_t size) {
    while (size > 0) {
        DWORD written = 0;
        const auto piece = static_cast<DWORD>(std::min(size, kLargestPiece));
        if (!WriteFile(handle, bytes, piece, &written, nullptr)) return LastErrorNumber();
        if (written == 0) return ENOSPC;
        bytes += written;
        size -= written;
    }
    return 0;
}

int Flush(HANDLE handle) {
    if (GetFileType(handle) != FILE_TYPE_DISK) return 0;
    return FlushFileBuffers(handle) ? 0 : LastErrorNumber();
}

}  // namespace Platform
