#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Objects/Shading/VokBinding.h>

#include <memory>

/// A shader with what is bound to its parameters.
class VokShader : public VokElement<VokShader, VokObj> {
  public:
    static constexpr std::string_view kElementName = "shader";
    static std::span<const VokChildElement<VokShader>> ChildElements();

    /// Keeps `binding` and returns true, but here only a texture's; what is refused is left with
    /// the caller.
    virtual bool AddBinding(std::unique_ptr<Binding>& binding);
    const Bindings& GetBindings() const { return bindings; }

  protected:
    /// All bindings, in the order of a document.
    virtual void WriteBindings(VokFile& file) const;

  private:
    static void ReadBinding(VokShader& shader, VokParse& parse);

    Bindings bindings;
    Binding* openBinding = nullptr;  // the one whose element is being read, if it was kept
};
