#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

/// What changes the shape of its target; its children tell how.
class VokDeformer : public VokElement<VokDeformer, VokObj> {
  public:
    static constexpr std::string_view kElementName = "deformer";
    static std::span<const VokAttributeRow<VokDeformer>> AttributeRows();

    VokObjLinkHandle target{this};
};
