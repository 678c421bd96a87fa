#include <VokLib/Objects/Sets/VokPrimitiveShape.h>
#include <VokLib/Tree/VokScene.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNode = R"(<scene><node name="n"/></scene>)";

}  // namespace

TEST(VokPrimitiveShape, EachShapeWritesWhatItReads) {
    for (const char* shape :
         {R"(<cube width="1.0" height="2.0" depth="3.0" />)", R"(<sphere radius="1.5" />)",
          R"(<cylinder radius="1.5" height="4.0" />)"}) {
        const std::string text =
            "<primitive name=\"p\" shader=\"||n\">\n" + std::string(shape) + "\n</primitive>";
        EXPECT_EQ(Rewritten<VokPrimitiveShape>(text + std::string(kNode)), text);
    }
}

TEST(VokPrimitiveShape, SizesAreByDimension) {
    Scene scene(R"(<primitive name="a"><cylinder radius="2" height="3"/></primitive>
        <primitive name="b"><cube depth="4"/></primitive>)");
    const auto& cylinder = scene.At<VokPrimitiveShape>("|a");
    EXPECT_EQ(cylinder.kind, VokPrimitiveShape::Kind::Cylinder);
    EXPECT_EQ(cylinder.GetSize(0), 2);
    EXPECT_EQ(cylinder.GetSize(1), 3);
    EXPECT_EQ(scene.At<VokPrimitiveShape>("|b").GetSize(0), 0);
    EXPECT_EQ(scene.At<VokPrimitiveShape>("|b").GetSize(2), 4);
}

TEST(VokPrimitiveShape, WithoutAShapeItIsACubeOfNoSize) {
    EXPECT_EQ(Rewritten<VokPrimitiveShape>(R"(<primitive name="p"/>)"),
              "<primitive name=\"p\">\n<cube width=\"0.0\" height=\"0.0\" depth=\"0.0\" "
              "/>\n</primitive>");
}

TEST(VokPrimitiveShape, ADimensionOutsideTheThreeIsRefused) {
    Scene scene(R"(<primitive name="p"/>)");
    auto& shape = scene.First<VokPrimitiveShape>();
    EXPECT_EQ(FailureOf([&] { shape.GetSize(3); }),
              (Failure{"Dimension index out of range", "|p"}));
    EXPECT_EQ(FailureOf([&] { shape.SetSize(3, 1); }),
              (Failure{"Dimension index out of range", "|p"}));
}

TEST(VokPrimitiveShape, AnUnknownKindIsRefusedWhenWritten) {
    Scene scene(R"(<primitive name="p"/>)");
    auto& shape = scene.First<VokPrimitiveShape>();
    shape.kind = static_cast<VokPrimitiveShape::Kind>(7);
    EXPECT_EQ(FailureOf([&] { Write(shape); }), (Failure{"Unhandled primitive shape: 7", "|p"}));
}

TEST(VokPrimitiveShape, AShaderThatIsGoneIsLeftOut) {
    Scene scene(R"(<scene><node name="n"/></scene><primitive name="p" shader="||n"/>)");
    VokScene* hierarchy = scene.world.GetHierarchy();
    hierarchy->DeleteChild(hierarchy->FindChild("n"));
    EXPECT_EQ(Write(scene.First<VokPrimitiveShape>()).substr(0, 21), "<primitive name=\"p\">\n");
}
