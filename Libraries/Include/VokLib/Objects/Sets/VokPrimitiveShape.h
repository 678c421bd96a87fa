#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// A cube, a sphere or a cylinder.
class VokPrimitiveShape : public VokElement<VokPrimitiveShape, VokObj> {
  public:
    static constexpr std::string_view kElementName = "primitive";
    static std::span<const VokChildElement<VokPrimitiveShape>> ChildElements();
    static std::span<const VokAttributeRow<VokPrimitiveShape>> AttributeRows();

    enum class Kind : std::uint32_t { Cube = 0, Sphere = 1, Cylinder = 2 };

    /// Width, height and depth of a cube; the radius of a sphere; radius and height of a cylinder.
    /// A dimension of 3 or more throws "Dimension index out of range".
    float GetSize(std::size_t dimension) const;
    void SetSize(std::size_t dimension, float value);

    Kind kind = Kind::Cube;
    VokObjLinkHandle shader{this};

  private:
    std::array<float, 3> size{};
};
