#include <VoktRigbake/Skeleton/SkeletonIndex.h>

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

SkeletonIndex::SkeletonIndex(const SkeletonData& skeleton) {
    indices.reserve(skeleton.joints.size());
    for (const auto& entry : skeleton.joints) indices.emplace(entry->joint, entry->index);
}

std::int32_t SkeletonIndex::Find(const VokObj* object) const {
    const auto found = indices.find(object);
    return found == indices.end() ? -1 : found->second;
}
