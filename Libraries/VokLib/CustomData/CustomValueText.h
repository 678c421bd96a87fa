#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokFile.h>
#include <VokLib/Text/VokTextReader.h>

#include <string>
#include <string_view>
#include <vector>

/// How a value of each type stands in a document: as element text and, for numbers, as an
/// attribute.
namespace CustomValueText {

inline void Read(VokTextReader& text, bool& value) {
    value = text.ReadBool();
}
inline void Read(VokTextReader& text, int& value) {
    value = text.ReadInt();
}
inline void Read(VokTextReader& text, float& value) {
    value = text.ReadFloat();
}
inline void Read(VokTextReader& text, VokVector2& value) {
    value = text.ReadVector2();
}
inline void Read(VokTextReader& text, VokVector3& value) {
    value = text.ReadVector3();
}
inline void Read(VokTextReader& text, VokVector4& value) {
    value = text.ReadVector4();
}
inline void Read(VokTextReader& text, std::string& value) {
    value = text.ReadString();
}
/// As many as there are in `value` already.
inline void Read(VokTextReader& text, std::vector<float>& value) {
    text.ReadFloats(value, static_cast<long long>(value.size()));
}

inline void Write(VokFile& file, bool value) {
    file.WriteBool(value);
}
inline void Write(VokFile& file, int value) {
    file.WriteInt(value);
}
inline void Write(VokFile& file, float value) {
    file.WriteFloat(value);
}
inline void Write(VokFile& file, const VokVector2& value) {
    file.WriteVector2(value);
}
inline void Write(VokFile& file, const VokVector3& value) {
    file.WriteVector3(value);
}
inline void Write(VokFile& file, const VokVector4& value) {
    file.WriteVector4(value);
}
inline void Write(VokFile& file, const std::string& value) {
    file.WriteText(value);
}
inline void Write(VokFile& file, const std::vector<float>& value) {
    file.WriteFloatArray(value);
}

/// What a value element has behind its index: a float array its length.
template <class T>
void SetSize(VokAttributes&, const T&) {}
inline void SetSize(VokAttributes& attributes, const std::vector<float>& value) {
    attributes.SetUnsigned("count", static_cast<unsigned>(value.size()));
}

inline bool Get(const VokAttributes& a, std::string_view name, bool) {
    return a.GetBool(name, false);
}
inline int Get(const VokAttributes& a, std::string_view name, int) {
    return a.GetInt(name, 0);
}
inline float Get(const VokAttributes& a, std::string_view name, float) {
    return a.GetFloat(name, 0);
}
inline VokVector2 Get(const VokAttributes& a, std::string_view name, const VokVector2& zero) {
    return a.GetVector2(name, zero);
}
inline VokVector3 Get(const VokAttributes& a, std::string_view name, const VokVector3& zero) {
    return a.GetVector3(name, zero);
}
inline VokVector4 Get(const VokAttributes& a, std::string_view name, const VokVector4& zero) {
    return a.GetVector4(name, zero);
}
/// The value of attribute `name`; zero when it is absent.
template <class T>
T Get(const VokAttributes& attributes, std::string_view name) {
    return Get(attributes, name, T{});
}

inline void Set(VokAttributes& a, std::string_view name, bool value) {
    a.SetBool(name, value);
}
inline void Set(VokAttributes& a, std::string_view name, int value) {
    a.SetInt(name, value);
}
inline void Set(VokAttributes& a, std::string_view name, float value) {
    a.SetFloat(name, value);
}
inline void Set(VokAttributes& a, std::string_view name, const VokVector2& value) {
    a.SetVector2(name, value);
}
inline void Set(VokAttributes& a, std::string_view name, const VokVector3& value) {
    a.SetVector3(name, value);
}
inline void Set(VokAttributes& a, std::string_view name, const VokVector4& value) {
    a.SetVector4(name, value);
}

}  // namespace CustomValueText
