#include <Platform/Paths.h>

#include <limits.h>
#include <unistd.h>

#include <string_view>

namespace Platform {

namespace {

/// Appends the folders and the name of `path` to a canonical path, which is empty for the root.
void AppendTidied(std::string& full, std::string_view path) {
    while (!path.empty()) {
        const std::size_t end = path.find('/');
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
        if (part.empty() || part == ".") continue;
        if (part == "..") {
            const std::size_t parent = full.rfind('/');
            full.resize(parent == std::string::npos ? 0 : parent);
            continue;
        }
        full += '/';
        full += part;
    }
}

}  // namespace

std::optional<std::string> CurrentDirectory() {
    char buffer[PATH_MAX];
    if (getcwd(buffer, sizeof buffer) == nullptr) return std::nullopt;
    // A working directory that was moved out of reach is told without a leading separator.
    if (buffer[0] != '/') return std::nullopt;
    return buffer;
}

bool EnterFolder(const std::string& path) {
    return chdir(path.c_str()) == 0;
}

std::optional<std::string> FullPath(const std::string& path) {
    if (path.empty()) return std::nullopt;
    std::string full;
    if (path.front() != '/') {
        const std::optional<std::string> folder = CurrentDirectory();
        if (!folder) return std::nullopt;
        AppendTidied(full, *folder);
    }
    AppendTidied(full, path);
    // A separator at the end says that a folder is meant; a file of that name is not what was asked
    // for.
    if (full.empty() || path.back() == '/') full += '/';
    if (full.size() >= PATH_MAX) return std::nullopt;
    return full;
}

std::optional<std::string> FullOutputPath(const std::string& path) {
    return FullPath(path);
}

std::filesystem::path ToPath(const std::string& name) {
    return name;
}

std::string FromPath(const std::filesystem::path& path) {
    return path.string();
}

std::string LastName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

int CompareNames(const std::string& a, const std::string& b) {
    return a.compare(b);
}

bool BackslashSeparates() {
    return false;
}

}  // namespace Platform
