#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokBlendTarget.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(BlendTarget, ADiffPastTheLastIsOutOfRange) {
    Scene scene(R"(<blendtarget name="t"><diff name="d"/></blendtarget>)");
    VokBlendTarget& target = scene.First<VokBlendTarget>();
    EXPECT_EQ(target.GetDiff(0).name, "d");
    EXPECT_EQ(FailureOf([&] { target.GetDiff(1); }), (Failure{"Diff index out of range", "|t"}));
}

TEST(BlendTarget, WithoutDiffsItLoadsAndCannotBeWritten) {
    Scene scene(R"(<blendtarget name="t"/>)");
    const Failure none{"No diffs", "|t"};
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokBlendTarget>()); }), none);
    EXPECT_EQ(FailureOf([&] { scene.First<VokBlendTarget>().GetDiff(0); }), none);
}

TEST(BlendTarget, CountsThatLieAreFilledOrRefused) {
    Scene scene(R"(<blendtarget name="t"><diff name="d"><indices count="3">1</indices>
<deltas count="-1">1 2</deltas></diff></blendtarget>)");
    const VokBlendTarget::Diff& diff = scene.First<VokBlendTarget>().GetDiff(0);
    EXPECT_EQ(diff.indices.Get(), (std::vector<unsigned>{1, 0, 0}));
    EXPECT_TRUE(diff.deltas.Get().empty());
}

TEST(BlendTarget, ACountBeyondTheDocumentIsRefused) {
    for (const char* list : {R"(<indices count="4000000000">1 2 3</indices>)",
                             R"(<deltas count="2000000000">1 2 3</deltas>)"})
        EXPECT_TRUE(LoadFailure(R"(<blendtarget name="t"><diff name="d">)" + std::string(list) +
                                "</diff></blendtarget>")
                        .text.starts_with("Counts in the document announce values"))
            << list;
}

TEST(BlendTarget, ListsOutsideADiffAreUnknown) {
    EXPECT_EQ(LoadFailure(R"(<blendtarget name="t"><indices count="0"/></blendtarget>)"),
              (Failure{"Unknown tag \"indices\"", "|t"}));
}

}  // namespace

}  // namespace SceneTest
