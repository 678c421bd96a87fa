#pragma once

#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>
#include <vector>

class VokJoint;

/// Joints of a world in the universe. The world owns the joints, so they live as long as its atom.
class VoktAtomJointList : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomJointList";
    std::string GetType() const override { return kType; }

    std::vector<VokJoint*> joints;
};
