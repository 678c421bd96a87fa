#pragma once

#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/Links/VokObjLink.h>

#include <map>

/// The type objlink: a link to an object, or one for each value of an array. The links have no
/// owner and resolve with all others at the end of a load. An attribute that is no array holds from
/// the start one invalid handle at index 0.
class VokCustomAttributeObjLink : public VokCustomAttribute {
  public:
    VokCustomAttributeObjLink(std::string attributeName, std::string_view typeKeyword, bool array);
    ~VokCustomAttributeObjLink() override;

    /// The copy's handles have the same targets, or the same paths where there are none yet.
    std::unique_ptr<VokCustomAttribute> Clone() const override;
    void WriteContents(VokFile& file) const override;
    bool ParseStartTag(VokElementReader& parse) override;
    /// A second path for one index of an array fails as any handle does that holds an unresolved
    /// link.
    bool ParseData(VokElementReader& parse) override;
    bool ParseEndTag(VokElementReader& parse) override;
    void GetIndices(std::vector<int>& indices) const override;
    bool RefersToOthers() const override { return true; }

    // These throw as those of VokCustomAttributeMap do.

    const VokObjLinkHandle& GetValue() const;
    void SetValue(VokObjLinkHandle handle);
    const VokObjLinkHandle& GetValueAt(int index) const;
    void SetValueAt(int index, VokObjLinkHandle handle);

  private:
    VokCustomAttributeObjLink(const VokCustomAttributeObjLink& other);
    const VokObjLinkHandle& Get(int index) const;

    std::map<int, VokObjLinkHandle> handles;
    int currentIndex = 0;
    bool inValue = false;
};
