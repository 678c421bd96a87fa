#include <VokLib/CustomData/VokCustomData.h>

#include <QelTools/Exception.h>

#include <utility>

#include <VokLib/Base/VokException.h>
#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

namespace {

constexpr std::string_view kTable = "customData";
constexpr std::string_view kAttribute = "attribute";

using QelTools::Common::ThrowException;

std::unique_ptr<VokCustomAttribute> MakeAttribute(const VokAttributes& attributes) {
    const std::string type = attributes.GetString("type");
    const VokCustomAttributeFactory factory = FindCustomAttributeFactory(MakeTypeId(type));
    if (factory == nullptr) {
        const std::string text = "No factory for custom attribute of type: " + type;
        if (!HasCustomAttributeFactories()) ThrowException(text);
        ThrowVokException(text);
    }
    return factory(attributes.GetString("name"), type, attributes.GetBool("isArray", false));
}

}  // namespace

VokCustomData::VokCustomData() = default;

VokCustomData::~VokCustomData() = default;

VokCustomData::VokCustomData(const VokCustomData& other)
    : inAttribute(other.inAttribute), leftOut(other.leftOut) {
    attributes.reserve(other.attributes.size());
    for (const auto& attribute : other.attributes) attributes.push_back(attribute->Clone());
}

VokCustomData& VokCustomData::operator=(const VokCustomData& other) {
    if (this != &other) {
        VokCustomData copy(other);
        attributes.swap(copy.attributes);
        inAttribute = copy.inAttribute;
        leftOut = copy.leftOut;
    }
    return *this;
}

bool VokCustomData::IsBegin(std::string_view tag) {
    return tag == kTable || tag == kAttribute;
}

bool VokCustomData::ParseStartTag(VokElementReader& parse) {
    const std::string_view tag = parse.GetTag();
    if (tag == kTable) return true;
    if (tag == kAttribute) {
        AddAttribute(MakeAttribute(parse.GetAttributes()))
            .ParseAttributes(parse.GetAttributes(), parse);
        inAttribute = true;
        return true;
    }
    if (!inAttribute) return false;
    Last().ParseStartTag(parse);
    return true;
}

bool VokCustomData::ParseData(VokElementReader& parse) {
    return !inAttribute || Last().ParseData(parse);
}

bool VokCustomData::ParseEndTag(VokElementReader& parse) {
    if (parse.GetTag() != kAttribute) return !inAttribute || Last().ParseEndTag(parse);
    // The attribute's own end does not reach it.
    if (inAttribute && !parse.KeepsContents() && !Last().RefersToOthers()) {
        attributes.pop_back();
        leftOut = true;
    }
    inAttribute = false;
    return true;
}

bool VokCustomData::Write(VokFile& file) const {
    if (attributes.empty()) return true;
    file.OpenTag("customData");
    for (const auto& attribute : attributes) attribute->Write(file);
    file.CloseTag("customData");
    return true;
}

VokCustomAttribute& VokCustomData::GetAttribute(std::size_t index) const {
    if (index >= attributes.size()) ThrowException("Custom data index out of range");
    return *attributes[index];
}

VokCustomAttribute& VokCustomData::AddAttribute(std::unique_ptr<VokCustomAttribute> attribute) {
    // A few at once: the first allocation of an object is mostly its last.
    if (attributes.empty()) attributes.reserve(3);
    attributes.push_back(std::move(attribute));
    return *attributes.back();
}

void VokCustomData::Clear() {
    attributes.clear();
}

VokCustomAttribute& VokCustomData::Last() const {
    if (attributes.empty()) ThrowException("No custom attribute to receive data");
    return *attributes.back();
}
