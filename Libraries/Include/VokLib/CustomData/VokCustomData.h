#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

class VokCustomAttribute;
class VokFile;
class VokElementReader;

/// The user's own attributes of an object, in document order. Owns them.
class VokCustomData {
  public:
    VokCustomData();
    virtual ~VokCustomData();
    /// A deep copy.
    VokCustomData(const VokCustomData& other);
    VokCustomData& operator=(const VokCustomData& other);

    /// True for the two elements with which custom data can begin.
    static bool IsBegin(std::string_view tag);
    /// Called with each element that the object itself does not know. True when custom data takes
    /// it.
    virtual bool ParseStartTag(VokElementReader& parse);
    virtual bool ParseData(VokElementReader& parse);
    virtual bool ParseEndTag(VokElementReader& parse);
    /// Nothing when there are no attributes.
    virtual bool Write(VokFile& file) const;

    std::size_t GetCount() const { return attributes.size(); }
    /// True when the reader left attributes out: it keeps what refers to objects and files alone.
    bool HasLeftOut() const { return leftOut; }
    /// True when there are no attributes and none is being read.
    bool IsIdle() const { return attributes.empty() && !inAttribute; }
    /// Throws "Custom data index out of range".
    VokCustomAttribute& GetAttribute(std::size_t index) const;
    VokCustomAttribute& AddAttribute(std::unique_ptr<VokCustomAttribute> attribute);
    void Clear();

  private:
    VokCustomAttribute& Last() const;

    std::vector<std::unique_ptr<VokCustomAttribute>> attributes;
    bool inAttribute = false;
    bool leftOut = false;
};
