#pragma once

#include "Procedural/ConstraintKind.h"

#include <array>
#include <cstddef>
#include <unordered_map>
#include <vector>

class VokAnim;
class VokAnimChannel;
class VokBlend;
class VokConstraint;
class VokObj;
class VokWorld;

/// A driven key: a channel of an anim that has an input.
struct DrivenChannel {
    const VokAnim* anim = nullptr;
    VokAnimChannel* channel = nullptr;
    const VokObj* input = nullptr;  ///< what the text "inputObject" leads to; null before that
};

/// The objects of a world that may move joints, each list in document order.
class ProceduralScene {
  public:
    explicit ProceduralScene(VokWorld& world);

    /// Turns the texts "inputObject" into objects. Throws a QelTools Exception for one that is no
    /// path and for one that leads through a broken instance.
    void ResolveInputs();

    /// True when the world holds nothing that may move joints.
    bool IsEmpty() const;
    const std::vector<DrivenChannel>& GetDrivenChannels() const { return drivenChannels; }
    /// Null for what is no driven key.
    const DrivenChannel* FindDrivenChannel(const VokObj* object) const;
    /// Those directly under the world, which alone count.
    const std::vector<const VokBlend*>& GetBlends() const { return blends; }
    const std::vector<const VokConstraint*>& GetConstraints(ConstraintKind kind) const {
        return constraints[static_cast<std::size_t>(kind)];
    }

  private:
    void AddDrivenChannels(const VokAnim& anim);

    VokWorld& world;
    std::vector<DrivenChannel> drivenChannels;
    std::unordered_map<const VokObj*, std::size_t> placesOfChannels;
    std::vector<const VokBlend*> blends;
    std::array<std::vector<const VokConstraint*>, kConstraintKinds.size()> constraints;
};
