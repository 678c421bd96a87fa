#include <VoktRigbake/Procedural/DrivenKeys.h>

#include <HashClient/QelHashClientUtil.h>
#include <QelTools/AsciiText.h>
#include <QelTools/Crc32.h>
#include <VokLib/Objects/Geometry/VokBlendshapeController.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Shading/VokMaterial.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>

using QelTools::Common::EqualsIgnoringCase;
using QelTools::Common::ToLowerAscii;

namespace {

struct JointChannel {
    const char* name;
    DrivenChannelType type;
    std::uint32_t component;
};

constexpr JointChannel kJointChannels[] = {
    {"rotateX", DrivenChannelType::Rotation, 0},
    {"rotateY", DrivenChannelType::Rotation, 1},
    {"rotateZ", DrivenChannelType::Rotation, 2},
    {"translateX", DrivenChannelType::Translation, 0},
    {"translateY", DrivenChannelType::Translation, 1},
    {"translateZ", DrivenChannelType::Translation, 2},
    {"scaleX", DrivenChannelType::Scale, 0},
    {"scaleY", DrivenChannelType::Scale, 1},
    {"scaleZ", DrivenChannelType::Scale, 2},
};

std::uint32_t HashChannel(const std::string& channelName) {
    return QelHashClientUtil::AddString("drivenkeychannel", channelName.c_str());
}

void ResolveJointChannel(const std::string& channelText, ChannelReference& reference) {
    for (const JointChannel& channel : kJointChannels)
        if (EqualsIgnoringCase(channelText, channel.name)) {
            reference.type = channel.type;
            reference.component = channel.component;
        }
}

/// A material's channels keep their letter case, in the hash too. A digit at the end is the
/// component and not part of the name.
void ResolveMaterialChannel(const std::string& channelText, ChannelReference& reference) {
    reference.kind = ExternalChannelKind::Material;
    reference.channelName = channelText;
    const char last = channelText.empty() ? '\0' : channelText.back();
    if (channelText.size() > 1 && last >= '0' && last <= '3') {
        reference.component = static_cast<std::uint32_t>(last - '0');
        reference.channelName.pop_back();
    }
    reference.channelHash = HashChannel(reference.channelName);
}

/// The name that a channel's owner has outside the skeleton: only those kinds have one.
std::string ExternalName(const VokObj& object, ExternalChannelKind kind) {
    switch (kind) {
        case ExternalChannelKind::BlendshapeController:
            return ToLowerAscii(object.GetBaseName());
        case ExternalChannelKind::Material:
            return object.GetBaseName();
        default:
            return {};
    }
}

}  // namespace

ChannelReference DrivenKeys::Resolve(const std::string& channelText, const VokObj* object,
                                     const SkeletonIndex& skeleton, ProceduralJoints& procedural,
                                     bool isInput) {
    ChannelReference reference;
    reference.channelName = ToLowerAscii(channelText);
    reference.channelHash = HashChannel(reference.channelName);
    if (ExactCast<VokJoint>(object) != nullptr) {
        ResolveJointChannel(channelText, reference);
    } else if (ExactCast<VokBlendshapeController>(object) != nullptr) {
        reference.kind = ExternalChannelKind::BlendshapeController;
    } else if (ExactCast<VokMaterial>(object) != nullptr) {
        ResolveMaterialChannel(channelText, reference);
    }
    const ExternalObject owner = FindOwner(object, reference.kind);
    // The registry keeps the channel's name under the objects' category, not the object's.
    if (owner.hasName)
        QelHashClientUtil::AddString("drivenkeyobject", reference.channelName.c_str());
    SetIndex(reference, object, owner.hash, skeleton, procedural, isInput);
    return reference;
}

/// Once for each object, whose name may be as long as the document.
DrivenKeys::ExternalObject DrivenKeys::FindOwner(const VokObj* object, ExternalChannelKind kind) {
    if (kind == ExternalChannelKind::Other) return {};
    const auto [place, isNew] = owners.try_emplace(object);
    if (isNew) {
        const std::string name = ExternalName(*object, kind);
        place->second = {!name.empty(), ~QelTools::Common::Crc32(name)};
    }
    return place->second;
}

void DrivenKeys::SetIndex(ChannelReference& reference, const VokObj* object,
                          std::uint32_t objectHash, const SkeletonIndex& skeleton,
                          ProceduralJoints& procedural, bool isInput) {
    if (reference.type == DrivenChannelType::Rotation) {
        reference.index = FindOrAddObject(object);
        return;
    }
    if (reference.type != DrivenChannelType::External) {
        reference.index = skeleton.Find(object);
        if (reference.index == -1)
            ThrowVokException("Unable to locate driven key joint ('" + reference.channelName +
                              "') in skeleton");
        return;
    }
    reference.index = static_cast<std::int32_t>(reference.channelHash);
    // Only the outputs are asked, for an input too: one that is used twice is added twice and
    // refused there, and one that is an output already does not become an input.
    if (procedural.externalOutputs.Contains(reference.channelHash)) return;
    ExternalChannels& channels = isInput ? procedural.externalInputs : procedural.externalOutputs;
    channels.Add({reference.channelHash, reference.kind, objectHash, reference.component});
}

std::int32_t DrivenKeys::FindOrAddObject(const VokObj* object) {
    const auto [place, isNew] =
        objectPlaces.try_emplace(object, static_cast<std::int32_t>(objects.size()));
    if (isNew) objects.push_back(object);
    return place->second;
}
