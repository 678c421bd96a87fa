#include "Animation/ChannelChecks.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace VokAnimUtil {

namespace {

/// A few bytes that put a key far out in time must not ask for time and memory without end.
std::size_t MaxResampledValues(const VokAnimChannel& channel) {
    return kMaxResampledValues + kResampledValuesPerValue * channel.keyValues.size();
}

/// A product that 32 bits do not hold counts as less than any, and gets the least number.
int CountSamples(float duration, float rate) {
    const int steps = Truncate(duration * rate);
    return steps < 1 ? 2 : steps + 1;
}

}  // namespace

void ResampleToTimestep(VokAnimChannel& out, const VokAnimChannel& in, float samplesPerUnit) {
    CheckHasKeys(in);
    CheckTimes(in);
    const unsigned stride = in.GetKeyStride();
    const float duration = in.keyTimes[in.numKeys - 1];
    const int count = CountSamples(duration, samplesPerUnit);
    if (static_cast<std::size_t>(count) * stride > MaxResampledValues(in))
        ThrowVokException("Anim channel is too long to be resampled: " + std::to_string(count) +
                              " samples of " + std::to_string(stride) + " values; at most " +
                              std::to_string(MaxResampledValues(in)) + " values can be held.",
                          &in);
    // The samples keep the stride of the channel, of which a QELCurve fills a quarter.
    std::vector<float> values(static_cast<std::size_t>(count) * stride);
    for (int i = 0; i < count; ++i) {
        const float time = static_cast<float>(i) / static_cast<float>(count - 1) * duration;
        Evaluate(values.data() + static_cast<std::size_t>(i) * stride, in, time, nullptr);
    }
    out.interp = AnimInterp::Timestep;
    out.SetKeyStride(stride);
    out.numKeys = static_cast<unsigned>(count);
    out.SetDuration(duration);
    out.timeOffset = 0;
    out.keyTimes.clear();
    for (auto& tangents : out.tangents) tangents.clear();
    out.keyValues = std::move(values);
}

}  // namespace VokAnimUtil
