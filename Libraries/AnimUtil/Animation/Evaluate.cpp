#include "Animation/ChannelChecks.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace VokAnimUtil {

namespace {

/// Linear between samples that are evenly spaced over the duration. A time of up to one step before
/// 0 truncates to the first sample and runs on from the first two.
void EvaluateTimestep(float* result, const VokAnimChannel& channel, float time) {
    CheckHasKeys(channel);
    const unsigned stride = channel.GetKeyStride();
    const std::size_t last = channel.numKeys - 1;
    const float f = static_cast<float>(last) * time / channel.GetDuration();
    const int i = Truncate(f);
    const float* values = channel.keyValues.data();
    if (i < 0) {
        std::copy_n(values, stride, result);
    } else if (static_cast<std::size_t>(i) >= last) {
        std::copy_n(values + last * stride, stride, result);
    } else {
        const float s = f - static_cast<float>(i);
        const float* a = values + static_cast<std::size_t>(i) * stride;
        for (unsigned c = 0; c < stride; ++c) result[c] = a[c] * (1.0f - s) + a[stride + c] * s;
    }
}

std::size_t RequireKeyIndex(const VokAnimChannel& channel, float time, unsigned* keyHint) {
    const int index = FindKeyIndex(channel, time, keyHint);
    if (index < 0)
        ThrowVokException("Failed to find key index when evaluating animation value.", &channel);
    return static_cast<std::size_t>(index);
}

/// A key's segment is the cubic c0 + c1 d + c2 d^2 + c3 d^3 in the distance d from the key.
void EvaluateQelCurve(float* result, const VokAnimChannel& channel, float time, unsigned* keyHint) {
    const std::size_t i = RequireKeyIndex(channel, time, keyHint);
    const std::size_t n = channel.GetKeyStride() / 4;
    const float d = time - channel.keyTimes[i];
    const float d2 = d * d;
    const float d3 = d2 * d;
    const float* key = channel.keyValues.data() + i * channel.GetKeyStride();
    for (std::size_t c = 0; c < n; ++c)
        result[c] = key[c] + key[n + c] * d + key[2 * n + c] * d2 + key[3 * n + c] * d3;
}

/// Hermite basis; tangents are derivatives with respect to time, hence the factor h.
void EvaluateQelHermite(float* result, const VokAnimChannel& channel, float time,
                        unsigned* keyHint) {
    const std::size_t i = RequireKeyIndex(channel, time, keyHint);
    const std::size_t n = channel.GetKeyStride();
    const float* p0 = channel.keyValues.data() + i * n;
    if (i + 1 >= channel.numKeys) {
        std::copy_n(p0, n, result);
        return;
    }
    CheckTangents(channel);  // the last key alone needs none
    const float* p1 = p0 + n;
    const float* m0 = channel.tangents[0].data() + i * n;
    const float* m1 = m0 + n;
    const float h = channel.keyTimes[i + 1] - channel.keyTimes[i];
    const float s = (time - channel.keyTimes[i]) / h;
    const float s2 = s * s;
    const float s3 = s2 * s;
    for (std::size_t c = 0; c < n; ++c)
        result[c] = p0[c] * (1.0f - 3.0f * s2 + 2.0f * s3) + p1[c] * (3.0f * s2 - 2.0f * s3) +
                    m0[c] * (s - 2.0f * s2 + s3) * h + m1[c] * (s3 - s2) * h;
}

}  // namespace

int FindKeyIndex(const VokAnimChannel& channel, float time, unsigned* keyHint) {
    CheckTimes(channel);
    const std::vector<float>& times = channel.keyTimes;
    const unsigned count = channel.numKeys;
    if (count == 0) return -1;
    unsigned low = 0;
    if (keyHint != nullptr) {
        const unsigned hint = *keyHint;
        if (hint >= count) {
            *keyHint = 0;
        } else if (!(times[hint] > time)) {
            if (hint + 1 < count) {
                if (time < times[hint + 1]) return static_cast<int>(hint);
                if (hint + 2 < count && time < times[hint + 2]) {
                    *keyHint = hint + 1;
                    return static_cast<int>(hint + 1);
                }
            }
            low = hint;
        }
    }
    if (times[low] > time || times[count - 1] < time) return -1;
    unsigned high = count - 1;
    while (high > low && high - low > 1) {
        const unsigned middle = low + (high - low) / 2;
        (times[middle] <= time ? low : high) = middle;
    }
    if (keyHint != nullptr) *keyHint = low;
    return static_cast<int>(low);
}

unsigned GetComponentCount(const VokAnimChannel& channel) {
    return channel.interp == AnimInterp::QELCurve ? channel.GetKeyStride() / 4
                                                  : channel.GetKeyStride();
}

void Evaluate(float* result, const VokAnimChannel& channel, float time, unsigned* keyHint) {
    switch (channel.interp) {
        case AnimInterp::Timestep:
            CheckValues(channel);
            return EvaluateTimestep(result, channel, time);
        case AnimInterp::QELCurve:
            CheckValues(channel);
            return EvaluateQelCurve(result, channel, time, keyHint);
        case AnimInterp::QELHermite:
            CheckValues(channel);
            return EvaluateQelHermite(result, channel, time, keyHint);
        default:
            ThrowVokException("Evaluate not yet implemented for animations of type \"" +
                                  std::string(GetAnimInterpText(channel.interp)) + "\".",
                              &channel);
    }
}

}  // namespace VokAnimUtil
