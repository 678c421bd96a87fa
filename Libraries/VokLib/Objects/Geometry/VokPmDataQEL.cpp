#include <VokLib/Objects/Geometry/VokPmDataQEL.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

void ReadClaim(VokPmDataQEL& data, VokParse& parse) {
    data.claimedCount = GetCount(parse.GetAttributes(), "count", 0);
}

template <std::vector<int> VokPmDataQEL::*List>
void ReadNumbers(VokPmDataQEL& data, VokParse& parse) {
    parse.ReadInts(data.*List, data.claimedCount);
}

template <std::vector<int> VokPmDataQEL::*List>
void WriteNumbers(const VokPmDataQEL& data, VokFile& file, std::string_view name) {
    VokAttributes attributes;
    attributes.SetUnsigned("count", static_cast<unsigned>((data.*List).size()));
    file.OpenTag(name, attributes);
    for (const int number : data.*List) file.WriteInt(number);
    file.CloseTag(name);
}

template <std::vector<int> VokPmDataQEL::*List>
constexpr VokChildElement<VokPmDataQEL> NumbersRow(std::string_view name) {
    return {
        .name = name, .start = ReadClaim, .data = ReadNumbers<List>, .write = WriteNumbers<List>};
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
                    VokParse& parse) { parse.ReadFloats(data.costs, data.claimedCount); },
         .write =
             [](const VokPmDataQEL& data, VokFile& file, std::string_view name) {
                 VokAttributes attributes;
                 attributes.SetUnsigned("count", static_cast<unsigned>(data.costs.size()));
                 file.OpenTag(name, attributes);
                 file.WriteFloats(data.costs.data(), data.costs.size());
                 file.CloseTag(name);
             }},
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
