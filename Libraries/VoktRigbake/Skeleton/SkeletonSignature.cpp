#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <bit>

namespace {

/// Links are mixed as signed 16-bit numbers, as the file's table holds them.
std::uint32_t WidenLink(std::int32_t link) {
    return static_cast<std::uint32_t>(std::int32_t{static_cast<std::int16_t>(link)});
}

std::uint32_t Mix(std::uint32_t hash, std::uint32_t name, std::uint32_t parent,
                  std::uint32_t nextSibling, std::uint32_t firstChild) {
    const std::uint32_t x = hash ^ name;
    const std::uint32_t a = std::rotl(((parent + 923) * (x >> 2)) ^ x, 12);
    const std::uint32_t b = std::rotl(((nextSibling + 121) * (a >> 3)) ^ a, 7);
    return std::rotl(((firstChild + 357) * (b >> 1)) ^ b, 21);
}

}  // namespace

std::uint32_t ComputeSkeletonSignature(const SkeletonData& skeleton) {
    std::uint32_t signature = 0;
    for (const auto& joint : skeleton.joints)
        signature = Mix(signature, joint->nameHash, WidenLink(joint->parent),
                        WidenLink(joint->nextSibling), WidenLink(joint->firstChild));
    return signature;
}
