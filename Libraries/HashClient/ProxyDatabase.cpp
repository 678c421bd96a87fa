#include <HashClient/ProxyDatabase.h>
#include <Platform/Environment.h>
#include <Platform/UserFolders.h>

namespace {

constexpr char kVariable[] = "QEL_HASH_DATABASE";
constexpr char kDefaultFile[] = "/QelHashProxy/registry.sqlite";
/// What SQLite puts behind a database's name.
constexpr const char* kBeside[] = {"-journal", "-wal", "-shm"};

}  // namespace

std::optional<std::string> ProxyDatabaseFile() {
    std::optional<std::string> file = Platform::Environment(kVariable);
    if (file && !file->empty()) return file;
    file = Platform::UserDataFolder();
    if (file) *file += kDefaultFile;
    return file;
}

std::vector<std::string> ProxyDatabaseFiles() {
    const std::optional<std::string> file = ProxyDatabaseFile();
    if (!file) return {};
    std::vector<std::string> files = {*file};
    for (const char* end : kBeside) files.push_back(*file + end);
    return files;
}
