#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Objects/Sets/VokObjSet.h>
#include <VokLib/Tree/VokNode.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kTwoNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";

}  // namespace

TEST(VokObjSet, WritesWhatItReads) {
    const std::string text = R"(<objset name="s" type="lod">
<member path="||b" membership="1" />
<member path="||a" membership="" />
</objset>)";
    EXPECT_EQ(Rewritten<VokObjSet>(text + std::string(kTwoNodes)), text);
}

TEST(VokObjSet, WithoutMembersItWritesItsAttributesOnly) {
    EXPECT_EQ(Rewritten<VokObjSet>(R"(<objset name="s"/>)"),
              "<objset name=\"s\" type=\"\">\n</objset>");
}

TEST(VokObjSet, AnEmptyOrAbsentPathIsAMemberWithoutAnObject) {
    Scene scene(R"(<objset name="s"><member path=""/><member membership="m"/></objset>)");
    const auto& set = scene.First<VokObjSet>();
    ASSERT_EQ(set.GetMemberCount(), 2u);
    EXPECT_FALSE(set.GetMember(0).object.IsValid());
    EXPECT_FALSE(set.GetMember(1).object.IsValid());
    EXPECT_EQ(Write(set), R"(<objset name="s" type="">
<member path="" membership="" />
<member path="" membership="m" />
</objset>)");
}

TEST(VokObjSet, AnIndexOutsideTheMembersIsRefused) {
    Scene scene(R"(<objset name="s"><member path=""/></objset>)");
    const auto& set = scene.First<VokObjSet>();
    EXPECT_EQ(FailureOf([&] { set.GetMember(1); }),
              (Failure{"objset member index out of range", "|s"}));
}

TEST(VokObjSet, AMemberWhoseObjectDiesStaysWithoutOne) {
    Scene scene(std::string(kTwoNodes) +
                R"(<objset name="s" type=""><member path="||a" membership="1"/>
        <member path="||b" membership="2"/></objset>)");
    auto& set = scene.First<VokObjSet>();
    VokScene* hierarchy = scene.world.GetHierarchy();
    hierarchy->DeleteChild(hierarchy->FindChild("a"));
    EXPECT_FALSE(set.GetMember(0).object.IsValid());
    EXPECT_EQ(VokObjLinkStore::Get().GetCount(), 1u);
    EXPECT_EQ(Write(set), R"(<objset name="s" type="">
<member path="" membership="1" />
<member path="||b" membership="2" />
</objset>)");
}

TEST(VokObjSet, ANoticeForAnUnknownMemberIsRefused) {
    Scene scene(std::string(kTwoNodes) + R"(<objset name="s"><member path="||a"/></objset>)");
    auto& set = scene.First<VokObjSet>();
    VokObjSet::Member stranger(&set, 7);
    VokObjLink link;
    link.owner = &set;
    EXPECT_EQ(
        FailureOf([&] { VokObjSet::OnMemberDeleted(VokObjLinkStore::Get(), link, &stranger); }),
        (Failure{"objset deletion callback from unknown member", "|s"}));
}

TEST(VokObjSet, MembersOfReferencedDocumentsStayUnresolved) {
    Scene scene(R"(<reference name="r" uri="other.qeli" namespace="ns"/>
        <objset name="s"><member path="|ns:x|ns:y"/></objset>)");
    EXPECT_FALSE(scene.First<VokObjSet>().GetMember(0).object.HasTarget());
    EXPECT_EQ(scene.First<VokObjSet>().GetMember(0).object.GetPath().GetText(), "|ns:x|ns:y");
}
