#pragma once

#include <VokLib/Tree/VokNode.h>

#include <vector>

/// A node whose children are levels of detail, with the thresholds between them.
class VokLodGroup : public VokElement<VokLodGroup, VokNode> {
  public:
    static constexpr std::string_view kElementName = "lodgroup";
    static std::span<const VokChildElement<VokLodGroup>> ChildElements();

    std::vector<float> thresholds;

  private:
    unsigned announcedThresholds = 0;  // the count of the element being read
};
