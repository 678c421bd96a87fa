#include <HashClient/ProxyDatabase.h>
#include <Platform/Environment.h>
#include <Platform/LinkTarget.h>
#include <Platform/Paths.h>
#include <Platform/UserFolders.h>

namespace {

constexpr char kVariable[] = "QEL_HASH_DATABASE";
constexpr char kDefaultFile[] = "/QelHashProxy/registry.sqlite";
/// What SQLite puts behind the name of the file: on Windows the one that it was given, elsewhere
/// the one that links lead to.
constexpr const char* kBeside[] = {"-journal", "-wal", "-shm"};

/// The full name that stays as it is when it is made full again, as SQLite does: Windows leaves one
/// dot at the end of a folder's name out each time.
std::string SettledName(std::string name) {
    for (auto full = Platform::FullPath(name); full && *full != name;
         full = Platform::FullPath(name))
        name = *full;
    return name;
}

}  // namespace

std::optional<std::string> ProxyDatabaseFile() {
    std::optional<std::string> file = Platform::Environment(kVariable);
    if (!file || file->empty()) {
        file = Platform::UserDataFolder();
        if (file) *file += kDefaultFile;
    }
    if (file) file = SettledName(*file);
    return file;
}

std::vector<std::string> ProxyDatabaseFiles() {
    const std::optional<std::string> file = ProxyDatabaseFile();
    if (!file) return {};
    std::vector<std::string> files = {*file};
    for (const char* end : kBeside) files.push_back(*file + end);
    std::string linked;
    if (Platform::FollowLinks(*file, linked) != 0 || linked == *file) return files;
    for (const char* end : kBeside) files.push_back(linked + end);
    return files;
}
