#include "OutputFile.h"

#include "FailureText.h"

#include <Platform/FileTests.h>
#include <Platform/ReplaceFile.h>
#include <Platform/TemporaryFile.h>

#include <cerrno>
#include <iostream>
#include <optional>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr const char* kStandardOutput = "-";
constexpr int kMostLinks = 40;

/// The file that a path leads to, be it there or not.
std::string FollowLinks(const std::string& path) {
    std::error_code error;
    if (fs::exists(path, error)) {
        const fs::path real = fs::is_symlink(path, error) ? fs::canonical(path, error) : fs::path();
        return error || real.empty() ? path : real.string();
    }
    fs::path target = path;
    for (int i = 0; i < kMostLinks && fs::is_symlink(target, error); ++i)
        target = target.parent_path() / fs::read_symlink(target, error);
    return target.string();
}

}  // namespace

bool OutputFile::IsKept(const std::string& typedPath) {
    std::error_code error;
    const fs::file_status status = fs::status(typedPath, error);
    return typedPath != kStandardOutput && (!fs::exists(status) || fs::is_regular_file(status));
}

OutputFile::OutputFile(std::string typedPath)
    : path(std::move(typedPath)), target(path), isKept(IsKept(path)) {
    std::error_code error;
    if (path != kStandardOutput) {
        if (path.empty()) Fail(ENOENT);
        if (fs::is_directory(path, error)) Fail(EISDIR);
        if (!Platform::IsWritable(path)) Fail(EACCES);
    }
    if (isKept) target = FollowLinks(path);
    CreateUnfinished();
    errno = 0;
    stream.open(unfinished, std::ios::binary | std::ios::trunc);
    if (!stream) {
        const int reason = errno;
        fs::remove(unfinished, error);
        Fail(reason);
    }
}

void OutputFile::CreateUnfinished() {
    if (isKept) {
        if (const int error = Platform::CreateFileBeside(target, unfinished); error != 0) {
            unfinished.clear();
            Fail(error);
        }
        return;
    }
    errno = 0;
    const std::optional<std::string> temporary = Platform::CreateTemporaryFile("qeli-");
    if (!temporary) Fail(errno);
    unfinished = *temporary;
}

OutputFile::~OutputFile() {
    if (unfinished.empty()) return;
    stream.close();
    std::error_code ignored;
    fs::remove(unfinished, ignored);
}

void OutputFile::Finish() {
    // The stream keeps no reason; where it failed long ago, the last attempt here fails alike.
    errno = 0;
    stream.flush();
    if (!stream) {
        stream.clear();
        stream << ' ' << std::flush;
        Fail(errno);
    }
    stream.close();
    if (!stream) Fail(errno);
}

void OutputFile::Publish() {
    if (isKept) {
        if (const int error = Platform::ReplaceFile(unfinished, target); error != 0) Fail(error);
        unfinished.clear();
        return;
    }
    if (path == kStandardOutput) {
        CopyTo(std::cout);
        return;
    }
    errno = 0;
    std::ofstream out(path, std::ios::binary);
    if (!out) Fail(errno);
    CopyTo(out);
}

void OutputFile::CopyTo(std::ostream& out) {
    std::ifstream in(unfinished, std::ios::binary);
    errno = 0;
    if (in.peek() != std::ifstream::traits_type::eof()) out << in.rdbuf();
    out.flush();
    if (!out || in.bad()) Fail(errno);
}

void OutputFile::Fail(int error) const {
    const std::string reason = error != 0 ? ": " + Platform::ErrorText(error) : std::string();
    throw DocumentFailure({path == kStandardOutput ? "standard output" : path},
                          "The file cannot be written" + reason);
}
