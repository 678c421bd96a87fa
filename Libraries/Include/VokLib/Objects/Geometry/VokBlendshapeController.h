#pragma once

#include <VokLib/Document/VokElement.h>

#include <string>
#include <vector>

/// Named weights that blend shapes follow.
class VokBlendshapeController : public VokElement<VokBlendshapeController, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blendshapeController";
    static std::span<const VokChildElement<VokBlendshapeController>> ChildElements();

    struct Weight {
        std::string name;
        float value = 0;
    };

    std::vector<Weight> weights;
};
