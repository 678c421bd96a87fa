#include "Names.h"

#include "FailureText.h"
#include "LoadDocument.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokWorld.h>
#include <skeleton/skeleton.h>

Names Names::Load(const std::vector<std::string>& scenePaths) {
    Names names;
    for (const std::string& path : scenePaths) names.Add(path);
    return names;
}

void Names::Add(const std::string& scenePath) {
    VokWorld world;
    LoadDocument(world, scenePath);
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const VokObj& object = *it.Current();
        if (object.IsExactly(VokJoint::TypeId())) {
            const std::string name(object.GetBaseName());
            if (name.size() > kMostBytes) continue;
            joints.try_emplace(skeleton_hash_lower(name.data(), name.size()), ReadableText(name));
        } else if (object.IsExactly(VokAnimChannel::TypeId())) {
            const auto& channel = static_cast<const VokAnimChannel&>(object);
            if (!channel.IsDrivenKey()) continue;
            AddChannel(channel.GetChannel());
            AddChannel(channel.attributes.GetString("inputChannel"));
        } else if (object.IsExactly(VokBlend::TypeId())) {
            AddChannel(static_cast<const VokBlend&>(object).channel);
        }
    }
}

std::optional<std::string> Names::Find(const Table& table, std::uint32_t hash) {
    const auto found = table.find(hash);
    return found == table.end() ? std::nullopt : std::optional(found->second);
}

/// Of the two kinds of output of one hash a file holds the first; the other one's name is better
/// than none.
std::optional<std::string> Names::FindChannel(std::uint32_t hash, bool isMaterial) const {
    const std::optional<std::string> name = Find(isMaterial ? materialChannels : channels, hash);
    return name ? name : Find(isMaterial ? channels : materialChannels, hash);
}

/// What the scene is baked into says whether a channel is a material's, the scene alone does not.
void Names::AddChannel(const std::string& name) {
    if (name.size() > kMostBytes) return;
    channels.try_emplace(skeleton_hash_lower(name.data(), name.size()), ReadableText(name));
    const bool hasComponent = name.size() > 1 && name.back() >= '0' && name.back() <= '3';
    const std::string bare = name.substr(0, name.size() - (hasComponent ? 1 : 0));
    materialChannels.try_emplace(skeleton_hash_exact(bare.data(), bare.size()), ReadableText(bare));
}
