#include <VokLib/Document/VokFields.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

namespace {

unsigned CountOf(std::string_view text, unsigned fallback = 7) {
    VokAttributes attributes;
    attributes.SetString("count", text);
    return VokFields::GetCount(attributes, "count", fallback);
}

TEST(VokFieldsCount, BelowZeroIsNoneWhateverBlanksStandInFront) {
    EXPECT_EQ(CountOf("-1"), 0u);
    EXPECT_EQ(CountOf(" \t\n\v\f\r-1"), 0u);
    EXPECT_EQ(CountOf("-2147483649"), 0u);
    EXPECT_EQ(CountOf("-0"), 0u);
}

TEST(VokFieldsCount, IsReadAsAnUnsignedNumberUpToTheLargestInt) {
    EXPECT_EQ(CountOf(" 12x"), 12u);
    EXPECT_EQ(CountOf("2147483647"), 2147483647u);
    EXPECT_EQ(CountOf("4294967295"), 2147483647u);
}

TEST(VokFieldsCount, AbsentIsTheFallbackAndNoNumberIsNone) {
    EXPECT_EQ(VokFields::GetCount(VokAttributes(), "count", 7), 7u);
    EXPECT_EQ(CountOf("many"), 0u);
    EXPECT_EQ(CountOf(""), 0u);
}

TEST(VokFieldsRotationOrder, AnUnknownOneIsIgnoredOrRefused) {
    EulerRotation rotation{0, 0, 0, RotationOrder::zyx};
    VokAttributes attributes;
    attributes.SetString("rotOrd", "sideways");
    VokFields::ReadRotationOrder(rotation, attributes);
    EXPECT_EQ(rotation.order, RotationOrder::zyx);
    EXPECT_EQ(
        FailureOf([&] { VokFields::ReadRotationOrderStrictly(rotation, attributes, nullptr); }),
        (Failure{"Unknown rotation order \"sideways\".", ""}));
    VokFields::ReadRotationOrder(rotation, VokAttributes());
    EXPECT_EQ(rotation.order, RotationOrder::xyz);
}

}  // namespace
