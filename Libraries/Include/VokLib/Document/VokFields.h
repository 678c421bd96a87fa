#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Base/VokVector.h>
#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <string>
#include <string_view>

/// What the rows of a vocabulary are made of: readers and writers for a field of a type. The
/// templates at the end name the field by a member pointer, so that a row reads
///
///     {.name = "aim", .data = ReadPosition<&VokAimConstraint::aim>, .write =
///     WritePosition<&VokAimConstraint::aim>}
namespace VokFields {

// Attributes.

/// The text of a required attribute; without it throws a VokException "Missing attribute in parse"
/// with `object`'s path.
std::string GetRequired(const VokAttributes& attributes, std::string_view name,
                        const VokObj* object);
/// An attribute that counts something: absent means `fallback`, less than 0 means 0, more than an
/// int holds means the most that it holds.
unsigned GetCount(const VokAttributes& attributes, std::string_view name, unsigned fallback);
/// Makes `link` refer to a path. An empty path is no target and makes no link.
void SetLinkPath(VokObjLinkHandle& link, std::string_view path);
/// The same with the path in an attribute; an absent one counts as empty.
void ReadLink(VokObjLinkHandle& link, const VokAttributes& attributes, std::string_view name);
/// Sets the attribute to the path of the link's object as it is now; empty where there is none.
void WriteLink(const VokObjLinkHandle& link, VokAttributes& attributes, std::string_view name);
/// Sets the attribute unless the text is empty.
void SetUnlessEmpty(VokAttributes& attributes, std::string_view name, std::string_view text);
/// Reads the order of a rotOrd attribute: absent means xyz, an unknown text leaves the order as it
/// was.
void ReadRotationOrder(EulerRotation& rotation, const VokAttributes& attributes);
/// The same for types that refuse an unknown order: "Unknown rotation order \"...\"." with
/// `object`'s path.
void ReadRotationOrderStrictly(EulerRotation& rotation, const VokAttributes& attributes,
                               const VokObj* object);

// File names of an object itself; an empty one is no file.

void AddFile(VokDependencies& files, const std::string& name);
void UpdateFile(std::string& name, VokUpdateDependencies& update, const VokObj* object);

// One element around its text.

void WriteFloatElement(VokFile& file, std::string_view name, float value);
void WriteVector3Element(VokFile& file, std::string_view name, float x, float y, float z);
inline void WriteVector3Element(VokFile& file, std::string_view name, const VokVector3& v) {
    WriteVector3Element(file, name, v.x, v.y, v.z);
}
/// The fourth element takes no part.
inline void WriteVector3Element(VokFile& file, std::string_view name, const VokVector4& v) {
    WriteVector3Element(file, name, v.x, v.y, v.z);
}
/// Writes the angles with the attribute rotOrd.
void WriteRotationElement(VokFile& file, std::string_view name, const EulerRotation& rotation);
void WriteTextElement(VokFile& file, std::string_view name, std::string_view text);

// Rows of fields.

template <auto Field, class Type>
void ReadFloat(Type& object, VokParse& parse) {
    object.*Field = parse.ReadFloat();
}
template <auto Field, class Type>
void WriteFloat(const Type& object, VokFile& file, std::string_view name) {
    WriteFloatElement(file, name, object.*Field);
}

/// A VokVector4 that holds a vector of three.
template <auto Field, class Type>
void ReadPosition(Type& object, VokParse& parse) {
    object.*Field = parse.ReadVector3As4();
}
template <auto Field, class Type>
void ReadVector3(Type& object, VokParse& parse) {
    object.*Field = parse.ReadVector3();
}
/// For a VokVector3 and for a VokVector4 that holds a vector of three.
template <auto Field, class Type>
void WriteVector3(const Type& object, VokFile& file, std::string_view name) {
    WriteVector3Element(file, name, object.*Field);
}
/// The same, left out when every component is exactly that of `Default`.
template <auto Field, const VokVector3& Default, class Type>
void WriteVector3UnlessDefault(const Type& object, VokFile& file, std::string_view name) {
    const auto& v = object.*Field;
    if (v.x != Default.x || v.y != Default.y || v.z != Default.z)
        WriteVector3Element(file, name, v);
}
inline constexpr VokVector3 kZeros{0, 0, 0};
inline constexpr VokVector3 kOnes{1, 1, 1};

template <auto Field, class Type>
void ReadOrder(Type& object, VokParse& parse) {
    ReadRotationOrder(object.*Field, parse.GetAttributes());
}
template <auto Field, class Type>
void ReadOrderStrictly(Type& object, VokParse& parse) {
    ReadRotationOrderStrictly(object.*Field, parse.GetAttributes(), &object);
}
template <auto Field, class Type>
void ReadAngles(Type& object, VokParse& parse) {
    parse.ReadAngles(object.*Field);
}
template <auto Field, class Type>
void WriteRotation(const Type& object, VokFile& file, std::string_view name) {
    WriteRotationElement(file, name, object.*Field);
}

}  // namespace VokFields
