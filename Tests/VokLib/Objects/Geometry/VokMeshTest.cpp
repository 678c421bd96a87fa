#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokMesh.h>
#include <VokLib/Objects/Shading/VokMaterial.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

constexpr std::string_view kWhole =
    "<mesh name=\"m\">\n<vertexArray>\n"
    "<primitives type=\"POLYGONS\" count=\"2\" shader=\"|skin\">\n"
    "<binding source=\"position\" />\n<binding source=\"uv\" />\n"
    "<sizes>3 4</sizes>\n"
    "<indices>0 0 1 1 2 2 2 2 1 1 3 3 -1 4</indices>\n</primitives>\n"
    "<primitives type=\"TRIANGLES\" count=\"1\">\n<binding source=\"position\" />\n"
    "<sizes>3</sizes>\n<indices>3 2 1</indices>\n</primitives>\n"
    "<array name=\"position\" count=\"6\" stride=\"3\">0.0 1.0 2.0 -0.5 1.00000000e9 "
    "1.00000001e-1</array>\n"
    "<array name=\"uv\" count=\"2\" stride=\"2\">0.25 0.75</array>\n"
    "<blindData name=\"wet\" component=\"Poly\" numComponents=\"2\">\n"
    "<attribute name=\"depth\" type=\"Float\">0.5 1.5</attribute>\n</blindData>\n"
    "</vertexArray>\n<node name=\"child\">\n</node>\n<customData>\n"
    "<attribute name=\"k\" type=\"string\">v</attribute>\n</customData>\n</mesh>";

std::string InArray(std::string_view contents) {
    return R"(<mesh name="m"><vertexArray>)" + std::string(contents) + "</vertexArray></mesh>";
}

bool ClaimsTooMuch(const Failure& failure) {
    return failure.text.starts_with(
        "Counts in the document announce values that its text does not hold: ");
}

TEST(Mesh, RoundTripsWhole) {
    EXPECT_EQ(Rewritten<VokMesh>(R"(<material name="skin"/>)" + std::string(kWhole)), kWhole);
}

TEST(Mesh, HoldsWhatTheDocumentSays) {
    Scene scene(R"(<material name="skin"/>)" + std::string(kWhole));
    const VokMesh& mesh = scene.First<VokMesh>();
    ASSERT_EQ(mesh.primitives.size(), 2u);
    EXPECT_EQ(mesh.primitives[0]->type, VokMesh::PrimitiveType::Polygons);
    EXPECT_EQ(mesh.primitives[0]->shader.GetTarget(), &scene.First<VokMaterial>());
    EXPECT_EQ(mesh.primitives[0]->bindings, (std::vector<std::string>{"position", "uv"}));
    EXPECT_EQ(mesh.primitives[0]->sizes.Get(), (std::vector<unsigned>{3, 4}));
    EXPECT_EQ(mesh.primitives[0]->indices.Get().size(), 14u);
    EXPECT_FALSE(mesh.primitives[1]->shader.IsValid());
    ASSERT_EQ(mesh.arrays.size(), 2u);
    EXPECT_EQ(mesh.arrays[0]->stride, 3u);
    EXPECT_EQ(mesh.arrays[1]->values.Get(), (std::vector<float>{0.25f, 0.75f}));
    ASSERT_EQ(mesh.blindData.size(), 1u);
    EXPECT_EQ(mesh.GetChildCount(), 1u) << "blind data is no child";
}

TEST(Mesh, VectorsFitExactly) {
    Scene scene(R"(<material name="skin"/>)" + std::string(kWhole));
    const VokMesh& mesh = scene.First<VokMesh>();
    EXPECT_EQ(mesh.arrays[1]->values.Get().capacity(), 2u);
    EXPECT_EQ(mesh.primitives[1]->indices.Get().capacity(), 3u);
    EXPECT_EQ(mesh.primitives[0]->sizes.Get().capacity(), 2u);
}

TEST(Mesh, WithNothingItWritesAnEmptyVertexArray) {
    EXPECT_EQ(Rewritten<VokMesh>(R"(<mesh name="m"/>)"),
              "<mesh name=\"m\">\n<vertexArray>\n</vertexArray>\n</mesh>");
}

TEST(Mesh, EveryPrimitiveTypeHasItsText) {
    for (const char* type : {"POLYGONS", "TRIANGLES", "TRISTRIPS", "TRIFANS"}) {
        const std::string mesh = "<mesh name=\"m\">\n<vertexArray>\n<primitives type=\"" +
                                 std::string(type) +
                                 "\" count=\"0\">\n<sizes>\n</sizes>\n<indices>\n</indices>\n"
                                 "</primitives>\n</vertexArray>\n</mesh>";
        EXPECT_EQ(Rewritten<VokMesh>(mesh), mesh);
    }
}

TEST(Mesh, AnUnknownPrimitiveTypeIsRefused) {
    EXPECT_EQ(LoadFailure(InArray(R"(<primitives type="Quads" count="0"/>)")),
              (Failure{"Unknown primitive type string \"Quads\".", "|m"}));
    EXPECT_EQ(LoadFailure(InArray(R"(<primitives count="0"/>)")),
              (Failure{"Unknown primitive type string \"\".", "|m"}));
    Scene scene(InArray(R"(<primitives type="TRIFANS" count="0"/>)"));
    scene.First<VokMesh>().primitives[0]->type = VokMesh::PrimitiveType{4};
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokMesh>()); }),
              (Failure{"Unknown primitive type", "|m"}));
}

TEST(Mesh, ASetOrTableThatIsNotThereCannotBeWritten) {
    Scene scene(R"(<mesh name="m"/>)");
    VokMesh& mesh = scene.First<VokMesh>();
    mesh.blindData.emplace_back();
    EXPECT_EQ(FailureOf([&] { Write(mesh); }), (Failure{"Blind data is null", "|m"}));
    mesh.primitives.emplace_back();
    EXPECT_EQ(FailureOf([&] { Write(mesh); }), (Failure{"Prim set is null", "|m"}));
}

TEST(Mesh, SizesAndIndicesNeedASet) {
    const Failure none{"No primitive set to receive data", "|m"};
    EXPECT_EQ(LoadFailure(InArray("<sizes>3</sizes>")), none);
    EXPECT_EQ(LoadFailure(InArray("<indices>3</indices>")), none);
    EXPECT_EQ(LoadFailure(R"(<mesh name="m"><sizes>3</sizes></mesh>)"), none);
    EXPECT_EQ(LoadFailure(R"(<mesh name="m"><indices>3</indices></mesh>)"), none);
}

TEST(Mesh, SizesBesideTheSetsGoToTheLast) {
    Scene scene(InArray(R"(<primitives type="TRIANGLES" count="1"><binding source="a"/></primitives>
<sizes>3</sizes><indices>7 8 9</indices><array name="a" count="1" stride="1">5</array>)"));
    const VokMesh& mesh = scene.First<VokMesh>();
    EXPECT_EQ(mesh.primitives[0]->sizes.Get(), std::vector<unsigned>{3});
    EXPECT_EQ(mesh.primitives[0]->indices.Get(), (std::vector<int>{7, 8, 9}));
    EXPECT_EQ(mesh.arrays.size(), 1u) << "the vertexArray is still open";
}

TEST(Mesh, IndicesNeedSizesAndBindingsInFront) {
    Scene scene(InArray(R"(<primitives type="TRIANGLES" count="1"><indices>1 2 3</indices>
<binding source="a"/><sizes>3</sizes></primitives>)"));
    EXPECT_EQ(scene.First<VokMesh>().primitives[0]->indices.Get(), (std::vector<int>{0, 0, 0}));
}

TEST(Mesh, CornersWithoutIndicesHaveZerosAndRoundTrip) {
    std::string written;
    {
        Scene scene(InArray(R"(<primitives type="TRIANGLES" count="1"><binding source="a"/>
<sizes>3</sizes></primitives>)"));
        written = Write(scene.First<VokMesh>());
    }
    EXPECT_NE(written.find("<indices>0 0 0</indices>"), std::string::npos);
    EXPECT_EQ(Rewritten<VokMesh>(written), written);
}

TEST(Mesh, ThePrimitivesWrittenAreThoseThatHaveSizes) {
    Scene scene(InArray(R"(<primitives type="TRIANGLES" count="3"><sizes>1 2</sizes></primitives>
<primitives type="TRIANGLES" count="7"></primitives>)"));
    const VokMesh& mesh = scene.First<VokMesh>();
    EXPECT_EQ(mesh.primitives[0]->sizes.Get(), (std::vector<unsigned>{1, 2, 0}));
    EXPECT_NE(Write(mesh).find("TRIANGLES\" count=\"0\""), std::string::npos);
}

TEST(Mesh, ACountOfFloatsIsAMultipleOfTheStride) {
    const Failure wrong{"Count is not a multiple of stride.", "|m"};
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="10" stride="3"/>)")), wrong);
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="10" stride="0"/>)")), wrong);
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="10" stride="-5"/>)")), wrong);
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="10"/>)")), wrong);
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="0" stride="0"/>)")), Failure{});
    EXPECT_EQ(LoadFailure(InArray(R"(<array name="a" count="-9" stride="3"/>)")), Failure{});
    EXPECT_EQ(LoadFailure(InArray(R"(<array/>)")), Failure{});
}

TEST(Mesh, ValuesThatTheTextDoesNotHoldAreZero) {
    Scene scene(InArray(R"(<array name="a" count="6" stride="3">1 2</array>
<array name="b" count="2" stride="1">1 2 3 4</array><array name="c" count="2" stride="2"/>)"));
    const VokMesh& mesh = scene.First<VokMesh>();
    EXPECT_EQ(mesh.arrays[0]->values.Get(), (std::vector<float>{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(mesh.arrays[1]->values.Get(), (std::vector<float>{1, 2}));
    EXPECT_EQ(mesh.arrays[2]->values.Get(), (std::vector<float>{0, 0}));
}

TEST(Mesh, CountsBeyondTheDocumentAreRefused) {
    EXPECT_TRUE(ClaimsTooMuch(
        LoadFailure(InArray(R"(<array name="a" count="2000000000" stride="1">1 2 3</array>)"))));
    EXPECT_TRUE(ClaimsTooMuch(
        LoadFailure(InArray(R"(<array name="a" count="4000000000" stride="1">1 2 3</array>)"))));
    EXPECT_TRUE(ClaimsTooMuch(LoadFailure(InArray(
        R"(<primitives type="TRIANGLES" count="4000000000"><sizes>1 2 3</sizes></primitives>)"))));
    const std::string hugeSizes =
        R"(<primitives type="TRIANGLES" count="2"><binding/><binding/><sizes>4294967295 4294967295</sizes>)";
    EXPECT_TRUE(
        ClaimsTooMuch(LoadFailure(InArray(hugeSizes + "<indices>1 2 3</indices></primitives>"))));
    EXPECT_TRUE(ClaimsTooMuch(LoadFailure(InArray(hugeSizes + "</primitives>"))));
}

TEST(Mesh, APartOutsideItsPlaceIsUnknown) {
    EXPECT_EQ(LoadFailure(R"(<mesh name="m"><array name="a" count="0" stride="1"/></mesh>)"),
              (Failure{"Unknown tag \"array\"", "|m"}));
    EXPECT_EQ(LoadFailure(InArray(R"(<binding source="a"/>)")),
              (Failure{"Unknown tag \"binding\"", "|m"}));
}

TEST(Mesh, AShaderThatIsGoneIsNotWritten) {
    Scene scene(R"(<material name="s"/>)" +
                InArray(R"(<primitives type="TRIFANS" count="0" shader="|s"/>)"));
    EXPECT_NE(Write(scene.First<VokMesh>()).find("shader=\"|s\""), std::string::npos);
    scene.world.DeleteChild(&scene.First<VokMaterial>());
    EXPECT_EQ(Write(scene.First<VokMesh>()).find("shader"), std::string::npos);
}

}  // namespace
}  // namespace SceneTest
