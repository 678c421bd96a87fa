#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Objects/Geometry/VokBlendStage.h>

#include <cstddef>
#include <vector>

/// A blend target of several stages, each reached at its interpolant.
class VokMultiBlendTarget : public VokElement<VokMultiBlendTarget, VokObj> {
  public:
    static constexpr std::string_view kElementName = "multiBlendTarget";
    static std::span<const VokChildElement<VokMultiBlendTarget>> ChildElements();

    struct Stage {
        float interpolant = 0;
        VokBlendStage target;
    };

    void ParseStartTag(VokParse& parse) override;

    std::size_t GetStageCount() const { return stages.size(); }
    /// Throws "Out of range blend target stage index.".
    const Stage& GetStage(std::size_t index) const;
    void AddStage(Stage stage) { stages.push_back(std::move(stage)); }

  private:
    std::vector<Stage> stages;
};
