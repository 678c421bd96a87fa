#include "VokLib/SceneTestTools.h"

#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokNode.h>

using namespace SceneTest;

namespace {

VokObj* MakeNode() {
    return new VokNode;
}
VokObj* MakeScene() {
    return new VokScene;
}

}  // namespace

TEST(Factory, RegistryLivesFromTheFirstEntryToTheLast) {
    EXPECT_EQ(VokFactory::FindFactory("thing"), nullptr);
    EXPECT_EQ(VokFactory::FactoryCount(), 0u);
    VokFactory::UnregisterFactory("thing");
    VokFactory::RegisterFactory("thing", MakeNode);
    VokFactory::RegisterFactory("other", MakeScene);
    EXPECT_EQ(VokFactory::FindFactory("thing"), MakeNode);
    EXPECT_EQ(VokFactory::FindFactory("other", MakeTypeId("other")), MakeScene);
    EXPECT_EQ(VokFactory::FactoryCount(), 2u);
    VokFactory::UnregisterFactory("thing");
    EXPECT_EQ(VokFactory::FindFactory("thing"), nullptr);
    VokFactory::UnregisterFactory("other");
    EXPECT_EQ(VokFactory::FactoryCount(), 0u);
}

TEST(Factory, SecondRegistrationOfANameIsRefused) {
    VokFactory::RegisterFactory("thing", MakeNode);
    EXPECT_EQ(FailureOf([] { VokFactory::RegisterFactory("thing", MakeScene); }),
              OfObject("Factory already registered for object name \"thing\""));
    EXPECT_EQ(VokFactory::FindFactory("thing"), MakeNode);
    VokFactory::UnregisterFactory("thing");
}

TEST(Factory, NamesWithOneIdentifierStandSideBySide) {
    // Two names of one CRC-32.
    ASSERT_EQ(MakeTypeId("plumless"), MakeTypeId("buckeroo"));
    VokFactory::RegisterFactory("plumless", MakeNode);
    VokFactory::RegisterFactory("buckeroo", MakeScene);
    EXPECT_EQ(VokFactory::FindFactory("plumless"), MakeNode);
    EXPECT_EQ(VokFactory::FindFactory("buckeroo"), MakeScene);
    VokFactory::UnregisterFactory("plumless");
    EXPECT_EQ(VokFactory::FindFactory("plumless"), nullptr);
    EXPECT_EQ(VokFactory::FindFactory("buckeroo"), MakeScene);
    VokFactory::UnregisterFactory("buckeroo");
}

TEST(Factory, EveryElementOfTheFormatMakesAnObjectOfItsOwnName) {
    const VokLib library(true, false, false, false, false);
    const char* const elements[] = {"aimConstraint",
                                    "anim",
                                    "animChannel",
                                    "animclip",
                                    "animDiscontinuities",
                                    "blend",
                                    "blendshape",
                                    "blendshapeController",
                                    "blendtarget",
                                    "camera",
                                    "cgshader",
                                    "cluster",
                                    "deformer",
                                    "expression",
                                    "instance",
                                    "joint",
                                    "light",
                                    "locator",
                                    "lodgroup",
                                    "material",
                                    "mesh",
                                    "motionPath",
                                    "multiBlendTarget",
                                    "node",
                                    "nurbs",
                                    "nurbsCurve",
                                    "objset",
                                    "orientationConstraint",
                                    "parentConstraint",
                                    "pmdataQEL",
                                    "pose",
                                    "primitive",
                                    "qelilocator",
                                    "reference",
                                    "rigidBody",
                                    "scaleConstraint",
                                    "scene",
                                    "shader",
                                    "skin",
                                    "springConstraint",
                                    "texture",
                                    "translationConstraint"};
    for (const char* element : elements) {
        const VokFactory::Function make = VokFactory::FindFactory(element);
        ASSERT_NE(make, nullptr) << element;
        const std::unique_ptr<VokObj> object(make());
        EXPECT_EQ(object->GetElementName(), element);
        EXPECT_TRUE(object->IsExactly(MakeTypeId(element))) << element;
        EXPECT_TRUE(object->IsA(MakeTypeId(element))) << element;
        EXPECT_FALSE(object->IsA(0)) << element;
        EXPECT_EQ(object->GetName(), "");
    }
    EXPECT_EQ(VokFactory::FactoryCount(), std::size(elements));
    EXPECT_EQ(std::size(elements), 42u);
    EXPECT_EQ(VokFactory::FindFactory("blindData"), nullptr);
    EXPECT_EQ(VokFactory::FindFactory("constraint"), nullptr);
}
