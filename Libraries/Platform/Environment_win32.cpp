#include <Platform/Environment.h>

#include <cstdlib>

namespace Platform {

std::optional<std::string> Environment(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return value;
}

}  // namespace Platform
