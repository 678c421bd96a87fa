#pragma once

#include <VokLib/Objects/Shading/VokShader.h>

#include <string>

/// A shader whose program stands in a file.
class VokCgShader : public VokElement<VokCgShader, VokShader> {
  public:
    static constexpr std::string_view kElementName = "cgshader";
    static std::span<const VokAttributeRow<VokCgShader>> AttributeRows();

    bool GetDependencies(VokDependencies& files) const override;
    bool UpdateDependencies(VokUpdateDependencies& update) override;

    std::string url;  ///< a file name in the world's form
};
