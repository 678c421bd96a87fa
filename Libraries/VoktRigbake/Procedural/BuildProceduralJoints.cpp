#include <VoktRigbake/Procedural/BuildProceduralJoints.h>

#include "Procedural/DebugGraph.h"
#include "Procedural/FindDependencies.h"
#include "Procedural/ProceduralScene.h"
#include "Procedural/StageOrder.h"

#include <QelTools/Exception.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <iostream>

using QelTools::Common::ThrowException;

namespace {

void FindDependencies(const ProceduralOptions& options, ProceduralScene& scene,
                      const SkeletonData& skeleton, Dependencies& dependencies) {
    if (options.drivenKeys) {
        scene.ResolveInputs();
        AddDrivenKeyDependencies(scene, dependencies);
    }
    if (options.jointConstraints) AddConstraintDependencies(scene, dependencies);
    OrderConstraintsOfJoints(dependencies);
    if (options.jointConstraints) AddUpObjectDependencies(scene, dependencies);
    AddParentDependencies(skeleton, dependencies);
}

/// Fills the items, stage by stage.
class ItemBuilder {
  public:
    ItemBuilder(const ProceduralScene& channels, const SkeletonIndex& index,
                ProceduralJoints& target)
        : scene(channels), skeleton(index), procedural(target) {}

    void AddStage(const Stage& stage) {
        switch (stage.objectClass) {
            case StageClass::Channels:
                return AddChannels(stage);
            case StageClass::Constraints:
                return AddConstraints(stage);
            case StageClass::Blends:
                return ApplyBlends();
        }
        QelTools::Common::ThrowInternalError();
    }

  private:
    void AddChannels(const Stage& stage) {
        DrivenKeys keys;
        for (const VokObj* object : stage.objects)
            // A channel that something else refers to need not be a driven key.
            if (const DrivenChannel* driven = scene.FindDrivenChannel(object))
                keys.AddChannel(*driven->channel, driven->input, procedural, skeleton);
        if (!keys.IsEmpty()) procedural.items.emplace_back(std::move(keys));
    }

    void AddConstraints(const Stage& stage) {
        JointConstraints constraints;
        for (const ConstraintKind kind : kConstraintKinds)
            for (const VokObj* object : stage.objects)
                if (FindConstraintKind(*object) == kind)
                    constraints.AddConstraint(static_cast<const VokConstraint*>(object), skeleton);
        if (!constraints.IsEmpty()) procedural.items.emplace_back(std::move(constraints));
    }

    void ApplyBlends() {
        if (procedural.items.empty())
            ThrowException(
                "Found an animation blend which doesn't have any preceeding update. This is not "
                "currently supported but could be if required.");
        auto* keys = std::get_if<DrivenKeys>(&procedural.items.back());
        if (keys == nullptr)
            ThrowException(
                "Found an animation blend which doesn't have driven key input. This is not "
                "currently supported but could be if required.");
        // All blends of the last item, not those of the stage alone.
        keys->ApplyBlends(skeleton, procedural);
    }

    const ProceduralScene& scene;
    const SkeletonIndex& skeleton;
    ProceduralJoints& procedural;
};

}  // namespace

std::unique_ptr<ProceduralJoints> BuildProceduralJoints(const ProceduralOptions& options,
                                                        VokWorld& world,
                                                        const SkeletonData& skeleton) {
    ProceduralScene scene(world);
    // The joints' tree alone gives no stage.
    if (scene.IsEmpty() && !options.debugDependencies) return nullptr;
    const DocumentOrder order(world);
    Dependencies dependencies(order);
    FindDependencies(options, scene, skeleton, dependencies);
    const std::vector<Stage> stages = OrderStages(dependencies);
    if (options.debugDependencies) {
        ShowGraph(dependencies);
        PrintStages(stages, std::cout);
    }

    auto procedural = std::make_unique<ProceduralJoints>();
    ItemBuilder builder(scene, skeleton.index, *procedural);
    for (const Stage& stage : stages) builder.AddStage(stage);
    if (procedural->items.empty()) return nullptr;
    for (ProceduralItem& item : procedural->items)
        if (auto* keys = std::get_if<DrivenKeys>(&item)) keys->MoveOutputs();
    procedural->externalInputs.Sort();
    procedural->externalOutputs.Sort();
    return procedural;
}
