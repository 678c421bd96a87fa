#include "Dump.h"

using namespace Description;

namespace {

Json IndexJson(int index) {
    return index < 0 ? Json(nullptr) : Json(index);
}

Json TextJson(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json JointJson(const Joint& joint, int index) {
    return {{"index", index},
            {"name", TextJson(joint.name)},
            {"hash", joint.hash ? Json(HashText(*joint.hash)) : Json(nullptr)},
            {"parent", IndexJson(joint.parent)},
            {"nextSibling", IndexJson(joint.nextSibling)},
            {"firstChild", IndexJson(joint.firstChild)},
            {"level", joint.level},
            {"scaleCompensate", joint.scaleCompensate},
            {"rotation", joint.rotation},
            {"translation", joint.translation},
            {"scale", joint.scale}};
}

Json LodJson(const LodRow& row) {
    Json remap = Json::array();
    for (const int joint : row.remap) remap.push_back(IndexJson(joint));
    return {{"members", row.members}, {"limit", row.limit}, {"remap", std::move(remap)}};
}

Json ExternalJson(const ExternalChannel& channel) {
    static constexpr const char* kKinds[] = {"other", "blendshapeController", "material"};
    return {{"name", TextJson(channel.name)},
            {"hash", HashText(channel.hash)},
            {"kind", kKinds[channel.kind]}};
}

Json ChannelJson(const Channel& channel) {
    static constexpr const char* kTypes[] = {"rotation", "translation", "scale", "external"};
    return {{"type", kTypes[channel.type]},
            {"index", channel.index},
            {"component", channel.component},
            {"joint", IndexJson(channel.joint)}};
}

Json KeysJson(const DrivenKeys& keys) {
    Json objects = Json::array();
    for (const DrivenObject& object : keys.objects)
        objects.push_back({{"joint", object.joint},
                           {"rotationOrder", RotationOrderText(object.rotationOrder)},
                           {"rotationAxis", object.rotationAxis},
                           {"jointOrient", object.jointOrient}});
    Json outputs = Json::array();
    for (const Output& output : keys.outputs) {
        Json curves = Json::array();
        for (const Curve& curve : output.curves)
            curves.push_back({{"input", ChannelJson(curve.input)},
                              {"firstTime", curve.firstTime},
                              {"lastTime", curve.lastTime},
                              {"times", curve.times},
                              {"coefficients", curve.coefficients}});
        outputs.push_back({{"target", ChannelJson(output.target)}, {"curves", std::move(curves)}});
    }
    return {{"kind", "drivenKeys"},
            {"objectCount", keys.objectCount},
            {"drivenObjectCount", keys.drivenObjectCount},
            {"objects", std::move(objects)},
            {"outputs", std::move(outputs)}};
}

Json TargetJson(const Target& target, ConstraintKind kind) {
    static constexpr const char* kWorldUps[] = {"vector", "objectTranslation", "objectRotation"};
    Json json = {{"joint", target.joint}, {"weight", target.weight}};
    if (kind == ConstraintKind::Translation || kind == ConstraintKind::Scale)
        json["offset"] = target.offset;
    if (kind == ConstraintKind::Aim) {
        json["aim"] = target.aim;
        json["up"] = target.up;
        json["globalUp"] = target.globalUp;
        json["worldUp"] = kWorldUps[target.worldUp];
        json["upObject"] = IndexJson(target.upObject);
    }
    if (kind == ConstraintKind::Parent) {
        json["translation"] = target.translation;
        json["rotation"] = target.rotation;
    }
    return json;
}

Json ConstraintsJson(const JointConstraints& item) {
    Json constraints = Json::array();
    for (const Constraint& constraint : item.constraints) {
        Json targets = Json::array();
        for (const Target& target : constraint.targets)
            targets.push_back(TargetJson(target, constraint.kind));
        constraints.push_back({{"kind", KindText(constraint.kind)},
                               {"joint", constraint.joint},
                               {"targets", std::move(targets)}});
    }
    return {{"kind", "jointConstraints"},
            {"written", item.written},
            {"read", item.read},
            {"constraints", std::move(constraints)}};
}

}  // namespace

Json DumpJson(const Skeleton& skeleton) {
    Json json = {{"format", "SK08"},
                 {"byteOrder", skeleton.isBigEndian ? "big" : "little"},
                 {"size", skeleton.size},
                 {"signature", HashText(skeleton.signature)}};
    Json& joints = json["joints"] = Json::array();
    for (std::size_t i = 0; i < skeleton.joints.size(); ++i)
        joints.push_back(JointJson(skeleton.joints[i], static_cast<int>(i)));
    Json& lods = json["levelsOfDetail"] = Json::array();
    for (const LodRow& row : skeleton.lods) lods.push_back(LodJson(row));
    Json& inputs = json["externalInputs"] = Json::array();
    for (const ExternalChannel& channel : skeleton.externalInputs)
        inputs.push_back(ExternalJson(channel));
    Json& outputs = json["externalOutputs"] = Json::array();
    for (const ExternalChannel& channel : skeleton.externalOutputs)
        outputs.push_back(ExternalJson(channel));
    Json& items = json["items"] = Json::array();
    for (const Item& item : skeleton.items) {
        if (const auto* keys = std::get_if<DrivenKeys>(&item))
            items.push_back(KeysJson(*keys));
        else
            items.push_back(ConstraintsJson(std::get<JointConstraints>(item)));
    }
    return json;
}
