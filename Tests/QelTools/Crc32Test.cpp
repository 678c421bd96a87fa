#include <QelTools/Crc32.h>

#include <gtest/gtest.h>

using QelTools::Common::Crc32;

TEST(Crc32, GivesTheCheckValueOfTheStandard) {
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926u);
}

TEST(Crc32, OfNothingIsZero) {
    EXPECT_EQ(Crc32(""), 0u);
}

TEST(Crc32, OfOneLetter) {
    EXPECT_EQ(Crc32("a"), 0xE8B7BE43u);
}

TEST(Crc32, ByteCountsAsUnsigned) {
    EXPECT_EQ(Crc32("\x80"), 0x3FBA6CADu);
    EXPECT_EQ(Crc32("\xFF"), 0xFF000000u);
}

TEST(Crc32, ZeroBytesCount) {
    EXPECT_EQ(Crc32(std::string_view("\0\0\0\0", 4)), 0x2144DF1Cu);
}
