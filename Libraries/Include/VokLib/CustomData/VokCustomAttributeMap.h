#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/CustomData/VokIndexedValues.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A user-defined attribute with values of one type by index. An attribute that is no array holds
/// its one value at index 0. T is bool, int, float, a vector of two to four floats, std::string or
/// std::vector<float>.
template <class T>
class VokCustomAttributeMap : public VokCustomAttribute {
  public:
    VokCustomAttributeMap(std::string attributeName, std::string_view typeKeyword, bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    /// The value elements of an array.
    void WriteContents(VokFile& file) const override;
    bool ParseStartTag(VokElementReader& parse) override;
    bool ParseData(VokElementReader& parse) override;
    bool ParseEndTag(VokElementReader& parse) override;
    void GetIndices(std::vector<int>& indices) const override;

    // All throw a QelTools Exception for an attribute of the other kind; reading an index that
    // holds nothing throws "No value found for given attribute array index". A returned reference
    // is valid until the next value is set.

    const T& GetValue() const;
    void SetValue(T value);
    const T& GetValueAt(int index) const;
    void SetValueAt(int index, T value);

  protected:
    VokCustomAttributeMap(const VokCustomAttributeMap&) = default;

    bool InValue() const { return inValue; }
    /// The index of the value element that is open, or was last.
    int CurrentIndex() const { return currentIndex; }
    void Store(int index, T value) { values.Set(index, std::move(value)); }

  private:
    const T& Get(int index) const;

    VokIndexedValues<T> values;
    int currentIndex = 0;
    bool inValue = false;
};

extern template class VokCustomAttributeMap<bool>;
extern template class VokCustomAttributeMap<int>;
extern template class VokCustomAttributeMap<float>;
extern template class VokCustomAttributeMap<VokVector2>;
extern template class VokCustomAttributeMap<VokVector3>;
extern template class VokCustomAttributeMap<VokVector4>;
extern template class VokCustomAttributeMap<std::string>;
extern template class VokCustomAttributeMap<std::vector<float>>;
