#include <VokLib/Objects/Geometry/VokNurbsSurface.h>

#include <VokLib/Document/VokFields.h>

#include <algorithm>
#include <cstdint>
#include <limits>

using namespace VokFields;

namespace {

/// The floats of a grid of positions; what would not fit is more than any document holds.
long long CountFloats(std::uint64_t inU, std::uint64_t inV) {
    constexpr std::uint64_t kFloatsPerPosition = 3;
    constexpr std::uint64_t kMost = std::numeric_limits<long long>::max() / kFloatsPerPosition;
    return static_cast<long long>(std::min(inU * inV, kMost) * kFloatsPerPosition);
}

void WriteList(VokFile& file, std::string_view name, const VokAttributes& attributes,
               const std::vector<float>& values) {
    file.OpenTag(name, attributes);
    file.WriteFloats(values.data(), values.size());
    file.CloseTag(name);
}

}  // namespace

std::span<const VokChildElement<VokNurbsSurface>> VokNurbsSurface::ChildElements() {
    static constexpr VokChildElement<VokNurbsSurface> rows[] = {
        {.name = "surface",
         .start =
             [](VokNurbsSurface& nurbs, VokParse& parse) {
                 const VokAttributes& attributes = parse.GetAttributes();
                 nurbs.uOrder = attributes.GetUnsigned("uOrder", 0);
                 nurbs.vOrder = attributes.GetUnsigned("vOrder", 0);
                 nurbs.uMin = attributes.GetFloat("uMin", 0);
                 nurbs.uMax = attributes.GetFloat("uMax", 0);
                 nurbs.vMin = attributes.GetFloat("vMin", 0);
                 nurbs.vMax = attributes.GetFloat("vMax", 0);
             },
         .write = WriteSurface},
        {.name = "controlVertices",
         .start =
             [](VokNurbsSurface& nurbs, VokParse& parse) {
                 nurbs.numCVinU = GetCount(parse.GetAttributes(), "numCVinU", 0);
                 nurbs.numCVinV = GetCount(parse.GetAttributes(), "numCVinV", 0);
             },
         .data =
             [](VokNurbsSurface& nurbs, VokParse& parse) {
                 nurbs.controlVertices.Read(parse, CountFloats(nurbs.numCVinU, nurbs.numCVinV));
             },
         .within = "surface",
         .isBulk = true},
        {.name = "knotsInU",
         .start =
             [](VokNurbsSurface& nurbs, VokParse& parse) {
                 nurbs.claimedCount = GetCount(parse.GetAttributes(), "numKnotsInU", 0);
             },
         .data = [](VokNurbsSurface& nurbs,
                    VokParse& parse) { nurbs.knotsInU.Read(parse, nurbs.claimedCount); },
         .within = "surface",
         .isBulk = true},
        {.name = "knotsInV",
         .start =
             [](VokNurbsSurface& nurbs, VokParse& parse) {
                 nurbs.claimedCount = GetCount(parse.GetAttributes(), "numKnotsInV", 0);
             },
         .data = [](VokNurbsSurface& nurbs,
                    VokParse& parse) { nurbs.knotsInV.Read(parse, nurbs.claimedCount); },
         .within = "surface",
         .isBulk = true},
    };
    return rows;
}

void VokNurbsSurface::WriteSurface(const VokNurbsSurface& nurbs, VokFile& file,
                                   std::string_view name) {
    VokAttributes attributes;
    attributes.SetUnsigned("uOrder", nurbs.uOrder);
    attributes.SetUnsigned("vOrder", nurbs.vOrder);
    attributes.SetFloat("uMin", nurbs.uMin);
    attributes.SetFloat("uMax", nurbs.uMax);
    attributes.SetFloat("vMin", nurbs.vMin);
    attributes.SetFloat("vMax", nurbs.vMax);
    file.OpenTag(name, attributes);

    VokAttributes grid;
    grid.SetUnsigned("numCVinU", nurbs.numCVinU);
    grid.SetUnsigned("numCVinV", nurbs.numCVinV);
    WriteList(file, "controlVertices", grid, nurbs.controlVertices.Get());
    VokAttributes inU;
    inU.SetUnsigned("numKnotsInU", static_cast<unsigned>(nurbs.knotsInU.Get().size()));
    WriteList(file, "knotsInU", inU, nurbs.knotsInU.Get());
    VokAttributes inV;
    inV.SetUnsigned("numKnotsInV", static_cast<unsigned>(nurbs.knotsInV.Get().size()));
    WriteList(file, "knotsInV", inV, nurbs.knotsInV.Get());
    file.CloseTag(name);
}
