#include <Platform/OpenForReading.h>

#include <cerrno>

namespace Platform {

OpenedFile OpenForReading(const std::string& path) {
    OpenedFile file;
    do {
        file.reset(std::fopen(path.c_str(), "rb"));
    } while (file == nullptr && errno == EINTR);
    return file;
}

}  // namespace Platform
