#include <gtest/gtest.h>

#include <QelTools/Exception.h>

#include <limits>
#include <string>

#include <VokLib/Text/VokAttributes.h>

namespace {

VokAttributes With(const char* value) {
    VokAttributes attributes;
    attributes.Add("a", value);
    return attributes;
}

TEST(VokAttributes, EntriesInOrderAndNullPastTheEnd) {
    VokAttributes attributes;
    attributes.Add("a", "1");
    attributes.Add("b", "2");
    ASSERT_EQ(attributes.GetCount(), 2u);
    EXPECT_STREQ(attributes.GetName(1), "b");
    EXPECT_STREQ(attributes.GetValue(1), "2");
    EXPECT_EQ(attributes.GetName(2), nullptr);
    EXPECT_EQ(attributes.GetValue(2), nullptr);
}

TEST(VokAttributes, FindGivesTheFirstOfExactlyThisName) {
    VokAttributes attributes;
    attributes.Add("name2", "x");
    attributes.Add("nam", "y");
    attributes.Add("name", "1");
    attributes.Add("name", "2");
    EXPECT_STREQ(attributes.Find("name"), "1");
    EXPECT_TRUE(attributes.Has("nam"));
    EXPECT_FALSE(attributes.Has("Name"));
    EXPECT_FALSE(attributes.Has(""));
    EXPECT_EQ(attributes.Find("other"), nullptr);
}

TEST(VokAttributes, ViewsPointAtTheCallersText) {
    VokAttributes attributes;
    const char* const value = "v";
    attributes.AddView("n", value);
    EXPECT_EQ(attributes.Find("n"), value);
    attributes.Set("n", "owned");
    EXPECT_STREQ(attributes.Find("n"), "owned");
    attributes.Clear();
    EXPECT_EQ(attributes.GetCount(), 0u);
}

TEST(VokAttributes, CopyOwnsItsTexts) {
    std::string value = "before";
    VokAttributes attributes;
    attributes.AddView("n", value.c_str());
    const VokAttributes copy = attributes;
    VokAttributes assigned;
    assigned.Add("gone", "x");
    assigned = attributes;
    value[0] = 'X';
    EXPECT_STREQ(copy.Find("n"), "before");
    EXPECT_STREQ(assigned.Find("n"), "before");
    EXPECT_EQ(assigned.GetCount(), 1u);
}

TEST(VokAttributes, SetReplacesTheFirstAndAddDoesNotSearch) {
    VokAttributes attributes;
    attributes.Add("a", "1");
    attributes.Add("a", "2");
    attributes.Set("a", attributes.GetValue(1));
    attributes.Set("b", "3");
    ASSERT_EQ(attributes.GetCount(), 3u);
    EXPECT_STREQ(attributes.GetValue(0), "2");
    EXPECT_STREQ(attributes.GetValue(1), "2");
    EXPECT_STREQ(attributes.GetName(2), "b");
}

TEST(VokAttributes, BoolIsTrueForTwoTextsOnly) {
    EXPECT_TRUE(With("true").GetBool("a", false));
    EXPECT_TRUE(With("1").GetBool("a", false));
    for (const char* text : {"TRUE", "True", "false", "0", "2", "", "true ", " true", "yes"})
        EXPECT_FALSE(With(text).GetBool("a", true)) << text;
    EXPECT_TRUE(With("x").GetBool("b", true));
    EXPECT_FALSE(With("true").GetBool("b", false));
}

TEST(VokAttributes, NumbersAreScannedAndAbsentOnesAreTheDefault) {
    EXPECT_EQ(With(" -12x").GetInt("a", 5), -12);
    EXPECT_EQ(With("x").GetInt("a", 5), 0);
    EXPECT_EQ(With("").GetInt("b", 5), 5);
    EXPECT_EQ(With("4294967295").GetUnsigned("a", 5), 4294967295u);
    EXPECT_EQ(With("").GetUnsigned("b", 5), 5u);
    EXPECT_EQ(With("1.5").GetFloat("a", 5), 1.5f);
    EXPECT_EQ(With("").GetFloat("b", 5), 5.0f);
    EXPECT_EQ(With("x").GetFloat("a", 5), 0.0f);
}

TEST(VokAttributes, FloatGoesThroughTheScanner) {
    EXPECT_EQ(With("0x1p3").GetFloat("a", 0), 8.0f);
    EXPECT_EQ(With("INF").GetFloat("a", 0), std::numeric_limits<float>::infinity());
    EXPECT_EQ(With("0x1p3 INF").GetVector2("a", {7, 7}), (VokVector2{0, 0}));
}

TEST(VokAttributes, VectorsWantExactlyTheirNumberOfTokens) {
    const VokVector2 two{8, 9};
    const VokVector3 three{7, 8, 9};
    const VokVector4 four{6, 7, 8, 9};
    EXPECT_EQ(With(" 1\t2 ").GetVector2("a", two), (VokVector2{1, 2}));
    EXPECT_EQ(With("1").GetVector2("a", two), two);
    EXPECT_EQ(With("1 2 3").GetVector2("a", two), two);
    EXPECT_EQ(With("1 2.5 -3x").GetVector3("a", three), (VokVector3{1, 2.5f, -3}));
    EXPECT_EQ(With("1 2").GetVector3("a", three), three);
    EXPECT_EQ(With("1 2 3 4").GetVector3("a", three), three);
    EXPECT_EQ(With("1 2 3 4").GetVector4("a", four), (VokVector4{1, 2, 3, 4}));
    EXPECT_EQ(With("1 2 3").GetVector4("a", four), four);
    EXPECT_EQ(With("1 2 3 4 5").GetVector4("a", four), four);
    EXPECT_EQ(With("").GetVector4("a", four), four);
    EXPECT_EQ(With("1 2").GetVector2("b", two), two);
}

TEST(VokAttributes, StringsAndRequiredTexts) {
    EXPECT_EQ(With("x y").GetString("a"), "x y");
    EXPECT_EQ(With("x").GetString("b", "z"), "z");
    EXPECT_EQ(With("").GetString("a", "z"), "");
    EXPECT_EQ(With("x").GetRequired("a"), "x");
    try {
        With("x").GetRequired("b");
        FAIL();
    } catch (const QelTools::Common::Exception& failure) {
        EXPECT_STREQ(failure.what(), "Missing attribute in parse");
    }
}

TEST(VokAttributes, TypedSettersWriteTheDocumentsForms) {
    VokAttributes attributes;
    attributes.SetString("s", "x");
    attributes.SetBool("t", true);
    attributes.SetBool("f", false);
    attributes.SetInt("i", std::numeric_limits<int>::min());
    attributes.SetUnsigned("u", 4294967295u);
    attributes.SetFloat("r", 0.1f);
    attributes.SetVector2("v2", {1, -0.0f});
    attributes.SetVector3("v3", {1.5f, 100, 1e9f});
    attributes.SetVector4("v4", {-3.40282347e38f, -1.40129846e-45f, -0.1f, -1.17549435e-38f});
    EXPECT_STREQ(attributes.Find("s"), "x");
    EXPECT_STREQ(attributes.Find("t"), "true");
    EXPECT_STREQ(attributes.Find("f"), "false");
    EXPECT_STREQ(attributes.Find("i"), "-2147483648");
    EXPECT_STREQ(attributes.Find("u"), "4294967295");
    EXPECT_STREQ(attributes.Find("r"), "1.00000001e-1");
    EXPECT_STREQ(attributes.Find("v2"), "1.0 -0.0");
    EXPECT_STREQ(attributes.Find("v3"), "1.5 100.0 1.00000000e9");
    EXPECT_STREQ(attributes.Find("v4"),
                 "-3.40282347e38 -1.40129846e-45 -1.00000001e-1 -1.17549435e-38");
    EXPECT_EQ(attributes.GetCount(), 9u);
}

}  // namespace
