#include <Platform/Folders.h>

#include <sys/stat.h>

namespace Platform {

bool Exists(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

bool IsFolder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsRegularFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool CreateFolders(const std::string& path) {
    if (IsFolder(path)) return true;
    std::size_t end = 0;
    while (end < path.size()) {
        end = path.find('/', end + 1);
        if (end == std::string::npos) end = path.size();
        // What is there already, made by whomever, is told by the look at the folder in the end.
        mkdir(path.substr(0, end).c_str(), 0777);
    }
    return IsFolder(path);
}

}  // namespace Platform
