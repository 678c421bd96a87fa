#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeString.h>

#include <string>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::kNoValue;
using CustomDataTest::Loaded;

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

}  // namespace
