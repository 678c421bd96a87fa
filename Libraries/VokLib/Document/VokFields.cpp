#include <VokLib/Document/VokFields.h>

#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokDependencies.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace VokFields {

std::string GetRequired(const VokAttributes& attributes, std::string_view name,
                        const VokObj* object) {
    if (const char* text = attributes.Find(name)) return text;
    ThrowVokException("Missing attribute in parse", object);
}

unsigned GetCount(const VokAttributes& attributes, std::string_view name, unsigned fallback) {
    const char* const text = attributes.Find(name);
    if (text == nullptr) return fallback;
    // Beyond the bound of an int it is a claim that no text holds, and refused as such.
    constexpr unsigned kMost = std::numeric_limits<int>::max();
    const bool isNegative = text[std::strspn(text, " \t\n\v\f\r")] == '-';
    return isNegative ? 0 : std::min(attributes.GetUnsigned(name, 0), kMost);
}

void SetLinkPath(VokObjLinkHandle& link, std::string_view path) {
    if (!path.empty()) link.SetTargetPath(std::string(path));
}

void ReadLink(VokObjLinkHandle& link, const VokAttributes& attributes, std::string_view name) {
    if (const char* path = attributes.Find(name)) SetLinkPath(link, path);
}

void WriteLink(const VokObjLinkHandle& link, VokAttributes& attributes, std::string_view name) {
    attributes.SetString(name, link.GetPath().GetText());
}

void SetUnlessEmpty(VokAttributes& attributes, std::string_view name, std::string_view text) {
    if (!text.empty()) attributes.SetString(name, text);
}

void ReadRotationOrder(EulerRotation& rotation, const VokAttributes& attributes) {
    const char* text = attributes.Find("rotOrd");
    rotation.order =
        text == nullptr ? RotationOrder::xyz : FindRotationOrder(text).value_or(rotation.order);
}

void ReadRotationOrderStrictly(EulerRotation& rotation, const VokAttributes& attributes,
                               const VokObj* object) {
    const char* text = attributes.Find("rotOrd");
    if (text != nullptr && !FindRotationOrder(text))
        ThrowVokException("Unknown rotation order \"" + std::string(text) + "\".", object);
    ReadRotationOrder(rotation, attributes);
}

void AddFile(VokDependencies& files, const std::string& name) {
    if (!name.empty()) files.Add(name);
}

void UpdateFile(std::string& name, VokUpdateDependencies& update, const VokObj* object) {
    if (name.empty()) return;
    std::string translated;
    update.Translate(translated, name, object);
    name = std::move(translated);
}

void WriteFloatElement(VokFile& file, std::string_view name, float value) {
    file.OpenTag(name);
    file.WriteFloat(value);
    file.CloseTag(name);
}

void WriteVector3Element(VokFile& file, std::string_view name, float x, float y, float z) {
    file.OpenTag(name);
    file.WriteVector3({x, y, z});
    file.CloseTag(name);
}

void WriteRotationElement(VokFile& file, std::string_view name, const EulerRotation& rotation) {
    VokAttributes attributes;
    attributes.SetString("rotOrd", GetRotationOrderText(rotation.order));
    file.OpenTag(name, attributes);
    file.WriteVector3({rotation.x, rotation.y, rotation.z});
    file.CloseTag(name);
}

void WriteTextElement(VokFile& file, std::string_view name, std::string_view text) {
    file.OpenTag(name);
    file.WriteText(text);
    file.CloseTag(name);
}

}  // namespace VokFields
