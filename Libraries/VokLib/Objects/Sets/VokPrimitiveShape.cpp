#include <VokLib/Objects/Sets/VokPrimitiveShape.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <string>

using namespace VokFields;

namespace {

using Kind = VokPrimitiveShape::Kind;

struct Shape {
    std::string_view element;
    std::array<std::string_view, 3> dimensions;  // as attributes, by dimension index
};

/// In the order of the kinds.
constexpr Shape kShapes[] = {
    {"cube", {"width", "height", "depth"}},
    {"sphere", {"radius"}},
    {"cylinder", {"radius", "height"}},
};

template <Kind ShapeKind>
void ReadShape(VokPrimitiveShape& primitive, VokParse& parse) {
    primitive.kind = ShapeKind;
    const auto& dimensions = kShapes[static_cast<std::size_t>(ShapeKind)].dimensions;
    for (std::size_t i = 0; i < dimensions.size(); ++i)
        if (!dimensions[i].empty())
            primitive.SetSize(i, parse.GetAttributes().GetFloat(dimensions[i], 0));
}

void WriteShape(const VokPrimitiveShape& primitive, VokFile& file, std::string_view) {
    const auto kind = static_cast<std::size_t>(primitive.kind);
    if (kind >= std::size(kShapes))
        ThrowVokException("Unhandled primitive shape: " + std::to_string(kind), &primitive);
    const Shape& shape = kShapes[kind];
    VokAttributes attributes;
    for (std::size_t i = 0; i < shape.dimensions.size(); ++i)
        if (!shape.dimensions[i].empty())
            attributes.SetFloat(shape.dimensions[i], primitive.GetSize(i));
    file.EmptyTag(shape.element, attributes);
}

}  // namespace

std::span<const VokAttributeRow<VokPrimitiveShape>> VokPrimitiveShape::AttributeRows() {
    static constexpr VokAttributeRow<VokPrimitiveShape> rows[] = {
        {.read =
             [](VokPrimitiveShape& primitive, const VokAttributes& attributes) {
                 ReadLink(primitive.shader, attributes, "shader");
             },
         .write =
             [](const VokPrimitiveShape& primitive, VokAttributes& attributes) {
                 if (primitive.shader.IsValid()) WriteLink(primitive.shader, attributes, "shader");
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokPrimitiveShape>> VokPrimitiveShape::ChildElements() {
    static constexpr VokChildElement<VokPrimitiveShape> rows[] = {
        {.name = "cube", .start = ReadShape<Kind::Cube>, .write = WriteShape},  // of any kind
        {.name = "sphere", .start = ReadShape<Kind::Sphere>},
        {.name = "cylinder", .start = ReadShape<Kind::Cylinder>},
    };
    return rows;
}

float VokPrimitiveShape::GetSize(std::size_t dimension) const {
    if (dimension >= size.size()) ThrowVokException("Dimension index out of range", this);
    return size[dimension];
}

void VokPrimitiveShape::SetSize(std::size_t dimension, float value) {
    if (dimension >= size.size()) ThrowVokException("Dimension index out of range", this);
    size[dimension] = value;
}
