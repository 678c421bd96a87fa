#include <gtest/gtest.h>

#include <QelTools/Exception.h>

#include <string>

#include <VokLib/Text/VokEncoding.h>

namespace {

TEST(VokEncoding, HighBytes) {
    EXPECT_FALSE(VokEncoding::HasHighBytes(""));
    EXPECT_FALSE(VokEncoding::HasHighBytes("a\x7F"));
    EXPECT_TRUE(VokEncoding::HasHighBytes("a\x80"));
}

TEST(VokEncoding, EverySingleByteSurvivesBothWays) {
    std::string latin1;
    for (int code = 1; code < 256; ++code) latin1 += static_cast<char>(code);
    EXPECT_EQ(VokEncoding::ToLatin1(VokEncoding::ToUtf8(latin1)), latin1);
    EXPECT_EQ(VokEncoding::ToUtf8("\xE9\xFF"), "\xC3\xA9\xC3\xBF");
    EXPECT_EQ(VokEncoding::ToLatin1("a\xC2\x80\xC3\xBFz"), "a\x80\xFFz");
}

TEST(VokEncoding, WhatNoSingleByteHoldsIsRefused) {
    for (const char* text : {"\xC4\x80", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\x80", "a\xC3",
                             "\xC3(", "\xC1\x81", "\xFF"}) {
        try {
            VokEncoding::ToLatin1(text);
            ADD_FAILURE() << text;
        } catch (const QelTools::Common::Exception& failure) {
            EXPECT_STREQ(failure.what(), "Failed to convert libxml string to ISO-8859-1 form.");
        }
    }
}

}  // namespace
