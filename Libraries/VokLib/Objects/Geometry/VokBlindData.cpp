#include <VokLib/Objects/Geometry/VokBlindData.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <utility>

using namespace VokFields;

namespace {

constexpr VokEnumText<VokBlindData::Component, 4> kComponents{{"Invalid", "Poly", "Edge", "Vert"}};
constexpr VokEnumText<BlindDataType, 5> kDataTypes{{"Invalid", "Bool", "Int", "Enum", "Float"}};

VokBlindData::Component ReadComponent(const VokAttributes& attributes, const VokObj* table) {
    const auto component = kComponents.Find(GetRequired(attributes, "component", table));
    if (!component) ThrowVokException("Unknown component type", table);
    return *component;
}

void ReadColumn(VokBlindData& table, VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    const char* text = attributes.Find("type");
    if (text == nullptr) ThrowVokException("Missing 'type' attribute on blind data", &table);
    const auto type = kDataTypes.Find(text);
    if (!type) ThrowVokException("Unknown data type", &table);
    table.AddColumn(attributes.GetString("name"), *type);
}

void WriteColumns(const VokBlindData& table, VokFile& file, std::string_view name) {
    for (std::size_t i = 0; i < table.GetColumnCount(); ++i) {
        const BlindDataBase& column = table.GetColumn(i);
        VokAttributes attributes;
        attributes.SetString("name", column.GetName());
        attributes.SetString("type", *kDataTypes.TextOf(column.GetType()));
        file.OpenTag(name, attributes);
        column.WriteValues(file);
        file.CloseTag(name);
    }
}

}  // namespace

std::span<const VokAttributeRow<VokBlindData>> VokBlindData::AttributeRows() {
    static constexpr VokAttributeRow<VokBlindData> rows[] = {
        {.read =
             [](VokBlindData& table, const VokAttributes& attributes) {
                 table.component = ReadComponent(attributes, &table);
             },
         .write =
             [](const VokBlindData& table, VokAttributes& attributes) {
                 const auto text = kComponents.TextOf(table.component);
                 if (!text) ThrowVokException("Unknown component type", &table);
                 attributes.SetString("component", *text);
             }},
        {.read =
             [](VokBlindData& table, const VokAttributes& attributes) {
                 GetRequired(attributes, "numComponents", &table);
                 table.numComponents = GetCount(attributes, "numComponents", 0);
             },
         .write =
             [](const VokBlindData& table, VokAttributes& attributes) {
                 attributes.SetUnsigned("numComponents", table.numComponents);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokBlindData>> VokBlindData::ChildElements() {
    static constexpr VokChildElement<VokBlindData> rows[] = {
        {.name = "components",
         .start = [](VokBlindData& table, VokParse&) { table.namesComponents = true; },
         .data = [](VokBlindData& table,
                    VokParse& parse) { table.components.Read(parse, table.numComponents); },
         .write =
             [](const VokBlindData& table, VokFile& file, std::string_view name) {
                 if (!table.namesComponents) return;
                 file.OpenTag(name);
                 for (const int index : table.components.Get()) file.WriteInt(index);
                 file.CloseTag(name);
             },
         .isBulk = true},
        {.name = "attribute",
         .start = ReadColumn,
         .data = [](VokBlindData& table,
                    VokParse& parse) { table.columns.back()->Read(parse, table.numComponents); },
         .write = WriteColumns,
         .isBulk = true},
    };
    return rows;
}

void VokBlindData::WriteContents(VokFile& file) const {
    for (const auto& column : columns)
        if (column->GetCount() != numComponents)
            ThrowVokException("Attempt to write invalid blind data", this);
    VokElement::WriteContents(file);
}

BlindDataBase& VokBlindData::AddColumn(const std::string& columnName, BlindDataType type) {
    const auto used = columnTypes.find(columnName);
    if (used != columnTypes.end() && used->second != type)
        ThrowVokException("Attempt to re-use blind data name with different type", this);
    switch (type) {
        case BlindDataType::Bool:
            columns.push_back(std::make_unique<BlindData<bool>>(columnName, type, this));
            break;
        case BlindDataType::Int:
        case BlindDataType::Enum:
            columns.push_back(std::make_unique<BlindData<int>>(columnName, type, this));
            break;
        case BlindDataType::Float:
            columns.push_back(std::make_unique<BlindData<float>>(columnName, type, this));
            break;
        default:
            ThrowVokException("Unknown blind data type", this);
    }
    columnTypes.emplace(columnName, type);
    return *columns.back();
}

template <class T>
BlindData<T>& VokBlindData::GetColumnOf(std::size_t index) const {
    auto* column = dynamic_cast<BlindData<T>*>(columns[index].get());
    if (column == nullptr) ThrowVokException("Blind data type mismatch", this);
    return *column;
}

template BlindData<int>& VokBlindData::GetColumnOf<int>(std::size_t) const;
template BlindData<float>& VokBlindData::GetColumnOf<float>(std::size_t) const;
template BlindData<bool>& VokBlindData::GetColumnOf<bool>(std::size_t) const;
