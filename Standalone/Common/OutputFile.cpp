#include "OutputFile.h"

#include "FailureText.h"

#include <Platform/ErrorText.h>
#include <Platform/FileTests.h>
#include <Platform/Folders.h>
#include <Platform/TemporaryFile.h>

#include <cerrno>
#include <iostream>
#include <utility>

namespace {

constexpr const char* kStandardOutput = "-";

std::string Reason(int error) {
    return error != 0 ? ": " + Platform::ErrorText(error) : std::string();
}

}  // namespace

bool OutputFile::IsKept(const std::string& typedPath) {
    return typedPath != kStandardOutput &&
           (!Platform::Exists(typedPath) || Platform::IsRegularFile(typedPath));
}

OutputFile::OutputFile(std::string typedPath) : path(std::move(typedPath)), isKept(IsKept(path)) {
    if (path != kStandardOutput) {
        if (path.empty()) Fail(ENOENT);
        if (Platform::IsFolder(path)) Fail(EISDIR);
        errno = EACCES;
        if (!Platform::IsWritable(path)) Fail(errno);
    }
    const int failure = isKept ? unfinished.CreateBeside(path) : unfinished.CreateTemporary();
    if (failure != 0) FailUnfinished(failure);
    errno = 0;
    stream.open(unfinished.GetName(), std::ios::binary | std::ios::trunc);
    if (!stream) FailUnfinished(errno);
}

void OutputFile::Finish() {
    // The stream keeps no reason; where it failed long ago, the last attempt here fails alike.
    errno = 0;
    stream.flush();
    if (!stream) {
        stream.clear();
        stream << ' ' << std::flush;
        FailUnfinished(errno);
    }
    stream.close();
    if (!stream) FailUnfinished(errno);
}

void OutputFile::Publish() {
    if (isKept) {
        if (const int error = unfinished.Publish(); error != 0) Fail(error);
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
    errno = 0;
    std::ifstream in(unfinished.GetName(), std::ios::binary);
    if (!in || in.peek() == std::ifstream::traits_type::eof()) FailUnfinished(errno);
    out << in.rdbuf();
    out.flush();
    if (!out || in.bad()) Fail(errno);
}

void OutputFile::Fail(int error) const {
    throw DocumentFailure({path == kStandardOutput ? "standard output" : path},
                          "The file cannot be written" + Reason(error));
}

void OutputFile::FailUnfinished(int error) const {
    if (isKept) Fail(error);
    throw DocumentFailure({Platform::TemporaryFolder()},
                          "A temporary file cannot be written here" + Reason(error));
}
