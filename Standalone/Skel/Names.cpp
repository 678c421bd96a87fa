#include "Names.h"

#include "FailureText.h"
#include "LoadDocument.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
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
            joints.try_emplace(skeleton_hash_lower(name.data(), name.size()), ReadableText(name));
        } else if (object.IsExactly(VokAnimChannel::TypeId())) {
            const auto& channel = static_cast<const VokAnimChannel&>(object);
            if (!channel.IsDrivenKey()) continue;
            AddChannel(channel.GetChannel());
            AddChannel(channel.attributes.GetString("inputChannel"));
        }
    }
}

std::optional<std::string> Names::Find(const Table& table, std::uint32_t hash) {
    const auto found = table.find(hash);
    return found == table.end() ? std::nullopt : std::optional(found->second);
}

/// The scene alone does not say whether a channel is a material's, which keeps its letter case and
/// loses its component: both hashes lead to the name.
void Names::AddChannel(const std::string& name) {
    channels.try_emplace(skeleton_hash_lower(name.data(), name.size()), ReadableText(name));
    channels.try_emplace(skeleton_hash_exact(name.data(), name.size()), ReadableText(name));
    if (name.size() < 2 || name.back() < '0' || name.back() > '3') return;
    const std::string bare = name.substr(0, name.size() - 1);
    channels.try_emplace(skeleton_hash_exact(bare.data(), bare.size()), ReadableText(bare));
}
