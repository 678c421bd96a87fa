#include "VoktRigbake/RigbakeTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;
using Counts = std::vector<std::uint32_t>;

constexpr const char* kScene = R"(<scene><node name="n"/><joint name="root">
    <joint name="a"/><joint name="b"/><joint name="c"/></joint></scene>)";

std::string Set(std::string_view name, const Names& members, std::string_view type = "set") {
    std::string text =
        "<objset name=\"" + std::string(name) + "\" type=\"" + std::string(type) + "\">";
    for (const std::string& path : members)
        text += "<member path=\"" + path + "\" membership=\"\"/>";
    return text + "</objset>";
}

std::string BuildFailure(const std::string& sets) {
    TestScene scene(kScene + sets);
    return FailureText([&] { scene.Build({"root"}); });
}

}  // namespace

TEST(LodSets, NameWithoutANumberIsRefused) {
    EXPECT_EQ(BuildFailure(Set("skelLodSet", {})), "Malformed skelLodSet name {|skelLodSet}");
    EXPECT_EQ(BuildFailure(Set("skelLodSetFine", {})),
              "Malformed skelLodSet name {|skelLodSetFine}");
}

TEST(LodSets, TextBehindTheNumberIsIgnored) {
    TestScene scene(kScene + Set("skelLodSet2b", {"||root|a"}) + Set("skelLodSet1", {"||root|c"}));
    EXPECT_EQ(NamesOf(*scene.Build({"root"})), (Names{"root", "b", "c", "a"}));
}

TEST(LodSets, NumberIsReadWithSignAndLeadingBlanks) {
    TestScene scene(kScene + Set("skelLodSet +2", {"||root|a"}) +
                    Set("skelLodSet01", {"||root|b"}));
    EXPECT_EQ(NamesOf(*scene.Build({"root"})), (Names{"root", "c", "b", "a"}));
}

TEST(LodSets, MemberWithoutAnObjectIsRefused) {
    EXPECT_EQ(BuildFailure("<reference name=\"r\" uri=\"/other.qeli\" namespace=\"other\"/>" +
                           Set("skelLodSet1", {"|other:joint"})),
              "Can't get object from path in set {|skelLodSet1}");
    EXPECT_EQ(BuildFailure(Set("skelLodSet1", {""})),
              "Can't get object from path in set {|skelLodSet1}");
}

TEST(LodSets, MemberThatWasDeletedIsRefused) {
    TestScene scene(kScene + Set("skelLodSet1", {"||root|a"}));
    VokJoint* root = scene.Joint("root");
    root->DeleteChild(scene.Joint("a"));
    EXPECT_EQ(FailureText(
                  [&] { static_cast<void>(BuildSkeleton(scene.World(), {root}, false, nullptr)); }),
              "Can't get object from path in set {|skelLodSet1}");
}

TEST(LodSets, MemberThatIsNoJointIsRefused) {
    EXPECT_EQ(BuildFailure(Set("skelLodSet1", {"||root|a", "||n"})),
              "skelLod set contains non-joint object {|skelLodSet1}");
}

TEST(LodSets, FirstFaultInTheDocumentIsReported) {
    EXPECT_EQ(BuildFailure(Set("skelLodSet1", {"||n"}) + Set("skelLodSetX", {})),
              "skelLod set contains non-joint object {|skelLodSet1}");
    EXPECT_EQ(BuildFailure(Set("skelLodSetX", {}) + Set("skelLodSet1", {"||n"})),
              "Malformed skelLodSet name {|skelLodSetX}");
}

TEST(LodSets, OtherSetsAreNotLookedAt) {
    TestScene scene(kScene + Set("skellodset1", {"||n"}) + Set("ns:skelLodSet1", {"||n"}) +
                    Set("skelLodSetX", {"||n"}, "partition") + "<node name=\"holder\">" +
                    Set("skelLodSetX", {"||n"}) + "</node>");
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "a", "b", "c"}));
    EXPECT_EQ(skeleton->lodCounts, Counts{});
}

TEST(LodSets, CountsStandByAscendingLevel) {
    TestScene scene(kScene + Set("skelLodSet9", {"||root|a"}) +
                    Set("skelLodSet3", {"||root|b", "||root|c"}));
    EXPECT_EQ(scene.Build({"root"})->lodCounts, (Counts{2, 1}));
}

TEST(LodSets, EmptySetsHaveARowWhateverTheirLevel) {
    TestScene scene(kScene + Set("skelLodSet5", {}) + Set("skelLodSet-3", {}) +
                    Set("skelLodSet1", {"||root|a"}));
    EXPECT_EQ(scene.Build({"root"})->lodCounts, (Counts{0, 1, 0}));
}

TEST(LodSets, JointInTwoSetsBelongsToTheFirst) {
    TestScene scene(kScene + Set("skelLodSet3", {"||root|a"}) +
                    Set("skelLodSet1", {"||root|a", "||root|b"}));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "c", "b", "a"}));
    EXPECT_EQ(skeleton->lodCounts, (Counts{2, 1})) << "it counts in both";
}

TEST(LodSets, OfTwoSetsWithOneLevelTheLaterIsCounted) {
    TestScene scene(kScene + Set("skelLodSet1", {"||root|a"}) +
                    Set("skelLodSet1b", {"||root|b", "||root|c"}));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(skeleton->lodCounts, (Counts{2, 2}));
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "a", "b", "c"})) << "both are on the level";
}

TEST(LodSets, MemberNamedTwiceCountsTwice) {
    TestScene scene(kScene + Set("skelLodSet1", {"||root|a", "||root|a"}));
    EXPECT_EQ(scene.Build({"root"})->lodCounts, Counts{2});
}

TEST(LodSets, LevelsStandOnceForEachRoot) {
    TestScene scene(R"(<scene><joint name="r"><joint name="r1"/></joint>
                       <joint name="s"><joint name="s1"/></joint></scene>)" +
                    Set("skelLodSet2", {"||s|s1"}) + Set("skelLodSet1", {"||r|r1", "||r"}));
    EXPECT_EQ(scene.Build({"r", "s"})->lodCounts, (Counts{2, 2, 1, 1}));
}

TEST(LodSets, MembersUnderOtherRootsAreLeftOut) {
    TestScene scene(R"(<scene><joint name="r"><joint name="r1"/></joint>
                       <joint name="s"><joint name="s1"/></joint></scene>)" +
                    Set("skelLodSet1", {"||r|r1", "||s|s1", "||s"}));
    const auto skeleton = scene.Build({"r"});
    EXPECT_EQ(skeleton->lodCounts, Counts{1});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"r", "r1"}));
}

TEST(LodSets, RowsUpToTheLimitPass) {
    std::string sets;
    for (std::size_t i = 0; i < kMaxLodRows; ++i) sets += Set("skelLodSet1", {});
    TestScene scene(kScene + sets);
    EXPECT_EQ(scene.Build({"root"})->lodCounts.size(), kMaxLodRows);
}

TEST(LodSets, RowsPastTheLimitAreRefused) {
    std::string sets;
    for (std::size_t i = 0; i <= kMaxLodRows / 2; ++i) sets += Set("skelLodSet1", {});
    TestScene scene("<scene><joint name=\"r\"/><joint name=\"s\"/></scene>" + sets);
    EXPECT_EQ(FailureText([&] {
                  scene.Build({"r", "s"});
              }),
              "Can only handle 65536 level of detail sets in a skeleton, each counted once for "
              "each root. This skeleton has 65538.");
}
