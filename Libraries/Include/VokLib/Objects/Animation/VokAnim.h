#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstddef>

class VokAnimChannel;

/// The channels that animate one object: those of its children that are exactly animChannel.
class VokAnim : public VokElement<VokAnim, VokObj> {
  public:
    static constexpr std::string_view kElementName = "anim";
    static std::span<const VokAttributeRow<VokAnim>> AttributeRows();

    /// Both walk the children. To visit every channel, walk the children once instead.
    std::size_t GetChannelCount() const;
    /// The `index`-th channel; throws "Out of range index for anim channel.".
    VokAnimChannel& GetChannel(std::size_t index) const;

    VokObjLinkHandle target{this};
};
