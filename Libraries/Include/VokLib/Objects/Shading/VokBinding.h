#pragma once

#include <VokLib/Links/VokObjLink.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class VokAttributes;
class VokFile;
class VokObj;
class VokParse;

/// What feeds one parameter of a shader: a texture, a data set of the geometry, or a constant.
class Binding {
  public:
    enum class Type : std::uint32_t { Texture = 0, Geometry = 1, Constant = 2 };

    virtual ~Binding();

    virtual Type GetType() const = 0;
    /// The whole element.
    virtual void Write(VokFile& file) const;
    /// The element's text; nothing in the base.
    virtual void ParseData(VokParse& parse);
    /// "tag" and "type", then the class's own.
    virtual void WriteAttributes(VokAttributes& attributes) const;
    /// False when a required attribute is missing.
    virtual bool ParseAttributes(const VokAttributes& attributes);

    /// A binding of the kind that the attribute "type" names, with its attributes read. Null where
    /// a required one is missing; a type outside the table throws "Binding type string invalid".
    /// `owner` is the shader.
    static std::unique_ptr<Binding> Make(const VokAttributes& attributes, VokObj* owner);

    std::string tag;  ///< the shader's parameter
};

class TextureBinding : public Binding {
  public:
    explicit TextureBinding(VokObj* owner) : source(owner) {}
    Type GetType() const override { return Type::Texture; }
    void WriteAttributes(VokAttributes& attributes) const override;
    bool ParseAttributes(const VokAttributes& attributes) override;

    VokObjLinkHandle source;
};

class GeomBinding : public Binding {
  public:
    Type GetType() const override { return Type::Geometry; }
    void WriteAttributes(VokAttributes& attributes) const override;
    bool ParseAttributes(const VokAttributes& attributes) override;

    std::string dataset;
    std::string streamtype;
    std::string modifiers;
};

class ConstBinding : public Binding {
  public:
    explicit ConstBinding(VokObj* shader) : owner(shader) {}
    Type GetType() const override { return Type::Constant; }
    void Write(VokFile& file) const override;
    void ParseData(VokParse& parse) override;
    void WriteAttributes(VokAttributes& attributes) const override;
    /// A count outside 1 to 4 throws "Invalid number of elements specified for constant binding".
    bool ParseAttributes(const VokAttributes& attributes) override;

    std::vector<float> values;

  private:
    VokObj* owner;
};

/// Bindings in document order; owns them.
class Bindings {
  public:
    Binding& Add(std::unique_ptr<Binding> binding);
    std::size_t GetCount() const { return list.size(); }
    /// Throws "Binding index out of range".
    Binding& GetBinding(std::size_t index) const;
    void Write(VokFile& file) const;

  private:
    std::vector<std::unique_ptr<Binding>> list;
};
