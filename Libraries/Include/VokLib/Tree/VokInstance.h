#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

/// Stands for another scene of the document: paths look through it into the scene's children.
class VokInstance : public VokElement<VokInstance, VokObj> {
  public:
    static constexpr std::string_view kElementName = "instance";
    static std::span<const VokAttributeRow<VokInstance>> AttributeRows();

    bool IsWrittenEmpty() const override { return true; }

    VokObjLinkHandle target{this};
};
