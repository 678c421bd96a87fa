#include <VokLib/CustomData/VokCustomAttributeNumeric.h>

#include <array>
#include <utility>

#include <VokLib/Text/VokElementReader.h>

#include "CustomData/CustomValueGuards.h"
#include "CustomData/CustomValueText.h"

namespace {

constexpr std::array<std::string_view, 4> kDimensions = {"", "angle", "distance", "time"};

VokDimension FindDimension(const char* text) {
    for (std::size_t i = 1; text != nullptr && i < kDimensions.size(); ++i)
        if (kDimensions[i] == text) return static_cast<VokDimension>(i);
    return VokDimension::None;
}

}  // namespace

template <class T>
VokCustomAttributeNumeric<T>::VokCustomAttributeNumeric(std::string attributeName,
                                                        std::string_view typeKeyword, bool array)
    : VokCustomAttributeMap<T>(std::move(attributeName), typeKeyword, array) {}

template <class T>
std::unique_ptr<VokCustomAttribute> VokCustomAttributeNumeric<T>::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeNumeric(*this));
}

template <class T>
bool VokCustomAttributeNumeric<T>::ParseAttributes(const VokAttributes& attributes,
                                                   VokElementReader& parse) {
    if (!parse.KeepsContents()) {
        if (attributes.Has("value")) CustomValueGuards::RequireSingle(*this);
        return true;
    }
    if (attributes.Has("min")) SetMinimum(CustomValueText::Get<T>(attributes, "min"));
    if (attributes.Has("max")) SetMaximum(CustomValueText::Get<T>(attributes, "max"));
    defaultValue = CustomValueText::Get<T>(attributes, "default");
    if (attributes.Has("value")) this->SetValue(CustomValueText::Get<T>(attributes, "value"));
    dimension = FindDimension(attributes.Find("dimension"));
    return true;
}

template <class T>
void VokCustomAttributeNumeric<T>::WriteAttributes(VokAttributes& attributes) const {
    VokCustomAttribute::WriteAttributes(attributes);
    if (hasMinimum) CustomValueText::Set(attributes, "min", minimum);
    if (hasMaximum) CustomValueText::Set(attributes, "max", maximum);
    CustomValueText::Set(attributes, "default", defaultValue);
    if (!this->IsArray()) CustomValueText::Set(attributes, "value", this->GetValue());
    if (dimension != VokDimension::None)
        attributes.SetString("dimension", kDimensions[static_cast<std::size_t>(dimension)]);
}

template <class T>
void VokCustomAttributeNumeric<T>::SetMinimum(T value) {
    minimum = value;
    hasMinimum = true;
}

template <class T>
void VokCustomAttributeNumeric<T>::SetMaximum(T value) {
    maximum = value;
    hasMaximum = true;
}

template class VokCustomAttributeNumeric<bool>;
template class VokCustomAttributeNumeric<int>;
template class VokCustomAttributeNumeric<float>;
template class VokCustomAttributeNumeric<VokVector2>;
template class VokCustomAttributeNumeric<VokVector3>;
template class VokCustomAttributeNumeric<VokVector4>;
