#include <VokLib/Objects/Shading/VokBinding.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <utility>

using namespace VokFields;

namespace {

constexpr VokEnumText<Binding::Type, 3> kTypes{{"texture", "geometry", "constant"}};
constexpr int kMostConstants = 4;

}  // namespace

Binding::~Binding() = default;

std::unique_ptr<Binding> Binding::Make(const VokAttributes& attributes, VokObj* owner) {
    const char* typeText = attributes.Find("type");
    if (typeText == nullptr) return nullptr;
    std::unique_ptr<Binding> binding;
    const auto type = kTypes.Find(typeText);
    if (!type) ThrowVokException("Binding type string invalid", owner);
    switch (*type) {
        case Type::Texture:
            binding = std::make_unique<TextureBinding>(owner);
            break;
        case Type::Geometry:
            binding = std::make_unique<GeomBinding>();
            break;
        case Type::Constant:
            binding = std::make_unique<ConstBinding>(owner);
            break;
    }
    if (!binding->ParseAttributes(attributes)) return nullptr;
    return binding;
}

void Binding::Write(VokFile& file) const {
    VokAttributes attributes;
    WriteAttributes(attributes);
    file.EmptyTag("binding", attributes);
}

void Binding::ParseData(VokParse&) {}

void Binding::WriteAttributes(VokAttributes& attributes) const {
    attributes.SetString("tag", tag);
    attributes.SetString("type", *kTypes.TextOf(GetType()));
}

bool Binding::ParseAttributes(const VokAttributes& attributes) {
    tag = attributes.GetString("tag");
    return true;
}

void TextureBinding::WriteAttributes(VokAttributes& attributes) const {
    Binding::WriteAttributes(attributes);
    WriteLink(source, attributes, "source");
}

bool TextureBinding::ParseAttributes(const VokAttributes& attributes) {
    // "parameter" is what the tag was called before.
    tag = attributes.Has("tag") ? attributes.GetString("tag") : attributes.GetString("parameter");
    if (!attributes.Has("source")) return false;
    ReadLink(source, attributes, "source");
    return true;
}

void GeomBinding::WriteAttributes(VokAttributes& attributes) const {
    Binding::WriteAttributes(attributes);
    attributes.SetString("dataset", dataset);
    SetUnlessEmpty(attributes, "streamtype", streamtype);
    SetUnlessEmpty(attributes, "modifiers", modifiers);
}

bool GeomBinding::ParseAttributes(const VokAttributes& attributes) {
    dataset = attributes.GetString("dataset");
    streamtype = attributes.GetString("streamtype");
    modifiers = attributes.GetString("modifiers");
    return Binding::ParseAttributes(attributes) && attributes.Has("dataset");
}

void ConstBinding::Write(VokFile& file) const {
    VokAttributes attributes;
    WriteAttributes(attributes);
    file.OpenTag("binding", attributes);
    file.WriteFloats(values.data(), values.size());
    file.CloseTag("binding");
}

void ConstBinding::ParseData(VokParse& parse) {
    parse.ReadFloats(values, static_cast<long long>(values.size()));
}

void ConstBinding::WriteAttributes(VokAttributes& attributes) const {
    Binding::WriteAttributes(attributes);
    attributes.SetUnsigned("count", static_cast<unsigned>(values.size()));
}

bool ConstBinding::ParseAttributes(const VokAttributes& attributes) {
    if (!attributes.Has("count")) return false;
    const int count = attributes.GetInt("count", 0);
    if (count < 1 || count > kMostConstants)
        ThrowVokException("Invalid number of elements specified for constant binding", owner);
    values.assign(static_cast<std::size_t>(count), 0.0f);
    return Binding::ParseAttributes(attributes);
}

Binding& Bindings::Add(std::unique_ptr<Binding> binding) {
    return *list.emplace_back(std::move(binding));
}

Binding& Bindings::GetBinding(std::size_t index) const {
    if (index >= list.size()) ThrowVokException("Binding index out of range");
    return *list[index];
}

void Bindings::Write(VokFile& file) const {
    for (const auto& binding : list) binding->Write(file);
}
