#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/Document/VokElement.h>

/// A marked position in its parent's space.
class VokLocator : public VokElement<VokLocator, VokObj> {
  public:
    static constexpr std::string_view kElementName = "locator";
    static std::span<const VokChildElement<VokLocator>> ChildElements();

    VokVector4 localPosition;
};
