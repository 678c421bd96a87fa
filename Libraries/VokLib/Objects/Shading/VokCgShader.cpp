#include <VokLib/VokCgShader.h>

#include <VokLib/VokDependencies.h>
#include <VokLib/VokFields.h>

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
