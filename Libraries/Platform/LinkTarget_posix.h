#pragma once

#include <string>
#include <vector>

namespace Platform {

/// The file that `path` leads to through symbolic links, be it there or not; `path` itself when it
/// is no link. 0, or the system's error number: ELOOP where links lead in a circle.
int FollowLinks(const std::string& path, std::string& target);

/// The same with every name on the way: `path` first, what it leads to last.
int ChainOfLinks(const std::string& path, std::vector<std::string>& names);

}  // namespace Platform
