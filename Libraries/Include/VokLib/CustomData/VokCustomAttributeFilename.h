#pragma once

#include <VokLib/CustomData/VokCustomAttributeMap.h>

/// The type filename: a text like the type string, which the walks over a scene's file names look
/// for.
class VokCustomAttributeFilename : public VokCustomAttributeMap<std::string> {
  public:
    VokCustomAttributeFilename(std::string attributeName, std::string_view typeKeyword, bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    void WriteContents(VokFile& file) const override;
    bool ParseData(VokElementReader& parse) override;
    bool RefersToOthers() const override { return true; }
};
