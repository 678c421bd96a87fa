#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Tree/ParentEffect.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using SceneTest::Failure;
using SceneTest::FailureOf;

TEST(RotationOrderText, SixTextsInTheOrderOfTheValues) {
    const char* const texts[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    for (unsigned i = 0; i < 6; ++i) {
        EXPECT_EQ(FindRotationOrder(texts[i]), static_cast<RotationOrder>(i));
        EXPECT_EQ(GetRotationOrderText(static_cast<RotationOrder>(i)), texts[i]);
    }
    EXPECT_EQ(FindRotationOrder("XYZ"), std::nullopt);
    EXPECT_EQ(FindRotationOrder("xy"), std::nullopt);
    EXPECT_EQ(FindRotationOrder(""), std::nullopt);
}

TEST(ParentEffectText, ThreeTextsInTheOrderOfTheValues) {
    const char* const texts[] = {"normal", "scaleCompensate", "noInherit"};
    for (unsigned i = 0; i < 3; ++i) {
        EXPECT_EQ(ParseParentEffect(texts[i]), static_cast<ParentEffect>(i));
        EXPECT_EQ(GetParentEffectText(static_cast<ParentEffect>(i)), texts[i]);
    }
}

TEST(ParentEffectText, OthersAreRefused) {
    EXPECT_EQ(FailureOf([] { ParseParentEffect("Normal"); }).text, "Invalid parent effect string.");
    EXPECT_EQ(FailureOf([] { ParseParentEffect(""); }).text, "Invalid parent effect string.");
    EXPECT_EQ(FailureOf([] { GetParentEffectText(static_cast<ParentEffect>(3)); }).text,
              "Invalid parent effect enum.");
}
