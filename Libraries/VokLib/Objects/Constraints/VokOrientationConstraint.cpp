#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

constexpr VokEnumText<OrientInterpolation, 5> kInterpolations{
    {"noFlip", "average", "shortest", "longest", "cache"}};

}  // namespace

std::string_view GetOrientInterpolationText(OrientInterpolation interpolation,
                                            const VokObj* object) {
    if (const auto text = kInterpolations.TextOf(interpolation)) return *text;
    ThrowVokException("Unknown OrientInterpolation enum value.", object);
}

std::span<const VokChildElement<VokOrientationConstraint>>
VokOrientationConstraint::ChildElements() {
    static constexpr VokChildElement<VokOrientationConstraint> rows[] = {
        {.name = "rotEul",
         .start = ReadOrderStrictly<&VokOrientationConstraint::offset>,
         .data = ReadAngles<&VokOrientationConstraint::offset>,
         .write = WriteRotation<&VokOrientationConstraint::offset>},
        {.name = "orientInterpolation",
         .data =
             [](VokOrientationConstraint& constraint, VokParse& parse) {
                 const std::string text = parse.ReadString();
                 const auto interpolation = kInterpolations.Find(text);
                 if (!interpolation)
                     ThrowVokException("Unknown orient interpolation method \"" + text + "\".",
                                       &constraint);
                 constraint.orientInterpolation = *interpolation;
             },
         .write =
             [](const VokOrientationConstraint& constraint, VokFile& file, std::string_view name) {
                 WriteTextElement(
                     file, name,
                     GetOrientInterpolationText(constraint.orientInterpolation, &constraint));
             }},
    };
    return rows;
}
