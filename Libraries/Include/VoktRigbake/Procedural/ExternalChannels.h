#pragma once

#include <QelTools/KeyedHash.h>

#include <cstdint>
#include <unordered_set>
#include <vector>

/// What owns a channel that the skeleton does not own.
enum class ExternalChannelKind : std::uint32_t {
    Other = 0,
    BlendshapeController = 1,
    Material = 2,
};

/// A channel that driven keys read from or write to a run-time, not the skeleton. Hash and kind
/// reach the file.
struct ExternalChannel {
    std::uint32_t channelHash = 0;
    ExternalChannelKind kind = ExternalChannelKind::Other;
    std::uint32_t objectHash = 0;  ///< the complement of the CRC-32 of the object's name
    std::uint32_t component = 0;
};

/// The external inputs or outputs of a skeleton, each hash once.
class ExternalChannels {
  public:
    /// Throws a QelTools Exception "Internal error - please report as a bug" for a hash that is
    /// there.
    void Add(const ExternalChannel& channel);
    bool Contains(std::uint32_t channelHash) const { return hashes.contains(channelHash); }

    /// Brings the channels into the file's order, ascending by hash. To be called when all of them
    /// are in, before what follows.
    void Sort();
    const std::vector<ExternalChannel>& GetSorted() const { return channels; }
    /// The place in GetSorted(), or -1.
    std::int32_t FindPlace(std::uint32_t channelHash) const;

  private:
    std::vector<ExternalChannel> channels;
    // For the test alone; never walked.
    std::unordered_set<std::uint32_t, QelTools::Common::KeyedHash> hashes;
};
