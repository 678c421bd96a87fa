#include <Platform/FileIdentity.h>
#include <Platform/LinkTarget.h>

#include "LinkTarget_posix.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace Platform {

namespace {

/// What a name that leads to no file yet would make; empty when that cannot be told.
std::string FutureFile(const std::string& path) {
    std::string target;
    if (FollowLinks(path, target) != 0) return {};
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(target, error);
    if (error) return {};
    const std::filesystem::path real = std::filesystem::weakly_canonical(absolute, error);
    return error ? std::string() : real.string();
}

bool IsStandardOutputsName(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1;
    if (path.compare(name, std::string::npos, "1") != 0) return false;
    const std::string folder = path.substr(0, name) + ".";
    std::error_code error;
    return std::filesystem::equivalent(folder, "/proc/self/fd", error) ||
           std::filesystem::equivalent(folder, "/proc/thread-self/fd", error);
}

}  // namespace

bool LeadToOneFile(const std::string& a, const std::string& b) {
    struct stat first;
    struct stat second;
    const bool isFirst = stat(a.c_str(), &first) == 0;
    const bool isSecond = stat(b.c_str(), &second) == 0;
    if (isFirst && isSecond)
        return S_ISREG(first.st_mode) && first.st_dev == second.st_dev &&
               first.st_ino == second.st_ino;
    if (isFirst || isSecond) return false;
    const std::string future = FutureFile(a);
    return !future.empty() && future == FutureFile(b);
}

bool NamesStandardOutput(const std::string& path) {
    std::vector<std::string> names;
    return ChainOfLinks(path, names) == 0 &&
           std::any_of(names.begin(), names.end(), IsStandardOutputsName);
}

}  // namespace Platform
