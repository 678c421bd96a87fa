#include <Platform/StandardStreams.h>

#include "NullDevice_win32.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

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

constexpr UINT kNoWindows = SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX;

UINT lettersBefore = 0;

void RestoreLetters() {
    SetConsoleOutputCP(lettersBefore);
}

/// An event ends the process without what std::atexit has noted.
BOOL WINAPI RestoreLettersAtEvent(DWORD) {
    RestoreLetters();
    return FALSE;
}

bool IsConsole(DWORD stream) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

/// Names go out as they came in; a console has letters of its own for their bytes. They are the
/// console's, and stay with it when the process has ended, so they are put back.
void ShareLettersWithConsole() {
    lettersBefore = GetConsoleOutputCP();
    if (lettersBefore == 0 || lettersBefore == GetACP()) return;
    if (!IsConsole(STD_OUTPUT_HANDLE) && !IsConsole(STD_ERROR_HANDLE)) return;
    if (!SetConsoleOutputCP(GetACP())) return;
    std::atexit(RestoreLetters);
    SetConsoleCtrlHandler(&RestoreLettersAtEvent, TRUE);
}

}  // namespace

void PrepareStandardStreams() {
    // A drive without a disk, and a crash, else show a window and wait for somebody to close it.
    SetErrorMode(GetErrorMode() | kNoWindows);
    OpenOnNullDevice(0, stdin, "r");
    OpenOnNullDevice(1, stdout, "w");
    OpenOnNullDevice(2, stderr, "w");
    // This system's library takes buffering by lines for buffering by blocks.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    ShareLettersWithConsole();
}

// The system's library has one number for all but one of the ways in which a pipe's reader may be
// gone, and the same for much else.
bool IsReaderGone(int error) {
    if (error != EINVAL) return error == EPIPE;
    const unsigned long own = _doserrno;
    return own == ERROR_NO_DATA || own == ERROR_PIPE_NOT_CONNECTED || own == ERROR_BROKEN_PIPE;
}

int LateErrorOfStandardOutput() {
    const int copy = _dup(_fileno(stdout));
    return copy >= 0 && _close(copy) != 0 ? errno : 0;
}

}  // namespace Platform
