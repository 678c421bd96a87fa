#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <string>
#include <vector>

/// A weighted sum that feeds one channel of an object.
class VokBlend : public VokElement<VokBlend, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blend";
    static std::span<const VokChildElement<VokBlend>> ChildElements();
    static std::span<const VokAttributeRow<VokBlend>> AttributeRows();

    struct Input {
        float value = 0;
        float weight = 0;
    };

    VokObjLinkHandle target{this};
    std::string channel;
    std::vector<Input> inputs;
};
