#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>

namespace {

constexpr const char* kNoTime = QelTools::Common::kInternalErrorText;
constexpr const char* kUnknownInStep = "Unrecognised tag while parsing animation discontiniuties.";
constexpr const char* kTagInValue = "Error when parsing animation discontinuities.";
constexpr const char* kNoComponents = "AnimationDiscontinuities component count must be non-zero.";

void WriteSlice(VokFile& file, std::string_view name, std::span<const float> values) {
    file.OpenTag(name);
    file.WriteFloats(values.data(), values.size());
    file.CloseTag(name);
}

}  // namespace

std::span<const VokAttributeRow<VokAnimDiscontinuities>> VokAnimDiscontinuities::AttributeRows() {
    static constexpr VokAttributeRow<VokAnimDiscontinuities> rows[] = {
        {.read =
             [](VokAnimDiscontinuities& discontinuities, const VokAttributes& attributes) {
                 discontinuities.SetComponentCount(VokFields::GetCount(attributes, "keyStride", 1));
             },
         .write =
             [](const VokAnimDiscontinuities& discontinuities, VokAttributes& attributes) {
                 attributes.SetUnsigned("keyStride", discontinuities.componentCount);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokAnimDiscontinuities>> VokAnimDiscontinuities::ChildElements() {
    static constexpr VokChildElement<VokAnimDiscontinuities> rows[] = {
        {.name = "corner", .start = ReadEntry<Kind::Corner>, .write = WriteEntries},
        {.name = "step", .start = ReadEntry<Kind::Step>},
        {.name = "before", .data = ReadSlice<0>, .within = "step"},
        {.name = "after", .data = ReadSlice<1>, .within = "step"},
    };
    return rows;
}

void VokAnimDiscontinuities::ParseStartTag(VokParse& parse) {
    if (ParseDepth() <= 0) {
        const std::string_view open = OpenChild();
        if (open == "before" || open == "after") ThrowVokException(kTagInValue, this);
        if (open == "step" && parse.GetTag() != "before" && parse.GetTag() != "after")
            ThrowVokException(kUnknownInStep, this);
    }
    VokElement::ParseStartTag(parse);
}

template <VokAnimDiscontinuities::Kind EntryKind>
void VokAnimDiscontinuities::ReadEntry(VokAnimDiscontinuities& discontinuities, VokParse& parse) {
    if (!parse.GetAttributes().Has("time")) ThrowVokException(kNoTime, &discontinuities);
    // A corner has no values in the document and yet takes room for them.
    parse.ClaimPadding(std::size_t{2} * discontinuities.componentCount);
    discontinuities.Add(EntryKind, parse.GetAttributes().GetFloat("time", 0));
}

template <std::size_t Side>
void VokAnimDiscontinuities::ReadSlice(VokAnimDiscontinuities& discontinuities, VokParse& parse) {
    for (float& value : discontinuities.Slice(2 * (discontinuities.entries.size() - 1) + Side))
        value = parse.ReadFloat();
}

void VokAnimDiscontinuities::WriteEntries(const VokAnimDiscontinuities& discontinuities,
                                          VokFile& file, std::string_view) {
    for (std::size_t i = 0; i < discontinuities.GetCount(); ++i) {
        const Discontinuity entry = discontinuities.GetDiscontinuity(i);
        VokAttributes attributes;
        attributes.SetFloat("time", entry.time);
        if (entry.kind == Kind::Corner) {
            file.EmptyTag("corner", attributes);
        } else if (entry.kind == Kind::Step) {
            file.OpenTag("step", attributes);
            WriteSlice(file, "before", entry.before);
            WriteSlice(file, "after", entry.after);
            file.CloseTag("step");
        }
    }
}

VokAnimDiscontinuities::Discontinuity VokAnimDiscontinuities::GetDiscontinuity(
    std::size_t index) const {
    return {entries[index].kind, entries[index].time, Slice(2 * index), Slice(2 * index + 1)};
}

void VokAnimDiscontinuities::Add(Kind kind, float time) {
    pool.resize(pool.size() + std::size_t{2} * componentCount);
    entries.push_back({kind, time});
}

void VokAnimDiscontinuities::SetComponentCount(unsigned count) {
    if (count == 0) ThrowVokException(kNoComponents, this);
    if (count == componentCount) return;
    std::vector<float> repacked(2 * entries.size() * count);
    for (std::size_t i = 0; i < 2 * entries.size(); ++i)
        std::copy_n(Slice(i).begin(), std::min(count, componentCount),
                    repacked.begin() + static_cast<std::ptrdiff_t>(i * count));
    pool = std::move(repacked);
    componentCount = count;
}
