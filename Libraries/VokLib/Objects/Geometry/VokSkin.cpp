#include <VokLib/Objects/Geometry/VokSkin.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>
#include <memory>

using namespace VokFields;

namespace {

/// Goes over rows of weights that are not kept: a number, then as many pairs.
class RowStream : public VokTextStream {
  public:
    explicit RowStream(long long claimed) : missing(claimed) {}
    void Take(VokTextReader& text) override {
        for (;;) {
            wordsInRow -= text.SkipWords(wordsInRow);
            if (wordsInRow != 0 || missing == 0 || !text.HasTokens()) return;
            wordsInRow = 2 * static_cast<std::size_t>(std::max(text.ReadInt(), 0));
            --missing;
        }
    }

    long long missing;           // of the rows that were claimed
    std::size_t wordsInRow = 0;  // that the row in hand still asks for
};

}  // namespace

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
        {.name = "weights", .start = BeginWeights, .data = ReadWeights, .write = WriteWeights},
        {.name = "components",
         .start =
             [](VokSkin& skin, VokParse& parse) {
                 skin.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
                 skin.components.emplace(&skin);
             },
         .data = [](VokSkin& skin,
                    VokParse& parse) { skin.components->Read(parse, skin.claimedCount); },
         .write =
             [](const VokSkin& skin, VokFile& file, std::string_view name) {
                 if (!skin.components) return;
                 VokAttributes attributes;
                 attributes.SetUnsigned("count",
                                        static_cast<unsigned>(skin.components->Get().size()));
                 file.OpenTag(name, attributes);
                 for (const unsigned component : skin.components->Get())
                     file.WriteUnsigned(component);
                 file.CloseTag(name);
             },
         .isBulk = true},
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

std::size_t VokSkin::GetRowCount() const {
    static_cast<void>(weights.Get());
    return rowEnds.size();
}

std::span<const VokSkin::Weight> VokSkin::GetRow(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : rowEnds[index - 1];
    return std::span(weights.Get()).subspan(begin, rowEnds[index] - begin);
}

void VokSkin::AddRow(std::span<const Weight> row) {
    std::vector<Weight>& all = weights.Edit();
    all.insert(all.end(), row.begin(), row.end());
    rowEnds.push_back(all.size());
}

void VokSkin::BeginWeights(VokSkin& skin, VokParse& parse) {
    skin.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
    if (!parse.KeepsContents()) parse.StreamText(std::make_unique<RowStream>(skin.claimedCount));
}

/// Takes the rows of weights that are not kept.
void VokSkin::PassWeights(VokSkin& skin, VokParse& parse) {
    const RowStream read = parse.FinishStream(RowStream(skin.claimedCount));
    skin.weights.LeaveOut();
    // A pair without its weight is one.
    parse.ClaimPadding(read.wordsInRow / 2 * 2);
    parse.ClaimPadding(static_cast<std::size_t>(read.missing));
}

void VokSkin::ReadWeights(VokSkin& skin, VokParse& parse) {
    if (!parse.KeepsContents()) return PassWeights(skin, parse);
    skin.weights.Edit().clear();
    skin.rowEnds.clear();
    long long row = 0;
    for (; row < skin.claimedCount && parse.HasTokens(); ++row) {
        parse.ReadIndexedFloats(skin.rowBuffer);
        skin.AddRow(skin.rowBuffer);
    }
    // Rows that the text does not hold are without influences.
    const auto missing = static_cast<std::size_t>(skin.claimedCount - row);
    parse.ClaimPadding(missing);
    skin.rowEnds.resize(skin.rowEnds.size() + missing, skin.weights.Get().size());
    skin.weights.Edit().shrink_to_fit();
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
