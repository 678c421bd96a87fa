#include <Platform/FileIdentity.h>

#include "LinkTarget_posix.h"

#include <sys/stat.h>

#include <filesystem>

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

}  // namespace Platform
