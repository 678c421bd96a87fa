#include <Platform/OpenForReading.h>

#include "ErrorNumber_win32.h"
#include "FileName_win32.h"
#include "OwnedHandle_win32.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <cstdint>

namespace Platform {

// The library's own call does not share the removal.
OpenedFile OpenForReading(const std::string& path) {
    if (HidesDevice(path)) {
        errno = EINVAL;
        return nullptr;
    }
    OwnedHandle file(CreateFileA(path.c_str(), GENERIC_READ,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid()) {
        errno = LastErrorNumber();
        return nullptr;
    }
    const int descriptor =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(file.Get()), _O_RDONLY | _O_BINARY);
    if (descriptor < 0) return nullptr;
    file.Release();
    OpenedFile stream(_fdopen(descriptor, "rb"));
    if (stream == nullptr) _close(descriptor);
    return stream;
}

}  // namespace Platform
