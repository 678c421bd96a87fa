#include <Platform/StandardStreams.h>

#include "NullDevice_win32.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>

namespace Platform {

namespace {

/// What the library says of a descriptor that is closed, and of one that the process was started
/// without.
constexpr std::intptr_t kClosed = -1;
constexpr std::intptr_t kNeverOpen = -2;

/// A process that was started without a standard stream has one that leads to no descriptor. Where
/// the system's library lets a stream be seen through, that is the only way to one that works: it
/// reopens none that never led anywhere.
template <typename Stream>
void LeadTo(int descriptor, Stream* stream, const char* mode) {
    if constexpr (requires { stream->_file; }) {
        stream->_file = descriptor;
    } else {
        _close(descriptor);
        static_cast<void>(std::freopen(kNullDevice, mode, stream));
    }
}

/// Opens a standard stream that leads nowhere on the null device.
void OpenOnNullDevice(int descriptor, std::FILE* stream, const char* mode) {
    const std::intptr_t handle = _get_osfhandle(descriptor);
    if (handle != kClosed && handle != kNeverOpen &&
        GetFileType(reinterpret_cast<HANDLE>(handle)) != FILE_TYPE_UNKNOWN)
        return;
    if (handle != kClosed) _close(descriptor);
    // The system's library hands out the lowest free descriptor.
    _open(kNullDevice, _O_RDWR);
    if (_fileno(stream) != descriptor) LeadTo(descriptor, stream, mode);
}

}  // namespace

void PrepareStandardStreams() {
    OpenOnNullDevice(0, stdin, "r");
    OpenOnNullDevice(1, stdout, "w");
    OpenOnNullDevice(2, stderr, "w");
    // This system's library takes buffering by lines for buffering by blocks.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

}  // namespace Platform
