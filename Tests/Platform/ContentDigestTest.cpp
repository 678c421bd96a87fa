#include "ContentDigest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

Platform::ContentDigest DigestOf(const std::string& text) {
    Platform::ContentDigest digest;
    digest.Add(text.data(), text.size());
    return digest;
}

TEST(ContentDigest, PiecesMakeNoDifference) {
    Platform::ContentDigest digest = DigestOf("a li");
    digest.Add("", 0);
    digest.Add("ne", 2);
    EXPECT_EQ(digest, DigestOf("a line"));
    EXPECT_EQ(digest.GetSize(), 6u);
}

TEST(ContentDigest, OtherBytesAreAnotherContent) {
    for (const char* const other : {"", "a lin", "b line", "a linf", "a lien", " a line"})
        EXPECT_NE(DigestOf(other), DigestOf("a line")) << other;
}

}  // namespace
