#pragma once

#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Ties the constrained object to its targets with springs.
class VokSpringConstraint : public VokElement<VokSpringConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "springConstraint";
    static std::span<const VokChildElement<VokSpringConstraint>> ChildElements();

    float stiffness = 0;
    float restLength = 0;
    float damping = 0;
};
