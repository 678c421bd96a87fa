#include "EvaluationSteps.h"

#include "Dump.h"

using namespace Description;

namespace {

std::string JointKey(const Skeleton& skeleton, int joint) {
    if (joint < 0) return "none";
    const auto& hash = skeleton.joints[static_cast<std::size_t>(joint)].hash;
    return hash ? HashText(*hash) : "#" + std::to_string(joint);
}

/// An object that is known by its place alone has no joint.
std::string ChannelKey(const Skeleton& skeleton, const Channel& channel,
                       const std::vector<ExternalChannel>& externals) {
    const std::string whose = channel.type == SKELETON_CHANNEL_EXTERNAL
                                  ? HashText(externals[channel.index].hash)
                              : channel.joint < 0 ? "object " + std::to_string(channel.index)
                                                  : JointKey(skeleton, channel.joint);
    return std::to_string(channel.type) + " " + std::to_string(channel.component) + " " + whose;
}

std::string TargetText(const Skeleton& skeleton, const Target& target, ConstraintKind kind) {
    std::string text = "weight " + NumberText(target.weight);
    if (kind == ConstraintKind::Translation || kind == ConstraintKind::Scale)
        text += ", offset " + VectorText(target.offset);
    if (kind == ConstraintKind::Aim)
        text += ", aim " + VectorText(target.aim) + ", up " + VectorText(target.up) +
                ", global up " + VectorText(target.globalUp) + ", world up " +
                std::to_string(target.worldUp) + ", up object " +
                LabelOf(skeleton, target.upObject);
    if (kind == ConstraintKind::Parent)
        text += ", translation " + VectorText(target.translation) + ", rotation " +
                VectorText(target.rotation);
    return text;
}

std::string CurveText(const Curve& curve) {
    std::string text = "keys";
    for (std::size_t k = 0; k < curve.times.size(); ++k) {
        text += ' ' + NumberText(curve.times[k]);
        if (k < curve.coefficients.size()) text += ' ' + VectorText(curve.coefficients[k]);
    }
    return text;
}

/// Takes the items of one skeleton apart.
class StepList {
  public:
    explicit StepList(const Skeleton& whole) : skeleton(whole) {}

    void Add(const DrivenKeys& keys) {
        Begin(-1);
        for (const DrivenObject& object : keys.objects)
            Add({"object " + JointKey(skeleton, object.joint),
                 "rotation of " + LabelOf(skeleton, object.joint) + " in driven keys",
                 std::string("order ") + RotationOrderText(object.rotationOrder) + ", axis " +
                     VectorText(object.rotationAxis) + ", orient " +
                     VectorText(object.jointOrient)},
                "object");
        if (keys.objectCount != keys.objects.size())
            Add({"objects", "objects of driven keys that are no joints of the skeleton",
                 std::to_string(keys.objectCount - keys.objects.size())},
                "object");
        for (std::size_t i = 0; i < keys.outputs.size(); ++i) Add(keys.outputs[i], Group(i));
        ++item;
    }

    void Add(const JointConstraints& constraints) {
        for (std::size_t i = 0; i < constraints.constraints.size(); ++i)
            Add(constraints.constraints[i], Group(i));
        ++item;
    }

    std::vector<EvaluationStep> steps;

  private:
    static int Group(std::size_t index) { return static_cast<int>(index); }

    void Begin(int number) {
        group = number;
        place = 0;
    }

    void Add(const Output& output, int number) {
        Begin(number);
        const std::string key = ChannelKey(skeleton, output.target, skeleton.externalOutputs);
        for (const Curve& curve : output.curves)
            Add({"curve " + key + " " + ChannelKey(skeleton, curve.input, skeleton.externalInputs),
                 output.target.label + " driven by " + curve.input.label, CurveText(curve)},
                "curve");
    }

    void Add(const Constraint& constraint, int number) {
        Begin(number);
        const std::string kind = KindText(constraint.kind);
        for (const Target& target : constraint.targets)
            Add({kind + " " + JointKey(skeleton, constraint.joint) + " " +
                     JointKey(skeleton, target.joint),
                 kind + " of " + LabelOf(skeleton, constraint.joint) + " by " +
                     LabelOf(skeleton, target.joint),
                 TargetText(skeleton, target, constraint.kind),
                 JointKey(skeleton, target.upObject)},
                "target");
    }

    void Add(EvaluationStep step, const std::string& kind) {
        step.item = item;
        step.group = group;
        step.place = place++;
        step.placeText = "item " + std::to_string(item);
        if (group >= 0)
            step.placeText +=
                (kind == "curve" ? ", output " : ", constraint ") + std::to_string(group);
        step.placeText += ", " + kind + " " + std::to_string(step.place);
        steps.push_back(std::move(step));
    }

    const Skeleton& skeleton;
    int item = 0, group = 0, place = 0;
};

}  // namespace

std::vector<EvaluationStep> EvaluationSteps(const Skeleton& skeleton) {
    StepList list(skeleton);
    for (const Item& item : skeleton.items)
        std::visit([&](const auto& content) { list.Add(content); }, item);
    return std::move(list.steps);
}
