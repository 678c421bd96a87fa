#include "LogFile_win32.h"

#include <Platform/ErrorText.h>

#include "ErrorNumber_win32.h"
#include "FileName_win32.h"
#include "FinalOutput_win32.h"
#include "HandleIo_win32.h"

namespace Platform {

namespace {

constexpr const char* kOtherContent = "something else was written into it";

}  // namespace

bool LogFile::Open(const std::string& logFile) {
    if (NamesStream(logFile)) return false;
    path = logFile;
    file.Reset(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid() || GetFileType(file.Get()) != FILE_TYPE_DISK) return file.IsValid();
    // What is printed would stand among the log's lines, and what the file holds be lost.
    return !IsPrintedInto(file.Get()) && SetEndOfFile(file.Get());
}

void LogFile::Write(const char* bytes, std::size_t size) {
    Fail(WriteAll(file.Get(), bytes, size));
    written.Add(bytes, size);
}

void LogFile::Fail(int error) {
    if (firstError == 0) firstError = error;
}

std::string LogFile::LookAtContent() const {
    LARGE_INTEGER size;
    if (GetFileType(file.Get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.Get(), &size)) return {};
    if (static_cast<std::uint64_t>(size.QuadPart) != written.GetSize()) return kOtherContent;
    const OwnedHandle reading(CreateFileA(path.c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    // Whoever may only write it has seen its size.
    if (!reading.IsValid()) return {};
    ContentDigest found;
    char buffer[65536];
    DWORD count = 0;
    do {
        if (!ReadFile(reading.Get(), buffer, sizeof buffer, &count, nullptr))
            return ErrorText(LastErrorNumber());
        found.Add(buffer, count);
    } while (count > 0);
    return found == written ? "" : kOtherContent;
}

std::string LogFile::Close() {
    const std::string fault = LookAtContent();
    file.Reset();
    return firstError != 0 ? ErrorText(firstError) : fault;
}

}  // namespace Platform
