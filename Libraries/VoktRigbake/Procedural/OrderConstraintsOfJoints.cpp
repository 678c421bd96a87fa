#include "Procedural/ConstraintKind.h"
#include "Procedural/FindDependencies.h"

#include <QelTools/Exception.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>

#include <algorithm>
#include <string>

using QelTools::Common::ThrowException;

namespace {

/// What moves one joint, in document order.
struct JointMovers {
    const VokJoint* joint = nullptr;
    std::vector<const VokObj*> constraints;
    std::size_t channelCount = 0;
};

void AddMover(const VokObj* object, JointMovers& movers) {
    if (FindConstraintKind(*object).has_value())
        movers.constraints.push_back(object);
    else if (object->IsA(VokAnimChannel::TypeId()))
        ++movers.channelCount;
}

/// The joints that something moves, in document order.
std::vector<JointMovers> FindMovers(const Dependencies& dependencies) {
    std::vector<Dependency> entries = dependencies.GetSorted();
    std::erase_if(entries, [](const Dependency& entry) {
        return ExactCast<VokJoint>(entry.after) == nullptr || entry.before == entry.after;
    });
    std::stable_sort(entries.begin(), entries.end(), [](const Dependency& a, const Dependency& b) {
        return a.afterNumber < b.afterNumber;
    });
    std::vector<JointMovers> joints;
    for (const Dependency& entry : entries) {
        if (joints.empty() || joints.back().joint != entry.after)
            joints.push_back({ExactCast<VokJoint>(entry.after), {}, 0});
        AddMover(entry.before, joints.back());
    }
    return joints;
}

bool Aims(const VokObj* constraint) {
    return constraint->IsA(VokAimConstraint::TypeId());
}

void OrderConstraints(const JointMovers& movers, Dependencies& dependencies) {
    const std::vector<const VokObj*>& constraints = movers.constraints;
    const std::string joint = "joint " + movers.joint->GetName() + " is affected by ";
    if (!constraints.empty() && movers.channelCount != 0)
        ThrowException(joint + std::to_string(constraints.size()) + " constraints and " +
                       std::to_string(movers.channelCount) + " driven key clips");
    // With three constraints or more none comes before another.
    if (constraints.size() != 2) return;
    if (Aims(constraints[1]))
        dependencies.Add(constraints[0], constraints[1]);
    else if (Aims(constraints[0]))
        dependencies.Add(constraints[1], constraints[0]);
    else
        ThrowException(joint + "2 constraints");
}

}  // namespace

void OrderConstraintsOfJoints(Dependencies& dependencies) {
    for (const JointMovers& movers : FindMovers(dependencies))
        OrderConstraints(movers, dependencies);
}
