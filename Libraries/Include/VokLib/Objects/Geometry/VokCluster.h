#pragma once

#include <VokLib/Document/VokElement.h>

/// A group of points that move together.
class VokCluster : public VokElement<VokCluster, VokObj> {
  public:
    static constexpr std::string_view kElementName = "cluster";
};
