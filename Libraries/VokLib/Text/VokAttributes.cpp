#include <VokLib/Text/VokAttributes.h>

#include <QelTools/Exception.h>

#include <charconv>
#include <cstring>
#include <span>
#include <utility>

#include <VokLib/Text/VokNumberText.h>

namespace {

using QelTools::Common::ThrowException;

/// A float's share of the text of a vector, the blank or the end behind it included.
constexpr std::size_t kFloatSpace = 32;

const char* Duplicate(std::string_view text) {
    char* const copy = new char[text.size() + 1];
    text.copy(copy, text.size());
    copy[text.size()] = '\0';
    return copy;
}

bool IsName(const char* candidate, std::string_view name) {
    std::size_t i = 0;
    while (i < name.size() && candidate[i] == name[i] && name[i] != '\0') ++i;
    return i == name.size() && candidate[i] == '\0';
}

/// Exactly `N` floats; any other number of tokens is no vector.
template <std::size_t N>
bool ReadFloats(const char* text, float (&values)[N]) {
    const char* begins[N + 1];
    const char* ends[N + 1];
    if (text == nullptr || VokNumberText::CutTokens(text, N + 1, begins, ends) != N) return false;
    for (std::size_t i = 0; i < N; ++i) values[i] = VokNumberText::ReadFloat(begins[i], ends[i]);
    return true;
}

template <std::size_t N>
void SetFloats(VokAttributes& attributes, std::string_view name, const float (&values)[N]) {
    char text[N * kFloatSpace];
    std::size_t length = 0;
    for (const float value : values) {
        if (length != 0) text[length++] = ' ';
        length += VokNumberText::FormatFloatTo(value, text + length);
    }
    if (length >= N * kFloatSpace - 1) ThrowException("Buffer overflow");
    attributes.Set(name, {text, length});
}

template <class Integer>
void SetInteger(VokAttributes& attributes, std::string_view name, Integer value) {
    char text[16];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    attributes.Set(name, {text, static_cast<std::size_t>(end - text)});
}

}  // namespace

VokAttributes::~VokAttributes() {
    Clear();
}

VokAttributes::VokAttributes(const VokAttributes& other) {
    entries.reserve(other.entries.size());
    for (const Entry& entry : other.entries) Add(entry.name, entry.value);
}

VokAttributes& VokAttributes::operator=(const VokAttributes& other) {
    if (this != &other) {
        VokAttributes copy(other);
        entries.swap(copy.entries);
        std::swap(ownsTexts, copy.ownsTexts);
    }
    return *this;
}

const char* VokAttributes::GetName(std::size_t index) const {
    return index < entries.size() ? entries[index].name : nullptr;
}

const char* VokAttributes::GetValue(std::size_t index) const {
    return index < entries.size() ? entries[index].value : nullptr;
}

const char* VokAttributes::Find(std::string_view name) const {
    for (const Entry& entry : entries)
        if (IsName(entry.name, name)) return entry.value;
    return nullptr;
}

bool VokAttributes::GetBool(std::string_view name, bool fallback) const {
    const char* const value = Find(name);
    if (value == nullptr) return fallback;
    return std::strcmp(value, "true") == 0 || std::strcmp(value, "1") == 0;
}

int VokAttributes::GetInt(std::string_view name, int fallback) const {
    const char* const value = Find(name);
    return value == nullptr ? fallback : VokNumberText::ScanInt(value);
}

unsigned VokAttributes::GetUnsigned(std::string_view name, unsigned fallback) const {
    const char* const value = Find(name);
    return value == nullptr ? fallback : static_cast<unsigned>(VokNumberText::ScanInt(value));
}

float VokAttributes::GetFloat(std::string_view name, float fallback) const {
    const char* const value = Find(name);
    return value == nullptr ? fallback : VokNumberText::ScanFloat(value);
}

VokVector2 VokAttributes::GetVector2(std::string_view name, const VokVector2& fallback) const {
    float v[2];
    return ReadFloats(Find(name), v) ? VokVector2{v[0], v[1]} : fallback;
}

VokVector3 VokAttributes::GetVector3(std::string_view name, const VokVector3& fallback) const {
    float v[3];
    return ReadFloats(Find(name), v) ? VokVector3{v[0], v[1], v[2]} : fallback;
}

VokVector4 VokAttributes::GetVector4(std::string_view name, const VokVector4& fallback) const {
    float v[4];
    return ReadFloats(Find(name), v) ? VokVector4{v[0], v[1], v[2], v[3]} : fallback;
}

std::string VokAttributes::GetString(std::string_view name, std::string_view fallback) const {
    const char* const value = Find(name);
    return value == nullptr ? std::string(fallback) : std::string(value);
}

std::string VokAttributes::GetRequired(std::string_view name) const {
    const char* const value = Find(name);
    if (value == nullptr) ThrowException("Missing attribute in parse");
    return value;
}

void VokAttributes::Free(Entry& entry) {
    if (entry.ownsName) delete[] entry.name;
    if (entry.ownsValue) delete[] entry.value;
}

void VokAttributes::Clear() {
    if (ownsTexts)
        for (Entry& entry : entries) Free(entry);
    ownsTexts = false;
    entries.clear();
}

void VokAttributes::AddView(const char* name, const char* value) {
    entries.push_back({name, value, false, false});
}

void VokAttributes::Add(std::string_view name, std::string_view value) {
    ownsTexts = true;
    // In the bag before it owns anything, so that nothing is lost when memory runs out.
    entries.push_back({"", "", false, false});
    Entry& entry = entries.back();
    try {
        entry.name = Duplicate(name);
        entry.ownsName = true;
        entry.value = Duplicate(value);
        entry.ownsValue = true;
    } catch (...) {
        Free(entry);
        entries.pop_back();
        throw;
    }
}

void VokAttributes::Set(std::string_view name, std::string_view value) {
    for (Entry& entry : entries) {
        if (!IsName(entry.name, name)) continue;
        const char* const copy = Duplicate(value);
        ownsTexts = true;
        if (entry.ownsValue) delete[] entry.value;
        entry.value = copy;
        entry.ownsValue = true;
        return;
    }
    Add(name, value);
}

void VokAttributes::SetBool(std::string_view name, bool value) {
    Set(name, value ? "true" : "false");
}

void VokAttributes::SetInt(std::string_view name, int value) {
    SetInteger(*this, name, value);
}

void VokAttributes::SetUnsigned(std::string_view name, unsigned value) {
    SetInteger(*this, name, value);
}

void VokAttributes::SetFloat(std::string_view name, float value) {
    SetFloats(*this, name, {value});
}

void VokAttributes::SetVector2(std::string_view name, const VokVector2& value) {
    SetFloats(*this, name, {value.x, value.y});
}

void VokAttributes::SetVector3(std::string_view name, const VokVector3& value) {
    SetFloats(*this, name, {value.x, value.y, value.z});
}

void VokAttributes::SetVector4(std::string_view name, const VokVector4& value) {
    SetFloats(*this, name, {value.x, value.y, value.z, value.w});
}
