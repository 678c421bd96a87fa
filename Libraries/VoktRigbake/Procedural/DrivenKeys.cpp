#include <VoktRigbake/Procedural/DrivenKeys.h>

#include "Procedural/MoveAlong.h"

#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>
#include <QelTools/Exception.h>
#include <QelTools/KeyedHash.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace {

/// The floats of a key: the coefficients of one cubic.
constexpr unsigned kCoefficientCount = 4;

VokAnimUtil::CompressionFilterDefault MakeDrivenKeyFilter(Qel::LeastSquares::FitEffort& effort) {
    VokAnimUtil::CompressionFilterDefault filter;
    filter.baseTolerance = 0.001f;
    filter.toleranceSplit = 0.5f;
    filter.fixedTolerance = 0.001f;
    filter.fixedSecondaryTolerance = 0.0005f;
    filter.effort = &effort;
    return filter;
}

void CheckKeys(const VokAnimChannel& channel) {
    if (channel.numKeys < 2)
        QelTools::Common::ThrowException(
            "Encountered a driven key channel that has less than 2 keyframes. This is bad!");
    if (channel.GetKeyStride() != kCoefficientCount)
        ThrowVokException("Our driven key channels need a key stride of 4.");
    // A document is not held to its own counts.
    if (channel.keyTimes.size() < channel.numKeys ||
        channel.keyValues.size() / kCoefficientCount < channel.numKeys)
        ThrowVokException("A driven key channel has fewer keys than its number of keys asks for.",
                          &channel);
}

std::vector<DrivenKey> CopyKeys(const VokAnimChannel& channel) {
    std::vector<DrivenKey> keys(channel.numKeys);
    auto value = channel.keyValues.begin();
    for (std::size_t i = 0; i < keys.size(); ++i, value += kCoefficientCount) {
        keys[i].time = channel.keyTimes[i];
        std::copy_n(value, kCoefficientCount, keys[i].coefficients.begin());
    }
    return keys;
}

DrivenOutput MakeOutput(const VokObj* object, const ChannelReference& reference) {
    return {object, reference.type, reference.channelHash, reference.component, reference.index,
            {}};
}

DrivenCurve MakeCurve(const VokAnimChannel& channel, const VokObj* inputObject,
                      const ChannelReference& input) {
    DrivenCurve curve;
    curve.keys = CopyKeys(channel);
    curve.firstTime = curve.keys.front().time;
    curve.lastTime = curve.keys.back().time;
    curve.inputObject = inputObject;
    curve.inputType = input.type;
    curve.inputComponent = input.component;
    curve.inputHash = input.channelHash;
    curve.inputIndex = input.index;
    return curve;
}

}  // namespace

std::size_t DrivenKeys::OutputKeyHash::operator()(const OutputKey& key) const {
    return std::hash<const VokObj*>()(key.object) ^ QelTools::Common::KeyedHash()(key.channelHash);
}

void DrivenKeys::AddChannel(VokAnimChannel& channel, const VokObj* inputObject,
                            ProceduralJoints& procedural, const SkeletonIndex& skeleton) {
    const auto* anim = ExactCast<VokAnim>(channel.GetParent());
    if (anim == nullptr || !channel.IsDrivenKey()) return;
    if (VokAnimUtil::CanConvert(AnimInterp::QELCurve, channel.interp) == 0) return;
    const VokAnimUtil::CompressionFilterDefault filter = MakeDrivenKeyFilter(procedural.fitEffort);
    VokAnimUtil::ConvertTypeIfNeeded(channel, AnimInterp::QELCurve, &filter);

    const VokObj* target = anim->target.FindTarget();
    if (target == nullptr)
        ThrowVokException("We didn't find a target for the driven key animation '" +
                          anim->GetName() + "'");
    const ChannelReference output =
        Resolve(channel.GetChannel(), target, skeleton, procedural, false);
    const VokObj* joint = ExactCast<VokJoint>(inputObject);
    const ChannelReference input =
        Resolve(channel.attributes.GetString("inputChannel"), joint, skeleton, procedural, true);
    CheckKeys(channel);
    FindOrAddOutput(target, output).curves.push_back(MakeCurve(channel, joint, input));
}

DrivenOutput& DrivenKeys::FindOrAddOutput(const VokObj* object, const ChannelReference& reference) {
    // The component takes no part: channels of a material that differ in the digit alone are one.
    const auto [place, isNew] =
        outputPlaces.try_emplace({object, reference.channelHash}, outputs.end());
    if (isNew) {
        place->second = outputs.insert(outputs.end(), MakeOutput(object, reference));
        if (const auto* blend = ExactCast<VokBlend>(object)) {
            outputsOnBlends.push_back(place->second);
            reachedBlends.push_back(blend);
        }
    }
    return *place->second;
}

void DrivenKeys::ApplyBlends(const SkeletonIndex& skeleton, ProceduralJoints& procedural) {
    ++blendStepCount;
    // An output on a blend that another has left goes the same way behind it and meets nothing new.
    for (const VokBlend* blend : std::exchange(reachedBlends, {})) {
        if (!blendPlaces.try_emplace(blend, blendTargets.size()).second) continue;
        const VokObj* target = blend->target.FindTarget();
        blendTargets.push_back(
            MakeOutput(target, Resolve(blend->channel, target, skeleton, procedural, false)));
        if (const auto* further = ExactCast<VokBlend>(target)) reachedBlends.push_back(further);
    }
}

void DrivenKeys::MoveOutputs() {
    if (blendStepCount == 0) return;
    std::vector<std::size_t> next;
    for (const DrivenOutput& target : blendTargets) next.push_back(FindBlend(target.object));
    std::vector<std::size_t> starts;
    for (const OutputPlace output : outputsOnBlends) starts.push_back(FindBlend(output->object));
    const std::vector<Move> moves = MoveAlong(next, starts, std::exchange(blendStepCount, 0));

    const std::vector<OutputPlace> moved = std::exchange(outputsOnBlends, {});
    for (std::size_t i = 0; i < moved.size(); ++i) {
        if (moves[i].lastNode == kNone) continue;
        DrivenOutput output = blendTargets[moves[i].lastNode];
        for (const std::size_t mover : moves[i].movers)
            std::move(moved[mover]->curves.begin(), moved[mover]->curves.end(),
                      std::back_inserter(output.curves));
        *moved[i] = std::move(output);
        if (ExactCast<VokBlend>(moved[i]->object) != nullptr) outputsOnBlends.push_back(moved[i]);
    }
    for (std::size_t i = 0; i < moved.size(); ++i)
        if (moves[i].lastNode == kNone) outputs.erase(moved[i]);
}

std::size_t DrivenKeys::FindBlend(const VokObj* object) const {
    const auto found = blendPlaces.find(object);
    return found == blendPlaces.end() ? kNone : found->second;
}
