#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Tree/VokBulk.h>

#include <vector>

/// A nurbs surface. Positions are three floats each, back to back, those of one row in U after
/// another.
class VokNurbsSurface : public VokElement<VokNurbsSurface, VokObj> {
  public:
    static constexpr std::string_view kElementName = "nurbs";
    static std::span<const VokChildElement<VokNurbsSurface>> ChildElements();

    unsigned uOrder = 0;
    unsigned vOrder = 0;
    float uMin = 0;
    float uMax = 0;
    float vMin = 0;
    float vMax = 0;
    unsigned numCVinU = 0;
    unsigned numCVinV = 0;
    VokBulk<float> controlVertices{this};
    VokBulk<float> knotsInU{this};
    VokBulk<float> knotsInV{this};

  private:
    static void WriteSurface(const VokNurbsSurface& nurbs, VokFile& file, std::string_view name);

    long long claimedCount = 0;  // of the list that is being read
};
