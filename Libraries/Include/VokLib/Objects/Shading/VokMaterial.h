#pragma once

#include <VokLib/Objects/Shading/VokRenderState.h>
#include <VokLib/Objects/Shading/VokShader.h>

#include <string>

/// A material: a shader from a file or a preset, with geometry and constants bound besides
/// textures.
class VokMaterial : public VokElement<VokMaterial, VokShader> {
  public:
    static constexpr std::string_view kElementName = "material";
    static std::span<const VokChildElement<VokMaterial>> ChildElements();
    static std::span<const VokAttributeRow<VokMaterial>> AttributeRows();

    bool AddBinding(std::unique_ptr<Binding>& binding) override;
    const Bindings& GetGeometryBindings() const { return geometryBindings; }
    const Bindings& GetConstantBindings() const { return constantBindings; }

    /// Lists url and preseturl, and nothing of the base or the children.
    bool GetDependencies(VokDependencies& files) const override;
    /// Rewrites url alone.
    bool UpdateDependencies(VokUpdateDependencies& update) override;

    std::string url;
    std::string mat;
    bool fromPreset = false;
    std::string presetUrl;
    std::string preset;
    VokRenderState renderState;

  protected:
    void WriteBindings(VokFile& file) const override;

  private:
    Bindings geometryBindings;
    Bindings constantBindings;
};
