#pragma once

#include <string>
#include <vector>

namespace Platform {

/// FollowLinks with every name on the way: `path` first, what it leads to last.
int ChainOfLinks(const std::string& path, std::vector<std::string>& names);

}  // namespace Platform
