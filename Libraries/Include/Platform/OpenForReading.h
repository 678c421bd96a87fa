#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace Platform {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A file of the C library, closed when it goes out of use.
using OpenedFile = std::unique_ptr<std::FILE, CloseFile>;

/// std::fopen's "rb": nothing, with errno set, where the file does not open. Who holds the file
/// keeps nobody from renaming or removing it, this process least of all when it is ended while it
/// reads what it has not finished.
OpenedFile OpenForReading(const std::string& path);

}  // namespace Platform
