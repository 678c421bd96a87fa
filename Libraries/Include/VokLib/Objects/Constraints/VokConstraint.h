#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstddef>
#include <vector>

struct ConstraintTarget {
    explicit ConstraintTarget(VokObj* owner) : object(owner) {}
    VokObjLinkHandle object;
    float weight = 0;
};

/// A relation between a constrained object and a weighted list of targets. Base of the constraints;
/// no document holds a plain one.
class VokConstraint : public VokElement<VokConstraint, VokObj> {
  public:
    static constexpr std::string_view kElementName = "constraint";
    static std::span<const VokChildElement<VokConstraint>> ChildElements();
    static std::span<const VokAttributeRow<VokConstraint>> AttributeRows();

    /// Drops what is beyond `count`, appends empty targets up to it.
    virtual void SetTargetCount(std::size_t count);
    /// Appends one empty target.
    virtual void AddTarget();
    /// Later targets move down. An index out of range throws "Out of range removal of constraint
    /// target.".
    virtual void RemoveTarget(std::size_t index);

    std::size_t GetTargetCount() const { return targets.size(); }
    /// `index` must be below GetTargetCount().
    const ConstraintTarget& GetTarget(std::size_t index) const { return targets[index]; }
    ConstraintTarget& GetTarget(std::size_t index) { return targets[index]; }

    VokObjLinkHandle constrained{this};

  protected:
    VokConstraint() = default;

  private:
    std::vector<ConstraintTarget> targets;
};
