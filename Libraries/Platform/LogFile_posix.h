#pragma once

#include "ContentDigest.h"

#include <string>

namespace Platform {

/// A file that gets a copy of what a program prints, and knows at the end whether its name leads to
/// all of that and to nothing else.
class LogFile {
  public:
    LogFile() = default;
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile();

    /// Empties the file or makes it. 0, or the system's error number.
    [[nodiscard]] int Open(const std::string& logFile);

    void Write(const char* bytes, std::size_t size);

    /// What went wrong on the way to the log; the first counts.
    void Fail(int error);

    /// Why the name does not lead to everything that was written; empty when it does. Devices and
    /// pipes hold nothing to look at.
    std::string Close();

  private:
    std::string LookAtName() const;
    std::string LookAtContent() const;

    std::string path;
    int descriptor = -1;
    int firstError = 0;
    ContentDigest written;
};

}  // namespace Platform
