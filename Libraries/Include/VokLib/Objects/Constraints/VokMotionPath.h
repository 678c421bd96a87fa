#pragma once

#include <VokLib/Objects/Constraints/VokAimFields.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Moves the constrained object along a curve.
class VokMotionPath : public VokElement<VokMotionPath, VokConstraint>, public VokAimFields {
  public:
    static constexpr std::string_view kElementName = "motionPath";
    static std::span<const VokChildElement<VokMotionPath>> ChildElements();
    static std::span<const VokAttributeRow<VokMotionPath>> AttributeRows();

    enum class Parameterisation : std::uint32_t { Length = 0, Curve = 1, Unknown = 2 };

    bool constrainOrientation = true;
    Parameterisation parameterisation = Parameterisation::Length;
    std::optional<VokObjLinkHandle> curve;  ///< needed for writing
};
