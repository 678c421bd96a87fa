#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace Platform {

/// The content of a file, replaced at once: what stands there before is whole until the new content
/// is whole, whatever ends the process in between. Only where nothing else can work are the bytes
/// written in place: a device or pipe, and a writable file whose folder takes no other file. On
/// POSIX such a file is locked while it is written, and never one that the program prints into.
class WholeFile {
  public:
    WholeFile();
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// 0 when the file at `path`, there or not, can be opened for writing, else the system's error
    /// number. Changes nothing there; waits for the reader of a named pipe.
    [[nodiscard]] int Open(const std::string& path);

    /// Makes these bytes the whole content, once. 0, or the system's error number: a file that is
    /// replaced is then as it was; one that is written in place may be not when the disk breaks,
    /// and one that no longer has the name (ENOENT) may hold them. EBUSY where another keeps the
    /// lock of a file that is written in place, or the program prints into it.
    [[nodiscard]] int Save(const char* bytes, std::size_t size);

  private:
    struct Target;
    std::unique_ptr<Target> target;
};

}  // namespace Platform
