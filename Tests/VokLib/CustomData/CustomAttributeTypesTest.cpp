#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeEnum.h>
#include <VokLib/CustomData/VokCustomAttributeFilename.h>
#include <VokLib/CustomData/VokCustomAttributeFloatArray.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>
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
using SceneTest::FailureOf;

std::string Rewritten(const std::string& attributes) {
    return Loaded(attributes).Written();
}

std::string Wrapped(const std::string& attribute) {
    return "<customData>\n" + attribute + "\n</customData>";
}

/// Reading and writing leave the text as it is, whatever stands between the tags.
void ExpectUnchanged(const std::string& attribute) {
    EXPECT_EQ(Rewritten(attribute), Wrapped(attribute));
}

TEST(VokCustomAttributeEnum, FieldsInIndexOrderThenValues) {
    EXPECT_EQ(Rewritten("<attribute name=\"a\" type=\"enum\" value=\"2\" default=\"1\">"
                        "<field index=\"2\" name=\"two\"/><field name=\"zero &quot;&amp;\"/>"
                        "<field name=\"gone\" index=\"7\"/><field name=\"seven\" index=\"7\"/>"
                        "</attribute>"),
              Wrapped("<attribute name=\"a\" type=\"enum\" default=\"1\" value=\"2\">\n"
                      "<field name=\"zero &quot;&amp;\" index=\"0\" />\n"
                      "<field name=\"two\" index=\"2\" />\n"
                      "<field name=\"seven\" index=\"7\" />\n</attribute>"));
    ExpectUnchanged(
        "<attribute name=\"a\" type=\"enum\" isArray=\"true\" default=\"0\">\n"
        "<field name=\"x\" index=\"1\" />\n<value index=\"0\">1</value>\n"
        "<value index=\"4\">-2</value>\n</attribute>");
}

TEST(VokCustomAttributeEnum, FieldGivesNoValue) {
    Loaded loaded("<attribute name=\"a\" type=\"enum\"><field name=\"x\">5</field></attribute>");
    auto& attribute = loaded.First<VokCustomAttributeEnum>();
    EXPECT_EQ(FailureOf([&] { attribute.GetValue(); }).text, kNoValue);
    EXPECT_EQ(FailureOf([&] { loaded.Written(); }).text, kNoValue);
    attribute.AddField("y", 0);
    ASSERT_NE(attribute.GetFields().Find(0), nullptr);
    EXPECT_EQ(*attribute.GetFields().Find(0), "y");
    EXPECT_EQ(attribute.GetFields().Find(1), nullptr);
}

TEST(VokCustomAttributeEnum, ArrayWithAValueAttributeIsRefused) {
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"enum\" isArray=\"true\" value=\"1\"/>"),
              kNotSingle);
}

TEST(VokCustomAttributeString, TextWithItsBlanksAndEntities) {
    ExpectUnchanged("<attribute name=\"a\" type=\"string\"> x &amp; &lt;y> \n</attribute>");
    ExpectUnchanged("<attribute name=\"a\" type=\"string\"></attribute>");
    ExpectUnchanged("<attribute name=\"a\" type=\"filename\">../tex/t.dds</attribute>");
    for (const std::string type : {"string", "filename"})
        ExpectUnchanged("<attribute name=\"a\" type=\"" + type +
                        "\" isArray=\"true\">\n<value index=\"-3\"> a&amp;b </value>\n"
                        "<value index=\"0\"></value>\n</attribute>");
}

TEST(VokCustomAttributeString, TextIsHeldInSingleBytes) {
    Loaded loaded("<attribute name=\"caf\xE9\" type=\"string\">\xE9t\xE9</attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeString>().GetName(), "caf\xE9");
    EXPECT_EQ(loaded.First<VokCustomAttributeString>().GetValue(), "\xE9t\xE9");
}

TEST(VokCustomAttributeString, OnlyTheTextBehindTheLastChildStays) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"string\">x<value index=\"1\">y</value>z</attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeString>().GetValue(), "z");
}

TEST(VokCustomAttributeString, WithoutAValueItCannotBeWritten) {
    VokCustomData data;
    data.AddAttribute(std::make_unique<VokCustomAttributeString>("a", "string", false));
    EXPECT_EQ(FailureOf([&] { CustomDataTest::Write(data); }).text, kNoValue);
}

TEST(VokCustomAttributeFilename, IsATypeOfItsOwn) {
    Loaded loaded("<attribute name=\"a\" type=\"filename\">t.dds</attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeFilename>().GetValue(), "t.dds");
    EXPECT_EQ(dynamic_cast<VokCustomAttributeString*>(&loaded.Data().GetAttribute(0)), nullptr);
}

TEST(VokCustomAttributeFloatArray, CountAndABlankBehindEach) {
    EXPECT_EQ(Rewritten("<attribute name=\"a\" type=\"floatarray\" count=\"3\">1\n2 3</attribute>"),
              Wrapped("<attribute name=\"a\" type=\"floatarray\" count=\"3\">"
                      "1.0 2.0 3.0 </attribute>"));
    ExpectUnchanged(
        "<attribute name=\"a\" type=\"floatarray\" isArray=\"true\">\n"
        "<value index=\"0\" count=\"2\">1.0 2.0 </value>\n"
        "<value index=\"5\" count=\"1\">-0.0 </value>\n</attribute>");
}

TEST(VokCustomAttributeFloatArray, CountDecidesHowManyAreRead) {
    const auto read = [](const std::string& rest) {
        Loaded loaded("<attribute name=\"a\" type=\"floatarray\" " + rest + "</attribute>");
        return loaded.First<VokCustomAttributeFloatArray>().GetValue();
    };
    EXPECT_EQ(read("count=\"2\">1 2 3"), (std::vector<float>{1, 2}));
    EXPECT_EQ(read("count=\"4\">1 2"), (std::vector<float>{1, 2, 0, 0}));
    EXPECT_EQ(read(">1 2"), std::vector<float>());
    EXPECT_EQ(read("count=\"-1\">1 2"), std::vector<float>());
    EXPECT_EQ(read("count=\"2\">"), (std::vector<float>{0, 0}));
}

TEST(VokCustomAttributeFloatArray, EmptyArrayIsWrittenWithItsCount) {
    Loaded loaded("<attribute name=\"a\" type=\"floatarray\"/>");
    EXPECT_EQ(loaded.Written(),
              Wrapped("<attribute name=\"a\" type=\"floatarray\" count=\"0\">\n</attribute>"));
}

TEST(VokCustomAttributeFloatArray, AngryCountIsRefused) {
    EXPECT_NE(LoadFailure("<attribute name=\"a\" type=\"floatarray\" count=\"2000000000\">1"
                          "</attribute>")
                  .find("announce values that its text does not hold"),
              std::string::npos);
}

TEST(VokCustomAttributeFloatArray, ValueElementsInsideASingleArray) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"floatarray\" count=\"1\"><value index=\"1\" count=\"2\">"
        "5 6</value>7 8</attribute>");
    EXPECT_EQ(IndicesOf(loaded.Data().GetAttribute(0)), (std::vector<int>{0, 1}));
    EXPECT_EQ(loaded.First<VokCustomAttributeFloatArray>().GetValue(), (std::vector<float>{7}));
}

TEST(VokCustomAttributeFloatArray, ValueAtIndexZeroStatesTheCountOfTheAttributesText) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"floatarray\" count=\"1\"><value count=\"2\">"
        "5 6</value>7 8 9</attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeFloatArray>().GetValue(), (std::vector<float>{7, 8}));
}

TEST(VokCustomAttributeFloatArray, ElementInsideAValueStatesTheCountAnew) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"floatarray\" isArray=\"true\"><value index=\"1\" count=\"2\">"
        "5<x count=\"1\">6 7</x>8</value></attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeFloatArray>().GetValueAt(1), (std::vector<float>{6}));
}

TEST(VokCustomAttributeFloatArray, ValueInsideAValueLeavesTheOuterOneItsCountOfZeros) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"floatarray\" isArray=\"true\"><value index=\"4\" count=\"2\">"
        "1 2<value index=\"1\" count=\"1\">7</value>3 4</value></attribute>");
    EXPECT_EQ(loaded.Written(),
              Wrapped("<attribute name=\"a\" type=\"floatarray\" isArray=\"true\">\n"
                      "<value index=\"1\" count=\"1\">7.0 </value>\n"
                      "<value index=\"4\" count=\"2\">0.0 0.0 </value>\n</attribute>"));
}

TEST(VokCustomAttributeFloatArray, AngryCountAroundAValueIsRefused) {
    EXPECT_NE(LoadFailure("<attribute name=\"a\" type=\"floatarray\" isArray=\"true\">"
                          "<value count=\"2000000000\"><value index=\"1\"/></value></attribute>")
                  .find("announce values that its text does not hold"),
              std::string::npos);
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
