#include "Document/PlainText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(PlainText, NumbersAndWordsArePlain) {
    TextExtent extent;
    EXPECT_TRUE(IsPlainText("-1.5e-1 Word, \"x\" > 'y' [~\x7F", 27, extent));
    EXPECT_EQ(extent.lines, 0u);
    EXPECT_EQ(extent.columns, 27u);
}

TEST(PlainText, OneOtherCharacterIsFoundWhereverItStands) {
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        const bool isPlain = c == '\n' || (code >= 0x20 && code < 0x80 && c != '&' && c != ']');
        for (std::size_t at = 0; at < 300; at += code % 7 + 1) {
            std::string text(300, '1');
            text[at] = c;
            TextExtent extent;
            EXPECT_EQ(IsPlainText(text.data(), text.size(), extent), isPlain) << code << " " << at;
        }
    }
}

TEST(PlainText, LinesAreCountedHoweverManyThereAre) {
    for (std::size_t length = 0; length < 400; ++length) {
        const std::string text = std::string(length, '\n') + std::string(length % 5, 'x');
        TextExtent extent;
        ASSERT_TRUE(IsPlainText(text.data(), text.size(), extent));
        EXPECT_EQ(extent.lines, length);
        EXPECT_EQ(extent.columns, length % 5);
    }
}

}  // namespace
