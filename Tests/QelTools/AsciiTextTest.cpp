#include <QelTools/AsciiText.h>

#include <gtest/gtest.h>

namespace {

using QelTools::Common::EqualsIgnoringCase;
using QelTools::Common::ToLowerAscii;

TEST(AsciiText, OnlyTheLettersOfAsciiHaveACase) {
    EXPECT_EQ(ToLowerAscii("AZaz09_@[`{"), "azaz09_@[`{");
    EXPECT_EQ(ToLowerAscii("\xC4\xE4\xFF"), "\xC4\xE4\xFF");
    EXPECT_EQ(ToLowerAscii(""), "");
}

TEST(AsciiText, TextsCompareWhole) {
    EXPECT_TRUE(EqualsIgnoringCase("Scene.QELI", "sCENE.qeli"));
    EXPECT_TRUE(EqualsIgnoringCase("", ""));
    EXPECT_FALSE(EqualsIgnoringCase("scene", "scene.qeli"));
    EXPECT_FALSE(EqualsIgnoringCase("scene.qeli", "scene"));
    EXPECT_FALSE(EqualsIgnoringCase("a", "b"));
}

TEST(AsciiText, BytesBeyondAsciiAreEqualOnlyToThemselves) {
    EXPECT_TRUE(EqualsIgnoringCase("\xC4", "\xC4"));
    EXPECT_FALSE(EqualsIgnoringCase("\xC4", "\xE4"));
    EXPECT_FALSE(EqualsIgnoringCase("@", "`"));
}

}  // namespace
