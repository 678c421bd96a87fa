#pragma once

#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

class VokWorld;

/// What stands behind the hashes of a skeleton file, as scenes tell it: the names of its joints
/// without namespaces, and those of the channels that drive or are driven. In UTF-8, control
/// characters as \x0A. Empty without a scene.
class Names {
  public:
    /// Bytes of a name in the scene; a longer one is left out. A bake refuses it for a joint, and
    /// every use of a joint or channel shows its name, so one in a small scene could fill a disk.
    static constexpr std::size_t kMostBytes = kMaxJointNameLength;

    Names() = default;
    /// The names of all these scenes. Throws a DocumentFailure for one that cannot be loaded.
    static Names Load(const std::vector<std::string>& scenePaths);

    std::optional<std::string> FindJoint(std::uint32_t hash) const { return Find(joints, hash); }
    /// A material's channel is hashed in the letter case in which it is written.
    std::optional<std::string> FindChannel(std::uint32_t hash, bool isMaterial) const;

  private:
    using Table = std::map<std::uint32_t, std::string>;
    static std::optional<std::string> Find(const Table& table, std::uint32_t hash);
    void Add(const std::string& scenePath);
    void AddChannel(const std::string& name);

    Table joints;
    Table channels;          // by the hash of what is in lower case
    Table materialChannels;  // by that of the name as it stands, without a component
};
