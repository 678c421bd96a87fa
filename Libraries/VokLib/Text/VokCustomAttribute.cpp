#include <VokLib/VokCustomAttribute.h>

#include <utility>

#include <VokLib/VokAttributes.h>
#include <VokLib/VokFile.h>

VokCustomAttribute::VokCustomAttribute(std::string attributeName, std::string_view typeKeyword,
                                       bool array)
    : name(std::move(attributeName)), type(typeKeyword), isArray(array) {}

VokCustomAttribute::~VokCustomAttribute() = default;

void VokCustomAttribute::Write(VokFile& file) const {
    VokAttributes attributes;
    WriteAttributes(attributes);
    file.OpenTag("attribute", attributes);
    WriteContents(file);
    file.CloseTag("attribute");
}

void VokCustomAttribute::WriteContents(VokFile&) const {}

bool VokCustomAttribute::ParseAttributes(const VokAttributes&, VokParse&) {
    return true;
}

bool VokCustomAttribute::ParseStartTag(VokParse&) {
    return true;
}

bool VokCustomAttribute::ParseData(VokParse&) {
    return true;
}

bool VokCustomAttribute::ParseEndTag(VokParse&) {
    return true;
}

void VokCustomAttribute::WriteAttributes(VokAttributes& attributes) const {
    attributes.SetString("name", name);
    attributes.SetString("type", type);
    if (isArray) attributes.SetBool("isArray", true);
}
