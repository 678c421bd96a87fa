#pragma once

#include <VokLib/Document/VokElement.h>

#include <string>

/// A picture and how it is laid on a surface. Its own elements stand behind its children and custom
/// data.
class VokTexture : public VokElement<VokTexture, VokObj> {
  public:
    static constexpr std::string_view kElementName = "texture";
    static std::span<const VokChildElement<VokTexture>> ChildElements();
    static std::span<const VokAttributeRow<VokTexture>> AttributeRows();

    void WriteTail(VokFile& file) const override;
    bool GetDependencies(VokDependencies& files) const override;
    bool UpdateDependencies(VokUpdateDependencies& update) override;

    std::string uri;  ///< a file name in the world's form
    bool wrapU = true;
    bool wrapV = true;
    float repeatU = 1;
    float repeatV = 1;
    float rotationAngle = 0;  ///< radians
};
