#pragma once

#include <VokLib/CustomData/VokCustomAttributeMap.h>

/// The type enum: an int with names for some of its values.
class VokCustomAttributeEnum : public VokCustomAttributeMap<int> {
  public:
    VokCustomAttributeEnum(std::string attributeName, std::string_view typeKeyword, bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    /// The field elements in index order, then the values of an array.
    void WriteContents(VokFile& file) const override;
    bool ParseAttributes(const VokAttributes& attributes, VokElementReader& parse) override;
    bool ParseStartTag(VokElementReader& parse) override;
    /// Throws when an attribute that is no array has no value.
    void WriteAttributes(VokAttributes& attributes) const override;
    /// Names the value `index`; a second name for it replaces the first.
    virtual void AddField(std::string fieldName, int index);

    int GetDefault() const { return defaultValue; }
    void SetDefault(int value) { defaultValue = value; }
    const VokIndexedValues<std::string>& GetFields() const { return fields; }

  private:
    VokIndexedValues<std::string> fields;
    int defaultValue = 0;
};
