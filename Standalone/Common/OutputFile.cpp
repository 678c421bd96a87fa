#include "OutputFile.h"

#include "FailureText.h"

#include <Platform/ErrorText.h>
#include <Platform/FileIdentity.h>
#include <Platform/FileTests.h>
#include <Platform/Folders.h>
#include <Platform/OpenForReading.h>
#include <Platform/ReadBytes.h>
#include <Platform/StandardStreams.h>
#include <Platform/TemporaryFile.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <utility>

namespace {

constexpr const char* kStandardOutput = "-";
constexpr std::size_t kBlockBytes = 1 << 16;

std::string Reason(int error) {
    return error != 0 ? ": " + Platform::ErrorText(error) : std::string();
}

}  // namespace

// What is opened anew by a name such as /dev/stdout begins in front of what was printed before.
bool OutputFile::IsStandardOutput(const std::string& typedPath) {
    return typedPath == kStandardOutput || Platform::NamesStandardOutput(typedPath);
}

bool OutputFile::IsKept(const std::string& typedPath) {
    return !IsStandardOutput(typedPath) &&
           (!Platform::Exists(typedPath) || Platform::IsRegularFile(typedPath));
}

OutputFile::OutputFile(std::string typedPath) : path(std::move(typedPath)), isKept(IsKept(path)) {
    if (!IsStandardOutput(path)) {
        if (path.empty()) Fail(ENOENT);
        if (Platform::IsFolder(path)) Fail(EISDIR);
        errno = EACCES;
        if (!Platform::IsWritable(path)) Fail(errno);
        // What can be neither read nor written passes that test.
        if (Platform::Exists(path) && !Platform::GrantsWrite(path)) Fail(errno);
    }
    const int failure = isKept ? unfinished.CreateBeside(path) : unfinished.CreateTemporary();
    if (failure != 0) FailUnfinished(failure);
}

void OutputFile::Finish() {
    if (!stream.flush()) FailUnfinished(buffer.GetError());
}

void OutputFile::Publish() {
    if (isKept) {
        if (const int error = unfinished.Publish(); error != 0) Fail(error);
        return;
    }
    if (IsStandardOutput(path)) {
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
    const Platform::OpenedFile in = Platform::OpenForReading(unfinished.GetName());
    if (in == nullptr) FailUnfinished(errno);
    char block[kBlockBytes];
    std::size_t count = Platform::ReadBytes(in.get(), block, sizeof block);
    if (count == 0) FailUnfinished(errno);
    for (; count > 0 && out; count = Platform::ReadBytes(in.get(), block, sizeof block))
        out.write(block, static_cast<std::streamsize>(count));
    if (std::ferror(in.get()) != 0) FailUnfinished(errno);
    if (!out.flush()) Fail(Platform::IsReaderGone(errno) ? EPIPE : errno);
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
