#pragma once

#include "ContentDigest.h"
#include "OwnedHandle_win32.h"

#include <string>

namespace Platform {

/// A file that gets a copy of what a program prints, and knows at the end whether it holds all of
/// that and nothing else. Nobody can rename or remove it while it is open.
class LogFile {
  public:
    /// Empties the file or makes it. False when it does not open.
    [[nodiscard]] bool Open(const std::string& logFile);

    void Write(const char* bytes, std::size_t size);

    /// What went wrong on the way to the log; the first counts.
    void Fail(int error);

    /// Why the file does not hold what was written; empty when it does. Devices and pipes hold
    /// nothing to look at.
    std::string Close();

  private:
    std::string LookAtContent() const;

    std::string path;
    OwnedHandle file;
    int firstError = 0;
    ContentDigest written;
};

}  // namespace Platform
