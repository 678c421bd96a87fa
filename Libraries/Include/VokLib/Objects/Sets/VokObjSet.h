#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstddef>
#include <deque>
#include <string>

/// A named set of objects. A member whose object dies stays in the set with an invalid handle.
class VokObjSet : public VokElement<VokObjSet, VokObj> {
  public:
    static constexpr std::string_view kElementName = "objset";
    static std::span<const VokChildElement<VokObjSet>> ChildElements();
    static std::span<const VokAttributeRow<VokObjSet>> AttributeRows();

    struct Member {
        Member(VokObjSet* set, std::size_t place) : object(set), index(place) {}
        VokObjLinkHandle object;
        std::string membership;
        const std::size_t index;  ///< the member's own place in the set
    };

    std::size_t GetMemberCount() const { return members.size(); }
    /// Throws "objset member index out of range".
    const Member& GetMember(std::size_t index) const;
    /// Appends a member without an object; the reference stays good while the set lives.
    Member& AddMember();

    /// The notice that a member's object is gone: the callback of the links that a document gives.
    /// `user` is the member, the link's owner the set. Throws "objset deletion callback from
    /// unknown member".
    static void OnMemberDeleted(VokObjLinkStore& store, VokObjLink& link, void* user);

    std::string type;

  private:
    std::deque<Member> members;
};
