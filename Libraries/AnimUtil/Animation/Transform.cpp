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
#include <string>

namespace VokAnimUtil {

namespace {

constexpr float kSamplesPerUnit = 60;
constexpr float kQuarterTurn = -1.5707964f;

CompressionFilterDefault MakeFilter(ResampledTotal& total) {
    CompressionFilterDefault filter;
    filter.baseTolerance = 1e-6f;
    filter.toleranceSplit = 0.5f;
    filter.fixedTolerance = 0.001f;
    filter.fixedSecondaryTolerance = 0.0005f;
    filter.effort = &total.fits;
    return filter;
}

VokQuaternion AboutX(float angle) {
    const double half = static_cast<double>(angle / 2.0f);
    return {static_cast<float>(std::sin(half)), 0, 0, static_cast<float>(std::cos(half))};
}

void Resample(VokAnimChannel& channel, ResampledTotal& total) {
    if (channel.interp != AnimInterp::Timestep) {
        total.most += kResampledValuesPerValue * channel.keyValues.size();
        ResampleToTimestep(channel, channel, kSamplesPerUnit);
        total.values += channel.keyValues.size();
        if (total.values > total.most)
            ThrowVokException("Anim channels are too long together to be resampled: " +
                                  std::to_string(total.values) + " values so far; at most " +
                                  std::to_string(total.most) + " values can be held.",
                              &channel);
    }
    CheckValues(channel);
}

void FitAgain(VokAnimChannel& channel, AnimInterp interp, ResampledTotal& total) {
    const CompressionFilterDefault filter = MakeFilter(total);
    ConvertTypeIfNeeded(channel, interp, &filter);
}

void TransformTranslation(VokAnimChannel& channel, ResampledTotal& total) {
    const AnimInterp interp = channel.interp;
    Resample(channel, total);
    // The samples of a QELCurve channel still have the stride of its coefficients, and end here.
    if (channel.GetKeyStride() != 3)
        ThrowVokException("Unexpected stride for anim channel: " + channel.GetChannel(), &channel);
    for (std::size_t key = 0; key < channel.numKeys; ++key) {
        float* value = channel.keyValues.data() + 3 * key;
        const float y = value[1];
        value[1] = value[2];
        value[2] = -y;
    }
    FitAgain(channel, interp, total);
}

void TransformRotation(VokAnimChannel& channel, ResampledTotal& total) {
    // Angles, which have another stride, are no quaternions.
    if (channel.GetKeyStride() != 4) return;
    const AnimInterp interp = channel.interp;
    Resample(channel, total);
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
    FitAgain(channel, interp, total);
}

}  // namespace

void Transform(VokAnim& anim) {
    ResampledTotal total;
    Transform(anim, total);
}

void Transform(VokAnim& anim, ResampledTotal& total) {
    for (std::size_t i = 0; i < anim.GetChildCount(); ++i) {
        auto* channel = ExactCast<VokAnimChannel>(anim.GetChild(i));
        if (channel == nullptr || channel->IsDrivenKey()) continue;
        const std::string name = channel->GetChannel();
        if (name == "translate")
            TransformTranslation(*channel, total);
        else if (name == "rotate")
            TransformRotation(*channel, total);
    }
}

}  // namespace VokAnimUtil
