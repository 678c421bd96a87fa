#include "Skeleton/LodRemap.h"

#include <VoktRigbake/Skeleton/SkeletonData.h>

std::vector<std::uint16_t> MakeLodRemap(const SkeletonData& skeleton, std::int64_t limit) {
    constexpr std::uint16_t kNone = 0xFFFF;
    std::vector<std::uint16_t> remap;
    remap.reserve(skeleton.joints.size());
    for (const auto& joint : skeleton.joints) {
        // Parents come first, so what stands in for the parent is known.
        if (joint->index < limit)
            remap.push_back(static_cast<std::uint16_t>(joint->index));
        else if (joint->parent < 0)
            remap.push_back(kNone);
        else
            remap.push_back(remap[static_cast<std::size_t>(joint->parent)]);
    }
    return remap;
}
