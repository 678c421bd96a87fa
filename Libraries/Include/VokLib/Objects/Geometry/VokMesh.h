#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Objects/Geometry/VokBlindData.h>
#include <VokLib/Tree/VokBulk.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A mesh: named arrays of floats, sets of primitives whose corners index them, and tables attached
/// to its components.
class VokMesh : public VokElement<VokMesh, VokObj> {
  public:
    static constexpr std::string_view kElementName = "mesh";
    static std::span<const VokChildElement<VokMesh>> ChildElements();

    /// Values of the vertices: `stride` floats for each.
    struct DataArray {
        explicit DataArray(const VokObj* owner) : values(owner) {}
        std::string name;
        unsigned stride = 0;
        VokBulk<float> values;
    };

    enum class PrimitiveType : std::uint32_t { Polygons, Triangles, TriStrips, TriFans };

    /// Primitives of one kind. For each primitive, for each of its corners, one index for each
    /// binding, back to back.
    struct PrimitiveSet {
        explicit PrimitiveSet(VokObj* owner) : shader(owner), sizes(owner), indices(owner) {}
        PrimitiveType type = PrimitiveType::Polygons;
        VokObjLinkHandle shader;
        std::vector<std::string> bindings;  ///< the names of the arrays that the indices go into
        VokBulk<unsigned> sizes;            ///< corners of each primitive
        VokBulk<int> indices;
    };

    std::vector<std::unique_ptr<PrimitiveSet>> primitives;
    std::vector<std::unique_ptr<DataArray>> arrays;
    std::vector<std::unique_ptr<VokBlindData>> blindData;

  private:
    static void ReadPrimitives(VokMesh& mesh, VokParse& parse);
    static void ReadArray(VokMesh& mesh, VokParse& parse);
    static void BeginSizes(VokMesh& mesh, VokParse& parse);
    static void ReadSizes(VokMesh& mesh, VokParse& parse);
    static void ReadLateSizes(VokMesh& mesh, VokParse& parse);
    static void ReadIndices(VokMesh& mesh, VokParse& parse);
    void FillIndices(VokParse& parse);
    long long CountIndices() const;
    static void WriteVertexArray(const VokMesh& mesh, VokFile& file, std::string_view name);
    void WritePrimitives(const PrimitiveSet* set, VokFile& file) const;
    PrimitiveSet& LastPrimitives();
    DataArray& LastArray();

    // Of the set that is being read.
    long long claimedPrimitives = 0;
    long long corners = 0;  // of all its primitives
    long long indexCount = 0;
    long long claimedValues = 0;  // by the array that is being read
};
