#include <VokLib/Objects/Sets/VokObjSet.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <utility>

using namespace VokFields;

std::span<const VokAttributeRow<VokObjSet>> VokObjSet::AttributeRows() {
    static constexpr VokAttributeRow<VokObjSet> rows[] = {
        {.read = [](VokObjSet& set,
                    const VokAttributes& attributes) { set.type = attributes.GetString("type"); },
         .write = [](const VokObjSet& set,
                     VokAttributes& attributes) { attributes.SetString("type", set.type); }},
    };
    return rows;
}

std::span<const VokChildElement<VokObjSet>> VokObjSet::ChildElements() {
    static constexpr VokChildElement<VokObjSet> rows[] = {
        {.name = "member",
         .start =
             [](VokObjSet& set, VokParse& parse) {
                 Member& member = set.AddMember();
                 if (const char* path = parse.GetAttributes().Find("path");
                     path != nullptr && *path != 0)
                     member.object.SetTargetPath(path, OnMemberDeleted, &member);
                 member.membership = parse.GetAttributes().GetString("membership");
             },
         .write =
             [](const VokObjSet& set, VokFile& file, std::string_view name) {
                 for (const Member& member : set.members) {
                     VokAttributes attributes;
                     WriteLink(member.object, attributes, "path");
                     attributes.SetString("membership", member.membership);
                     file.EmptyTag(name, attributes);
                 }
             }},
    };
    return rows;
}

const VokObjSet::Member& VokObjSet::GetMember(std::size_t index) const {
    if (index >= members.size()) ThrowVokException("objset member index out of range", this);
    return members[index];
}

VokObjSet::Member& VokObjSet::AddMember() {
    return members.emplace_back(this, members.size());
}

void VokObjSet::OnMemberDeleted(VokObjLinkStore&, VokObjLink& link, void* user) {
    auto* set = static_cast<VokObjSet*>(link.owner);
    auto* member = static_cast<Member*>(user);
    if (member->index >= set->members.size() || &set->members[member->index] != member)
        ThrowVokException("objset deletion callback from unknown member", set);
    // Leaves the member's handle invalid; the link ends with its new holder.
    const VokObjLinkHandle dropped = std::move(member->object);
}
