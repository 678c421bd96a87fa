#include "Dump.h"

#include <charconv>
#include <ostream>

using namespace Description;

namespace {

void PrintJoints(const Skeleton& skeleton, std::ostream& out) {
    out << "\njoints " << skeleton.joints.size() << '\n';
    std::vector<int> depths;
    for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
        const Joint& joint = skeleton.joints[i];
        depths.push_back(joint.parent < 0 ? 0 : depths[static_cast<std::size_t>(joint.parent)] + 1);
        out << "  " << i << ' ' << joint.label << ": hash "
            << (joint.hash ? HashText(*joint.hash) : "none") << ", parent ";
        if (joint.parent < 0)
            out << "none";
        else
            out << joint.parent << ' ' << LabelOf(skeleton, joint.parent);
        out << ", depth " << depths.back() << ", level " << joint.level
            << (joint.scaleCompensate ? ", scale compensate" : "") << "\n    rotation "
            << VectorText(joint.rotation) << " translation " << VectorText(joint.translation)
            << " scale " << VectorText(joint.scale) << '\n';
    }
}

void PrintLods(const Skeleton& skeleton, std::ostream& out) {
    out << "\nlevels of detail " << skeleton.lods.size() << '\n';
    for (std::size_t row = 0; row < skeleton.lods.size(); ++row) {
        const LodRow& lod = skeleton.lods[row];
        out << "  row " << row << ": " << lod.members << " members; dropped from here on, "
            << lod.limit << " joints are left\n";
        for (std::size_t i = static_cast<std::size_t>(lod.limit); i < lod.remap.size(); ++i)
            out << "    " << i << ' ' << skeleton.joints[i].label << " -> "
                << LabelOf(skeleton, lod.remap[i]) << '\n';
    }
}

void PrintExternals(const char* title, const std::vector<ExternalChannel>& channels,
                    std::ostream& out) {
    if (channels.empty()) return;
    out << '\n' << title << ' ' << channels.size() << '\n';
    for (std::size_t i = 0; i < channels.size(); ++i)
        out << "  " << i << ' ' << channels[i].label << ": hash " << HashText(channels[i].hash)
            << ", " << ExternalKindText(channels[i].kind) << '\n';
}

void Print(const Skeleton& skeleton, const DrivenKeys& keys, std::ostream& out) {
    out << "driven keys, " << keys.outputs.size() << " outputs, " << keys.objectCount
        << " objects with rotations, the first " << keys.drivenObjectCount << " driven\n";
    if (keys.objects.size() != keys.objectCount)
        out << "    only " << keys.objects.size()
            << " of the objects are joints of the skeleton; the file does not say which\n";
    for (const DrivenObject& object : keys.objects)
        out << "    object " << LabelOf(skeleton, object.joint) << ": rotation order "
            << RotationOrderText(object.rotationOrder) << ", rotation axis "
            << VectorText(object.rotationAxis) << ", joint orient "
            << VectorText(object.jointOrient) << '\n';
    for (const Output& output : keys.outputs)
        for (const Curve& curve : output.curves) {
            out << "    " << output.target.label << " from " << curve.input.label << ", "
                << NumberText(curve.firstTime) << " to " << NumberText(curve.lastTime) << '\n';
            for (std::size_t k = 0; k < curve.coefficients.size(); ++k)
                out << "      from " << NumberText(curve.times[k]) << ' '
                    << VectorText(curve.coefficients[k]) << '\n';
        }
}

void PrintTarget(const Skeleton& skeleton, const Target& target, ConstraintKind kind,
                 std::ostream& out) {
    out << "      " << LabelOf(skeleton, target.joint) << ": weight " << NumberText(target.weight);
    if (kind == ConstraintKind::Translation || kind == ConstraintKind::Scale)
        out << ", offset " << VectorText(target.offset);
    if (kind == ConstraintKind::Aim) {
        out << ", aim " << VectorText(target.aim) << ", up " << VectorText(target.up);
        if (target.worldUp == SKELETON_WORLD_UP_VECTOR)
            out << ", the direction up " << VectorText(target.globalUp);
        else if (target.worldUp == SKELETON_WORLD_UP_OBJECT_TRANSLATION)
            out << ", up towards " << LabelOf(skeleton, target.upObject) << ", global up "
                << VectorText(target.globalUp);
        else
            out << ", up along " << VectorText(target.globalUp) << " of "
                << LabelOf(skeleton, target.upObject);
    }
    if (kind == ConstraintKind::Parent)
        out << ", translation " << VectorText(target.translation) << ", rotation "
            << VectorText(target.rotation);
    out << '\n';
}

void Print(const Skeleton& skeleton, const JointConstraints& item, std::ostream& out) {
    out << "joint constraints, " << item.constraints.size() << ", write " << item.written.size()
        << " joints, read " << item.read.size() << '\n';
    for (const Constraint& constraint : item.constraints) {
        out << "    " << KindText(constraint.kind) << " of " << LabelOf(skeleton, constraint.joint)
            << '\n';
        for (const Target& target : constraint.targets)
            PrintTarget(skeleton, target, constraint.kind, out);
    }
}

}  // namespace

void DumpText(const Skeleton& skeleton, std::ostream& out) {
    out << "SK08, " << (skeleton.isBigEndian ? "big-endian" : "little-endian") << ", "
        << skeleton.size << " bytes\nsignature " << HashText(skeleton.signature) << '\n';
    PrintJoints(skeleton, out);
    if (!skeleton.lods.empty()) PrintLods(skeleton, out);
    PrintExternals("external inputs", skeleton.externalInputs, out);
    PrintExternals("external outputs", skeleton.externalOutputs, out);
    if (!skeleton.items.empty()) out << "\nprocedural items " << skeleton.items.size() << '\n';
    for (std::size_t i = 0; i < skeleton.items.size(); ++i) {
        out << "  item " << i << ": ";
        std::visit([&](const auto& item) { Print(skeleton, item, out); }, skeleton.items[i]);
    }
}

std::string NumberText(float number) {
    char text[32];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, number);
    return {text, end.ptr};
}
