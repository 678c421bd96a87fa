#include <VokLib/Objects/Geometry/VokSkin.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

std::span<const VokAttributeRow<VokSkin>> VokSkin::AttributeRows() {
    static constexpr VokAttributeRow<VokSkin> rows[] = {
        {.read = [](VokSkin& skin,
                    const VokAttributes& attributes) { skin.type = attributes.GetString("type"); },
         .write = [](const VokSkin& skin,
                     VokAttributes& attributes) { SetUnlessEmpty(attributes, "type", skin.type); }},
    };
    return rows;
}

std::span<const VokChildElement<VokSkin>> VokSkin::ChildElements() {
    static constexpr VokChildElement<VokSkin> rows[] = {
        {.name = "influence",
         .start =
             [](VokSkin& skin, VokParse& parse) {
                 ReadLink(skin.AddInfluence().target, parse.GetAttributes(), "target");
             },
         .write = WriteInfluences},
        {.name = "bindInverse",
         .data = [](VokSkin& skin,
                    VokParse& parse) { skin.influences.back().bindInverse = parse.ReadMatrix(); },
         .within = "influence"},
        {.name = "weights",
         .start =
             [](VokSkin& skin, VokParse& parse) {
                 skin.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
             },
         .data = ReadWeights,
         .write = WriteWeights},
        {.name = "components",
         .start =
             [](VokSkin& skin, VokParse& parse) {
                 skin.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
                 skin.components.emplace();
             },
         .data = [](VokSkin& skin,
                    VokParse& parse) { parse.ReadUnsigneds(*skin.components, skin.claimedCount); },
         .write =
             [](const VokSkin& skin, VokFile& file, std::string_view name) {
                 if (!skin.components) return;
                 VokAttributes attributes;
                 attributes.SetUnsigned("count", static_cast<unsigned>(skin.components->size()));
                 file.OpenTag(name, attributes);
                 for (const unsigned component : *skin.components) file.WriteUnsigned(component);
                 file.CloseTag(name);
             }},
    };
    return rows;
}

VokSkin::Influence& VokSkin::GetInfluence(std::size_t index) {
    if (index >= influences.size()) ThrowVokException("Influence index out of range", this);
    return influences[index];
}

const VokSkin::Influence& VokSkin::GetInfluence(std::size_t index) const {
    if (index >= influences.size()) ThrowVokException("Influence index out of range", this);
    return influences[index];
}

VokSkin::Influence& VokSkin::AddInfluence() {
    return influences.emplace_back(Influence{VokObjLinkHandle(this), {}});
}

std::span<const VokSkin::Weight> VokSkin::GetRow(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : rowEnds[index - 1];
    return std::span(weights).subspan(begin, rowEnds[index] - begin);
}

void VokSkin::AddRow(std::span<const Weight> row) {
    weights.insert(weights.end(), row.begin(), row.end());
    rowEnds.push_back(weights.size());
}

void VokSkin::ReadWeights(VokSkin& skin, VokParse& parse) {
    skin.weights.clear();
    skin.rowEnds.clear();
    long long row = 0;
    for (; row < skin.claimedCount && parse.HasTokens(); ++row) {
        parse.ReadIndexedFloats(skin.rowBuffer);
        skin.AddRow(skin.rowBuffer);
    }
    // Rows that the text does not hold are without influences.
    const auto missing = static_cast<std::size_t>(skin.claimedCount - row);
    parse.ClaimPadding(missing);
    skin.rowEnds.resize(skin.rowEnds.size() + missing, skin.weights.size());
    skin.weights.shrink_to_fit();
    skin.rowBuffer = {};
}

void VokSkin::WriteInfluences(const VokSkin& skin, VokFile& file, std::string_view name) {
    for (const Influence& influence : skin.influences) {
        VokAttributes attributes;
        WriteLink(influence.target, attributes, "target");
        if (!influence.bindInverse) {
            file.EmptyTag(name, attributes);
            continue;
        }
        file.OpenTag(name, attributes);
        file.OpenTag("bindInverse");
        file.WriteMatrix(*influence.bindInverse);
        file.CloseTag("bindInverse");
        file.CloseTag(name);
    }
}

void VokSkin::WriteWeights(const VokSkin& skin, VokFile& file, std::string_view name) {
    VokAttributes attributes;
    attributes.SetUnsigned("count", static_cast<unsigned>(skin.GetRowCount()));
    file.OpenTag(name, attributes);
    for (std::size_t i = 0; i < skin.GetRowCount(); ++i) file.WriteIndexedFloats(skin.GetRow(i));
    file.CloseTag(name);
}
