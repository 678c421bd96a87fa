#include <VokLib/Objects/Constraints/VokParentConstraint.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

constexpr const char* kOutOfRange = "Out of range access of parent constraint target offsets.";

/// The offset whose element is open.
ParentTargetOffset& LastOffset(VokParentConstraint& constraint) {
    return constraint.GetTargetOffset(constraint.GetTargetOffsetCount() - 1);
}

void WriteOffset(const ParentTargetOffset& offset, VokFile& file, std::string_view name) {
    file.OpenTag(name);
    WriteVector3Element(file, "translation", offset.translation);
    WriteRotationElement(file, "rotEul", offset.rotation);
    file.CloseTag(name);
}

}  // namespace

std::span<const VokChildElement<VokParentConstraint>> VokParentConstraint::ChildElements() {
    static constexpr VokChildElement<VokParentConstraint> rows[] = {
        {.name = "offset",
         .start = [](VokParentConstraint& constraint,
                     VokParse&) { constraint.offsets.emplace_back(); },
         .write =
             [](const VokParentConstraint& constraint, VokFile& file, std::string_view name) {
                 for (std::size_t i = 0; i < constraint.GetTargetCount(); ++i)
                     WriteOffset(constraint.GetTargetOffset(i), file, name);
             }},
        {.name = "translation",
         .data = [](VokParentConstraint& constraint,
                    VokParse& parse) { LastOffset(constraint).translation = parse.ReadVector3(); },
         .within = "offset"},
        {.name = "rotEul",
         .start =
             [](VokParentConstraint& constraint, VokParse& parse) {
                 ReadRotationOrderStrictly(LastOffset(constraint).rotation, parse.GetAttributes(),
                                           &constraint);
             },
         .data = [](VokParentConstraint& constraint,
                    VokParse& parse) { parse.ReadAngles(LastOffset(constraint).rotation); },
         .within = "offset"},
    };
    return rows;
}

void VokParentConstraint::ParseAttributes(VokParse& parse) {
    VokElement::ParseAttributes(parse);
    offsetsFollowTargets = false;
}

void VokParentConstraint::ParseEndTag(VokParse& parse) {
    // Only the end of an element of this name inside foreign content brings the offsets back under
    // the targets; the object's own end comes at depth 0 and leaves them as the document gave them.
    if (ParseDepth() > 0 && parse.GetTag() == kElementName) offsetsFollowTargets = true;
    VokElement::ParseEndTag(parse);
}

void VokParentConstraint::SetTargetCount(std::size_t count) {
    VokElement::SetTargetCount(count);
    SyncOffsets();
}

void VokParentConstraint::AddTarget() {
    VokElement::AddTarget();
    SyncOffsets();
}

void VokParentConstraint::RemoveTarget(std::size_t index) {
    VokElement::RemoveTarget(index);
    if (offsetsFollowTargets) offsets.erase(offsets.begin() + static_cast<std::ptrdiff_t>(index));
}

const ParentTargetOffset& VokParentConstraint::GetTargetOffset(std::size_t index) const {
    if (index >= offsets.size()) ThrowVokException(kOutOfRange, this);
    return offsets[index];
}

ParentTargetOffset& VokParentConstraint::GetTargetOffset(std::size_t index) {
    if (index >= offsets.size()) ThrowVokException(kOutOfRange, this);
    return offsets[index];
}

void VokParentConstraint::SyncOffsets() {
    if (offsetsFollowTargets) offsets.resize(GetTargetCount());
}
