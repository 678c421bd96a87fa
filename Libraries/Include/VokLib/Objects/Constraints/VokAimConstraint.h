#pragma once

#include <VokLib/Objects/Constraints/VokAimFields.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Turns the constrained object so that its aim axis points at the targets.
class VokAimConstraint : public VokElement<VokAimConstraint, VokConstraint>, public VokAimFields {
  public:
    static constexpr std::string_view kElementName = "aimConstraint";
    static std::span<const VokChildElement<VokAimConstraint>> ChildElements();
};
