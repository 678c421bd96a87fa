#include "Description.h"

#include <algorithm>
#include <cstdio>

namespace Description {
namespace {

constexpr const char* kTypes[] = {"rotate", "translate", "scale"};
constexpr const char* kAxes[] = {"X", "Y", "Z"};

int IndexOrNone(std::uint32_t index) {
    return index == SKELETON_NO_JOINT ? -1 : static_cast<int>(index);
}

Four FourOf(const float* numbers) {
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

std::vector<Joint> JointsOf(const skeleton_header& header, const Names& names) {
    std::vector<Joint> joints(header.joint_count);
    const auto* hashes = static_cast<const skeleton_hash*>(skeleton_follow(&header.hashes));
    for (std::size_t i = 0; i < joints.size(); ++i)
        if (hashes[i].joint >= 0)
            joints[static_cast<std::size_t>(hashes[i].joint)].hash = hashes[i].name_hash;
    const std::uint32_t rows = skeleton_lod_count(&header);
    for (std::size_t i = 0; i < joints.size(); ++i) {
        const skeleton_joint& links = skeleton_joints(&header)[i];
        const skeleton_transform& transform = skeleton_transforms(&header)[i];
        Joint& joint = joints[i];
        if (joint.hash) joint.name = names.FindJoint(*joint.hash);
        joint.label = joint.name   ? *joint.name
                      : joint.hash ? HashText(*joint.hash)
                                   : "#" + std::to_string(i);
        joint.parent = IndexOrNone(links.parent);
        joint.nextSibling = IndexOrNone(links.next_sibling);
        joint.firstChild = IndexOrNone(links.first_child);
        joint.scaleCompensate = (links.flags & SKELETON_JOINT_SCALE_COMPENSATE) != 0;
        joint.rotation = FourOf(transform.rotation);
        std::copy_n(transform.translation, 3, joint.translation.begin());
        std::copy_n(transform.scale, 3, joint.scale.begin());
    }
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::size_t i = skeleton_lod_limit(&header, row); i < joints.size(); ++i)
            ++joints[i].level;
    return joints;
}

std::vector<LodRow> LodsOf(const skeleton_header& header) {
    std::vector<LodRow> rows(skeleton_lod_count(&header));
    if (rows.empty()) return rows;
    const auto* members = reinterpret_cast<const std::uint16_t*>(
        static_cast<const skeleton_lods*>(skeleton_follow(&header.lods)) + 1);
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        rows[row].members = members[row];
        rows[row].limit = static_cast<int>(skeleton_lod_limit(&header, row));
        for (std::uint32_t joint = 0; joint < header.joint_count; ++joint)
            rows[row].remap.push_back(IndexOrNone(skeleton_lod_stand_in(&header, row, joint)));
    }
    return rows;
}

std::vector<ExternalChannel> ExternalsOf(const skeleton_external_channel* table,
                                         std::uint32_t count, const Names& names) {
    std::vector<ExternalChannel> channels;
    for (std::uint32_t i = 0; i < count; ++i) {
        ExternalChannel& channel = channels.emplace_back();
        channel.hash = table[i].channel_hash;
        channel.kind = table[i].kind;
        channel.name = names.FindChannel(channel.hash, channel.kind == SKELETON_EXTERNAL_MATERIAL);
        channel.label = channel.name.value_or(HashText(channel.hash));
    }
    return channels;
}

/// Takes one item apart.
class ItemReader {
  public:
    explicit ItemReader(const Skeleton& whole) : skeleton(whole) {}

    DrivenKeys Read(const skeleton_driven_keys& block) const {
        DrivenKeys keys;
        keys.objectCount = block.object_count;
        keys.drivenObjectCount = block.driven_object_count;
        const auto* objects =
            static_cast<const skeleton_driven_object*>(skeleton_follow(&block.objects));
        const auto* axes = static_cast<const float*>(skeleton_follow(&block.rotation_axes));
        const auto* orients = static_cast<const float*>(skeleton_follow(&block.joint_orients));
        for (std::size_t i = 0; i < skeleton_driven_row_count(&block); ++i)
            keys.objects.push_back({objects[i].joint, objects[i].rotation_order,
                                    FourOf(axes + 4 * i), FourOf(orients + 4 * i)});
        for (std::uint32_t i = 0; i < block.output_count; ++i)
            keys.outputs.push_back(ReadOutput(block, *skeleton_driven_output_at(&block, i)));
        return keys;
    }

    JointConstraints Read(const skeleton_joint_constraints& block) const {
        JointConstraints result;
        const std::uint32_t written = block.constrained_count;
        for (std::uint32_t slot = 0; slot < written + block.target_count; ++slot)
            (slot < written ? result.written : result.read)
                .push_back(static_cast<int>(skeleton_slot_joint(&block, slot)));
        ReadList(block, ConstraintKind::Orientation, skeleton_orientations(&block),
                 block.orientation_count, result);
        ReadList(block, ConstraintKind::Translation, skeleton_translations(&block),
                 block.translation_count, result);
        ReadList(block, ConstraintKind::Scale, skeleton_scales(&block), block.scale_count, result);
        ReadList(block, ConstraintKind::Aim, skeleton_aims(&block), block.aim_count, result);
        ReadList(block, ConstraintKind::Parent, skeleton_parents(&block), block.parent_count,
                 result);
        return result;
    }

  private:
    Channel ReadChannel(const skeleton_driven_keys& block, std::uint32_t type, std::uint32_t index,
                        std::uint32_t component,
                        const std::vector<ExternalChannel>& externals) const {
        Channel channel{type, index, component, -1, {}};
        if (type == SKELETON_CHANNEL_EXTERNAL) {
            channel.label = externals[index].label;
            // A channel of another kind may stand in for a material's of the same name.
            if (externals[index].kind == SKELETON_EXTERNAL_MATERIAL || component != 0)
                channel.label += "[" + std::to_string(component) + "]";
            return channel;
        }
        skeleton_driven_rotation rotation;
        if (type != SKELETON_CHANNEL_ROTATION)
            channel.joint = static_cast<int>(index);
        else if (skeleton_find_driven_rotation(&block, index, &rotation) != 0)
            channel.joint = static_cast<int>(rotation.joint);
        channel.label = channel.joint < 0 ? "object " + std::to_string(index)
                                          : LabelOf(skeleton, channel.joint);
        channel.label += std::string(".") + kTypes[type] + kAxes[component];
        return channel;
    }

    Output ReadOutput(const skeleton_driven_keys& block, const skeleton_driven_output& from) const {
        const skeleton_driven_target& target = *skeleton_driven_target_of(&from);
        Output output;
        output.target = ReadChannel(block, target.type, target.index, target.component,
                                    skeleton.externalOutputs);
        for (std::uint32_t i = 0; i < from.curve_count; ++i) {
            const skeleton_driven_curve& source = *skeleton_driven_curve_at(&from, i);
            const auto* times = static_cast<const float*>(skeleton_follow(&source.times));
            const auto* c = static_cast<const float*>(skeleton_follow(&source.coefficients));
            Curve& curve = output.curves.emplace_back();
            curve.input = ReadChannel(block, source.input_type, source.input_index,
                                      source.input_component, skeleton.externalInputs);
            curve.firstTime = source.first_time;
            curve.lastTime = source.last_time;
            curve.times.assign(times, times + source.key_count);
            for (std::size_t k = 0; k + 1 < source.key_count; ++k)
                curve.coefficients.push_back(FourOf(c + 4 * k));
        }
        return output;
    }

    static void Fill(Target&, const skeleton_joint_constraints&, const skeleton_constraint&) {}
    static void Fill(Target& target, const skeleton_joint_constraints&,
                     const skeleton_offset_constraint& entry) {
        target.offset = FourOf(entry.offset);
    }
    static void Fill(Target& target, const skeleton_joint_constraints& block,
                     const skeleton_aim_constraint& entry) {
        target.aim = FourOf(entry.aim);
        target.up = FourOf(entry.up);
        target.globalUp = FourOf(entry.global_up);
        target.worldUp = entry.world_up;
        target.upObject = IndexOrNone(skeleton_slot_joint(&block, entry.up_object));
    }
    static void Fill(Target& target, const skeleton_joint_constraints&,
                     const skeleton_parent_constraint& entry) {
        target.translation = FourOf(entry.translation);
        target.rotation = FourOf(entry.rotation);
    }
    static const skeleton_constraint& CommonOf(const skeleton_constraint& entry) { return entry; }
    template <class Entry>
    static const skeleton_constraint& CommonOf(const Entry& entry) {
        return entry.common;
    }

    /// Entries from one with the flag of the first target on are one constraint.
    template <class Entry>
    static void ReadList(const skeleton_joint_constraints& block, ConstraintKind kind,
                         const Entry* entries, std::uint32_t count, JointConstraints& result) {
        for (std::uint32_t i = 0; i < count; ++i) {
            const skeleton_constraint& common = CommonOf(entries[i]);
            if ((common.flags & SKELETON_CONSTRAINT_FIRST_TARGET) != 0)
                result.constraints.push_back(
                    {kind, static_cast<int>(skeleton_slot_joint(&block, common.constrained)), {}});
            Target& target = result.constraints.back().targets.emplace_back();
            target.joint = static_cast<int>(skeleton_slot_joint(&block, common.target));
            target.weight = common.weight;
            Fill(target, block, entries[i]);
        }
    }

    const Skeleton& skeleton;
};

}  // namespace

Skeleton Describe(const SkeletonFile& file, const Names& names) {
    const skeleton_header& header = file.Header();
    Skeleton skeleton;
    skeleton.isBigEndian = file.IsBigEndian();
    skeleton.size = file.Size();
    skeleton.signature = header.signature;
    skeleton.joints = JointsOf(header, names);
    skeleton.lods = LodsOf(header);
    const skeleton_procedural* procedural = skeleton_find_procedural(&header);
    if (procedural == nullptr) return skeleton;
    skeleton.externalInputs =
        ExternalsOf(skeleton_external_inputs(procedural), procedural->external_input_count, names);
    skeleton.externalOutputs = ExternalsOf(skeleton_external_outputs(procedural),
                                           procedural->external_output_count, names);
    const ItemReader reader(skeleton);
    for (std::uint32_t i = 0; i < skeleton_item_count(procedural); ++i) {
        if (const auto* keys = skeleton_item_driven_keys(procedural, i))
            skeleton.items.emplace_back(reader.Read(*keys));
        else
            skeleton.items.emplace_back(reader.Read(*skeleton_item_constraints(procedural, i)));
    }
    return skeleton;
}

std::string HashText(std::uint32_t hash) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(hash));
    return text;
}

const std::string& LabelOf(const Skeleton& skeleton, int joint) {
    static const std::string kNone = "none";
    return joint < 0 ? kNone : skeleton.joints[static_cast<std::size_t>(joint)].label;
}

const char* KindText(ConstraintKind kind) {
    static constexpr const char* kTexts[] = {"orientation", "translation", "scale", "aim",
                                             "parent"};
    return kTexts[static_cast<std::size_t>(kind)];
}

const char* ExternalKindText(std::uint32_t kind) {
    static constexpr const char* kTexts[] = {"other", "blend shape controller", "material"};
    return kTexts[kind];
}

const char* RotationOrderText(std::uint32_t order) {
    static constexpr const char* kTexts[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    return kTexts[order];
}

}  // namespace Description
