#include <VokLib/CustomData/VokCustomAttributeEnum.h>

#include <utility>

#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

VokCustomAttributeEnum::VokCustomAttributeEnum(std::string attributeName,
                                               std::string_view typeKeyword, bool array)
    : VokCustomAttributeMap<int>(std::move(attributeName), typeKeyword, array) {}

std::unique_ptr<VokCustomAttribute> VokCustomAttributeEnum::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeEnum(*this));
}

void VokCustomAttributeEnum::WriteContents(VokFile& file) const {
    for (const auto& field : fields.InOrder()) {
        VokAttributes attributes;
        attributes.SetString("name", field.value);
        attributes.SetInt("index", field.index);
        file.EmptyTag("field", attributes);
    }
    VokCustomAttributeMap<int>::WriteContents(file);
}

bool VokCustomAttributeEnum::ParseAttributes(const VokAttributes& attributes, VokElementReader&) {
    defaultValue = attributes.GetInt("default", 0);
    if (attributes.Has("value")) SetValue(attributes.GetInt("value", 0));
    return true;
}

bool VokCustomAttributeEnum::ParseStartTag(VokElementReader& parse) {
    if (parse.GetTag() != "field") return VokCustomAttributeMap<int>::ParseStartTag(parse);
    const VokAttributes& attributes = parse.GetAttributes();
    AddField(attributes.GetString("name"), attributes.GetInt("index", 0));
    return true;
}

void VokCustomAttributeEnum::WriteAttributes(VokAttributes& attributes) const {
    VokCustomAttribute::WriteAttributes(attributes);
    attributes.SetInt("default", defaultValue);
    if (!IsArray()) attributes.SetInt("value", GetValue());
}

void VokCustomAttributeEnum::AddField(std::string fieldName, int index) {
    fields.Set(index, std::move(fieldName));
}
