#pragma once

#include <VokLib/VokElement.h>
#include <VokLib/VokObjLink.h>

#include <string>
#include <vector>

/// A named set of objects. A member whose object dies leaves the set's handle invalid.
class VokObjSet : public VokElement<VokObjSet, VokObj> {
  public:
    static constexpr std::string_view kElementName = "objset";
    static std::span<const VokChildElement<VokObjSet>> ChildElements();
    static std::span<const VokAttributeRow<VokObjSet>> AttributeRows();

    struct Member {
        VokObjLinkHandle object;
        std::string membership;
    };

    std::size_t GetMemberCount() const { return members.size(); }
    /// Throws "objset member index out of range".
    const Member& GetMember(std::size_t index) const;
    Member& AddMember();

    std::string type;

  private:
    std::vector<Member> members;
};
