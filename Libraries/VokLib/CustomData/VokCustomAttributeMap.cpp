#include <VokLib/CustomData/VokCustomAttributeMap.h>

#include <utility>

#include <VokLib/Text/VokElementReader.h>

#include "CustomData/CustomValueGuards.h"
#include "CustomData/CustomValueText.h"

template <class T>
VokCustomAttributeMap<T>::VokCustomAttributeMap(std::string attributeName,
                                                std::string_view typeKeyword, bool array)
    : VokCustomAttribute(std::move(attributeName), typeKeyword, array) {}

template <class T>
std::unique_ptr<VokCustomAttribute> VokCustomAttributeMap<T>::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeMap(*this));
}

template <class T>
void VokCustomAttributeMap<T>::WriteContents(VokFile& file) const {
    if (!IsArray()) return;
    for (const auto& entry : values.InOrder()) {
        VokAttributes attributes;
        attributes.SetInt("index", entry.index);
        CustomValueText::SetSize(attributes, entry.value);
        file.OpenTag("value", attributes);
        CustomValueText::Write(file, entry.value);
        file.CloseTag("value");
    }
}

template <class T>
bool VokCustomAttributeMap<T>::ParseStartTag(VokElementReader& parse) {
    if (parse.GetTag() == "value") {
        currentIndex = parse.GetAttributes().GetInt("index", 0);
        inValue = true;
    }
    return true;
}

template <class T>
bool VokCustomAttributeMap<T>::ParseData(VokElementReader& parse) {
    if (!inValue) return true;
    T value{};
    CustomValueText::Read(parse, value);
    if (parse.KeepsContents() || RefersToOthers()) values.Set(currentIndex, std::move(value));
    return true;
}

template <class T>
bool VokCustomAttributeMap<T>::ParseEndTag(VokElementReader&) {
    inValue = false;
    return true;
}

template <class T>
void VokCustomAttributeMap<T>::GetIndices(std::vector<int>& indices) const {
    for (const auto& entry : values.InOrder()) indices.push_back(entry.index);
}

template <class T>
const T& VokCustomAttributeMap<T>::Get(int index) const {
    const T* const value = values.Find(index);
    if (value == nullptr) CustomValueGuards::ThrowNoValue();
    return *value;
}

template <class T>
const T& VokCustomAttributeMap<T>::GetValue() const {
    CustomValueGuards::RequireSingle(*this);
    return Get(0);
}

template <class T>
void VokCustomAttributeMap<T>::SetValue(T value) {
    CustomValueGuards::RequireSingle(*this);
    values.Set(0, std::move(value));
}

template <class T>
const T& VokCustomAttributeMap<T>::GetValueAt(int index) const {
    CustomValueGuards::RequireArray(*this);
    return Get(index);
}

template <class T>
void VokCustomAttributeMap<T>::SetValueAt(int index, T value) {
    CustomValueGuards::RequireArray(*this);
    values.Set(index, std::move(value));
}

template class VokCustomAttributeMap<bool>;
template class VokCustomAttributeMap<int>;
template class VokCustomAttributeMap<float>;
template class VokCustomAttributeMap<VokVector2>;
template class VokCustomAttributeMap<VokVector3>;
template class VokCustomAttributeMap<VokVector4>;
template class VokCustomAttributeMap<std::string>;
template class VokCustomAttributeMap<std::vector<float>>;
