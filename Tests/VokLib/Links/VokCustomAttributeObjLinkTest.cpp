#include <gtest/gtest.h>

#include <VokLib/Links/VokCustomAttributeObjLink.h>
#include <VokLib/Tree/VokScene.h>

#include <string>
#include <vector>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::CustomData;
using CustomDataTest::IndicesOf;
using CustomDataTest::kNotArray;
using CustomDataTest::kNotSingle;
using CustomDataTest::kNoValue;
using CustomDataTest::Loaded;
using CustomDataTest::LoadFailure;

std::string Wrapped(const std::string& attribute) {
    return "<customData>\n" + attribute + "\n</customData>";
}

TEST(VokCustomAttributeObjLink, LinkResolvesWithTheDocument) {
    SceneTest::Scene scene(
        CustomData("<attribute name=\"a\" type=\"objlink\">|target</attribute>"
                   "<attribute name=\"b\" type=\"objlink\" isArray=\"true\">"
                   "<value index=\"4\">|target</value><value>|target</value></attribute>") +
        "<scene name=\"target\"/>");
    VokCustomData& data = scene.world.GetCustomData();
    VokObj* const target = scene.world.FindChild("target");
    const auto& single = dynamic_cast<VokCustomAttributeObjLink&>(data.GetAttribute(0));
    const auto& array = dynamic_cast<VokCustomAttributeObjLink&>(data.GetAttribute(1));
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(single.GetValue().GetTarget(), target);
    EXPECT_EQ(array.GetValueAt(4).GetTarget(), target);
    EXPECT_EQ(IndicesOf(array), (std::vector<int>{0, 4}));

    target->SetName("renamed");
    const std::string renamed =
        "<customData>\n<attribute name=\"a\" type=\"objlink\">|renamed</attribute>\n"
        "<attribute name=\"b\" type=\"objlink\" isArray=\"true\">\n"
        "<value index=\"0\">|renamed</value>\n<value index=\"4\">|renamed</value>\n</attribute>\n"
        "</customData>";
    EXPECT_EQ(CustomDataTest::Write(data), renamed);
    const VokCustomData copy = data;
    EXPECT_EQ(CustomDataTest::Write(copy), renamed);

    scene.world.DeleteChild(target);
    EXPECT_FALSE(single.GetValue().IsValid());
    EXPECT_EQ(CustomDataTest::Write(copy),
              "<customData>\n<attribute name=\"a\" type=\"objlink\"></attribute>\n"
              "<attribute name=\"b\" type=\"objlink\" isArray=\"true\">\n"
              "<value index=\"0\"></value>\n<value index=\"4\"></value>\n</attribute>\n"
              "</customData>");
}

TEST(VokCustomAttributeObjLink, BrokenLinkStopsTheLoad) {
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"objlink\">||nowhere</attribute>"),
              "Unresolved VokObjLinks");
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"objlink\">nowhere</attribute>"),
              "Unrecognised path format: nowhere");
}

TEST(VokCustomAttributeObjLink, EmptyPathIsNoLink) {
    Loaded loaded("<attribute name=\"a\" type=\"objlink\"/>");
    EXPECT_FALSE(loaded.First<VokCustomAttributeObjLink>().GetValue().HasTarget());
    EXPECT_EQ(loaded.Written(), Wrapped("<attribute name=\"a\" type=\"objlink\"></attribute>"));
}

TEST(VokCustomAttributeObjLink, SecondPathForOneIndexIsRefused) {
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"objlink\" isArray=\"true\">"
                          "<value>|x</value><value index=\"0\">|x</value></attribute>"),
              "objlink has valid iterator but no target");
}

TEST(VokCustomAttributeObjLink, TextOutsideAValueGivesNoLink) {
    Loaded loaded("<attribute name=\"a\" type=\"objlink\" isArray=\"true\">nowhere</attribute>");
    EXPECT_TRUE(IndicesOf(loaded.Data().GetAttribute(0)).empty());
}

TEST(VokCustomAttributeObjLink, OneKindIsNotTheOther) {
    const SceneTest::Library library;
    VokScene target;
    VokCustomAttributeObjLink single("a", "objlink", false);
    EXPECT_EQ(IndicesOf(single), (std::vector<int>{0}));
    EXPECT_FALSE(single.GetValue().IsValid());
    EXPECT_EQ(FailureOf([&] { single.GetValueAt(0); }).text, kNotArray);
    EXPECT_EQ(FailureOf([&] { single.SetValueAt(0, VokObjLinkHandle(nullptr)); }).text, kNotArray);
    VokObjLinkHandle handle(nullptr);
    handle.SetTarget(&target);
    single.SetValue(std::move(handle));
    EXPECT_EQ(single.GetValue().GetTarget(), &target);

    VokCustomAttributeObjLink array("a", "objlink", true);
    EXPECT_EQ(FailureOf([&] { array.GetValue(); }).text, kNotSingle);
    EXPECT_EQ(FailureOf([&] { array.SetValue(VokObjLinkHandle(nullptr)); }).text, kNotSingle);
    EXPECT_EQ(FailureOf([&] { array.GetValueAt(0); }).text, kNoValue);
    array.SetValueAt(2, VokObjLinkHandle(nullptr));
    EXPECT_FALSE(array.GetValueAt(2).IsValid());
}

}  // namespace
