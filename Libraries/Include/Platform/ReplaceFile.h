#pragma once

#include <string>

/// The two ends of writing a file that nobody ever sees half written. Both give 0 when they worked,
/// else the system's error number, for ErrorText.
namespace Platform {

/// Creates an empty file under a fresh name in the folder of `path` and gives its name. It has the
/// permissions (and, where the user may give it away, the owner) of the file at `path`; where there
/// is none, those that any new file of the user gets. The caller deletes or renames it.
int CreateFileBeside(const std::string& path, std::string& created);

/// Puts what was written to `written` on the disk and gives it the name `path` in one step: there
/// is no moment at which `path` names nothing or something incomplete. When it fails, both files
/// stay as they are.
int ReplaceFile(const std::string& written, const std::string& path);

/// The system's own words for one of its error numbers.
std::string ErrorText(int error);

}  // namespace Platform
