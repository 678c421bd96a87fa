#pragma once

#include <VoktRigbake/Procedural/ExternalChannels.h>

#include <cstdint>
#include <string>

/// What a driven key reads or writes.
enum class DrivenChannelType : std::uint32_t {
    Rotation = 0,     ///< of a joint, by its place in the block's object table
    Translation = 1,  ///< of a joint, by its index
    Scale = 2,        ///< of a joint, by its index
    External = 3,     ///< a channel that the skeleton does not own
};

/// A channel of an object, as the file refers to it.
struct ChannelReference {
    std::string channelName;
    std::uint32_t channelHash = 0;  ///< of channelName, in the category "drivenkeychannel"
    DrivenChannelType type = DrivenChannelType::External;
    std::uint32_t component = 0;  ///< x, y, z; of a material's channel 0 to 3
    std::int32_t index = -1;      ///< meaning depends on the type; an external one's is its hash
    ExternalChannelKind kind = ExternalChannelKind::Other;
};
