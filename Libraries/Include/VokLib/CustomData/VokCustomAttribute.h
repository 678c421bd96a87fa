#pragma once

#include <VokLib/Base/VokTypeId.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VokAttributes;
class VokFile;
class VokElementReader;

/// One user-defined attribute with its typed value, or values by index when it is an array.
class VokCustomAttribute {
  public:
    VokCustomAttribute(std::string attributeName, std::string_view typeKeyword, bool array);
    virtual ~VokCustomAttribute();

    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

    virtual std::unique_ptr<VokCustomAttribute> Clone() const = 0;
    /// The whole element.
    virtual void Write(VokFile& file) const;
    virtual void WriteContents(VokFile& file) const;
    virtual bool ParseAttributes(const VokAttributes& attributes, VokElementReader& parse);
    virtual bool ParseStartTag(VokElementReader& parse);
    virtual bool ParseData(VokElementReader& parse);
    virtual bool ParseEndTag(VokElementReader& parse);
    /// Appends the indices that hold a value, in ascending order.
    virtual void GetIndices(std::vector<int>& indices) const = 0;
    virtual void WriteAttributes(VokAttributes& attributes) const;
    /// True when the values lead to objects or files: these a load follows, so that they are kept
    /// whatever its user wants.
    virtual bool RefersToOthers() const { return false; }

    const std::string& GetName() const { return name; }
    /// The type keyword of the document, such as "float".
    const std::string& GetType() const { return type; }
    bool IsArray() const { return isArray; }

  protected:
    VokCustomAttribute(const VokCustomAttribute&) = default;

  private:
    std::string name;
    std::string type;
    bool isArray = false;
};

/// Type keywords and what makes their attributes, by the keyword's MakeTypeId: one registry for the
/// process.
using VokCustomAttributeFactory = std::unique_ptr<VokCustomAttribute> (*)(std::string name,
                                                                          std::string_view type,
                                                                          bool isArray);
/// A hash already present throws a VokException "Duplicate custom attribute factory".
void RegisterCustomAttributeFactory(VokTypeId hash, VokCustomAttributeFactory factory);
/// Throws "Attempt to deregister missing custom attribute factory." for a missing one.
void UnregisterCustomAttributeFactory(VokTypeId hash);
/// Null for an unknown hash.
VokCustomAttributeFactory FindCustomAttributeFactory(VokTypeId hash);
bool HasCustomAttributeFactories();
