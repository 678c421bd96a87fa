#include <VokLib/Objects/Constraints/VokConstraint.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

std::span<const VokAttributeRow<VokConstraint>> VokConstraint::AttributeRows() {
    static constexpr VokAttributeRow<VokConstraint> rows[] = {
        {.read =
             [](VokConstraint& constraint, const VokAttributes& attributes) {
                 if (!attributes.Has("constrain"))
                     ThrowVokException("Missing constrained attribute.", &constraint);
                 ReadLink(constraint.constrained, attributes, "constrain");
             },
         .write =
             [](const VokConstraint& constraint, VokAttributes& attributes) {
                 WriteLink(constraint.constrained, attributes, "constrain");
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokConstraint>> VokConstraint::ChildElements() {
    static constexpr VokChildElement<VokConstraint> rows[] = {
        {.name = "target",
         .start =
             [](VokConstraint& constraint, VokParse& parse) {
                 constraint.AddTarget();
                 ConstraintTarget& target = constraint.targets.back();
                 ReadLink(target.object, parse.GetAttributes(), "name");
                 target.weight = parse.GetAttributes().GetFloat("weight", 0);
             },
         .write =
             [](const VokConstraint& constraint, VokFile& file, std::string_view name) {
                 for (const ConstraintTarget& target : constraint.targets) {
                     VokAttributes attributes;
                     WriteLink(target.object, attributes, "name");
                     attributes.SetFloat("weight", target.weight);
                     file.EmptyTag(name, attributes);
                 }
             }},
    };
    return rows;
}

void VokConstraint::SetTargetCount(std::size_t count) {
    while (targets.size() > count) targets.pop_back();
    while (targets.size() < count) targets.emplace_back(this);
}

void VokConstraint::AddTarget() {
    targets.emplace_back(this);
}

void VokConstraint::RemoveTarget(std::size_t index) {
    if (index >= targets.size())
        ThrowVokException("Out of range removal of constraint target.", this);
    targets.erase(targets.begin() + static_cast<std::ptrdiff_t>(index));
}
