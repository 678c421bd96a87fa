#include <Platform/OpenForReading.h>

namespace Platform {

OpenedFile OpenForReading(const std::string& path) {
    return OpenedFile(std::fopen(path.c_str(), "rb"));
}

}  // namespace Platform
