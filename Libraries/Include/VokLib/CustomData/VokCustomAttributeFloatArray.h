#pragma once

#include <VokLib/CustomData/VokCustomAttributeMap.h>

/// The type floatarray: an array of floats, or one for each value of an array. The count attribute
/// states how many there are; memory is taken when the text is read.
class VokCustomAttributeFloatArray : public VokCustomAttributeMap<std::vector<float>> {
  public:
    VokCustomAttributeFloatArray(std::string attributeName, std::string_view typeKeyword,
                                 bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    void WriteContents(VokFile& file) const override;
    bool ParseAttributes(const VokAttributes& attributes, VokElementReader& parse) override;
    bool ParseStartTag(VokElementReader& parse) override;
    bool ParseData(VokElementReader& parse) override;
    /// Throws when an attribute that is no array has no value.
    void WriteAttributes(VokAttributes& attributes) const override;

  private:
    void Read(VokElementReader& parse, int index, int count);
    void StoreZeros(VokElementReader& parse, int index, int count);

    int ownCount = 0;    // of the attribute's own text, at index 0
    int valueCount = 0;  // of the value element that is open
};
