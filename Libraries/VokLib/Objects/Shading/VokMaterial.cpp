#include <VokLib/Objects/Shading/VokMaterial.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/VokDependencies.h>

#include <cstdint>
#include <utility>

using namespace VokFields;

namespace {

constexpr VokEnumText<std::uint32_t, 11> kBlends{
    {"One", "Zero", "SrcColour", "OneMinusSrcColour", "SrcAlpha", "OneMinusSrcAlpha", "DstAlpha",
     "OneMinusDstAlpha", "DstColour", "OneMinusDstColour", "SrcAlphaSaturate"}};
constexpr VokEnumText<std::uint32_t, 8> kCompares{{"Less", "Greater", "Equal", "NotEqual", "Never",
                                                   "LessThanOrEqual", "GreaterThanOrEqual",
                                                   "Always"}};

/// A name that is in no table is the index past its end: no error here, and written as an empty
/// name.
template <std::size_t Count>
void ReadName(std::uint32_t& index, const VokEnumText<std::uint32_t, Count>& names,
              const VokAttributes& attributes, std::string_view attribute) {
    if (const char* text = attributes.Find(attribute))
        index = names.Find(text).value_or(static_cast<std::uint32_t>(Count));
}

template <std::size_t Count>
void WriteName(std::uint32_t index, const VokEnumText<std::uint32_t, Count>& names,
               VokAttributes& attributes, std::string_view attribute) {
    attributes.SetString(attribute, names.TextOf(index).value_or(std::string_view()));
}

void WriteRenderState(const VokMaterial& material, VokFile& file, std::string_view name) {
    const VokRenderState& state = material.renderState;
    if (state.IsDefault()) return;
    VokAttributes attributes;
    attributes.SetBool("overriden", state.overriden);
    file.OpenTag(name, attributes);
    if (state.alphaBlend != VokRenderState::AlphaBlend{}) {
        VokAttributes blend;
        blend.SetBool("enabled", state.alphaBlend.enabled);
        WriteName(state.alphaBlend.sourceBlend, kBlends, blend, "sourceblend");
        WriteName(state.alphaBlend.destBlend, kBlends, blend, "destblend");
        file.EmptyTag("alphablend", blend);
    }
    if (state.alphaTest != VokRenderState::AlphaTest{}) {
        VokAttributes test;
        test.SetBool("enabled", state.alphaTest.enabled);
        WriteName(state.alphaTest.alphaFunc, kCompares, test, "alphafunc");
        test.SetFloat("alpharef", state.alphaTest.alphaRef);
        file.EmptyTag("alphatest", test);
    }
    if (!state.zWrite) {
        VokAttributes write;
        write.SetBool("enabled", state.zWrite);
        file.EmptyTag("zwrite", write);
    }
    if (state.zTest != VokRenderState::ZTest{}) {
        VokAttributes test;
        test.SetBool("enabled", state.zTest.enabled);
        WriteName(state.zTest.zTestFunc, kCompares, test, "ztestfunc");
        file.EmptyTag("ztest", test);
    }
    if (!state.backfaceCulling) {
        VokAttributes culling;
        culling.SetBool("enabled", state.backfaceCulling);
        file.EmptyTag("backfaceculling", culling);
    }
    file.CloseTag(name);
}

void ReadAlphaBlend(VokMaterial& material, VokParse& parse) {
    VokRenderState::AlphaBlend& blend = material.renderState.alphaBlend;
    blend.enabled = parse.GetAttributes().GetBool("enabled", false);
    ReadName(blend.sourceBlend, kBlends, parse.GetAttributes(), "sourceblend");
    ReadName(blend.destBlend, kBlends, parse.GetAttributes(), "destblend");
}

void ReadAlphaTest(VokMaterial& material, VokParse& parse) {
    VokRenderState::AlphaTest& test = material.renderState.alphaTest;
    test.enabled = parse.GetAttributes().GetBool("enabled", false);
    ReadName(test.alphaFunc, kCompares, parse.GetAttributes(), "alphafunc");
    test.alphaRef = parse.GetAttributes().GetFloat("alpharef", test.alphaRef);
}

void ReadZTest(VokMaterial& material, VokParse& parse) {
    // Absent means off here and on for zwrite: only an element that is absent keeps the default.
    material.renderState.zTest.enabled = parse.GetAttributes().GetBool("enabled", false);
    ReadName(material.renderState.zTest.zTestFunc, kCompares, parse.GetAttributes(), "ztestfunc");
}

}  // namespace

std::span<const VokAttributeRow<VokMaterial>> VokMaterial::AttributeRows() {
    static constexpr VokAttributeRow<VokMaterial> rows[] = {
        {.read =
             [](VokMaterial& material, const VokAttributes& attributes) {
                 material.url = attributes.GetString("url");
                 material.mat = attributes.GetString("mat");
                 material.fromPreset = attributes.GetBool("frompreset", false);
                 material.presetUrl = attributes.GetString("preseturl");
                 material.preset = attributes.GetString("preset");
             },
         .write =
             [](const VokMaterial& material, VokAttributes& attributes) {
                 SetUnlessEmpty(attributes, "url", material.url);
                 SetUnlessEmpty(attributes, "mat", material.mat);
                 if (material.fromPreset) attributes.SetBool("frompreset", true);
                 SetUnlessEmpty(attributes, "preseturl", material.presetUrl);
                 SetUnlessEmpty(attributes, "preset", material.preset);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokMaterial>> VokMaterial::ChildElements() {
    static constexpr VokChildElement<VokMaterial> rows[] = {
        {.name = "renderstate",
         .start =
             [](VokMaterial& material, VokParse& parse) {
                 material.renderState.present = true;
                 material.renderState.overriden = parse.GetAttributes().GetBool("overriden", false);
             },
         .write = WriteRenderState},
        {.name = "alphablend", .start = ReadAlphaBlend, .within = "renderstate"},
        {.name = "alphatest", .start = ReadAlphaTest, .within = "renderstate"},
        {.name = "zwrite",
         .start =
             [](VokMaterial& material, VokParse& parse) {
                 material.renderState.zWrite = parse.GetAttributes().GetBool("enabled", true);
             },
         .within = "renderstate"},
        {.name = "ztest", .start = ReadZTest, .within = "renderstate"},
        {.name = "backfaceculling",
         .start =
             [](VokMaterial& material, VokParse& parse) {
                 material.renderState.backfaceCulling =
                     parse.GetAttributes().GetBool("enabled", false);
             },
         .within = "renderstate"},
    };
    return rows;
}

bool VokMaterial::AddBinding(std::unique_ptr<Binding>& binding) {
    switch (binding->GetType()) {
        case Binding::Type::Geometry:
            geometryBindings.Add(std::move(binding));
            return true;
        case Binding::Type::Constant:
            constantBindings.Add(std::move(binding));
            return true;
        case Binding::Type::Texture:
            break;
    }
    return VokShader::AddBinding(binding);
}

void VokMaterial::WriteBindings(VokFile& file) const {
    geometryBindings.Write(file);
    constantBindings.Write(file);
    VokShader::WriteBindings(file);
}

// A material's children are never asked for files, and a preset's file is listed but not rewritten.

bool VokMaterial::GetDependencies(VokDependencies& files) const {
    AddFile(files, url);
    AddFile(files, presetUrl);
    return false;
}

bool VokMaterial::UpdateDependencies(VokUpdateDependencies& update) {
    UpdateFile(url, update, this);
    return false;
}
