#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Document/VokElement.h>
#include <VokLib/Tree/ParentEffect.h>

/// A transform node of the scene tree. Angles are radians.
class VokNode : public VokElement<VokNode, VokObj> {
  public:
    static constexpr std::string_view kElementName = "node";
    static std::span<const VokChildElement<VokNode>> ChildElements();
    static std::span<const VokAttributeRow<VokNode>> AttributeRows();

    /// The transform into the parent's space. For a point: scale pivot taken off, shear, scale,
    /// pivots put back, rotation axis, rotation, translation. Rotations pass through quaternions
    /// and keep that rounding.
    virtual VokMatrix GetLocalMatrix() const;

    VokVector4 translate;
    VokVector4 rotatePivot;
    VokVector4 rotatePivotTranslation;
    VokVector4 scalePivot;
    VokVector4 scalePivotTranslation;
    EulerRotation rotation;
    EulerRotation rotationAxis;
    VokVector3 scale{1, 1, 1};
    VokVector3 shear;
    ParentEffect parentEffect = ParentEffect::Normal;
};
