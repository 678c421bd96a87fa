#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Base/VokVector.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

struct ParentTargetOffset {
    VokVector3 translation;
    EulerRotation rotation;
};

/// Moves the constrained object as if it were a child of its targets, with an offset for each. The
/// offsets follow the number of targets in an object that was built in memory; one that was read
/// from a document keeps as many as the document gave, and later operations on its targets leave
/// them alone.
class VokParentConstraint : public VokElement<VokParentConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "parentConstraint";
    static std::span<const VokChildElement<VokParentConstraint>> ChildElements();

    void ParseAttributes(VokParse& parse) override;
    void ParseEndTag(VokParse& parse) override;

    void SetTargetCount(std::size_t count) override;
    void AddTarget() override;
    void RemoveTarget(std::size_t index) override;

    std::size_t GetTargetOffsetCount() const { return offsets.size(); }
    /// Throws "Out of range access of parent constraint target offsets.".
    const ParentTargetOffset& GetTargetOffset(std::size_t index) const;
    ParentTargetOffset& GetTargetOffset(std::size_t index);

  private:
    void SyncOffsets();

    std::vector<ParentTargetOffset> offsets;
    bool offsetsFollowTargets = true;
};
