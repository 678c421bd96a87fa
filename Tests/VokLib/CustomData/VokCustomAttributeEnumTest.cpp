#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeEnum.h>

#include <string>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::kNotSingle;
using CustomDataTest::kNoValue;
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

}  // namespace
