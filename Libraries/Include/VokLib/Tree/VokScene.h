#pragma once

#include <VokLib/Tree/VokNode.h>

/// A node that holds a scene; the world's nameless one is the hierarchy.
class VokScene : public VokElement<VokScene, VokNode> {
  public:
    static constexpr std::string_view kElementName = "scene";
};
