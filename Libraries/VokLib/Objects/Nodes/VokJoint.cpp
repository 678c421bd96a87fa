#include <VokLib/Objects/Nodes/VokJoint.h>

#include <VokLib/Base/VokMath.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/VokCast.h>

using namespace VokFields;

namespace {

using AxisFlags = std::array<bool, 3>;

/// The letters may stand in any order and among anything else.
template <AxisFlags VokJoint::*Flags>
void ReadChannels(VokJoint& joint, VokParse& parse) {
    const std::string channels = GetRequired(parse.GetAttributes(), "channels", &joint);
    for (std::size_t axis = 0; axis < 3; ++axis)
        (joint.*Flags)[axis] = channels.find("XYZ"[axis]) != std::string::npos;
}

VokAttributes Channels(const AxisFlags& flags) {
    std::string channels;
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (flags[axis]) channels += "XYZ"[axis];
    VokAttributes attributes;
    attributes.SetString("channels", channels);
    return attributes;
}

/// Values stand for the limited axes alone, x before y before z, whatever the order of the letters.
template <AxisFlags VokJoint::*Flags, VokVector3 VokJoint::*Limit>
void ReadLimits(VokJoint& joint, VokParse& parse) {
    VokVector3& limit = joint.*Limit;
    float* const values[] = {&limit.x, &limit.y, &limit.z};
    for (std::size_t axis = 0; axis < 3; ++axis)
        if ((joint.*Flags)[axis]) *values[axis] = parse.ReadFloat();
}

template <AxisFlags VokJoint::*Flags, VokVector3 VokJoint::*Limit>
void WriteLimits(const VokJoint& joint, VokFile& file, std::string_view name) {
    const AxisFlags& flags = joint.*Flags;
    if (!flags[0] && !flags[1] && !flags[2]) return;
    const VokVector3& limit = joint.*Limit;
    const float values[] = {limit.x, limit.y, limit.z};
    file.OpenTag(name, Channels(flags));
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (flags[axis]) file.WriteFloat(values[axis]);
    file.CloseTag(name);
}

}  // namespace

std::span<const VokChildElement<VokJoint>> VokJoint::ChildElements() {
    static constexpr VokChildElement<VokJoint> rows[] = {
        {.name = "freedoms",
         .start = ReadChannels<&VokJoint::freedoms>,
         .write = [](const VokJoint& joint, VokFile& file,
                     std::string_view name) { file.EmptyTag(name, Channels(joint.freedoms)); }},
        {.name = "minrotation",
         .start = ReadChannels<&VokJoint::hasMinimum>,
         .data = ReadLimits<&VokJoint::hasMinimum, &VokJoint::minimumRotation>,
         .write = WriteLimits<&VokJoint::hasMinimum, &VokJoint::minimumRotation>},
        {.name = "maxrotation",
         .start = ReadChannels<&VokJoint::hasMaximum>,
         .data = ReadLimits<&VokJoint::hasMaximum, &VokJoint::maximumRotation>,
         .write = WriteLimits<&VokJoint::hasMaximum, &VokJoint::maximumRotation>},
        {.name = "jointOrientEul",
         .start = ReadOrder<&VokJoint::jointOrient>,
         .data = ReadAngles<&VokJoint::jointOrient>,
         .write = WriteRotation<&VokJoint::jointOrient>},
        // The element cannot tell "noInherit": such a joint reads back as normal.
        {.name = "scaleCompensate",
         .data =
             [](VokJoint& joint, VokParse& parse) {
                 joint.parentEffect =
                     parse.ReadBool() ? ParentEffect::ScaleCompensate : ParentEffect::Normal;
             },
         .write =
             [](const VokJoint& joint, VokFile& file, std::string_view name) {
                 if (joint.parentEffect == ParentEffect::ScaleCompensate) return;
                 file.OpenTag(name);
                 file.WriteBool(false);
                 file.CloseTag(name);
             }},
    };
    return rows;
}

void VokJoint::WriteAttributes(VokAttributes& attributes) const {
    // Without the node's parentEffect, for which the joint has an element.
    VokObj::WriteAttributes(attributes);  // NOLINT(bugprone-parent-virtual-call)
}

VokQuaternion VokJoint::ComposeRotation(const EulerRotation& ownRotation) const {
    using namespace VokMath;
    return Multiply(EulerToQuaternion(jointOrient),
                    Multiply(EulerToQuaternion(ownRotation), EulerToQuaternion(rotationAxis)));
}

VokMatrix VokJoint::GetLocalMatrix() const {
    using namespace VokMath;
    VokVector3 inverse{1, 1, 1};
    if (parentEffect == ParentEffect::ScaleCompensate)
        if (const auto* above = ExactCast<VokJoint>(GetParent()))
            inverse = {1 / above->scale.x, 1 / above->scale.y, 1 / above->scale.z};

    VokMatrix m = Translation(translate.x, translate.y, translate.z);
    m = MultiplyAffine(Scale(inverse.x, inverse.y, inverse.z), m);
    m = MultiplyAffine(FromQuaternion(GetLocalRotation()), m);
    return MultiplyAffine(Scale(scale.x, scale.y, scale.z), m);
}
