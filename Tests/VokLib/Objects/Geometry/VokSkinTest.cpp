#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokSkin.h>
#include <VokLib/Objects/Nodes/VokJoint.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

constexpr const char* kJoints = R"(<joint name="a"/><joint name="b"/>)";

TEST(Skin, RoundTripsWhole) {
    const std::string skin =
        "<skin name=\"s\" type=\"linear\">\n"
        "<influence target=\"|a\">\n<bindInverse>1.0 0.0 0.0 0.0 0.0 1.0 0.0 0.0 0.0 0.0 1.0 0.0 "
        "2.0 3.0 4.0 1.0</bindInverse>\n</influence>\n"
        "<influence target=\"|b\" />\n"
        "<weights count=\"3\">2 0 0.5 1 0.5 0 1 1 1.0</weights>\n"
        "<components count=\"3\">7 4294967295 2</components>\n"
        "<node name=\"n\">\n</node>\n<customData>\n<attribute name=\"k\" "
        "type=\"string\">v</attribute>\n</customData>\n</skin>";
    EXPECT_EQ(Rewritten<VokSkin>(kJoints + skin), skin);
}

TEST(Skin, HoldsRowsAndInfluences) {
    Scene scene(std::string(kJoints) + R"(<skin name="s"><influence target="|b"><bindInverse>
1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16</bindInverse></influence><influence target="|a"/>
<weights count="2"> 1 1 .25  2 0 .5 1 .75 </weights></skin>)");
    VokSkin& skin = scene.First<VokSkin>();
    ASSERT_EQ(skin.GetInfluenceCount(), 2u);
    EXPECT_EQ(skin.GetInfluence(0).target.GetTarget(), &scene.At<VokJoint>("|b"));
    EXPECT_EQ(skin.GetInfluence(0).bindInverse->rows[3][0], 13);
    EXPECT_FALSE(skin.GetInfluence(1).bindInverse);
    ASSERT_EQ(skin.GetRowCount(), 2u);
    ASSERT_EQ(skin.GetRow(0).size(), 1u);
    EXPECT_EQ(skin.GetRow(0)[0], (VokSkin::Weight{1, 0.25f}));
    ASSERT_EQ(skin.GetRow(1).size(), 2u);
    EXPECT_EQ(skin.GetRow(1)[1], (VokSkin::Weight{1, 0.75f}));
    EXPECT_FALSE(skin.components);
    EXPECT_EQ(FailureOf([&] { skin.GetInfluence(2); }),
              (Failure{"Influence index out of range", "|s"}));
    const VokSkin& constant = skin;
    EXPECT_EQ(FailureOf([&] { constant.GetInfluence(2); }),
              (Failure{"Influence index out of range", "|s"}));
}

TEST(Skin, WithNothingItWritesNoRows) {
    EXPECT_EQ(Rewritten<VokSkin>(R"(<skin name="s"/>)"),
              "<skin name=\"s\">\n<weights count=\"0\">\n</weights>\n</skin>");
    EXPECT_EQ(Rewritten<VokSkin>(R"(<skin name="s" type=""/>)"),
              "<skin name=\"s\">\n<weights count=\"0\">\n</weights>\n</skin>");
}

TEST(Skin, AnEmptyListOfComponentsIsAListToo) {
    EXPECT_EQ(Rewritten<VokSkin>(R"(<skin name="s"><components count="0"/></skin>)"),
              "<skin name=\"s\">\n<weights count=\"0\">\n</weights>\n<components "
              "count=\"0\">\n</components>\n</skin>");
}

TEST(Skin, AnInfluenceWithoutTargetStaysWithAnEmptyPath) {
    Scene scene(std::string(kJoints) +
                R"(<skin name="s"><influence target="|a"/><influence/></skin>)");
    scene.world.DeleteChild(&scene.At<VokJoint>("|a"));
    EXPECT_EQ(Write(scene.First<VokSkin>()),
              "<skin name=\"s\">\n<influence target=\"\" />\n<influence target=\"\" />\n<weights "
              "count=\"0\">\n</weights>\n</skin>");
}

TEST(Skin, AnInfluenceIndexIsWrittenUnsigned) {
    Scene scene(R"(<skin name="s"><weights count="1">1 -1 0.5</weights></skin>)");
    EXPECT_EQ(scene.First<VokSkin>().GetRow(0)[0].first, -1);
    const std::string written = Write(scene.First<VokSkin>());
    EXPECT_NE(written.find("1 4294967295 0.5"), std::string::npos);
}

TEST(Skin, RowsThatTheTextDoesNotHoldAreEmpty) {
    Scene scene(R"(<skin name="s"><weights count="4">1 0 1.0 2 0 0.5</weights></skin>)");
    const VokSkin& skin = scene.First<VokSkin>();
    ASSERT_EQ(skin.GetRowCount(), 4u);
    ASSERT_EQ(skin.GetRow(1).size(), 2u);
    EXPECT_EQ(skin.GetRow(1)[1], (VokSkin::Weight{0, 0.0f}));
    EXPECT_TRUE(skin.GetRow(3).empty());
}

TEST(Skin, RowsBeyondTheCountAreNotRead) {
    Scene scene(R"(<skin name="s"><weights count="1">1 0 1.0 1 0 0.5</weights></skin>)");
    EXPECT_EQ(scene.First<VokSkin>().GetRowCount(), 1u);
}

TEST(Skin, CountsThatLieAreZeroOrRefused) {
    const auto claimsTooMuch = [](std::string_view contents) {
        return LoadFailure(R"(<skin name="s">)" + std::string(contents) + "</skin>")
            .text.starts_with("Counts in the document announce values");
    };
    EXPECT_TRUE(claimsTooMuch(R"(<weights count="4000000000">0 0 0</weights>)"));
    EXPECT_TRUE(claimsTooMuch(R"(<weights count="1">2000000000 1 0.5</weights>)"));
    EXPECT_TRUE(claimsTooMuch(R"(<components count="2000000000">1 2 3</components>)"));
    Scene scene(R"(<skin name="s"><weights count="-1">1 0 1.0</weights>
<components count="-7">1 2</components></skin>)");
    EXPECT_EQ(scene.First<VokSkin>().GetRowCount(), 0u);
    EXPECT_TRUE(scene.First<VokSkin>().components->Get().empty());
}

TEST(Skin, ARowOfLessThanNoPairsIsEmpty) {
    Scene scene(R"(<skin name="s"><weights count="2">-3 1 0 1.0</weights></skin>)");
    const VokSkin& skin = scene.First<VokSkin>();
    EXPECT_TRUE(skin.GetRow(0).empty());
    EXPECT_EQ(skin.GetRow(1).size(), 1u);
}

TEST(Skin, AMatrixOutsideAnInfluenceIsUnknown) {
    EXPECT_EQ(LoadFailure(R"(<skin name="s"><bindInverse>1</bindInverse></skin>)"),
              (Failure{"Unknown tag \"bindInverse\"", "|s"}));
}

TEST(Skin, ASecondListOfWeightsReplacesTheFirst) {
    Scene scene(R"(<skin name="s"><weights count="2">0 1 0 1.0</weights>
<weights count="1">1 5 0.5</weights></skin>)");
    ASSERT_EQ(scene.First<VokSkin>().GetRowCount(), 1u);
    EXPECT_EQ(scene.First<VokSkin>().GetRow(0)[0], (VokSkin::Weight{5, 0.5f}));
}

}  // namespace
}  // namespace SceneTest
