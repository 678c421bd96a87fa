#include <VokLib/Objects/Shading/VokLight.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Objects/Shading/VokTexture.h>
#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <string>

using namespace VokFields;

namespace {

constexpr VokEnumText<VokLight::Type, 6> kTypes{
    {"DirectionalLight", "PointLight", "SpotLight", "AreaLight", "VolumeLight", "AmbientLight"}};
constexpr VokEnumText<VokLight::VolumeShape, 5> kShapes{
    {"None", "Box", "Sphere", "Cylinder", "Cone"}};
constexpr VokEnumText<VokLight::Interpolation, 4> kInterpolations{
    {"None", "Linear", "Smooth", "Spline"}};

template <auto Field>
void WriteFloatUnlessZero(const VokLight& light, VokFile& file, std::string_view name) {
    if (light.*Field != 0) WriteFloatElement(file, name, light.*Field);
}

/// The reader takes its entries for a ramp from the element that they stand in.
VokLight::Ramp& OpenRamp(VokLight& light) {
    return *light.ramp;
}

void ReadInterpolationTypes(VokLight& light, VokParse& parse) {
    VokLight::Ramp& ramp = OpenRamp(light);
    const std::string text = parse.ReadString();
    ramp.interpolationTypes.clear();
    const char* cursor = text.c_str();
    const char* begin = nullptr;
    const char* end = nullptr;
    while (ramp.interpolationTypes.size() < ramp.numEntries &&
           VokNumberText::CutTokens(cursor, 1, &begin, &end) == 1) {
        const std::string_view word(begin, static_cast<std::size_t>(end - begin));
        const auto type = kInterpolations.Find(word);
        if (!type)
            ThrowVokException("Unknown ramp interpolation type \"" + std::string(word) + "\".",
                              &light);
        ramp.interpolationTypes.push_back(*type);
        cursor = end;
    }
}

}  // namespace

std::span<const VokAttributeRow<VokLight>> VokLight::AttributeRows() {
    static constexpr VokAttributeRow<VokLight> rows[] = {
        {.read =
             [](VokLight& light, const VokAttributes& attributes) {
                 if (const char* text = attributes.Find("type"))
                     light.type = kTypes.Find(text).value_or(Type::Unknown);
                 light.castShadows = attributes.GetBool("castShadows", false);
                 light.hasAmbient = attributes.GetBool("hasAmbient", false);
                 light.hasDiffuse = attributes.GetBool("hasDiffuse", false);
                 light.hasSpecular = attributes.GetBool("hasSpecular", false);
                 light.volumeShape =
                     kShapes.Find(attributes.GetString("volumeShape")).value_or(VolumeShape::None);
             },
         .write =
             [](const VokLight& light, VokAttributes& attributes) {
                 const auto text = kTypes.TextOf(light.type);
                 if (!text) ThrowVokException("Unknown light type", &light);
                 attributes.SetString("type", *text);
                 attributes.SetBool("castShadows", light.castShadows);
                 attributes.SetBool("hasAmbient", light.hasAmbient);
                 attributes.SetBool("hasDiffuse", light.hasDiffuse);
                 attributes.SetBool("hasSpecular", light.hasSpecular);
                 if (light.volumeShape != VolumeShape::None)
                     attributes.SetString("volumeShape", *kShapes.TextOf(light.volumeShape));
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokLight>> VokLight::ChildElements() {
    static constexpr VokChildElement<VokLight> rows[] = {
        {.name = "intensity",
         .data = ReadFloat<&VokLight::intensity>,
         .write = WriteFloat<&VokLight::intensity>},
        {.name = "colour",
         .data = ReadVector3<&VokLight::colour>,
         .write = WriteVector3<&VokLight::colour>},
        {.name = "colourTexture",
         .data = [](VokLight& light,
                    VokParse& parse) { SetLinkPath(light.colourTexture, parse.ReadString()); },
         .write =
             [](const VokLight& light, VokFile& file, std::string_view name) {
                 const VokObj* texture = light.colourTexture.FindTarget();
                 if (texture != nullptr && texture->IsA(VokTexture::TypeId()))
                     WriteTextElement(file, name, light.colourTexture.GetPath().GetText());
             }},
        {.name = "coneAngle",
         .data = ReadFloat<&VokLight::coneAngle>,
         .write = WriteFloatUnlessZero<&VokLight::coneAngle>},
        {.name = "penumbraAngle",
         .data = ReadFloat<&VokLight::penumbraAngle>,
         .write = WriteFloatUnlessZero<&VokLight::penumbraAngle>},
        {.name = "dropOff",
         .data = ReadFloat<&VokLight::dropOff>,
         .write = WriteFloatUnlessZero<&VokLight::dropOff>},
        {.name = "decayRate",
         .data = ReadFloat<&VokLight::decayRate>,
         .write = WriteFloatUnlessZero<&VokLight::decayRate>},
        {.name = "colourRamp",
         .start =
             [](VokLight& light, VokParse& parse) {
                 light.ramp.emplace(GetCount(parse.GetAttributes(), "numEntries", 0));
             },
         .write = WriteRamp},
        {.name = "positions",
         .data =
             [](VokLight& light, VokParse& parse) {
                 parse.ReadFloats(OpenRamp(light).positions, OpenRamp(light).numEntries);
             },
         .within = "colourRamp"},
        {.name = "colours",
         .data =
             [](VokLight& light, VokParse& parse) {
                 parse.ReadFloats(OpenRamp(light).colours, 3LL * OpenRamp(light).numEntries);
             },
         .within = "colourRamp"},
        {.name = "interpolationTypes", .data = ReadInterpolationTypes, .within = "colourRamp"},
    };
    return rows;
}

void VokLight::CheckRampSizes() const {
    if (ramp->positions.size() != ramp->numEntries ||
        ramp->colours.size() != std::size_t{3} * ramp->numEntries ||
        ramp->interpolationTypes.size() != ramp->numEntries)
        ThrowVokException("ramp size mismatch", this);
}

VokLight::RampEntry VokLight::GetRampEntry(std::size_t index) const {
    if (!ramp || index >= ramp->numEntries) ThrowVokException("index out of range", this);
    CheckRampSizes();
    const float* colourAt = ramp->colours.data() + 3 * index;
    return {ramp->positions[index],
            {colourAt[0], colourAt[1], colourAt[2]},
            ramp->interpolationTypes[index]};
}

void VokLight::WriteRamp(const VokLight& light, VokFile& file, std::string_view name) {
    if (!light.ramp) return;
    light.CheckRampSizes();
    const Ramp& ramp = *light.ramp;
    VokAttributes attributes;
    attributes.SetUnsigned("numEntries", ramp.numEntries);
    file.OpenTag(name, attributes);
    file.OpenTag("positions");
    file.WriteFloats(ramp.positions.data(), ramp.positions.size());
    file.CloseTag("positions");
    file.OpenTag("colours");
    file.WriteFloats(ramp.colours.data(), ramp.colours.size());
    file.CloseTag("colours");
    std::string words;
    for (const Interpolation type : ramp.interpolationTypes) {
        if (!words.empty()) words += ' ';
        words += *kInterpolations.TextOf(type);
    }
    WriteTextElement(file, "interpolationTypes", words);
    file.CloseTag(name);
}
