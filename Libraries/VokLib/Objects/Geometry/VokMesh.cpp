#include <VokLib/Objects/Geometry/VokMesh.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <limits>

using namespace VokFields;

namespace {

constexpr VokEnumText<VokMesh::PrimitiveType, 4> kPrimitiveTypes{
    {"POLYGONS", "TRIANGLES", "TRISTRIPS", "TRIFANS"}};

/// How many indices the primitives of a set ask for; what would not fit is more than any document
/// holds.
long long CountIndices(const VokMesh::PrimitiveSet& set) {
    constexpr auto kMost = std::numeric_limits<long long>::max() / 2;
    const auto bindings = static_cast<long long>(set.bindings.size());
    long long corners = 0;
    for (const unsigned size : set.sizes) {
        if (corners > kMost - size) return kMost;
        corners += size;
    }
    return bindings != 0 && corners > kMost / bindings ? kMost : corners * bindings;
}

}  // namespace

std::span<const VokChildElement<VokMesh>> VokMesh::ChildElements() {
    static constexpr VokChildElement<VokMesh> rows[] = {
        {.name = "vertexArray", .write = WriteVertexArray},
        {.name = "primitives",
         .start = ReadPrimitives,
         .within = "vertexArray",
         .end = [](VokMesh& mesh, VokParse& parse) { mesh.FillIndices(parse); }},
        {.name = "binding",
         .start =
             [](VokMesh& mesh, VokParse& parse) {
                 mesh.LastPrimitives().bindings.push_back(
                     parse.GetAttributes().GetString("source"));
             },
         .within = "primitives"},
        {.name = "sizes", .data = ReadSizes, .within = "primitives"},
        {.name = "indices", .data = ReadIndices, .within = "primitives"},
        {.name = "array",
         .start = ReadArray,
         .data =
             [](VokMesh& mesh, VokParse& parse) {
                 parse.ReadFloats(mesh.LastArray().values, mesh.claimedValues);
             },
         .within = "vertexArray"},
        {.name = "blindData",
         .start =
             [](VokMesh& mesh, VokParse& parse) {
                 VokBlindData& table =
                     *mesh.blindData.emplace_back(std::make_unique<VokBlindData>());
                 mesh.ParseHeldObject(parse, table);
             },
         .within = "vertexArray"},
        // Beside the sets the two belong to the last of them.
        {.name = "sizes", .data = ReadLateSizes, .within = "vertexArray"},
        {.name = "indices", .data = ReadIndices, .within = "vertexArray"},
        {.name = "sizes", .data = ReadLateSizes},
        {.name = "indices", .data = ReadIndices},
    };
    return rows;
}

VokMesh::PrimitiveSet& VokMesh::LastPrimitives() {
    if (primitives.empty()) ThrowVokException("No primitive set to receive data", this);
    return *primitives.back();
}

VokMesh::DataArray& VokMesh::LastArray() {
    if (arrays.empty()) ThrowVokException("No data set to receive data", this);
    return *arrays.back();
}

void VokMesh::ReadPrimitives(VokMesh& mesh, VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    const std::string text = attributes.GetString("type");
    const auto type = kPrimitiveTypes.Find(text);
    if (!type) ThrowVokException("Unknown primitive type string \"" + text + "\".", &mesh);
    PrimitiveSet& set = *mesh.primitives.emplace_back(std::make_unique<PrimitiveSet>(&mesh));
    set.type = *type;
    mesh.claimedPrimitives = GetCount(attributes, "count", 0);
    ReadLink(set.shader, attributes, "shader");
}

void VokMesh::ReadArray(VokMesh& mesh, VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    const unsigned count = GetCount(attributes, "count", 0);
    const unsigned stride = GetCount(attributes, "stride", 0);
    // No number of floats but none is a multiple of a stride of 0.
    if (stride == 0 ? count != 0 : count % stride != 0)
        ThrowVokException("Count is not a multiple of stride.", &mesh);
    DataArray& array = *mesh.arrays.emplace_back(std::make_unique<DataArray>());
    array.name = attributes.GetString("name");
    array.stride = stride;
    mesh.claimedValues = count;
}

void VokMesh::ReadSizes(VokMesh& mesh, VokParse& parse) {
    parse.ReadUnsigneds(mesh.LastPrimitives().sizes, mesh.claimedPrimitives);
}

void VokMesh::ReadLateSizes(VokMesh& mesh, VokParse& parse) {
    ReadSizes(mesh, parse);
    mesh.FillIndices(parse);
}

void VokMesh::ReadIndices(VokMesh& mesh, VokParse& parse) {
    PrimitiveSet& set = mesh.LastPrimitives();
    parse.ReadInts(set.indices, CountIndices(set));
}

/// Corners that were given no indices, or came behind them, have zeros.
void VokMesh::FillIndices(VokParse& parse) {
    PrimitiveSet& set = LastPrimitives();
    const auto wanted = static_cast<std::size_t>(CountIndices(set));
    if (wanted > set.indices.size()) parse.ClaimPadding(wanted - set.indices.size());
    set.indices.reserve(wanted);
    set.indices.resize(wanted);
}

void VokMesh::WriteVertexArray(const VokMesh& mesh, VokFile& file, std::string_view name) {
    file.OpenTag(name);
    for (const auto& set : mesh.primitives) mesh.WritePrimitives(set.get(), file);
    for (const auto& array : mesh.arrays) {
        VokAttributes attributes;
        attributes.SetString("name", array->name);
        attributes.SetUnsigned("count", static_cast<unsigned>(array->values.size()));
        attributes.SetUnsigned("stride", array->stride);
        file.OpenTag("array", attributes);
        file.WriteFloats(array->values.data(), array->values.size());
        file.CloseTag("array");
    }
    for (const auto& table : mesh.blindData) {
        if (table == nullptr) ThrowVokException("Blind data is null", &mesh);
        table->Write(file);
    }
    file.CloseTag(name);
}

void VokMesh::WritePrimitives(const PrimitiveSet* set, VokFile& file) const {
    if (set == nullptr) ThrowVokException("Prim set is null", this);
    const auto type = kPrimitiveTypes.TextOf(set->type);
    if (!type) ThrowVokException("Unknown primitive type", this);
    VokAttributes attributes;
    attributes.SetString("type", *type);
    attributes.SetUnsigned("count", static_cast<unsigned>(set->sizes.size()));
    if (set->shader.IsValid()) WriteLink(set->shader, attributes, "shader");
    file.OpenTag("primitives", attributes);
    for (const std::string& source : set->bindings) {
        VokAttributes binding;
        binding.SetString("source", source);
        file.EmptyTag("binding", binding);
    }
    file.OpenTag("sizes");
    for (const unsigned size : set->sizes) file.WriteUnsigned(size);
    file.CloseTag("sizes");
    file.OpenTag("indices");
    for (const int index : set->indices) file.WriteInt(index);
    file.CloseTag("indices");
    file.CloseTag("primitives");
}
