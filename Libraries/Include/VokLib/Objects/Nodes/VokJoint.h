#pragma once

#include <VokLib/Tree/VokNode.h>

#include <array>

/// A joint of a skeleton. It writes no parentEffect attribute; its element scaleCompensate tells
/// instead.
class VokJoint : public VokElement<VokJoint, VokNode> {
  public:
    static constexpr std::string_view kElementName = "joint";
    static std::span<const VokChildElement<VokJoint>> ChildElements();

    VokJoint() { parentEffect = ParentEffect::ScaleCompensate; }

    void WriteAttributes(VokAttributes& attributes) const override;

    /// For a point: scale, rotation, inverse of the parent joint's scale (scale compensation),
    /// translation. Shear and pivots take no part. A parent scale of 0 gives infinities.
    VokMatrix GetLocalMatrix() const override;

    /// The rotation of the local matrix: q(joint orient) x (q(rotation) x q(rotation axis)).
    VokQuaternion GetLocalRotation() const { return ComposeRotation(rotation); }
    /// The same with another rotation in place of the joint's own.
    VokQuaternion ComposeRotation(const EulerRotation& ownRotation) const;

    EulerRotation jointOrient;
    std::array<bool, 3> freedoms{true, true, true};
    std::array<bool, 3> hasMinimum{};
    std::array<bool, 3> hasMaximum{};
    VokVector3 minimumRotation;  ///< radians, of the axes that have one
    VokVector3 maximumRotation;  ///< radians, of the axes that have one
};
