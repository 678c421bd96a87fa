#include "VoktRigbake/RigbakeTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

namespace {

std::uint32_t SignatureOf(std::string_view body, const std::string& root) {
    TestScene scene(body);
    return scene.Build({root})->signature;
}

/// One joint of a skeleton that no scene stands behind.
void AddJoint(SkeletonData& skeleton, std::uint32_t hash, int parent, int sibling, int child) {
    auto joint = std::make_unique<SkeletonJoint>();
    joint->nameHash = hash;
    joint->parent = parent;
    joint->nextSibling = sibling;
    joint->firstChild = child;
    skeleton.joints.push_back(std::move(joint));
}

}  // namespace

TEST(SkeletonSignature, IsAsOtherToolsCompute) {
    EXPECT_EQ(SignatureOf(R"(<scene><joint name="hips"/></scene>)", "hips"), 0xE93AA345u);
    EXPECT_EQ(SignatureOf(R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
                             </joint></scene>)",
                          "root"),
              0x7375A1B2u);
}

TEST(SkeletonSignature, OfNoJointsIsZero) {
    EXPECT_EQ(ComputeSkeletonSignature(SkeletonData()), 0u);
}

TEST(SkeletonSignature, DoesNotDependOnThePose) {
    EXPECT_EQ(SignatureOf(R"(<scene><joint name="r"><translate>1 2 3</translate>
                             <rotEul rotOrd="zyx">1 2 3</rotEul><scale>2 2 2</scale></joint>
                             </scene>)",
                          "r"),
              SignatureOf(R"(<scene><joint name="r"/></scene>)", "r"));
}

TEST(SkeletonSignature, DoesNotDependOnNamespacesAndLetterCase) {
    EXPECT_EQ(SignatureOf(R"(<scene><joint name="x:Root"/></scene>)", "x:Root"),
              SignatureOf(R"(<scene><joint name="root"/></scene>)", "root"));
}

TEST(SkeletonSignature, DependsOnNamesAndOnTheShape) {
    const std::uint32_t pair = SignatureOf(
        R"(<scene><joint name="r"><joint name="a"/><joint name="b"/></joint></scene>)", "r");
    EXPECT_NE(pair, SignatureOf(R"(<scene><joint name="r"><joint name="b"/><joint name="a"/>
                                   </joint></scene>)",
                                "r"));
    EXPECT_NE(pair, SignatureOf(R"(<scene><joint name="r"><joint name="a"><joint name="b"/>
                                   </joint></joint></scene>)",
                                "r"));
}

TEST(SkeletonSignature, LinksAreMixedAsSigned16BitNumbers) {
    SkeletonData none;
    AddJoint(none, 12345, -1, -1, -1);
    SkeletonData wrapped;
    AddJoint(wrapped, 12345, 0xFFFF, 0x1FFFF, 0xFFFF);
    EXPECT_EQ(ComputeSkeletonSignature(none), ComputeSkeletonSignature(wrapped));
}
