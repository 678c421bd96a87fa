#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

#include <cstdint>

/// How the targets' rotations are brought together.
enum class OrientInterpolation : std::uint32_t {
    NoFlip = 0,
    Average = 1,
    Shortest = 2,
    Longest = 3,
    Cache = 4,
};

/// Throws a VokException "Unknown OrientInterpolation enum value.", with `object`'s path, for a
/// value of 5 or more.
std::string_view GetOrientInterpolationText(OrientInterpolation interpolation,
                                            const VokObj* object = nullptr);

/// Gives the constrained object the rotation of its targets.
class VokOrientationConstraint : public VokElement<VokOrientationConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "orientationConstraint";
    static std::span<const VokChildElement<VokOrientationConstraint>> ChildElements();

    EulerRotation offset;
    OrientInterpolation orientInterpolation = OrientInterpolation::Average;
};
