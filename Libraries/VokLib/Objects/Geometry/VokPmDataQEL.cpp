#include <VokLib/Objects/Geometry/VokPmDataQEL.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

void ReadClaim(VokPmDataQEL& data, VokParse& parse) {
    data.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
}

template <VokBulk<int> VokPmDataQEL::*List>
void ReadNumbers(VokPmDataQEL& data, VokParse& parse) {
    (data.*List).Read(parse, data.claimedCount);
}

template <VokBulk<int> VokPmDataQEL::*List>
void WriteNumbers(const VokPmDataQEL& data, VokFile& file, std::string_view name) {
    VokAttributes attributes;
    attributes.SetUnsigned("count", static_cast<unsigned>((data.*List).Get().size()));
    file.OpenTag(name, attributes);
    for (const int number : (data.*List).Get()) file.WriteInt(number);
    file.CloseTag(name);
}

template <VokBulk<int> VokPmDataQEL::*List>
constexpr VokChildElement<VokPmDataQEL> NumbersRow(std::string_view name) {
    return {.name = name,
            .start = ReadClaim,
            .data = ReadNumbers<List>,
            .write = WriteNumbers<List>,
            .isBulk = true};
}

}  // namespace

std::span<const VokAttributeRow<VokPmDataQEL>> VokPmDataQEL::AttributeRows() {
    static constexpr VokAttributeRow<VokPmDataQEL> rows[] = {
        {.read =
             [](VokPmDataQEL& data, const VokAttributes& attributes) {
                 ReadLink(data.target, attributes, "target");
             },
         .write = [](const VokPmDataQEL& data,
                     VokAttributes& attributes) { WriteLink(data.target, attributes, "target"); }},
    };
    return rows;
}

std::span<const VokChildElement<VokPmDataQEL>> VokPmDataQEL::ChildElements() {
    static constexpr VokChildElement<VokPmDataQEL> rows[] = {
        NumbersRow<&VokPmDataQEL::vs>("vs"),
        NumbersRow<&VokPmDataQEL::vt>("vt"),
        NumbersRow<&VokPmDataQEL::faces>("faces"),
        {.name = "costs",
         .start = ReadClaim,
         .data = [](VokPmDataQEL& data,
                    VokParse& parse) { data.costs.Read(parse, data.claimedCount); },
         .write =
             [](const VokPmDataQEL& data, VokFile& file, std::string_view name) {
                 VokAttributes attributes;
                 attributes.SetUnsigned("count", static_cast<unsigned>(data.costs.Get().size()));
                 file.OpenTag(name, attributes);
                 file.WriteFloats(data.costs.Get().data(), data.costs.Get().size());
                 file.CloseTag(name);
             },
         .isBulk = true},
        NumbersRow<&VokPmDataQEL::splits>("splits"),
        NumbersRow<&VokPmDataQEL::fixFaces>("fixFaces"),
    };
    return rows;
}

void VokPmDataQEL::ParseData(VokParse& parse) {
    if (ParseDepth() == 0 && OpenChild().empty() && parse.HasTokens())
        ThrowVokException("Unknown data", this);
    VokElement::ParseData(parse);
}
