#include "VokLib/SceneTestTools.h"

#include <VokLib/CustomData/VokCustomAttributeString.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>

using namespace SceneTest;

class ObjWrite : public SceneTest::Test {
  protected:
    static void AddText(VokObj& object, const std::string& text) {
        auto attribute = std::make_unique<VokCustomAttributeString>("t", "string", false);
        attribute->SetValue(text);
        object.GetCustomData().AddAttribute(std::move(attribute));
    }

    VokWorld world;
};

TEST_F(ObjWrite, ContentsComeFirstThenChildrenThenCustomData) {
    VokNode* node = Add<VokNode>(world.GetHierarchy(), "n");
    node->scale = {2, 1, 1};
    AddText(*node, "x");
    Add<VokNode>(node, "c");
    EXPECT_EQ(Write(*node),
              "<node name=\"n\">\n<scale>2.0 1.0 1.0</scale>\n<node name=\"c\">\n</node>\n"
              "<customData>\n<attribute name=\"t\" type=\"string\">x</attribute>\n</customData>\n"
              "</node>");
}

TEST_F(ObjWrite, EmptyTypeOpensWhenItHoldsSomething) {
    VokNode* node = Add<VokNode>(world.GetHierarchy(), "n");
    VokInstance* instance = Add<VokInstance>(node, "i");
    EXPECT_EQ(Write(*node), "<node name=\"n\">\n<instance name=\"i\" target=\"\" />\n</node>");
    Add<VokNode>(instance, "c");
    EXPECT_EQ(Write(*instance),
              "<instance name=\"i\" target=\"\">\n<node name=\"c\">\n</node>\n</instance>");
    instance->DeleteChild(instance->GetChild(0));
    AddText(*instance, "x");
    EXPECT_EQ(Write(*instance),
              "<instance name=\"i\" target=\"\">\n<customData>\n"
              "<attribute name=\"t\" type=\"string\">x</attribute>\n</customData>\n</instance>");
}

TEST_F(ObjWrite, OnlyTheHierarchyIsWrittenWithoutAName) {
    Add<VokScene>(world.GetHierarchy(), "");
    EXPECT_EQ(Write(*world.GetHierarchy()), "<scene>\n<scene name=\"\">\n</scene>\n</scene>");
    EXPECT_EQ(Write(*Add<VokScene>(&world, "")), "<scene name=\"\">\n</scene>");
    EXPECT_EQ(Write(*Add<VokNode>(&world, "")), "<node name=\"\">\n</node>");
    world.GetHierarchy()->SetName("named");
    EXPECT_EQ(Write(*world.GetChild(0)),
              "<scene name=\"named\">\n<scene name=\"\">\n</scene>\n</scene>");
}
