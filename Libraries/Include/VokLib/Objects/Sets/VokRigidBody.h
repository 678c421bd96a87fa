#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

/// A body of the physics simulation: a mass and the object that gives its geometry.
class VokRigidBody : public VokElement<VokRigidBody, VokObj> {
  public:
    static constexpr std::string_view kElementName = "rigidBody";
    static std::span<const VokChildElement<VokRigidBody>> ChildElements();

    float mass = 0;  ///< in whatever unit the simulation counts
    VokObjLinkHandle geometry{this};
};
