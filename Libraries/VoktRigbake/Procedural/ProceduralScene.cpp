#include "Procedural/ProceduralScene.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>

ProceduralScene::ProceduralScene(VokWorld& root) : world(root) {
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const VokObj* object = it.Current();
        if (const auto* anim = ExactCast<VokAnim>(object))
            AddDrivenChannels(*anim);
        else if (const auto kind = FindConstraintKind(*object))
            constraints[static_cast<std::size_t>(*kind)].push_back(
                static_cast<const VokConstraint*>(object));
    }
    for (std::size_t i = 0; i < world.GetChildCount(); ++i)
        if (const auto* blend = ExactCast<VokBlend>(world.GetChild(i))) blends.push_back(blend);
}

void ProceduralScene::AddDrivenChannels(const VokAnim& anim) {
    for (std::size_t i = 0; i < anim.GetChildCount(); ++i) {
        auto* channel = ExactCast<VokAnimChannel>(anim.GetChild(i));
        if (channel == nullptr || !channel->IsDrivenKey()) continue;
        placesOfChannels.emplace(channel, drivenChannels.size());
        drivenChannels.push_back({&anim, channel, nullptr});
    }
}

void ProceduralScene::ResolveInputs() {
    // As links they are resolved together, in linear time however wide the scene is.
    std::vector<VokObjLinkHandle> links;
    links.reserve(drivenChannels.size());
    for (const DrivenChannel& driven : drivenChannels)
        links.emplace_back(driven.channel, driven.channel->attributes.GetString("inputObject"));
    VokObjLinkStore::Get().ResolveLinks(&world, nullptr, false);
    for (std::size_t i = 0; i < links.size(); ++i) drivenChannels[i].input = links[i].FindTarget();
}

bool ProceduralScene::IsEmpty() const {
    return drivenChannels.empty() && blends.empty() &&
           std::all_of(constraints.begin(), constraints.end(),
                       [](const auto& list) { return list.empty(); });
}

const DrivenChannel* ProceduralScene::FindDrivenChannel(const VokObj* object) const {
    const auto found = placesOfChannels.find(object);
    return found == placesOfChannels.end() ? nullptr : &drivenChannels[found->second];
}
