#include "Animation/ChannelChecks.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace VokAnimUtil {

namespace {

/// Both conversions refuse by this text, which names one kind only.
constexpr const char* kWrongKind = "Input animation type is not QelHermite.";

/// The keys of a channel while they are made.
struct Keys {
    std::vector<float> times;
    std::vector<float> values;
    std::vector<float> tangents;

    void StoreIn(VokAnimChannel& channel, AnimInterp interp, unsigned stride) {
        channel.interp = interp;
        channel.SetKeyStride(stride);
        channel.numKeys = static_cast<unsigned>(times.size());
        channel.keyTimes = std::move(times);
        channel.keyValues = std::move(values);
        channel.tangents[0] = std::move(tangents);
        channel.tangents[1].clear();
    }
};

/// Value and derivative of a cubic at distance `h` from its key, the derivative by way of the unit
/// interval.
struct CubicEnd {
    float value;
    float tangent;
};

CubicEnd EndOf(const float* c, std::size_t n, float h) {
    const float h2 = h * h;
    const float h3 = h2 * h;
    return {c[0] + c[n] * h + c[2 * n] * h2 + c[3 * n] * h3,
            (c[n] * h + 2.0f * c[2 * n] * h2 + 3.0f * c[3 * n] * h3) / h};
}

/// Whether the cubic of `key` does not run into the next key, in any component.
bool IsBroken(const float* key, const float* nextKey, std::size_t n, float h) {
    constexpr float kTolerance = 1e-6f;
    for (std::size_t c = 0; c < n; ++c) {
        const CubicEnd end = EndOf(key + c, n, h);
        if (std::fabs(end.value - nextKey[c]) > kTolerance ||
            std::fabs(end.tangent - nextKey[n + c]) > kTolerance)
            return true;
    }
    return false;
}

void AppendHermiteSegment(Keys& keys, const VokAnimChannel& in, std::size_t k, std::size_t n) {
    const float* key = in.keyValues.data() + k * in.GetKeyStride();
    const float* nextKey = key + in.GetKeyStride();
    const float h = in.keyTimes[k + 1] - in.keyTimes[k];
    keys.times.push_back(in.keyTimes[k]);
    for (std::size_t c = 0; c < n; ++c) {
        keys.values.push_back(key[c]);
        keys.tangents.push_back(key[n + c] * h / h);
    }
    if (k + 2 >= in.numKeys || !IsBroken(key, nextKey, n, h)) return;
    // The end of the segment becomes a key of its own. It has the tangent that the segment ends
    // with, but the value of the key behind it: a value that jumps is not kept.
    keys.times.push_back(in.keyTimes[k + 1]);
    for (std::size_t c = 0; c < n; ++c) {
        keys.values.push_back(nextKey[c]);
        keys.tangents.push_back(EndOf(key + c, n, h).tangent);
    }
}

/// The last key's tangent comes from its own coefficients, over the length of the last segment.
void AppendLastHermiteKey(Keys& keys, const VokAnimChannel& in, std::size_t n) {
    const std::size_t last = in.numKeys - 1;
    const float* key = in.keyValues.data() + last * in.GetKeyStride();
    const float h = last == 0 ? 1.0f : in.keyTimes[last] - in.keyTimes[last - 1];
    const float h2 = h * h;
    const float h3 = h2 * h;
    keys.times.push_back(in.keyTimes[last]);
    for (std::size_t c = 0; c < n; ++c) {
        keys.values.push_back(key[c]);
        const float tangent =
            (2.0f * key[2 * n + c] * h2 + key[n + c] * h + 3.0f * key[3 * n + c] * h3) / h;
        keys.tangents.push_back(last == 0 ? key[n + c] : tangent);
    }
}

/// From value and tangent at both ends to the coefficients of the cubic in time.
void AppendCurveSegment(Keys& keys, const VokAnimChannel& in, std::size_t k, std::size_t n) {
    const float* p0 = in.keyValues.data() + k * n;
    const float* p1 = p0 + n;
    const float* m0 = in.tangents[0].data() + k * n;
    const float* m1 = m0 + n;
    const float r = 1.0f / (in.keyTimes[k + 1] - in.keyTimes[k]);
    const float r2 = r * r;
    const float r3 = r2 * r;
    keys.times.push_back(in.keyTimes[k]);
    const std::size_t start = keys.values.size();
    keys.values.resize(start + 4 * n);
    float* out = keys.values.data() + start;
    for (std::size_t c = 0; c < n; ++c) {
        const float a1 = m0[c] / r;
        const float b1 = m1[c] / r;
        out[c] = p0[c];
        out[n + c] = a1 * r;
        out[2 * n + c] = (3.0f * p1[c] - 3.0f * p0[c] - 2.0f * a1 - b1) * r2;
        out[3 * n + c] = (2.0f * p0[c] - 2.0f * p1[c] + a1 + b1) * r3;
    }
}

}  // namespace

void ConvertQelCurveToQelHermite(VokAnimChannel& out, const VokAnimChannel& in) {
    if (in.interp != AnimInterp::QELCurve) ThrowVokException(kWrongKind, &in);
    CheckHasKeys(in);
    CheckValues(in);
    CheckTimes(in);
    const std::size_t n = in.GetKeyStride() / 4;
    Keys keys;
    for (std::size_t k = 0; k + 1 < in.numKeys; ++k) AppendHermiteSegment(keys, in, k, n);
    AppendLastHermiteKey(keys, in, n);
    keys.StoreIn(out, AnimInterp::QELHermite, static_cast<unsigned>(n));
}

void ConvertQelHermiteToQelCurve(VokAnimChannel& out, const VokAnimChannel& in) {
    if (in.interp != AnimInterp::QELHermite) ThrowVokException(kWrongKind, &in);
    CheckHasKeys(in);
    CheckValues(in);
    CheckTimes(in);
    CheckTangents(in);
    const std::size_t n = in.GetKeyStride();
    Keys keys;
    for (std::size_t k = 0; k + 1 < in.numKeys; ++k) {
        // Two keys at one time are a step, which has no segment.
        const bool step = std::bit_cast<std::uint32_t>(in.keyTimes[k]) ==
                          std::bit_cast<std::uint32_t>(in.keyTimes[k + 1]);
        if (!step) AppendCurveSegment(keys, in, k, n);
    }
    if (keys.values.size() != 4 * n * keys.times.size())
        ThrowVokException(QelTools::Common::kInternalErrorText, &in);
    const std::size_t last = in.numKeys - 1;
    keys.times.push_back(in.keyTimes[last]);
    const float* p = in.keyValues.data() + last * n;
    keys.values.insert(keys.values.end(), p, p + n);
    keys.values.resize(keys.values.size() + 3 * n);
    keys.StoreIn(out, AnimInterp::QELCurve, static_cast<unsigned>(4 * n));
}

}  // namespace VokAnimUtil
