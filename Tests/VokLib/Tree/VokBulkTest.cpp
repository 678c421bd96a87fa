#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Geometry/VokMesh.h>
#include <VokLib/Objects/Geometry/VokSkin.h>
#include <VokLib/Tree/VokDependencies.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

/// Reads `body` without what a bake does not look at.
class BakeScene {
  public:
    explicit BakeScene(std::string_view body) {
        VokParse parse;
        parse.SetWanted(VokParse::Wanted::WhatABakeReads);
        const std::string document = Document(body);
        parse.ParseBuffer(world, document.data(), document.size(),
                          VokParse::kFirstBlock | VokParse::kLastBlock, nullptr);
    }
    VokObj& First() { return *world.GetChild(1); }

  private:
    Library library;

  public:
    VokWorld world;
};

constexpr std::string_view kNotLoaded = "contents were not loaded";

constexpr std::string_view kMesh = R"(<mesh name="m"><vertexArray>
<primitives type="POLYGONS" count="2"><binding source="a"/><sizes>1 2</sizes><indices>0 1 0</indices></primitives>
<array name="a" count="2" stride="1">5 6</array></vertexArray></mesh>)";

TEST(Bulk, IsLoadedUnlessTheReaderIsToldOtherwise) {
    Scene scene(kMesh);
    const VokMesh& mesh = scene.First<VokMesh>();
    EXPECT_TRUE(mesh.arrays[0]->values.IsLoaded());
    EXPECT_EQ(mesh.arrays[0]->values.Get(), (std::vector<float>{5, 6}));
}

TEST(Bulk, LeftOutContentsCannotBeAskedFor) {
    BakeScene scene(kMesh);
    VokMesh& mesh = *vok_cast<VokMesh>(&scene.First());
    const Failure failure{std::string(kNotLoaded), "|m"};
    EXPECT_FALSE(mesh.arrays[0]->values.IsLoaded());
    EXPECT_EQ(FailureOf([&] { mesh.arrays[0]->values.Get(); }), failure);
    EXPECT_EQ(FailureOf([&] { mesh.arrays[0]->values.Edit(); }), failure);
    EXPECT_EQ(FailureOf([&] { mesh.primitives[0]->sizes.Get(); }), failure);
    EXPECT_EQ(FailureOf([&] { mesh.primitives[0]->indices.Get(); }), failure);
}

TEST(Bulk, AWorldWithoutItsContentsCannotBeWritten) {
    for (const std::string_view body :
         {kMesh, std::string_view(R"(<skin name="m"><weights count="1">0</weights></skin>)"),
          std::string_view(
              R"(<nurbsCurve name="m" degree="1"><knots count="1">0</knots></nurbsCurve>)"),
          std::string_view(
              R"(<pmdataQEL name="m" target=""><faces count="1">0</faces></pmdataQEL>)"),
          std::string_view(R"(<node name="m"><customData><attribute name="a" type="int" value="1"/>
</customData></node>)")}) {
        BakeScene scene(body);
        EXPECT_EQ(FailureOf([&] { Write(scene.First()); }),
                  (Failure{std::string(kNotLoaded), "|m"}))
            << body;
    }
}

TEST(Bulk, WhatABakeReadsIsKept) {
    BakeScene scene(
        R"(<skin name="s"><influence target="|s"><bindInverse>2</bindInverse></influence></skin>
<anim name="a" target="|s"><animChannel name="c"><animData interp="Timestep" numKeys="2" duration="1">
<keyValues>3 4</keyValues></animData></animChannel></anim>)");
    const VokSkin& skin = *vok_cast<VokSkin>(&scene.First());
    EXPECT_EQ(skin.GetInfluence(0).target.GetTarget(), &skin);
    EXPECT_EQ((*skin.GetInfluence(0).bindInverse)[0][0], 2.0f);
    EXPECT_EQ(vok_cast<VokAnimChannel>(scene.world.GetChild(2)->GetChild(0))->keyValues,
              (std::vector<float>{3, 4}));
    EXPECT_EQ(FailureOf([&] { static_cast<void>(skin.GetRowCount()); }), Failure{});
}

TEST(Bulk, OfCustomDataWhatRefersToOthersIsKept) {
    BakeScene scene(R"(<node name="n"><customData><attribute name="i" type="int" value="1"/>
<attribute name="f" type="filename">/a/b</attribute></customData></node>
<node name="p"><customData><attribute name="f" type="filename">/a/c</attribute></customData></node>)");
    VokDependencies files;
    CollectDependencies(scene.world, files);
    EXPECT_EQ(files.GetFiles(), (std::vector<std::string>{"/a/b", "/a/c"}));
    EXPECT_EQ(FailureOf([&] { scene.First().GetCustomData(); }),
              (Failure{std::string(kNotLoaded), "|n"}));
    EXPECT_EQ(scene.world.GetChild(2)->GetCustomData().GetCount(), 1u) << "nothing left out";
}

}  // namespace
}  // namespace SceneTest
