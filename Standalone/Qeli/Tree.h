#pragma once

#include <optional>
#include <string>
#include <vector>

struct TreeOptions {
    std::vector<std::string> types;  ///< element names; none: every type
    std::optional<int> depth;        ///< levels below the root
};

/// The element names that objects of a tree can have, sorted. The scene library must be up.
std::vector<std::string> KnownTypes();

/// Prints the objects of a document on standard output, one a line, each indented below the nearest
/// one above it that is shown. Lines far to the right tell their level instead.
void PrintTree(const std::string& path, const TreeOptions& options);
