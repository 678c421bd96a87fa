#pragma once

#include <VokLib/CustomData/VokCustomAttributeMap.h>

#include <cstdint>

/// What a number measures.
enum class VokDimension : std::uint8_t { None = 0, Angle = 1, Distance = 2, Time = 3 };

/// The types bool, int, float, vector2, vector3 and vector4. Minimum and maximum are carried for
/// user interfaces: no value is clamped to them.
template <class T>
class VokCustomAttributeNumeric : public VokCustomAttributeMap<T> {
  public:
    VokCustomAttributeNumeric(std::string attributeName, std::string_view typeKeyword, bool array);

    std::unique_ptr<VokCustomAttribute> Clone() const override;
    bool ParseAttributes(const VokAttributes& attributes, VokElementReader& parse) override;
    /// Throws when an attribute that is no array has no value.
    void WriteAttributes(VokAttributes& attributes) const override;
    virtual void SetMinimum(T value);
    virtual void SetMaximum(T value);

    const T& GetDefault() const { return defaultValue; }
    void SetDefault(T value) { defaultValue = value; }
    bool HasMinimum() const { return hasMinimum; }
    const T& GetMinimum() const { return minimum; }
    bool HasMaximum() const { return hasMaximum; }
    const T& GetMaximum() const { return maximum; }
    VokDimension GetDimension() const { return dimension; }
    void SetDimension(VokDimension value) { dimension = value; }

  private:
    T defaultValue{};
    T minimum{};
    T maximum{};
    bool hasMinimum = false;
    bool hasMaximum = false;
    VokDimension dimension = VokDimension::None;
};

extern template class VokCustomAttributeNumeric<bool>;
extern template class VokCustomAttributeNumeric<int>;
extern template class VokCustomAttributeNumeric<float>;
extern template class VokCustomAttributeNumeric<VokVector2>;
extern template class VokCustomAttributeNumeric<VokVector3>;
extern template class VokCustomAttributeNumeric<VokVector4>;
