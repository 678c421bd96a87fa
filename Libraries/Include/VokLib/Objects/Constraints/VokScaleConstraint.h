#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Gives the constrained object the scale of its targets.
class VokScaleConstraint : public VokElement<VokScaleConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "scaleConstraint";
    static std::span<const VokChildElement<VokScaleConstraint>> ChildElements();

    VokVector3 offset;
};
