#include "Animation/ChannelChecks.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <climits>
#include <cstddef>

namespace VokAnimUtil {

namespace {

std::size_t ValueCount(const VokAnimChannel& channel) {
    return std::size_t{channel.numKeys} * channel.GetKeyStride();
}

}  // namespace

void CheckHasKeys(const VokAnimChannel& channel) {
    if (channel.numKeys == 0) ThrowVokException("Anim channel has no keys.", &channel);
}

void CheckValues(const VokAnimChannel& channel) {
    if (channel.keyValues.size() < ValueCount(channel))
        ThrowVokException(
            "Anim channel has fewer key values than its number of keys and its stride ask for.",
            &channel);
}

void CheckTimes(const VokAnimChannel& channel) {
    if (channel.keyTimes.size() < channel.numKeys)
        ThrowVokException("Anim channel has fewer key times than its number of keys asks for.",
                          &channel);
}

void CheckTangents(const VokAnimChannel& channel) {
    if (channel.tangents[0].size() < ValueCount(channel))
        ThrowVokException(
            "Anim channel has fewer tangents than its number of keys and its stride ask for.",
            &channel);
}

int Truncate(float value) {
    if (!(value >= -2147483648.0f && value < 2147483648.0f)) return INT_MIN;
    return static_cast<int>(value);
}

}  // namespace VokAnimUtil
