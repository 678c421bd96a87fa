#pragma once

#include <VokLib/Document/VokElement.h>

#include <string>

/// Another document that this one refers to. Paths into it stay unresolved without being an error.
class VokReference : public VokElement<VokReference, VokObj> {
  public:
    static constexpr std::string_view kElementName = "reference";
    static std::span<const VokAttributeRow<VokReference>> AttributeRows();

    bool IsWrittenEmpty() const override { return true; }
    bool GetDependencies(VokDependencies& files) const override;
    bool UpdateDependencies(VokUpdateDependencies& update) override;

    std::string uri;                 ///< a file name in the world's form
    std::string referenceNamespace;  ///< what names of the other document begin with here
};
