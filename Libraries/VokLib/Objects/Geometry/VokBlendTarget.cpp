#include <VokLib/Objects/Geometry/VokBlendTarget.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

std::span<const VokChildElement<VokBlendTarget>> VokBlendTarget::ChildElements() {
    static constexpr auto readCount = [](VokBlendTarget& target, VokParse& parse) {
        target.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
    };
    static constexpr VokChildElement<VokBlendTarget> rows[] = {
        {.name = "diff",
         .start =
             [](VokBlendTarget& target, VokParse& parse) {
                 target.AddDiff().name = parse.GetAttributes().GetString("name");
             },
         .write = WriteDiffs},
        {.name = "indices",
         .start = readCount,
         .data =
             [](VokBlendTarget& target, VokParse& parse) {
                 target.diffs.back().indices.Read(parse, target.claimedCount);
             },
         .within = "diff",
         .isBulk = true},
        {.name = "deltas",
         .start = readCount,
         .data =
             [](VokBlendTarget& target, VokParse& parse) {
                 target.diffs.back().deltas.Read(parse, target.claimedCount);
             },
         .within = "diff",
         .isBulk = true},
    };
    return rows;
}

const VokBlendTarget::Diff& VokBlendTarget::GetDiff(std::size_t index) const {
    if (diffs.empty()) ThrowVokException("No diffs", this);
    if (index >= diffs.size()) ThrowVokException("Diff index out of range", this);
    return diffs[index];
}

void VokBlendTarget::WriteDiffs(const VokBlendTarget& target, VokFile& file,
                                std::string_view name) {
    if (target.diffs.empty()) ThrowVokException("No diffs", &target);
    for (const Diff& diff : target.diffs) {
        VokAttributes attributes;
        attributes.SetString("name", diff.name);
        file.OpenTag(name, attributes);
        VokAttributes count;
        count.SetUnsigned("count", static_cast<unsigned>(diff.indices.Get().size()));
        file.OpenTag("indices", count);
        for (const unsigned index : diff.indices.Get()) file.WriteUnsigned(index);
        file.CloseTag("indices");
        count.SetUnsigned("count", static_cast<unsigned>(diff.deltas.Get().size()));
        file.OpenTag("deltas", count);
        file.WriteFloats(diff.deltas.Get().data(), diff.deltas.Get().size());
        file.CloseTag("deltas");
        file.CloseTag(name);
    }
}
