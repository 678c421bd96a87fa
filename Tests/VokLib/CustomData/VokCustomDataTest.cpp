#include <gtest/gtest.h>

#include <VokLib/Base/VokException.h>
#include <VokLib/CustomData/VokCustomAttributeNumeric.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::Loaded;
using CustomDataTest::LoadFailure;

TEST(VokCustomData, AttributesInDocumentOrder) {
    Loaded loaded(
        "<attribute name=\"b\" type=\"int\" value=\"1\"/>"
        "<attribute name=\"a\" type=\"string\" isArray=\"true\"/>");
    ASSERT_EQ(loaded.Data().GetCount(), 2u);
    EXPECT_EQ(loaded.Data().GetAttribute(0).GetName(), "b");
    EXPECT_EQ(loaded.Data().GetAttribute(0).GetType(), "int");
    EXPECT_FALSE(loaded.Data().GetAttribute(0).IsArray());
    EXPECT_EQ(loaded.Data().GetAttribute(1).GetName(), "a");
    EXPECT_TRUE(loaded.Data().GetAttribute(1).IsArray());
    EXPECT_EQ(loaded.Written(),
              "<customData>\n"
              "<attribute name=\"b\" type=\"int\" default=\"0\" value=\"1\">\n</attribute>\n"
              "<attribute name=\"a\" type=\"string\" isArray=\"true\">\n</attribute>\n"
              "</customData>");
}

TEST(VokCustomData, NothingIsWrittenOfNoAttributes) {
    EXPECT_EQ(Loaded("").Written(), "");
}

TEST(VokCustomData, IndexPastTheEndIsRefused) {
    Loaded loaded("<attribute name=\"a\" type=\"int\"/>");
    const auto failure = FailureOf([&] { loaded.Data().GetAttribute(1); });
    EXPECT_EQ(failure.text, "Custom data index out of range");
    loaded.Data().Clear();
    EXPECT_EQ(loaded.Data().GetCount(), 0u);
}

TEST(VokCustomData, UnknownTypeStopsTheLoad) {
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"matrix\"/>"),
              "No factory for custom attribute of type: matrix");
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"Int\"/>"),
              "No factory for custom attribute of type: Int");
    EXPECT_EQ(LoadFailure("<attribute name=\"a\"/>"), "No factory for custom attribute of type: ");
}

TEST(VokCustomData, KindOfFailureTellsWhetherThereAreTypesAtAll) {
    const std::string body = CustomDataTest::CustomData("<attribute name=\"a\" type=\"matrix\"/>");
    {
        const SceneTest::Library library;
        VokWorld world;
        EXPECT_THROW(SceneTest::Parse(world, Document(body)), VokException);
    }
    const VokLib library(true, true, false, true, true);
    VokWorld world;
    try {
        SceneTest::Parse(world, Document(body));
        FAIL();
    } catch (const VokException&) {
        FAIL();
    } catch (const QelTools::Common::Exception& failure) {
        EXPECT_STREQ(failure.what(), "No factory for custom attribute of type: matrix");
    }
}

TEST(VokCustomData, ForeignElementOutsideAnAttributeIsAnUnknownTag) {
    EXPECT_EQ(LoadFailure("<foreign/>"), "Unknown tag \"foreign\"");
    EXPECT_EQ(LoadFailure("<attribute name=\"a\" type=\"int\"/><value/>"), "Unknown tag \"value\"");
}

TEST(VokCustomData, ForeignElementInsideAnAttributeIsTaken) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"int\" value=\"3\"><foreign>7</foreign></attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeNumeric<int>>().GetValue(), 3);
}

TEST(VokCustomData, AttributeInsideAnAttributeStandsBesideIt) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"string\">x<attribute name=\"b\" type=\"string\">y</attribute>"
        "z</attribute>");
    ASSERT_EQ(loaded.Data().GetCount(), 2u);
    // The inner end closes the outer one too: its text reaches nobody.
    EXPECT_THROW(loaded.First<VokCustomAttributeString>().GetValue(), QelTools::Common::Exception);
    EXPECT_EQ(dynamic_cast<VokCustomAttributeString&>(loaded.Data().GetAttribute(1)).GetValue(),
              "y");
}

TEST(VokCustomData, SecondCustomDataGoesOnWithTheList) {
    Loaded loaded(
        "<attribute name=\"a\" type=\"int\"/></customData><customData>"
        "<attribute name=\"b\" type=\"int\"/>");
    EXPECT_EQ(loaded.Data().GetCount(), 2u);
}

TEST(VokCustomData, CopiesAreDeep) {
    Loaded loaded("<attribute name=\"a\" type=\"int\" value=\"3\" min=\"1\"/>");
    const std::string before = loaded.Written();
    VokCustomData copy = loaded.Data();
    VokCustomData assigned;
    assigned.AddAttribute(std::make_unique<VokCustomAttributeString>("gone", "string", false));
    assigned = loaded.Data();
    loaded.First<VokCustomAttributeNumeric<int>>().SetValue(4);
    EXPECT_EQ(CustomDataTest::Write(copy), before);
    EXPECT_EQ(CustomDataTest::Write(assigned), before);
    EXPECT_NE(loaded.Written(), before);
}

}  // namespace
