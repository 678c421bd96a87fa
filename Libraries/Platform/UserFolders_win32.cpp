#include <Platform/Environment.h>
#include <Platform/UserFolders.h>

namespace Platform {

std::optional<std::string> UserDataFolder() {
    const std::string data = Environment("LOCALAPPDATA").value_or("");
    if (data.empty()) return std::nullopt;
    return data;
}

std::string UserName() {
    return Environment("USERNAME").value_or("");
}

}  // namespace Platform
