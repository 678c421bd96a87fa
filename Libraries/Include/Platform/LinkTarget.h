#pragma once

#include <string>

namespace Platform {

/// The file that `path` leads to through symbolic links; `path` itself when it is no link. 0, or
/// the portable error number, for links that lead in a circle as well. On POSIX the file need not
/// be there; on Windows a link that leads nowhere is ENOENT.
int FollowLinks(const std::string& path, std::string& target);

}  // namespace Platform
