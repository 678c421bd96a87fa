#include <VoktRigbake/File/WriteSkeleton.h>

#include "File/FileTables.h"
#include "File/WriteProceduralJoints.h"
#include "Skeleton/HashTable.h"
#include "Skeleton/LodRemap.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <array>
#include <numeric>
#include <string>
#include <vector>

namespace {

struct Labels {
    std::uint32_t joints = Biff::ReserveLabel();
    std::uint32_t transforms = Biff::ReserveLabel();
    std::uint32_t hashes = Biff::ReserveLabel();
    std::uint32_t lods = Biff::ReserveLabel();
    std::uint32_t procedural = Biff::ReserveLabel();
    std::uint32_t proceduralEnd = Biff::ReserveLabel();
};

void CheckJointLimit(const SkeletonData& skeleton, std::uint32_t skeletonUse) {
    if (skeletonUse != kSkeletonForAnimation || skeleton.joints.size() <= kMaxAnimationJoints)
        return;
    ThrowVokException("Can only handle " + std::to_string(kMaxAnimationJoints) +
                      " items in a skeleton used for animation. This skeleton has " +
                      std::to_string(skeleton.joints.size()) + ".");
}

void AppendHeader(const SkeletonData& skeleton, const Labels& labels, Biff::CBlock& block) {
    block.AppendMagic("SK08");
    block.AppendU32(skeleton.signature);
    block.AppendU16(0);
    block.AppendU16(static_cast<std::uint16_t>(skeleton.joints.size()));
    for (const std::uint32_t label : {labels.joints, labels.transforms, labels.hashes, labels.lods,
                                      labels.procedural, labels.proceduralEnd})
        AppendRelativeOffset(block, label);
    for (int i = 0; i < 3; ++i) block.AppendU32(0);
}

void AppendJoints(const SkeletonData& skeleton, Biff::CBlock& block) {
    for (const auto& joint : skeleton.joints) {
        const bool compensates = joint->joint->parentEffect == ParentEffect::ScaleCompensate;
        block.AppendU16(compensates ? 1 : 0);
        block.AppendU16(static_cast<std::uint16_t>(joint->parent));
        block.AppendU16(static_cast<std::uint16_t>(joint->nextSibling));
        block.AppendU16(static_cast<std::uint16_t>(joint->firstChild));
    }
}

void AppendTransforms(const SkeletonData& skeleton, Biff::CBlock& block) {
    for (const auto& joint : skeleton.joints) {
        const VokQuaternion& rotation = joint->rotation;
        block.AppendFloats(std::array{rotation.x, rotation.y, rotation.z, rotation.w});
        for (const VokVector4& vector : {joint->translation, joint->scale})
            block.AppendFloats(std::array{vector.x, vector.y, vector.z, vector.w});
    }
}

void AppendHashes(const SkeletonData& skeleton, Biff::CBlock& block) {
    for (const HashRecord& record : MakeHashTable(skeleton)) {
        block.AppendU32(record.nameHash);
        block.AppendI32(record.index);
    }
}

void AppendLods(const SkeletonData& skeleton, Biff::CBlock& block) {
    block.AppendU32(static_cast<std::uint32_t>(skeleton.lodCounts.size()));
    for (const std::uint32_t count : skeleton.lodCounts)
        block.AppendU16(static_cast<std::uint16_t>(count));
    std::int64_t dropped =
        std::accumulate(skeleton.lodCounts.begin(), skeleton.lodCounts.end(), std::int64_t{0});
    for (const std::uint32_t count : skeleton.lodCounts) {
        const auto jointCount = static_cast<std::uint32_t>(skeleton.joints.size());
        const std::vector<std::uint16_t> remap = MakeLodRemap(skeleton, jointCount - dropped);
        block.AppendData(remap.data(), sizeof(remap[0]), jointCount);
        dropped -= count;
    }
}

}  // namespace

bool WriteSkeleton(const SkeletonData& skeleton, Biff::CBlock& block,
                   const ProceduralJoints* procedural, std::uint32_t skeletonUse) {
    if (skeleton.joints.empty()) return false;
    CheckJointLimit(skeleton, skeletonUse);
    block.alignment = kTableAlignment;
    const Labels labels;
    AppendHeader(skeleton, labels, block);
    BeginTable(block, labels.joints);
    AppendJoints(skeleton, block);
    BeginTable(block, labels.transforms);
    AppendTransforms(skeleton, block);
    BeginTable(block, labels.hashes);
    AppendHashes(skeleton, block);
    // A table without its label reads as offset 0 in the header, which means that it is absent.
    if (!skeleton.lodCounts.empty()) {
        BeginTable(block, labels.lods);
        AppendLods(skeleton, block);
    }
    if (procedural != nullptr) {
        BeginTable(block, labels.procedural);
        WriteProceduralJoints(*procedural, skeleton, block);
        BeginTable(block, labels.proceduralEnd);
    }
    return true;
}
