#include <VokLib/Links/VokCustomAttributeObjLink.h>

#include <utility>

#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

#include "CustomData/CustomValueGuards.h"

VokCustomAttributeObjLink::VokCustomAttributeObjLink(std::string attributeName,
                                                     std::string_view typeKeyword, bool array)
    : VokCustomAttribute(std::move(attributeName), typeKeyword, array) {
    if (!array) handles.try_emplace(0, nullptr);
}

VokCustomAttributeObjLink::~VokCustomAttributeObjLink() = default;

VokCustomAttributeObjLink::VokCustomAttributeObjLink(const VokCustomAttributeObjLink& other)
    : VokCustomAttribute(other), currentIndex(other.currentIndex), inValue(other.inValue) {
    for (const auto& [index, handle] : other.handles) handles.try_emplace(index, nullptr, handle);
}

std::unique_ptr<VokCustomAttribute> VokCustomAttributeObjLink::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeObjLink(*this));
}

void VokCustomAttributeObjLink::WriteContents(VokFile& file) const {
    if (!IsArray()) {
        file.WriteText(GetValue().GetPath().GetText());
        return;
    }
    for (const auto& [index, handle] : handles) {
        VokAttributes attributes;
        attributes.SetInt("index", index);
        file.OpenTag("value", attributes);
        file.WriteText(handle.GetPath().GetText());
        file.CloseTag("value");
    }
}

bool VokCustomAttributeObjLink::ParseStartTag(VokElementReader& parse) {
    if (parse.GetTag() == "value") {
        currentIndex = parse.GetAttributes().GetInt("index", 0);
        inValue = true;
    }
    return true;
}

bool VokCustomAttributeObjLink::ParseData(VokElementReader& parse) {
    if (!IsArray())
        handles.insert_or_assign(0, VokObjLinkHandle(nullptr, parse.ReadString()));
    else if (inValue)
        handles.try_emplace(currentIndex, nullptr).first->second.SetTargetPath(parse.ReadString());
    return true;
}

bool VokCustomAttributeObjLink::ParseEndTag(VokElementReader&) {
    inValue = false;
    return true;
}

void VokCustomAttributeObjLink::GetIndices(std::vector<int>& indices) const {
    for (const auto& entry : handles) indices.push_back(entry.first);
}

const VokObjLinkHandle& VokCustomAttributeObjLink::Get(int index) const {
    const auto found = handles.find(index);
    if (found == handles.end()) CustomValueGuards::ThrowNoValue();
    return found->second;
}

const VokObjLinkHandle& VokCustomAttributeObjLink::GetValue() const {
    CustomValueGuards::RequireSingle(*this);
    return Get(0);
}

void VokCustomAttributeObjLink::SetValue(VokObjLinkHandle handle) {
    CustomValueGuards::RequireSingle(*this);
    handles.insert_or_assign(0, std::move(handle));
}

const VokObjLinkHandle& VokCustomAttributeObjLink::GetValueAt(int index) const {
    CustomValueGuards::RequireArray(*this);
    return Get(index);
}

void VokCustomAttributeObjLink::SetValueAt(int index, VokObjLinkHandle handle) {
    CustomValueGuards::RequireArray(*this);
    handles.insert_or_assign(index, std::move(handle));
}
