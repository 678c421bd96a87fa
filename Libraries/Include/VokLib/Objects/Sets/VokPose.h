#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <vector>

/// A stored pose: for each of its elements an object and the transform that the object has in the
/// pose.
class VokPose : public VokElement<VokPose, VokObj> {
  public:
    static constexpr std::string_view kElementName = "pose";
    static std::span<const VokChildElement<VokPose>> ChildElements();
    static std::span<const VokAttributeRow<VokPose>> AttributeRows();

    struct PoseElement {
        explicit PoseElement(VokObj* owner) : target(owner) {}
        VokObjLinkHandle target;
        VokVector4 translate;
        EulerRotation rotation;
        VokVector3 scale{1, 1, 1};
    };

    std::size_t GetElementCount() const { return elements.size(); }
    /// Throws "Pose index is not in range.".
    const PoseElement& GetElement(std::size_t index) const;
    PoseElement& GetElement(std::size_t index);
    PoseElement& AddElement();

    bool bindPose = false;

  private:
    std::vector<PoseElement> elements;
};
