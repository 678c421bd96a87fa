#include <VokLib/VokCustomAttributeFloatArray.h>

#include <utility>

#include <VokLib/VokFile.h>
#include <VokLib/VokParse.h>

VokCustomAttributeFloatArray::VokCustomAttributeFloatArray(std::string attributeName,
                                                           std::string_view typeKeyword, bool array)
    : VokCustomAttributeMap<std::vector<float>>(std::move(attributeName), typeKeyword, array) {}

std::unique_ptr<VokCustomAttribute> VokCustomAttributeFloatArray::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeFloatArray(*this));
}

void VokCustomAttributeFloatArray::WriteContents(VokFile& file) const {
    if (IsArray())
        VokCustomAttributeMap<std::vector<float>>::WriteContents(file);
    else
        file.WriteFloatArray(GetValue());
}

bool VokCustomAttributeFloatArray::ParseAttributes(const VokAttributes& attributes, VokParse&) {
    if (IsArray()) return true;
    ownCount = attributes.GetInt("count", 0);
    SetValue({});
    return true;
}

bool VokCustomAttributeFloatArray::ParseStartTag(VokParse& parse) {
    VokCustomAttributeMap<std::vector<float>>::ParseStartTag(parse);
    // Any element inside a value states the count anew; what is not an array keeps its own text's
    // at index 0.
    if (!InValue()) return true;
    valueCount = parse.GetAttributes().GetInt("count", 0);
    if (CurrentIndex() == 0) ownCount = valueCount;
    return true;
}

void VokCustomAttributeFloatArray::Read(VokParse& parse, int index, int count) {
    std::vector<float> floats;
    parse.ReadFloats(floats, count);
    Store(index, std::move(floats));
}

bool VokCustomAttributeFloatArray::ParseData(VokParse& parse) {
    if (InValue())
        Read(parse, CurrentIndex(), valueCount);
    else if (!IsArray())
        Read(parse, 0, ownCount);
    return true;
}

void VokCustomAttributeFloatArray::WriteAttributes(VokAttributes& attributes) const {
    VokCustomAttribute::WriteAttributes(attributes);
    if (!IsArray()) attributes.SetUnsigned("count", static_cast<unsigned>(GetValue().size()));
}
