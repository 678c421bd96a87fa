#pragma once

#include <cstddef>
#include <memory>
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

    /// Called with each element that the object itself does not know. True when custom data takes
    /// it.
    virtual bool ParseStartTag(VokElementReader& parse);
    virtual bool ParseData(VokElementReader& parse);
    virtual bool ParseEndTag(VokElementReader& parse);
    /// Nothing when there are no attributes.
    virtual bool Write(VokFile& file) const;

    std::size_t GetCount() const { return attributes.size(); }
    /// Throws "Custom data index out of range".
    VokCustomAttribute& GetAttribute(std::size_t index) const;
    VokCustomAttribute& AddAttribute(std::unique_ptr<VokCustomAttribute> attribute);
    void Clear();

  private:
    VokCustomAttribute& Last() const;

    std::vector<std::unique_ptr<VokCustomAttribute>> attributes;
    bool inAttribute = false;
};
