#include "Text/WordCount.h"

#include <VokLib/Text/VokNumberText.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

using namespace VokNumberText;

namespace {

std::string MakeText(std::mt19937& random, std::size_t length) {
    constexpr std::string_view kCharacters = " \t\n\r0.-e\xC3\xA9\x7F";
    // Long runs of either kind, too.
    const std::size_t blanks = random() % 3 == 0 ? 1 : 4;
    std::string text;
    while (text.size() < length) {
        const char c =
            kCharacters[(random() % 2 == 0 ? random() % blanks : random()) % kCharacters.size()];
        text.append(1 + random() % 5, c);
    }
    return text;
}

std::size_t CountPlainly(std::string_view text) {
    std::size_t words = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        words += !IsBlank(text[i]) && (i == 0 || IsBlank(text[i - 1])) ? 1 : 0;
    return words;
}

}  // namespace

TEST(WordCount, PiecesMakeNoDifference) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = MakeText(random, random() % 400);
        WordCount count;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t piece = std::min<std::size_t>(text.size() - at, random() % 200);
            count.Add(text.data() + at, piece);
            at += piece;
        }
        EXPECT_EQ(count.Get(), CountPlainly(text)) << text;
    }
}

TEST(WordCount, SkippingEndsBehindTheLastWordWanted) {
    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = MakeText(random, random() % 400);
        const std::size_t words = CountPlainly(text);
        const std::size_t wanted = random() % (words + 3);
        const char* cursor = text.data();
        const char* const end = text.data() + text.size();
        EXPECT_EQ(SkipWords(cursor, end, wanted), std::min(wanted, words)) << text;
        const auto passed = static_cast<std::size_t>(cursor - text.data());
        EXPECT_EQ(CountPlainly(text.substr(0, passed)), std::min(wanted, words)) << text;
        if (wanted <= words && wanted != 0) {
            EXPECT_FALSE(IsBlank(cursor[-1])) << text;
            EXPECT_TRUE(cursor == end || IsBlank(*cursor)) << text;
        }
    }
}
