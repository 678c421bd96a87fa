#include <VokLib/Objects/Nodes/VokLodGroup.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokLodGroup>> VokLodGroup::ChildElements() {
    static constexpr VokChildElement<VokLodGroup> rows[] = {
        {.name = "thresholds",
         .start =
             [](VokLodGroup& group, VokParse& parse) {
                 GetRequired(parse.GetAttributes(), "count", &group);
                 group.announcedThresholds = GetCount(parse.GetAttributes(), "count", 0);
             },
         .data =
             [](VokLodGroup& group, VokParse& parse) {
                 parse.ReadFloats(group.thresholds, group.announcedThresholds);
             },
         .write =
             [](const VokLodGroup& group, VokFile& file, std::string_view name) {
                 VokAttributes attributes;
                 attributes.SetUnsigned("count", static_cast<unsigned>(group.thresholds.size()));
                 file.OpenTag(name, attributes);
                 file.WriteFloats(group.thresholds.data(), group.thresholds.size());
                 file.CloseTag(name);
             }},
    };
    return rows;
}
