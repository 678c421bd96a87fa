#pragma once

#include <string>
#include <vector>

/// A rule in the language of Make, as compilers write them for Make and Ninja: `target` is out of
/// date when one of `files` is newer.
std::string DependencyFileText(const std::string& target, const std::vector<std::string>& files);
