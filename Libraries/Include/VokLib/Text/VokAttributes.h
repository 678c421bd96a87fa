#pragma once

#include <VokLib/Base/VokVector.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The attributes of one element, for reading and for writing. An entry of the reader points
/// straight at the parser's strings, valid until its callback returns, and owns nothing; entries
/// made by Add and Set own copies. Texts are NUL-terminated, in the document's single-byte form.
class VokAttributes {
  public:
    VokAttributes() = default;
    ~VokAttributes();
    /// A copy owns all its texts.
    VokAttributes(const VokAttributes& other);
    VokAttributes& operator=(const VokAttributes& other);

    std::size_t GetCount() const { return entries.size(); }
    /// Null for an index out of range.
    const char* GetName(std::size_t index) const;
    const char* GetValue(std::size_t index) const;
    /// The value of the first entry of exactly this name, or null.
    const char* Find(std::string_view name) const;
    bool Has(std::string_view name) const { return Find(name) != nullptr; }

    // Typed reads; an absent attribute gives the default.

    /// "true" and "1" are true, anything else is false.
    bool GetBool(std::string_view name, bool fallback) const;
    /// Read with "%d"; what cannot be read is 0.
    int GetInt(std::string_view name, int fallback) const;
    unsigned GetUnsigned(std::string_view name, unsigned fallback) const;
    /// Read with "%f" in no locale; what cannot be read is 0.
    float GetFloat(std::string_view name, float fallback) const;
    /// More or fewer tokens than elements give the default.
    VokVector2 GetVector2(std::string_view name, const VokVector2& fallback) const;
    VokVector3 GetVector3(std::string_view name, const VokVector3& fallback) const;
    VokVector4 GetVector4(std::string_view name, const VokVector4& fallback) const;
    std::string GetString(std::string_view name, std::string_view fallback = {}) const;
    /// The text of a required attribute; without it throws a QelTools Exception "Missing attribute
    /// in parse".
    std::string GetRequired(std::string_view name) const;

    // Building.

    /// Empties without giving memory back: the reader uses one bag for every element.
    void Clear();
    /// Points at texts that the caller keeps alive; no copy, no search.
    void AddView(const char* name, const char* value);
    /// Appends an owned entry, no search.
    void Add(std::string_view name, std::string_view value);
    /// Replaces the value of the first entry of this name, else adds.
    void Set(std::string_view name, std::string_view value);
    void SetString(std::string_view name, std::string_view value) { Set(name, value); }
    void SetBool(std::string_view name, bool value);
    void SetInt(std::string_view name, int value);
    void SetUnsigned(std::string_view name, unsigned value);
    void SetFloat(std::string_view name, float value);
    void SetVector2(std::string_view name, const VokVector2& value);
    void SetVector3(std::string_view name, const VokVector3& value);
    void SetVector4(std::string_view name, const VokVector4& value);

  private:
    struct Entry {
        const char* name = nullptr;
        const char* value = nullptr;
        bool ownsName = false;
        bool ownsValue = false;
    };
    static void Free(Entry& entry);

    std::vector<Entry> entries;
    bool ownsTexts = false;  // some of them
};
