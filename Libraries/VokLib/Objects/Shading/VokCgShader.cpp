#include <VokLib/Objects/Shading/VokCgShader.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/VokDependencies.h>

std::span<const VokAttributeRow<VokCgShader>> VokCgShader::AttributeRows() {
    static constexpr VokAttributeRow<VokCgShader> rows[] = {
        {.read = [](VokCgShader& shader,
                    const VokAttributes& attributes) { shader.url = attributes.GetString("url"); },
         .write = [](const VokCgShader& shader,
                     VokAttributes& attributes) { attributes.SetString("url", shader.url); }},
    };
    return rows;
}

bool VokCgShader::GetDependencies(VokDependencies& files) const {
    VokFields::AddFile(files, url);
    return VokElement::GetDependencies(files);
}

bool VokCgShader::UpdateDependencies(VokUpdateDependencies& update) {
    VokFields::UpdateFile(url, update, this);
    return VokElement::UpdateDependencies(update);
}
