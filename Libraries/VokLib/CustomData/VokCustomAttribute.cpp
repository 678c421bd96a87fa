#include <VokLib/CustomData/VokCustomAttribute.h>

#include "Base/ObjectPool.h"

#include <utility>

#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokFile.h>

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

bool VokCustomAttribute::ParseAttributes(const VokAttributes&, VokElementReader&) {
    return true;
}

bool VokCustomAttribute::ParseStartTag(VokElementReader&) {
    return true;
}

bool VokCustomAttribute::ParseData(VokElementReader&) {
    return true;
}

bool VokCustomAttribute::ParseEndTag(VokElementReader&) {
    return true;
}

void VokCustomAttribute::WriteAttributes(VokAttributes& attributes) const {
    attributes.SetString("name", name);
    attributes.SetString("type", type);
    if (isArray) attributes.SetBool("isArray", true);
}

void* VokCustomAttribute::operator new(std::size_t size) {
    return ObjectPool::Take(size);
}

void VokCustomAttribute::operator delete(void* memory, std::size_t size) noexcept {
    ObjectPool::Give(memory, size);
}
