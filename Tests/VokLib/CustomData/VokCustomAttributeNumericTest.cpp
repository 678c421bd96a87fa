#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeNumeric.h>

#include <string>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::IndicesOf;
using CustomDataTest::kNotArray;
using CustomDataTest::kNotSingle;
using CustomDataTest::kNoValue;
using CustomDataTest::Loaded;
using CustomDataTest::LoadFailure;
using Int = VokCustomAttributeNumeric<int>;

std::string Wrapped(const std::string& attribute) {
    return "<customData>\n" + attribute + "\n</customData>";
}

TEST(VokCustomAttributeNumeric, WrittenAttributesStandInOneOrder) {
    Loaded loaded(
        "<attribute dimension=\"time\" value=\"5\" default=\"4\" max=\"3\" min=\"-2\" type=\"int\" "
        "name=\"a\"/>");
    EXPECT_EQ(loaded.Written(),
              Wrapped("<attribute name=\"a\" type=\"int\" min=\"-2\" max=\"3\" default=\"4\" "
                      "value=\"5\" dimension=\"time\">\n</attribute>"));
    const Int& attribute = loaded.First<Int>();
    EXPECT_TRUE(attribute.HasMinimum() && attribute.HasMaximum());
    EXPECT_EQ(attribute.GetMinimum(), -2);
    EXPECT_EQ(attribute.GetMaximum(), 3);
    EXPECT_EQ(attribute.GetDefault(), 4);
    EXPECT_EQ(attribute.GetValue(), 5);
    EXPECT_EQ(attribute.GetDimension(), VokDimension::Time);
}

TEST(VokCustomAttributeNumeric, AbsentOnesAreZeroAndNotSet) {
    Loaded loaded("<attribute name=\"a\" type=\"int\" value=\"5\" dimension=\"Angle\"/>");
    const Int& attribute = loaded.First<Int>();
    EXPECT_FALSE(attribute.HasMinimum() || attribute.HasMaximum());
    EXPECT_EQ(attribute.GetDefault(), 0);
    EXPECT_EQ(attribute.GetDimension(), VokDimension::None);
}

TEST(VokCustomAttributeNumeric, EveryTypeReadsAndWritesItsOwnForm) {
    const auto rewritten = [](const std::string& type, const std::string& value) {
        return Loaded("<attribute name=\"a\" type=\"" + type + "\" value=\"" + value + "\"/>")
            .Written();
    };
    const auto expected = [](const std::string& type, const std::string& zero,
                             const std::string& value) {
        return Wrapped("<attribute name=\"a\" type=\"" + type + "\" default=\"" + zero +
                       "\" value=\"" + value + "\">\n</attribute>");
    };
    EXPECT_EQ(rewritten("bool", "1"), expected("bool", "false", "true"));
    EXPECT_EQ(rewritten("bool", "TRUE"), expected("bool", "false", "false"));
    EXPECT_EQ(rewritten("int", "7x"), expected("int", "0", "7"));
    EXPECT_EQ(rewritten("float", "0x1p3"), expected("float", "0.0", "8.0"));
    EXPECT_EQ(rewritten("vector2", "1 2"), expected("vector2", "0.0 0.0", "1.0 2.0"));
    EXPECT_EQ(rewritten("vector3", "1 2 3"), expected("vector3", "0.0 0.0 0.0", "1.0 2.0 3.0"));
    EXPECT_EQ(rewritten("vector3", "1 2"), expected("vector3", "0.0 0.0 0.0", "0.0 0.0 0.0"));
    EXPECT_EQ(rewritten("vector4", "1 2 3 4"),
              expected("vector4", "0.0 0.0 0.0 0.0", "1.0 2.0 3.0 4.0"));
}

TEST(VokCustomAttributeNumeric, Dimensions) {
    for (const char* dimension : {"angle", "distance", "time"}) {
        const std::string text =
            "<attribute name=\"a\" type=\"float\" default=\"0.0\" "
            "value=\"1.0\" dimension=\"" +
            std::string(dimension) + "\">\n</attribute>";
        EXPECT_EQ(Loaded(text).Written(), Wrapped(text));
    }
}

TEST(VokCustomAttributeNumeric, ValuesAreNotHeldToTheirBounds) {
    Loaded loaded("<attribute name=\"a\" type=\"int\" min=\"1\" max=\"2\" value=\"9\"/>");
    EXPECT_EQ(loaded.First<Int>().GetValue(), 9);
}

TEST(VokCustomAttributeNumeric, WithoutAValueItCannotBeWritten) {
    Loaded loaded("<attribute name=\"a\" type=\"int\"/>");
    EXPECT_EQ(FailureOf([&] { loaded.Written(); }).text, kNoValue);
    EXPECT_TRUE(IndicesOf(loaded.First<Int>()).empty());
}

TEST(VokCustomAttributeNumeric, ArrayValuesInIndexOrder) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"vector2\" isArray=\"1\" default=\"1 1\">"
        "<value index=\"3\">3 3</value><value>1 2</value><value index=\"-1\"> 5\n6 </value>"
        "</attribute>");
    EXPECT_EQ(IndicesOf(loaded.Data().GetAttribute(0)), (std::vector<int>{-1, 0, 3}));
    EXPECT_EQ(loaded.Written(),
              Wrapped("<attribute name=\"a\" type=\"vector2\" isArray=\"true\" default=\"1.0 1.0\">"
                      "\n<value index=\"-1\">5.0 6.0</value>\n<value index=\"0\">1.0 2.0</value>"
                      "\n<value index=\"3\">3.0 3.0</value>\n</attribute>"));
}

TEST(VokCustomAttributeNumeric, LaterValueOfAnIndexStands) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"int\" isArray=\"true\"><value index=\"1\">10</value>"
        "<value index=\"0\">20</value><value index=\"1\">30</value><value index=\"0\">40</value>"
        "<value index=\"1\">50</value></attribute>");
    EXPECT_EQ(IndicesOf(loaded.First<Int>()), (std::vector<int>{0, 1}));
    EXPECT_EQ(loaded.First<Int>().GetValueAt(0), 40);
    EXPECT_EQ(loaded.First<Int>().GetValueAt(1), 50);
}

TEST(VokCustomAttributeNumeric, BoolValuesAreTrueOnlyWithoutABlankBehind) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"bool\" isArray=\"true\"><value index=\"0\">true</value>"
        "<value index=\"1\">1 </value><value index=\"2\"> 1</value></attribute>");
    const auto& attribute = loaded.First<VokCustomAttributeNumeric<bool>>();
    EXPECT_TRUE(attribute.GetValueAt(0));
    EXPECT_FALSE(attribute.GetValueAt(1));
    EXPECT_TRUE(attribute.GetValueAt(2));
    EXPECT_NE(loaded.Written().find("<value index=\"0\">1</value>\n<value index=\"1\">0</value>"),
              std::string::npos);
}

TEST(VokCustomAttributeNumeric, ElementInsideAValueTakesItsPlace) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"int\" isArray=\"true\"><value index=\"2\">1<x>5</x>7</value>"
        "</attribute>");
    EXPECT_EQ(IndicesOf(loaded.First<Int>()), (std::vector<int>{2}));
    EXPECT_EQ(loaded.First<Int>().GetValueAt(2), 5);
}

TEST(VokCustomAttributeNumeric, ArrayWithAValueAttributeIsRefused) {
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"int\" isArray=\"true\" value=\"1\"/>"),
              kNotSingle);
}

TEST(VokCustomAttributeNumeric, OneKindIsNotTheOther) {
    Int array("a", "int", true);
    EXPECT_EQ(FailureOf([&] { array.GetValue(); }).text, kNotSingle);
    EXPECT_EQ(FailureOf([&] { array.SetValue(1); }).text, kNotSingle);
    EXPECT_EQ(FailureOf([&] { array.GetValueAt(0); }).text, kNoValue);
    array.SetValueAt(5, 1);
    EXPECT_EQ(array.GetValueAt(5), 1);
    EXPECT_EQ(FailureOf([&] { array.GetValueAt(4); }).text, kNoValue);

    Int single("a", "int", false);
    EXPECT_EQ(FailureOf([&] { single.GetValueAt(0); }).text, kNotArray);
    EXPECT_EQ(FailureOf([&] { single.SetValueAt(0, 1); }).text, kNotArray);
    EXPECT_EQ(FailureOf([&] { single.GetValue(); }).text, kNoValue);
    single.SetValue(1);
    EXPECT_EQ(single.GetValue(), 1);
    EXPECT_EQ(IndicesOf(single), (std::vector<int>{0}));
}

TEST(VokCustomAttributeNumeric, ValuesInAnyOrderAreKept) {
    std::string values;
    constexpr int kCount = 20000;
    for (int i = kCount - 1; i >= 0; --i)
        values +=
            "<value index=\"" + std::to_string(i) + "\">" + std::to_string(2 * i) + "</value>";
    Loaded loaded("<attribute name=\"a\" type=\"int\" isArray=\"true\">" + values + "</attribute>");
    ASSERT_EQ(IndicesOf(loaded.First<Int>()).size(), static_cast<std::size_t>(kCount));
    for (int i = 0; i < kCount; ++i) ASSERT_EQ(loaded.First<Int>().GetValueAt(i), 2 * i);
}

}  // namespace
