#include <VokLib/Tree/ParentEffect.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

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
