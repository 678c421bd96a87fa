#include <VokLib/Objects/Constraints/VokMotionPath.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Tree/ThrowVokException.h>

#include "Objects/Constraints/AimVocabulary.h"

using namespace VokFields;

namespace {

using Parameterisation = VokMotionPath::Parameterisation;

constexpr VokEnumText<Parameterisation, 2> kParameterisations{{"length", "curve"}};

}  // namespace

std::span<const VokAttributeRow<VokMotionPath>> VokMotionPath::AttributeRows() {
    static constexpr VokAttributeRow<VokMotionPath> rows[] = {
        // An unknown text is kept as such and refused when it is written.
        {.read =
             [](VokMotionPath& path, const VokAttributes& attributes) {
                 if (const char* text = attributes.Find("parameterisation"))
                     path.parameterisation =
                         kParameterisations.Find(text).value_or(Parameterisation::Unknown);
             },
         .write =
             [](const VokMotionPath& path, VokAttributes& attributes) {
                 const auto text = kParameterisations.TextOf(path.parameterisation);
                 if (!text) ThrowVokException(QelTools::Common::kInternalErrorText, &path);
                 attributes.SetString("parameterisation", *text);
             }},
        // Absent reads as false, although a new motion path orients.
        {.read =
             [](VokMotionPath& path, const VokAttributes& attributes) {
                 path.constrainOrientation = attributes.GetBool("constrainOrientation", false);
             },
         .write =
             [](const VokMotionPath& path, VokAttributes& attributes) {
                 attributes.SetBool("constrainOrientation", path.constrainOrientation);
             }},
        {.read =
             [](VokMotionPath& path, const VokAttributes& attributes) {
                 if (!attributes.Has("curvePath")) return;
                 path.curve.emplace(&path);
                 ReadLink(*path.curve, attributes, "curvePath");
             },
         .write =
             [](const VokMotionPath& path, VokAttributes& attributes) {
                 if (!path.curve) ThrowVokException("No curve specified for motion path.", &path);
                 WriteLink(*path.curve, attributes, "curvePath");
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokMotionPath>> VokMotionPath::ChildElements() {
    static constexpr auto rows = AimVocabulary::ChildElements<VokMotionPath>();
    return rows;
}
