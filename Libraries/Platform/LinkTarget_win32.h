#pragma once

#include <string>

namespace Platform {

/// Where the links at `path` lead in the end: `path` itself when it is no link. 0 or the portable
/// error number; a link that leads nowhere is ENOENT.
int FollowLinks(const std::string& path, std::string& target);

}  // namespace Platform
