#pragma once

#include "Names.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// What a header of constants names.
struct HeaderJoint {
    std::optional<std::string> name;
    std::optional<std::uint32_t> hash;
    int parent = -1;
};

struct HeaderContents {
    std::uint32_t signature = 0;
    std::vector<HeaderJoint> joints;
};

struct HeaderOptions {
    std::string in;  ///< a skeleton file or a scene, told apart by their contents
    std::string prefix = "SKELETON";
    std::vector<std::string> names;  ///< scenes that name the joints of a file
    bool hasMultipleRoots = false;   ///< of a scene: all of its roots are one skeleton
};

/// True for a skeleton file, sound or not; anything else is taken for a scene. Throws for what
/// cannot be read, or only once.
bool HoldsSkeleton(const std::string& path);

/// Prints C constants for the index, hash and parent of each joint and for the signature, so that
/// an engine's code neither hashes nor searches. Throws for what cannot be read or baked. `isFile`
/// is what HoldsSkeleton says of it.
void PrintHeader(const HeaderOptions& options, bool isFile, std::ostream& out);

/// The same for contents at hand.
void PrintHeader(const HeaderContents& contents, const std::string& prefix, std::ostream& out);
