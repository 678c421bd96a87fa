#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Tree/VokBulk.h>

#include <cstdint>
#include <vector>

/// A nurbs curve. Positions are three floats each, back to back.
class VokNurbsCurve : public VokElement<VokNurbsCurve, VokObj> {
  public:
    static constexpr std::string_view kElementName = "nurbsCurve";
    static std::span<const VokChildElement<VokNurbsCurve>> ChildElements();
    static std::span<const VokAttributeRow<VokNurbsCurve>> AttributeRows();

    enum class Form : std::uint32_t { Open, Closed, Periodic };

    unsigned degree = 0;
    Form form = Form::Open;
    VokBulk<float> points{this};
    VokBulk<float> knots{this};

  private:
    long long claimedCount = 0;  // of the list that is being read
};
