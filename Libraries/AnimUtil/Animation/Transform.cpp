#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/VokCast.h>

#include "Animation/ChannelChecks.h"

#include <cmath>
#include <cstddef>

namespace VokAnimUtil {

namespace {

constexpr float kSamplesPerUnit = 60;
constexpr float kQuarterTurn = -1.5707964f;

CompressionFilterDefault MakeFilter() {
    CompressionFilterDefault filter;
    filter.baseTolerance = 1e-6f;
    filter.toleranceSplit = 0.5f;
    filter.fixedTolerance = 0.001f;
    filter.fixedSecondaryTolerance = 0.0005f;
    return filter;
}

VokQuaternion AboutX(float angle) {
    const double half = static_cast<double>(angle / 2.0f);
    return {static_cast<float>(std::sin(half)), 0, 0, static_cast<float>(std::cos(half))};
}

void Resample(VokAnimChannel& channel) {
    if (channel.interp != AnimInterp::Timestep)
        ResampleToTimestep(channel, channel, kSamplesPerUnit);
    CheckValues(channel);
}

void FitAgain(VokAnimChannel& channel, AnimInterp interp) {
    const CompressionFilterDefault filter = MakeFilter();
    ConvertTypeIfNeeded(channel, interp, &filter);
}

void TransformTranslation(VokAnimChannel& channel) {
    const AnimInterp interp = channel.interp;
    Resample(channel);
    // The samples of a QELCurve channel still have the stride of its coefficients, and end here.
    if (channel.GetKeyStride() != 3)
        ThrowVokException("Unexpected stride for anim channel: " + channel.GetChannel(), &channel);
    for (std::size_t key = 0; key < channel.numKeys; ++key) {
        float* value = channel.keyValues.data() + 3 * key;
        const float y = value[1];
        value[1] = value[2];
        value[2] = -y;
    }
    FitAgain(channel, interp);
}

void TransformRotation(VokAnimChannel& channel) {
    // Angles, which have another stride, are no quaternions.
    if (channel.GetKeyStride() != 4) return;
    const AnimInterp interp = channel.interp;
    Resample(channel);
    const VokQuaternion turn = AboutX(kQuarterTurn);
    for (std::size_t key = 0; key < channel.numKeys; ++key) {
        float* value = channel.keyValues.data() + 4 * key;
        const VokQuaternion turned =
            VokMath::Multiply(turn, {value[0], value[1], value[2], value[3]});
        value[0] = turned.x;
        value[1] = turned.y;
        value[2] = turned.z;
        value[3] = turned.w;
    }
    FitAgain(channel, interp);
}

}  // namespace

void Transform(VokAnim& anim) {
    for (std::size_t i = 0; i < anim.GetChildCount(); ++i) {
        auto* channel = ExactCast<VokAnimChannel>(anim.GetChild(i));
        if (channel == nullptr || channel->IsDrivenKey()) continue;
        const std::string name = channel->GetChannel();
        if (name == "translate")
            TransformTranslation(*channel);
        else if (name == "rotate")
            TransformRotation(*channel);
    }
}

}  // namespace VokAnimUtil
