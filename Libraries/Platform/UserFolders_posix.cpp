#include <Platform/Environment.h>
#include <Platform/UserFolders.h>

#include <unistd.h>

namespace Platform {

std::optional<std::string> UserDataFolder() {
    if (const std::string data = Environment("XDG_DATA_HOME").value_or(""); data.starts_with('/'))
        return data;
    const std::string home = Environment("HOME").value_or("");
    if (!home.starts_with('/')) return std::nullopt;
    return home + "/.local/share";
}

std::string UserName() {
    for (const char* const variable : {"USER", "LOGNAME"})
        if (std::string name = Environment(variable).value_or(""); !name.empty()) return name;
    return std::to_string(geteuid());
}

}  // namespace Platform
