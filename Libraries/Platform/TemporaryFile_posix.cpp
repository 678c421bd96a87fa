#include <Platform/Environment.h>
#include <Platform/TemporaryFile.h>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace Platform {

std::string TemporaryFolder() {
    const std::string folder = Environment("TMPDIR").value_or("");
    return folder.empty() ? "/tmp" : folder;
}

std::optional<std::string> CreateTemporaryFile(const std::string& prefix) {
    std::string path = TemporaryFolder();
    if (path.back() != '/') path += '/';
    path += prefix + "XXXXXX";
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;
    close(descriptor);
    return path;
}

}  // namespace Platform
