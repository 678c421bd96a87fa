#pragma once

#include <string>
#include <vector>

/// A rule in the language of Make, as compilers write them for Make and Ninja: `target` is out of
/// date when `document` or one of `files` is newer.
///
/// Throws a DocumentFailure for a name that one of the two would take for something else, whatever
/// stands in front of it: no document runs a command or sets a variable of whoever builds it.
std::string DependencyFileText(const std::string& target, const std::string& document,
                               const std::vector<std::string>& files);
