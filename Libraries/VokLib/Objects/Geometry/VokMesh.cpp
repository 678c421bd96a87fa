#include <VokLib/Objects/Geometry/VokMesh.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <limits>

using namespace VokFields;

namespace {

constexpr VokEnumText<VokMesh::PrimitiveType, 4> kPrimitiveTypes{
    {"POLYGONS", "TRIANGLES", "TRISTRIPS", "TRIFANS"}};

/// What would not fit is more than any document holds.
constexpr long long kMost = std::numeric_limits<long long>::max() / 2;

long long AddCorners(long long corners, unsigned size) {
    return corners > kMost - size ? kMost : corners + size;
}

/// Adds sizes up that are not kept.
class SizeStream : public VokTextStream {
  public:
    explicit SizeStream(long long claimed) : missing(claimed) {}
    void Take(VokTextReader& text) override {
        for (; missing > 0 && text.HasTokens(); --missing)
            corners = AddCorners(corners, text.ReadUnsigned());
    }

    long long missing;  // of the sizes that were claimed
    long long corners = 0;
};

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
        {.name = "sizes", .start = BeginSizes, .data = ReadSizes, .within = "primitives"},
        {.name = "indices", .data = ReadIndices, .within = "primitives", .isBulk = true},
        {.name = "array",
         .start = ReadArray,
         .data = [](VokMesh& mesh,
                    VokParse& parse) { mesh.LastArray().values.Read(parse, mesh.claimedValues); },
         .within = "vertexArray",
         .isBulk = true},
        {.name = "blindData",
         .start =
             [](VokMesh& mesh, VokParse& parse) {
                 VokBlindData& table =
                     *mesh.blindData.emplace_back(std::make_unique<VokBlindData>());
                 mesh.ParseHeldObject(parse, table);
             },
         .within = "vertexArray"},
        // Beside the sets the two belong to the last of them.
        {.name = "sizes", .start = BeginSizes, .data = ReadLateSizes, .within = "vertexArray"},
        {.name = "indices", .data = ReadIndices, .within = "vertexArray", .isBulk = true},
        {.name = "sizes", .start = BeginSizes, .data = ReadLateSizes},
        {.name = "indices", .data = ReadIndices, .isBulk = true},
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
    mesh.corners = 0;
    mesh.indexCount = 0;
    ReadLink(set.shader, attributes, "shader");
}

void VokMesh::ReadArray(VokMesh& mesh, VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    const unsigned count = GetCount(attributes, "count", 0);
    const unsigned stride = GetCount(attributes, "stride", 0);
    // No number of floats but none is a multiple of a stride of 0.
    if (stride == 0 ? count != 0 : count % stride != 0)
        ThrowVokException("Count is not a multiple of stride.", &mesh);
    DataArray& array = *mesh.arrays.emplace_back(std::make_unique<DataArray>(&mesh));
    array.name = attributes.GetString("name");
    array.stride = stride;
    mesh.claimedValues = count;
}

void VokMesh::BeginSizes(VokMesh& mesh, VokParse& parse) {
    if (!parse.KeepsContents())
        parse.StreamText(std::make_unique<SizeStream>(mesh.claimedPrimitives));
}

void VokMesh::ReadSizes(VokMesh& mesh, VokParse& parse) {
    VokBulk<unsigned>& sizes = mesh.LastPrimitives().sizes;
    mesh.corners = 0;
    if (parse.KeepsContents()) {
        sizes.Read(parse, mesh.claimedPrimitives);
        for (const unsigned size : sizes.Get()) mesh.corners = AddCorners(mesh.corners, size);
        return;
    }
    const SizeStream read = parse.FinishStream(SizeStream(mesh.claimedPrimitives));
    sizes.LeaveOut();
    mesh.corners = read.corners;
    if (read.missing > 0) parse.ClaimPadding(static_cast<std::size_t>(read.missing));
}

void VokMesh::ReadLateSizes(VokMesh& mesh, VokParse& parse) {
    ReadSizes(mesh, parse);
    mesh.FillIndices(parse);
}

void VokMesh::ReadIndices(VokMesh& mesh, VokParse& parse) {
    VokBulk<int>& indices = mesh.LastPrimitives().indices;
    const long long wanted = mesh.CountIndices();
    indices.Read(parse, wanted);
    mesh.indexCount = wanted;
}

/// How many indices the primitives of the last set ask for.
long long VokMesh::CountIndices() const {
    const auto bindings = static_cast<long long>(primitives.back()->bindings.size());
    if (corners == kMost || (bindings != 0 && corners > kMost / bindings)) return kMost;
    return corners * bindings;
}

/// Corners that were given no indices, or came behind them, have zeros.
void VokMesh::FillIndices(VokParse& parse) {
    VokBulk<int>& indices = LastPrimitives().indices;
    const long long wanted = CountIndices();
    if (wanted > indexCount) parse.ClaimPadding(static_cast<std::size_t>(wanted - indexCount));
    indexCount = wanted;
    if (!parse.KeepsContents()) {
        indices.LeaveOut();
        return;
    }
    indices.Edit().reserve(static_cast<std::size_t>(wanted));
    indices.Edit().resize(static_cast<std::size_t>(wanted));
}

void VokMesh::WriteVertexArray(const VokMesh& mesh, VokFile& file, std::string_view name) {
    file.OpenTag(name);
    for (const auto& set : mesh.primitives) mesh.WritePrimitives(set.get(), file);
    for (const auto& array : mesh.arrays) {
        VokAttributes attributes;
        attributes.SetString("name", array->name);
        attributes.SetUnsigned("count", static_cast<unsigned>(array->values.Get().size()));
        attributes.SetUnsigned("stride", array->stride);
        file.OpenTag("array", attributes);
        file.WriteFloats(array->values.Get().data(), array->values.Get().size());
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
    attributes.SetUnsigned("count", static_cast<unsigned>(set->sizes.Get().size()));
    if (set->shader.IsValid()) WriteLink(set->shader, attributes, "shader");
    file.OpenTag("primitives", attributes);
    for (const std::string& source : set->bindings) {
        VokAttributes binding;
        binding.SetString("source", source);
        file.EmptyTag("binding", binding);
    }
    file.OpenTag("sizes");
    for (const unsigned size : set->sizes.Get()) file.WriteUnsigned(size);
    file.CloseTag("sizes");
    file.OpenTag("indices");
    for (const int index : set->indices.Get()) file.WriteInt(index);
    file.CloseTag("indices");
    file.CloseTag("primitives");
}
