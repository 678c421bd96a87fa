#include "Procedural/FindDependencies.h"

#include "Procedural/AimUpObject.h"
#include "Procedural/ProceduralScene.h"

#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

void AddDrivenKeyDependencies(const ProceduralScene& scene, Dependencies& dependencies) {
    for (const DrivenChannel& driven : scene.GetDrivenChannels()) {
        if (driven.input == nullptr) continue;
        dependencies.Add(driven.input, driven.channel);
        if (const VokObj* target = driven.anim->target.FindTarget())
            dependencies.Add(driven.channel, target);
    }
    for (const VokBlend* blend : scene.GetBlends())
        if (const VokObj* target = blend->target.FindTarget()) dependencies.Add(blend, target);
}

void AddConstraintDependencies(const ProceduralScene& scene, Dependencies& dependencies) {
    for (const ConstraintKind kind : kConstraintKinds)
        for (const VokConstraint* constraint : scene.GetConstraints(kind)) {
            const VokObj* constrained = constraint->constrained.FindTarget();
            if (constrained == nullptr) continue;
            bool isFirst = true;
            for (std::size_t i = 0; i < constraint->GetTargetCount(); ++i) {
                const VokObj* target = constraint->GetTarget(i).object.FindTarget();
                if (target == nullptr) continue;
                if (isFirst) dependencies.Add(constraint, constrained);
                isFirst = false;
                dependencies.Add(target, constraint);
            }
        }
}

void AddUpObjectDependencies(const ProceduralScene& scene, Dependencies& dependencies) {
    for (const VokConstraint* constraint : scene.GetConstraints(ConstraintKind::Aim)) {
        const auto& aim = static_cast<const VokAimConstraint&>(*constraint);
        if (!WantsUpObject(aim)) continue;
        if (!aim.upTarget.has_value())
            ThrowVokException("No world up object was found to get the path of.", constraint);
        if (const VokObj* upObject = FindUpObject(aim)) dependencies.Add(upObject, constraint);
    }
}

void AddParentDependencies(const SkeletonData& skeleton, Dependencies& dependencies) {
    for (const auto& entry : skeleton.joints)
        if (entry->parent != -1)
            dependencies.Add(skeleton.joints[static_cast<std::size_t>(entry->parent)]->joint,
                             entry->joint);
}
