#include "Support/Descriptors.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

int OpenForWriting(const std::string& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
}

int OpenForReading(const std::string& path) {
    return open(path.c_str(), O_RDONLY);
}

void CloseDescriptor(int descriptor) {
    close(descriptor);
}

int Duplicate(int descriptor) {
    return dup(descriptor);
}

void Duplicate(int descriptor, int onto) {
    dup2(descriptor, onto);
}

Pipe OpenPipe() {
    signal(SIGPIPE, SIG_IGN);
    int ends[2] = {-1, -1};
    return pipe(ends) == 0 ? Pipe{ends[0], ends[1]} : Pipe{};
}

bool WriteText(int descriptor, const std::string& text) {
    return write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

std::string ReadToEnd(int descriptor) {
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

std::set<int> OpenDescriptors() {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0) open.insert(descriptor);
    return open;
}

bool IsInherited(int descriptor) {
    return (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0;
}
