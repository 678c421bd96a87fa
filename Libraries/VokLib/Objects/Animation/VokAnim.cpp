#include <VokLib/Objects/Animation/VokAnim.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/VokCast.h>

using namespace VokFields;

std::span<const VokAttributeRow<VokAnim>> VokAnim::AttributeRows() {
    static constexpr VokAttributeRow<VokAnim> rows[] = {
        {.read =
             [](VokAnim& anim, const VokAttributes& attributes) {
                 SetLinkPath(anim.target, GetRequired(attributes, "target", &anim));
             },
         .write = [](const VokAnim& anim,
                     VokAttributes& attributes) { WriteLink(anim.target, attributes, "target"); }},
    };
    return rows;
}

std::size_t VokAnim::GetChannelCount() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < GetChildCount(); ++i)
        if (GetChild(i)->IsExactly(VokAnimChannel::TypeId())) ++count;
    return count;
}

VokAnimChannel& VokAnim::GetChannel(std::size_t index) const {
    for (std::size_t i = 0; i < GetChildCount(); ++i)
        if (auto* channel = ExactCast<VokAnimChannel>(GetChild(i));
            channel != nullptr && index-- == 0)
            return *channel;
    ThrowVokException("Out of range index for anim channel.", this);
}
