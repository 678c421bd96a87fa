#include <VokLib/Objects/Shading/VokShader.h>

#include <VokLib/Tree/ThrowVokException.h>

#include <utility>

std::span<const VokChildElement<VokShader>> VokShader::ChildElements() {
    static constexpr VokChildElement<VokShader> rows[] = {
        {.name = "binding",
         .start = ReadBinding,
         .data =
             [](VokShader& shader, VokParse& parse) {
                 if (shader.openBinding != nullptr) shader.openBinding->ParseData(parse);
             },
         .write = [](const VokShader& shader, VokFile& file,
                     std::string_view) { shader.WriteBindings(file); },
         .end = [](VokShader& shader, VokParse&) { shader.openBinding = nullptr; }},
    };
    return rows;
}

void VokShader::ReadBinding(VokShader& shader, VokParse& parse) {
    std::unique_ptr<Binding> binding = Binding::Make(parse.GetAttributes(), &shader);
    if (binding == nullptr) ThrowVokException("Missing attribute in parse", &shader);
    Binding* made = binding.get();
    shader.openBinding = shader.AddBinding(binding) ? made : nullptr;
}

bool VokShader::AddBinding(std::unique_ptr<Binding>& binding) {
    if (binding->GetType() != Binding::Type::Texture) return false;
    bindings.Add(std::move(binding));
    return true;
}

void VokShader::WriteBindings(VokFile& file) const {
    bindings.Write(file);
}
