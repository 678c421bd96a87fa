#include "File/WriteProceduralJoints.h"

#include "File/FileTables.h"

#include <VoktRigbake/Procedural/ProceduralJoints.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

namespace {

struct Labels {
    explicit Labels(std::size_t itemCount) {
        for (std::size_t i = 0; i < itemCount; ++i) ofItems.push_back(Biff::ReserveLabel());
    }

    std::uint32_t itemsEnd = Biff::ReserveLabel();
    std::uint32_t itemKinds = Biff::ReserveLabel();
    std::uint32_t itemTable = Biff::ReserveLabel();
    std::uint32_t externalInputs = Biff::ReserveLabel();
    std::uint32_t externalOutputs = Biff::ReserveLabel();
    std::vector<std::uint32_t> ofItems;
};

std::uint32_t CountOf(const ExternalChannels& channels) {
    return static_cast<std::uint32_t>(channels.GetSorted().size());
}

void AppendHeader(const ProceduralJoints& procedural, const Labels& labels, Biff::CBlock& block) {
    block.AppendMagic("PJ01");
    AppendRelativeOffset(block, labels.itemsEnd);
    block.AppendU32(static_cast<std::uint32_t>(procedural.items.size()));
    AppendRelativeOffset(block, labels.itemKinds);
    AppendRelativeOffset(block, labels.itemTable);
    block.AppendU32(CountOf(procedural.externalInputs));
    AppendRelativeOffset(block, labels.externalInputs);
    block.AppendU32(CountOf(procedural.externalOutputs));
    AppendRelativeOffset(block, labels.externalOutputs);
}

void AppendItem(const ProceduralItem& item, const ProceduralJoints& procedural,
                const SkeletonIndex& skeleton, Biff::CBlock& block) {
    if (const auto* keys = std::get_if<DrivenKeys>(&item))
        keys->Write(block, procedural, skeleton);
    else
        std::get<JointConstraints>(item).Write(block, skeleton);
}

void AppendChannels(const ExternalChannels& channels, std::uint32_t label, Biff::CBlock& block) {
    // A table without its label reads as offset 0, which means that it is absent.
    if (channels.GetSorted().empty()) return;
    BeginTable(block, label);
    for (const ExternalChannel& channel : channels.GetSorted()) {
        block.AppendU32(channel.channelHash);
        block.AppendU32(static_cast<std::uint32_t>(channel.kind));
    }
}

}  // namespace

void WriteProceduralJoints(const ProceduralJoints& procedural, const SkeletonData& skeleton,
                           Biff::CBlock& block) {
    const Labels labels(procedural.items.size());
    AppendHeader(procedural, labels, block);
    block.AppendAlign(4);
    block.AppendLabel(labels.itemKinds);
    for (const ProceduralItem& item : procedural.items)
        block.AppendU32(static_cast<std::uint32_t>(item.index()));
    block.AppendAlign(4);
    block.AppendLabel(labels.itemTable);
    for (const std::uint32_t label : labels.ofItems) AppendRelativeOffset(block, label);
    for (std::size_t i = 0; i < procedural.items.size(); ++i) {
        BeginTable(block, labels.ofItems[i]);
        AppendItem(procedural.items[i], procedural, skeleton.index, block);
    }
    BeginTable(block, labels.itemsEnd);
    AppendChannels(procedural.externalInputs, labels.externalInputs, block);
    AppendChannels(procedural.externalOutputs, labels.externalOutputs, block);
}
