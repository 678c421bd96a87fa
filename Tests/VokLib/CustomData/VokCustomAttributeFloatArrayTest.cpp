#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeFloatArray.h>

#include <string>
#include <vector>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::IndicesOf;
using CustomDataTest::Loaded;
using CustomDataTest::LoadFailure;

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

}  // namespace
