#include <VokLib/CustomData/VokCustomAttributeFloatArray.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

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

bool VokCustomAttributeFloatArray::ParseAttributes(const VokAttributes& attributes,
                                                   VokElementReader& parse) {
    if (IsArray()) return true;
    if (!parse.KeepsContents()) parse.CountText();
    ownCount = attributes.GetInt("count", 0);
    SetValue({});
    return true;
}

bool VokCustomAttributeFloatArray::ParseStartTag(VokElementReader& parse) {
    const bool wasInValue = InValue();
    const int outerIndex = CurrentIndex();
    VokCustomAttributeMap<std::vector<float>>::ParseStartTag(parse);
    if (!InValue()) return true;
    if (!parse.KeepsContents()) parse.CountText();
    // A value inside a value takes its text; the outer one stays with what its count promised.
    if (wasInValue && CurrentIndex() != outerIndex) StoreZeros(parse, outerIndex, valueCount);
    // Any element inside a value states the count anew; what is not an array keeps its own text's
    // at index 0.
    valueCount = parse.GetAttributes().GetInt("count", 0);
    if (CurrentIndex() == 0) ownCount = valueCount;
    return true;
}

void VokCustomAttributeFloatArray::StoreZeros(VokElementReader& parse, int index, int count) {
    const auto size = static_cast<std::size_t>(std::max(count, 0));
    parse.ClaimPadding(size);
    if (parse.KeepsContents()) Store(index, std::vector<float>(size));
}

void VokCustomAttributeFloatArray::Read(VokElementReader& parse, int index, int count) {
    if (!parse.KeepsContents()) {
        parse.SkipValues(count);
        return;
    }
    std::vector<float> floats;
    parse.ReadFloats(floats, count);
    Store(index, std::move(floats));
}

bool VokCustomAttributeFloatArray::ParseData(VokElementReader& parse) {
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
