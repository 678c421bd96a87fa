#include <VoktRigbake/Procedural/ExternalChannels.h>

#include <QelTools/Exception.h>

#include <algorithm>

namespace {

bool IsBefore(const ExternalChannel& channel, std::uint32_t hash) {
    return channel.channelHash < hash;
}

}  // namespace

void ExternalChannels::Add(const ExternalChannel& channel) {
    if (!hashes.insert(channel.channelHash).second) QelTools::Common::ThrowInternalError();
    channels.push_back(channel);
}

void ExternalChannels::Sort() {
    std::sort(channels.begin(), channels.end(),
              [](const ExternalChannel& a, const ExternalChannel& b) {
                  return a.channelHash < b.channelHash;
              });
}

std::int32_t ExternalChannels::FindPlace(std::uint32_t channelHash) const {
    const auto found = std::lower_bound(channels.begin(), channels.end(), channelHash, IsBefore);
    if (found == channels.end() || found->channelHash != channelHash) return -1;
    return static_cast<std::int32_t>(found - channels.begin());
}
