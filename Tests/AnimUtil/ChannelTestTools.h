#pragma once

#include <VokLib/Objects/Animation/VokAnimChannel.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Support/ThrownText.h"

/// Channels made in memory.
inline std::unique_ptr<VokAnimChannel> MakeChannel(AnimInterp interp, unsigned stride,
                                                   std::vector<float> times,
                                                   std::vector<float> values,
                                                   std::vector<float> tangents = {}) {
    auto channel = std::make_unique<VokAnimChannel>();
    channel->interp = interp;
    channel->SetKeyStride(stride);
    channel->numKeys = static_cast<unsigned>(times.size());
    channel->keyTimes = std::move(times);
    channel->keyValues = std::move(values);
    channel->tangents[0] = std::move(tangents);
    return channel;
}

inline std::unique_ptr<VokAnimChannel> MakeTimestep(unsigned stride, float duration,
                                                    std::vector<float> values) {
    auto channel = std::make_unique<VokAnimChannel>();
    channel->SetKeyStride(stride);
    channel->numKeys = static_cast<unsigned>(values.size() / stride);
    channel->SetDuration(duration);
    channel->keyValues = std::move(values);
    return channel;
}
