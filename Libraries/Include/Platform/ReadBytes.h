#pragma once

#include <cstddef>
#include <cstdio>

namespace Platform {

/// std::fread of bytes that goes on where a signal interrupts it, as it does at a pipe that waits
/// for its writer. Fewer than `size` at the end of the file and where std::ferror tells a failure,
/// then with errno set.
std::size_t ReadBytes(std::FILE* file, char* bytes, std::size_t size);

}  // namespace Platform
