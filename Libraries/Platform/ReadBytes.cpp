#include <Platform/ReadBytes.h>

#include <cerrno>

namespace Platform {

std::size_t ReadBytes(std::FILE* file, char* bytes, std::size_t size) {
    std::size_t count = std::fread(bytes, 1, size, file);
    while (count < size && std::ferror(file) != 0 && errno == EINTR) {
        std::clearerr(file);
        count += std::fread(bytes + count, 1, size - count, file);
    }
    return count;
}

}  // namespace Platform
