#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Objects/Geometry/VokBlendStage.h>

#include <cstddef>
#include <vector>

/// The shapes that a mesh blends into, each by a weight of the controller.
class VokBlendshape : public VokElement<VokBlendshape, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blendshape";
    static std::span<const VokChildElement<VokBlendshape>> ChildElements();
    static std::span<const VokAttributeRow<VokBlendshape>> AttributeRows();

    struct Target {
        unsigned weightIndex = 0;
        VokBlendStage stage;
    };

    void ParseStartTag(VokParse& parse) override;

    /// Throws "Weight index out of range", and "No blend targets" when there are none.
    const Target& GetTarget(std::size_t index) const;
    std::size_t GetTargetCount() const { return targets.size(); }
    void AddTarget(Target target) { targets.push_back(std::move(target)); }

    VokObjLinkHandle controller{this};

  private:
    static void WriteTargets(const VokBlendshape& shape, VokFile& file, std::string_view name);

    std::vector<Target> targets;
};
