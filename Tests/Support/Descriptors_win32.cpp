#include "Support/Descriptors.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

int OpenForWriting(const std::string& path) {
    return _open(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}

int OpenForReading(const std::string& path) {
    return _open(path.c_str(), _O_RDONLY | _O_BINARY);
}

void CloseDescriptor(int descriptor) {
    _close(descriptor);
}

int Duplicate(int descriptor) {
    return _dup(descriptor);
}

void Duplicate(int descriptor, int onto) {
    _dup2(descriptor, onto);
}

Pipe OpenPipe() {
    int ends[2] = {-1, -1};
    return _pipe(ends, 1024, _O_BINARY) == 0 ? Pipe{ends[0], ends[1]} : Pipe{};
}

bool WriteText(int descriptor, const std::string& text) {
    return _write(descriptor, text.data(), static_cast<unsigned>(text.size())) ==
           static_cast<int>(text.size());
}

std::string ReadToEnd(int descriptor) {
    std::string text;
    char buffer[4096];
    for (int count; (count = _read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

std::set<int> OpenDescriptors() {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (_get_osfhandle(descriptor) != -1) open.insert(descriptor);
    return open;
}

bool IsInherited(int descriptor) {
    DWORD flags = 0;
    GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)), &flags);
    return (flags & HANDLE_FLAG_INHERIT) != 0;
}
