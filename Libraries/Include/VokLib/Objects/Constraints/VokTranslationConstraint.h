#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>

/// Puts the constrained object where its targets are.
class VokTranslationConstraint : public VokElement<VokTranslationConstraint, VokConstraint> {
  public:
    static constexpr std::string_view kElementName = "translationConstraint";
    static std::span<const VokChildElement<VokTranslationConstraint>> ChildElements();

    VokVector4 offset;
};
