#pragma once

#include <VokLib/CustomData/VokCustomAttributeMap.h>

/// The type string: the attribute's text, or one text for each value of an array.
class VokCustomAttributeString : public VokCustomAttributeMap<std::string> {
  public:
    VokCustomAttributeString(std::string attributeName, std::string_view typeKeyword, bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    void WriteContents(VokFile& file) const override;
    bool ParseData(VokElementReader& parse) override;
};
