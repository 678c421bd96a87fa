#pragma once

#include <VokLib/VokElement.h>
#include <VokLib/VokObjLink.h>

#include <string>
#include <utility>

/// What the rows of a vocabulary are made of: readers and writers for a field of a type, named by a member pointer.
namespace VokFields {

/// Reads the order of a rotOrd attribute: absent means xyz, an unknown text leaves the order as it was.
void ReadRotationOrder(EulerRotation& rotation, const VokAttributes& attributes);
/// The same for types that refuse an unknown order: "Unknown rotation order \"...\"." with `object`'s path.
void ReadRotationOrderStrictly(EulerRotation& rotation, const VokAttributes& attributes, const VokObj* object);

/// One element around its text.
void WriteFloatElement(VokFile& file, std::string_view name, float value);
void WriteVector3Element(VokFile& file, std::string_view name, float x, float y, float z);
/// Writes the angles with the attribute rotOrd.
void WriteRotationElement(VokFile& file, std::string_view name, const EulerRotation& rotation);
void WriteTextElement(VokFile& file, std::string_view name, std::string_view text);

}  // namespace VokFields
