#pragma once

#include <optional>
#include <string>

/// The last step on the way to an absolute name: its canonical form.
namespace FullPathText {

/// `path` with "." and ".." resolved. A name of this platform's kind goes through the platform; one
/// of the other kind is completed by its text, so that documents with drive letters read alike
/// everywhere. Names with a drive letter or of a server come out with backslashes, names that begin
/// with a slash with slashes. `slashRooted`: the name counts from a folder that begins with a
/// slash. Nothing when the platform refuses.
std::optional<std::string> Complete(const std::string& path, bool slashRooted);

}  // namespace FullPathText
