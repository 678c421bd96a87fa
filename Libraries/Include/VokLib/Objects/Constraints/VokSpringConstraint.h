#pragma once

#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Ties the constrained object to its targets with springs.
class VokSpringConstraint : public VokElement<VokSpringConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "springConstraint";
    static std::span<const VokChildElement<VokSpringConstraint>> ChildElements();

    float stiffness = 0;   ///< force for each length, in the scene's units
    float restLength = 0;  ///< at which the spring gives no force
    float damping = 0;     ///< force for each length a second
};
