#pragma once

#include <optional>
#include <string>

namespace Platform {

/// The folder for temporary files: on POSIX `TMPDIR`, else /tmp. It may not be there.
std::string TemporaryFolder();

/// Creates an empty file under a fresh name that begins with `prefix`, for the user alone, in the
/// folder for temporary files, and gives its full path; nothing when the system refuses. The caller
/// deletes the file.
[[nodiscard]] std::optional<std::string> CreateTemporaryFile(const std::string& prefix);

}  // namespace Platform
