#include <VokLib/Objects/Shading/VokTexture.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/VokDependencies.h>

std::span<const VokAttributeRow<VokTexture>> VokTexture::AttributeRows() {
    static constexpr VokAttributeRow<VokTexture> rows[] = {
        {.read =
             [](VokTexture& texture, const VokAttributes& attributes) {
                 texture.uri = VokFields::GetRequired(attributes, "uri", &texture);
             },
         .write = [](const VokTexture& texture,
                     VokAttributes& attributes) { attributes.SetString("uri", texture.uri); }},
    };
    return rows;
}

std::span<const VokChildElement<VokTexture>> VokTexture::ChildElements() {
    static constexpr VokChildElement<VokTexture> rows[] = {
        {.name = "wrap",
         .start =
             [](VokTexture& texture, VokParse& parse) {
                 texture.wrapU = parse.GetAttributes().GetBool("u", true);
                 texture.wrapV = parse.GetAttributes().GetBool("v", true);
             }},
        {.name = "repeat",
         .start =
             [](VokTexture& texture, VokParse& parse) {
                 texture.repeatU = parse.GetAttributes().GetFloat("u", 1);
                 texture.repeatV = parse.GetAttributes().GetFloat("v", 1);
             }},
        {.name = "rotate",
         .start =
             [](VokTexture& texture, VokParse& parse) {
                 texture.rotationAngle = parse.GetAttributes().GetFloat("angle", 0);
             }},
    };
    return rows;
}

void VokTexture::WriteTail(VokFile& file) const {
    VokElement::WriteTail(file);
    if (!wrapU || !wrapV) {
        VokAttributes attributes;
        attributes.SetBool("u", wrapU);
        attributes.SetBool("v", wrapV);
        file.EmptyTag("wrap", attributes);
    }
    if (repeatU != 1 || repeatV != 1) {
        VokAttributes attributes;
        attributes.SetFloat("u", repeatU);
        attributes.SetFloat("v", repeatV);
        file.EmptyTag("repeat", attributes);
    }
    if (rotationAngle != 0) {
        VokAttributes attributes;
        attributes.SetFloat("angle", rotationAngle);
        file.EmptyTag("rotate", attributes);
    }
}

bool VokTexture::GetDependencies(VokDependencies& files) const {
    VokFields::AddFile(files, uri);
    return VokElement::GetDependencies(files);
}

bool VokTexture::UpdateDependencies(VokUpdateDependencies& update) {
    VokFields::UpdateFile(uri, update, this);
    return VokElement::UpdateDependencies(update);
}
